#pragma once

#include <QStringList>
#include <QUrl>

class QWidget;

namespace orvane {

class Dialogs;
class Session;

/// The way by which the program's work moves to another folder: never in the middle of a download, and into a folder
/// that people keep other things in only after a question. The session and the dialogs outlive it.
class DestinationGuard
{
public:
    /// `personalFolders` are the absolute paths that are asked about.
    DestinationGuard(Session& session, Dialogs& dialogs, QStringList personalFolders = usersFolders());

    /// Makes `url`, a local file address, the destination, unless a run or the user's answer forbids it. Alerts appear
    /// over `over`, which may be null.
    void adopt(const QUrl& url, QWidget* over = nullptr);

    /// The user's home and the first entry each of the Desktop, Documents, Downloads, Movies and Music folders.
    static QStringList usersFolders();

private:
    bool mayHoldRun(const QUrl& url, QWidget* over) const;

    Session& session_;
    Dialogs& dialogs_;
    QStringList personalFolders_;
};

} // namespace orvane
