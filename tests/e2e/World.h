#pragma once

#include "demonstration/program/Person.h"
#include "demonstration/service/StandInService.h"
#include "main/Window/AppDelegate.h"
#include "main/Window/ProgramServices.h"
#include "tests/support/RecordingDialogs.h"

#include <QString>
#include <QStringList>

#include <functional>

namespace orvane::test {

/// A library of short recordings, so that a test is quick.
demo::LibraryOptions shortLibrary(int tracks, int pageSize = 50);

/// The program in front of a service of its own, with somebody at the window. Everything waits on facts, for a minute
/// and more at most.
class World
{
public:
    /// What the program keeps goes to `folders`, what it exports to the folder `destination`.
    World(const ProgramFolders& folders, const QString& destination, demo::LibraryOptions library = shortLibrary(6));

    MainController& controller() { return *delegate.controller(); }

    SunoTab& pane();

    /// Lets the program go on until `seen` holds; false after two minutes.
    bool waitUntil(const std::function<bool()>& seen);

    /// Whether the page in the pane has such an element.
    bool pageHas(const QString& selector);
    /// Clicks on the element once it is there, until `seen` holds: before a page has been drawn it takes no clicks.
    bool clickInPageUntil(const QString& selector, const std::function<bool()>& seen);
    /// Signs in on the page, and waits for the token and for the quiet after it: no capture is due but the timer's.
    bool signIn();
    /// Asks the page for its token, to the answer.
    bool capture();

    /// A control of the Downloader by its name.
    QWidget& control(const QString& name);
    void tick(const QStringList& assets);
    /// One click on the button; true where an export goes on, or has already been.
    bool startExport();
    bool waitForEnd();
    /// The lines of the Downloader's log, without their time.
    QStringList log();
    bool logHas(const QString& message);
    QString pill();

    /// Requests for recordings and covers by the Downloader, not by the page.
    int assetRequests() const;
    QList<demo::SeenRequest> feedRequests() const;

    demo::StandInService service;
    RecordingDialogs dialogs;
    ProgramServices services;
    AppDelegate delegate;
    demo::Person person;

private:
    void watchPane();
    bool isQuiet() const;

    int loads_ = 0;
    int captures_ = 0;
};

} // namespace orvane::test
