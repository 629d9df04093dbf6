#include "suno/WorkspaceChoice.h"

#include "main/App/L10n.h"

#include <algorithm>

namespace orvane {

using namespace Qt::Literals::StringLiterals;
using Kind = WorkspaceChoice::Kind;

namespace {

std::optional<QString> unlessEmpty(const QString& text)
{
    return text.isEmpty() ? std::nullopt : std::optional(text);
}

template <typename Predicate>
std::optional<qsizetype> firstRow(const QList<WorkspaceChoice>& choices, Predicate matches)
{
    const auto found = std::find_if(choices.begin(), choices.end(), matches);
    if (found == choices.end())
        return std::nullopt;
    return found - choices.begin();
}

} // namespace

QList<WorkspaceChoice> workspaceChoices(const QList<Workspace>& workspaces)
{
    QList<WorkspaceChoice> choices{{.kind = Kind::wholeLibrary, .workspace = {}}};
    if (workspaces.isEmpty())
        choices.append({.kind = Kind::useOpenTab, .workspace = {}});
    for (const Workspace& workspace : workspaces)
        choices.append({.kind = Kind::workspace, .workspace = workspace});
    choices.append({.kind = Kind::manual, .workspace = {}});
    return choices;
}

QString title(const WorkspaceChoice& choice)
{
    switch (choice.kind) {
    case Kind::workspace:
        return choice.workspace.name;
    case Kind::wholeLibrary:
        return L10n::t(L10n::Key::wholeLibrary);
    case Kind::useOpenTab:
        return u"Use the workspace open in Suno"_s;
    case Kind::manual:
        return u"Enter an ID manually…"_s;
    }
    return {};
}

bool startsSection(const QList<WorkspaceChoice>& choices, qsizetype row)
{
    const Kind kind = choices.at(row).kind;
    if (kind == Kind::manual)
        return true;
    return kind == Kind::workspace && choices.at(row - 1).kind != Kind::workspace;
}

std::optional<QString> workspaceID(const WorkspaceChoice& choice, const WorkspaceSources& sources)
{
    switch (choice.kind) {
    case Kind::workspace:
        return choice.workspace.id;
    case Kind::wholeLibrary:
        return std::nullopt;
    case Kind::useOpenTab:
        return workspaceID(sources.openSunoURL, sources.sunoSiteDomain);
    case Kind::manual:
        return unlessEmpty(sources.typed.trimmed());
    }
    return std::nullopt;
}

qsizetype rowToSelect(const QList<WorkspaceChoice>& choices, const WorkspaceChoice& previous,
                      const std::optional<QString>& identifier)
{
    const auto listed = firstRow(choices, [&](const WorkspaceChoice& choice) {
        return choice.kind == Kind::workspace && choice.workspace.id == identifier;
    });
    // The list is read anew whenever the token rotates, which must not take the field from under the user's hands.
    const auto sameKind = firstRow(choices, [&](const WorkspaceChoice& choice) {
        return choice.kind != Kind::workspace && choice.kind == previous.kind;
    });
    return listed.value_or(sameKind.value_or(0));
}

} // namespace orvane
