#pragma once

#include "demonstration/program/Person.h"

#include <QString>
#include <QStringList>

namespace orvane {
class AppDelegate;
struct ProgramServices;
} // namespace orvane

namespace orvane::demo {

class StandInService;

/// The main job, done by itself through the window's own controls: sign in, export a library, stop a second export
/// half-way and finish it. Prints what happens.
class Demonstration
{
public:
    /// `folder` is where the libraries and the picture go; it exists.
    Demonstration(StandInService& service, ProgramServices& services, AppDelegate& delegate, QString folder);

    /// True when everything went as it should; otherwise it has printed what did not.
    bool run();

private:
    bool signIn();
    bool tickAllAssets();
    bool exportFirstLibrary();
    bool takePicture();
    bool stopHalfWay();
    bool finishSecondLibrary();

    bool startExport();
    bool waitForEnd();
    void printNewLines();
    bool check(bool asExpected, const QString& sentence);
    bool checkDisk(const QString& folder);
    int assetRequests() const;
    QWidget& control(const char* name) const;

    StandInService& service_;
    ProgramServices& services_;
    AppDelegate& delegate_;
    QString folder_;
    Person person_;
    int printedLines_ = 0;
    int requestsOfFirstRun_ = 0;
};

} // namespace orvane::demo
