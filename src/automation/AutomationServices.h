#pragma once

#include "main/App/Endpoints.h"

namespace orvane {

class Clock;
class HttpClient;
class Notifier;
class Preferences;
class Session;
class SleepInhibitor;
class Ticker;

/// Everything that a run and the watcher work with; all of it outlives them.
struct AutomationServices
{
    Session& session;
    Preferences& preferences;
    HttpClient& client;
    Clock& clock;
    Ticker& ticker;
    Notifier& notifier;
    SleepInhibitor& sleep;
    Endpoints endpoints;
};

} // namespace orvane
