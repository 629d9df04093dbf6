#pragma once

#include "suno/Workspace.h"

#include <QList>
#include <QString>

#include <optional>

namespace orvane {

/// One row of the picker that says what to read.
struct WorkspaceChoice
{
    enum class Kind
    {
        workspace,
        wholeLibrary,
        useOpenTab,
        manual
    };

    Kind kind = Kind::wholeLibrary;
    /// Meant only by a choice of the kind `workspace`.
    Workspace workspace;

    bool operator==(const WorkspaceChoice&) const = default;
};

/// The choices in the order of the picker's rows: the whole library; the project open in Suno while none is listed; the
/// user's projects; an identifier typed by hand.
QList<WorkspaceChoice> workspaceChoices(const QList<Workspace>& workspaces);

/// The row's text.
QString title(const WorkspaceChoice& choice);

/// Whether a separator stands above this row.
bool startsSection(const QList<WorkspaceChoice>& choices, qsizetype row);

/// What the choices that name no project by themselves are read from.
struct WorkspaceSources
{
    /// The address that the Suno pane shows.
    std::optional<QUrl> openSunoURL;
    QString sunoSiteDomain;
    /// What stands in the field for a typed identifier.
    QString typed;
};

/// The project that a choice stands for; absent for the whole library, also where nothing usable is open or typed.
std::optional<QString> workspaceID(const WorkspaceChoice& choice, const WorkspaceSources& sources);

/// The row to select in a list made anew: the project `identifier`, else the row for a typed identifier where
/// `previous` was that, else the whole library.
qsizetype rowToSelect(const QList<WorkspaceChoice>& choices, const WorkspaceChoice& previous,
                      const std::optional<QString>& identifier);

} // namespace orvane
