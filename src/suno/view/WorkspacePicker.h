#pragma once

#include "suno/WorkspaceChoice.h"

#include <QList>
#include <QString>
#include <QWidget>

#include <optional>

namespace orvane {

class DarkField;
class PopUpButton;
class Session;

/// What to read: a pop-up of the user's projects and the ways around them, and the field for an identifier typed by
/// hand, which shows only where it is meant.
class WorkspacePicker : public QWidget
{
    Q_OBJECT

public:
    /// `sunoSiteDomain` is the domain that the address in the Suno pane has to lie on. The session outlives the picker.
    WorkspacePicker(const Session& session, const QString& sunoSiteDomain, QWidget* parent = nullptr);

    /// Fills the rows anew and selects again what was selected, if it is still there.
    void rebuild(const QList<Workspace>& workspaces);

    /// Absent for the whole library.
    std::optional<QString> selectedWorkspaceID() const;

private:
    void buildRows();
    void fillRows();
    WorkspaceChoice selectedChoice() const;
    void workspaceChanged();
    void offerTyping();

    const Session& session_;
    const QString sunoSiteDomain_;
    QList<WorkspaceChoice> choices_;
    PopUpButton* picker_ = nullptr;
    DarkField* manualField_ = nullptr;
};

} // namespace orvane
