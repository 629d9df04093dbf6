#pragma once

#include "demonstration/program/Person.h"

#include <QString>

namespace orvane {
class AppDelegate;
class MainController;
struct ProgramServices;
} // namespace orvane

namespace orvane::demo {

class StandInService;

/// A job that is done by itself through the window's own controls, and told line by line on standard output.
class Demonstration
{
public:
    /// `folder` is where everything goes that it writes; it exists.
    Demonstration(StandInService& service, ProgramServices& services, AppDelegate& delegate, QString folder);
    virtual ~Demonstration() = default;
    Demonstration(const Demonstration&) = delete;
    Demonstration& operator=(const Demonstration&) = delete;

    /// True when everything went as it should; otherwise it has printed what did not.
    virtual bool run() = 0;

protected:
    /// Signs in on the page in the left pane and waits until its token was captured.
    bool signIn();
    /// Ticks what the Downloader can save.
    bool tickAllAssets();
    /// Saves what the window shows now.
    bool takePicture();

    static void print(const QString& line);
    /// Prints what a check has found, and gives it.
    static bool check(bool asExpected, const QString& sentence);
    /// Prints the lines that the tool's log has gained since the last call.
    void printNewLines(QWidget& tool);
    /// A control of the tool by its name.
    static QWidget& control(QWidget& tool, const char* name);

    StandInService& service() { return service_; }

    ProgramServices& services() { return services_; }

    MainController& controller();

    const QString& folder() const { return folder_; }

    Person& person() { return person_; }

private:
    void showWindow();

    StandInService& service_;
    ProgramServices& services_;
    AppDelegate& delegate_;
    QString folder_;
    Person person_;
    int printedLines_ = 0;
};

} // namespace orvane::demo
