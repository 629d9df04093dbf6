#pragma once

#include "demonstration/service/StandInService.h"
#include "main/App/Preferences.h"
#include "main/App/Session.h"
#include "platform/network/HttpClient.h"
#include "suno/Engine.h"
#include "suno/LibraryExport.h"
#include "tests/support/TestClock.h"

#include <QList>
#include <QStringList>
#include <QTemporaryDir>

#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <ostream>

namespace orvane {

void PrintTo(const LogLevel& level, std::ostream* out);

} // namespace orvane

namespace orvane::test {

/// A line that an export logged.
struct Line
{
    QString message;
    LogLevel level = LogLevel::info;

    bool operator==(const Line&) const = default;
};

void PrintTo(const Line& line, std::ostream* out);

Line info(const QString& message);
Line success(const QString& message);
Line error(const QString& message);

/// Lines that several tests wait for.
extern const Line stopping;
extern const Line stopped;
extern const Line incomplete;
extern const Line nothingTicked;
extern const Line noTracksRead;

/// The lines of reading seven tracks on pages of five.
QList<Line> readingOfSeven();

/// All assets.
extern const AssetSet everything;

/// The next `times` requests whose target holds `where` are answered with `status`.
demo::Fault answering(int status, const QString& where, int times = 1);
/// The next `times` requests whose target holds `where` are accepted and never answered.
demo::Fault silent(const QString& where, int times = 1);

/// An export before the stand-in service with seven tracks on pages of five, on a clock that does not wait.
class LibraryExportFixture : public testing::Test
{
protected:
    explicit LibraryExportFixture(int tracks = 7);

    QString folder() const;
    QStringList files() const;
    QStringList recordings() const;

    bool waitForEnd(int runs = 1);
    void runToTheEnd(const AssetSet& assets = everything, const QString& workspace = {});
    /// Presses stop when the log says `message`.
    void stopAtLine(const QString& message);
    /// Presses stop when the track at this position, counted from 0, is at hand.
    void stopAtTrack(int position);
    /// Requests for anything but the pages of the library.
    QStringList assetRequests() const;

    demo::StandInService service;
    QTemporaryDir home;
    Preferences preferences{home.filePath(QStringLiteral("preferences.json"))};
    Session session{preferences};
    HttpClient client;
    TestClock clock;
    Engine engine{client, clock, service.endpoints()};
    std::unique_ptr<LibraryExport> exporter = std::make_unique<LibraryExport>(session, engine, clock);

    QList<Line> lines;
    QList<ExportProgress> steps;
    QList<ExportResult> results;
    std::function<void(const Line&)> onLine;
    std::function<void(const ExportProgress&)> onStep;

private:
    void listen();
};

} // namespace orvane::test
