#pragma once

#include "main/App/Endpoints.h"
#include "main/App/Preferences.h"
#include "main/App/Session.h"
#include "main/Chrome/Dialogs.h"
#include "platform/async/Clock.h"
#include "platform/async/Ticker.h"
#include "platform/desktop/Notifier.h"
#include "platform/desktop/SleepInhibitor.h"
#include "platform/desktop/TaskbarProgress.h"
#include "platform/network/HttpClient.h"
#include "platform/web/WebProfile.h"

#include <QString>

namespace orvane {

/// Where a program keeps what is its own.
struct ProgramFolders
{
    /// The preferences' file.
    QString preferences;
    /// The web profile's folder.
    QString webProfile;

    /// The user's folders for a program of that name.
    static ProgramFolders ofUser(const QString& programName);
};

/// Everything that lives as long as the process and that tabs are handed. Made after the application object, in the
/// order in which one thing needs another.
struct ProgramServices
{
    /// The dialogs outlive the services.
    ProgramServices(Endpoints addresses, const ProgramFolders& folders, Dialogs& answers);
    ~ProgramServices();
    ProgramServices(const ProgramServices&) = delete;
    ProgramServices& operator=(const ProgramServices&) = delete;

    Endpoints endpoints;
    Preferences preferences;
    Session session;
    SystemClock clock;
    /// The library watcher's.
    SystemTicker ticker;
    HttpClient client;
    Dialogs& dialogs;
    Notifier notifier;
    SleepInhibitor sleep;
    TaskbarProgress taskbar;
    WebProfile profile;
};

} // namespace orvane
