#pragma once

class QWidget;

namespace orvane {

class Dialogs;
class Session;

/// Asks before the program quits in the middle of a run. The session, the dialogs and the flag outlive it.
class QuitGuard
{
public:
    /// `relaunchAfterQuit` says that the program is to start anew when it ends; a quit that is called off clears it, so
    /// that it does not wait for the next one.
    QuitGuard(const Session& session, Dialogs& dialogs, bool& relaunchAfterQuit);

    /// Whether the program may end now. A download is asked about before an automation run, and nothing twice: while a
    /// question is open a second quit is refused.
    bool mayQuit(QWidget* over = nullptr);

private:
    bool confirms(QWidget* over);

    const Session& session_;
    Dialogs& dialogs_;
    bool& relaunchAfterQuit_;
    bool asking_ = false;
};

} // namespace orvane
