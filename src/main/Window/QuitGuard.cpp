#include "main/Window/QuitGuard.h"

#include "main/App/L10n.h"
#include "main/App/Session.h"
#include "main/Chrome/Dialogs.h"

#include <QScopedValueRollback>

namespace orvane {
namespace {

Question quitQuestion(L10n::Key text, L10n::Key keep)
{
    return {.text = L10n::t(text),
            .informativeText = L10n::t(L10n::Key::quitKeepsFiles),
            .firstButton = L10n::t(L10n::Key::quitAnyway),
            .secondButton = L10n::t(keep)};
}

} // namespace

QuitGuard::QuitGuard(const Session& session, Dialogs& dialogs, bool& relaunchAfterQuit)
    : session_(session)
    , dialogs_(dialogs)
    , relaunchAfterQuit_(relaunchAfterQuit)
{
}

bool QuitGuard::mayQuit(QWidget* over)
{
    if (asking_)
        return false;
    const QScopedValueRollback asking(asking_, true);
    if (confirms(over))
        return true;
    relaunchAfterQuit_ = false;
    return false;
}

bool QuitGuard::confirms(QWidget* over)
{
    if (session_.downloadInProgress)
        return dialogs_.ask(over, quitQuestion(L10n::Key::quitDownloading, L10n::Key::keepDownloading));
    if (session_.automationInProgress)
        return dialogs_.ask(over, quitQuestion(L10n::Key::quitAutomating, L10n::Key::keepAutomating));
    return true;
}

} // namespace orvane
