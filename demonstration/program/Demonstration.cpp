#include "demonstration/program/Demonstration.h"

#include "demonstration/program/DiskReport.h"
#include "demonstration/service/StandInService.h"
#include "main/Chrome/LogView.h"
#include "main/Chrome/TickBox.h"
#include "main/Window/AppDelegate.h"
#include "main/Window/MainController.h"
#include "main/Window/ProgramServices.h"
#include "platform/web/WebPage.h"
#include "suno/view/DownloaderTab.h"
#include "suno/view/SunoTab.h"

#include <QDir>
#include <QMainWindow>
#include <QPixmap>

#include <algorithm>
#include <cstdio>

namespace orvane::demo {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

const LibraryOptions secondLibrary{.tracks = 16, .plainOnly = true, .pageSize = 5, .seed = 2, .longestSeconds = 24};

constexpr QSize pictureSize{1320, 880};

void print(const QString& line)
{
    std::printf("%s\n", qPrintable(line));
    std::fflush(stdout);
}

int recordingsIn(const QString& folder)
{
    return static_cast<int>(QDir(folder).entryList({u"*.mp3"_s}, QDir::Files).size());
}

} // namespace

Demonstration::Demonstration(StandInService& service, ProgramServices& services, AppDelegate& delegate, QString folder)
    : service_(service)
    , services_(services)
    , delegate_(delegate)
    , folder_(std::move(folder))
{
}

bool Demonstration::run()
{
    return signIn() && tickAllAssets() && exportFirstLibrary() && takePicture() && stopHalfWay() &&
           finishSecondLibrary();
}

bool Demonstration::signIn()
{
    print(u"\nSigning in on the page in the left pane"_s);
    SunoTab& pane = delegate_.controller()->suno();
    const auto pageAsks = [this, &pane] {
        const auto there = QCoro::waitFor(pane.page().callAsync(u"return !!document.querySelector('#sign-in');"_s));
        return there.value.toBool();
    };
    // Before the page has been drawn it takes no clicks, so a person clicks again.
    const auto clicked = [this, &pane, &pageAsks] {
        if (!services_.session.token().isEmpty())
            return true;
        if (pageAsks())
            person_.clickInPage(pane, u"#sign-in"_s);
        person_.waitUntil([this] { return !services_.session.token().isEmpty(); }, 3s);
        return !services_.session.token().isEmpty();
    };
    return check(person_.waitUntil(clicked, 60s), u"The token was captured."_s);
}

bool Demonstration::tickAllAssets()
{
    const QList<TickBox*> boxes = delegate_.controller()->downloader().findChildren<TickBox*>();
    for (TickBox* box : boxes) {
        if (!box->isChecked())
            person_.click(*box);
    }
    const auto isTicked = [](const TickBox* box) { return box->isChecked(); };
    return check(boxes.size() == 4 && std::ranges::all_of(boxes, isTicked), u"All four assets are ticked."_s);
}

bool Demonstration::exportFirstLibrary()
{
    print(u"\nExporting the library"_s);
    services_.session.setDestination(QUrl::fromLocalFile(folder_ + u"/library"_s));
    return startExport() && waitForEnd() && checkDisk(folder_ + u"/library"_s);
}

bool Demonstration::takePicture()
{
    const QString path = folder_ + u"/window.png"_s;
    // Screens that are none may be small; the picture shows the window in its usual size.
    delegate_.window()->resize(pictureSize);
    person_.waitUntil([this] { return delegate_.controller()->suno().width() > pictureSize.width() / 2; }, 10s);
    person_.waitUntil([] { return false; }, 500ms);
    print(u"\nA picture of the window: "_s + path);
    return check(delegate_.window()->grab().save(path), u"The picture was written."_s);
}

bool Demonstration::stopHalfWay()
{
    print(u"\nStopping half-way through a second library"_s);
    const QString folder = folder_ + u"/second library"_s;
    service_.setLibrary(secondLibrary);
    services_.session.setDestination(QUrl::fromLocalFile(folder));
    service_.clearRequests();
    if (!startExport())
        return false;
    person_.waitUntil([&folder] { return recordingsIn(folder) >= secondLibrary.tracks / 2; }, 120s);
    person_.click(control("startButton"));
    if (!waitForEnd())
        return false;
    requestsOfFirstRun_ = assetRequests();
    const int saved = recordingsIn(folder);
    return check(saved > 0 && saved < secondLibrary.tracks,
                 u"%1 of %2 recordings are on disk."_s.arg(saved).arg(secondLibrary.tracks));
}

bool Demonstration::finishSecondLibrary()
{
    print(u"\nStarting it again"_s);
    service_.clearRequests();
    if (!startExport() || !waitForEnd() || !checkDisk(folder_ + u"/second library"_s))
        return false;
    const int files = 2 * secondLibrary.tracks;
    const int asked = assetRequests();
    return check(asked < files, u"The first run made %1 requests for files, the second %2: %3 of %4 were saved."_s
                                    .arg(requestsOfFirstRun_)
                                    .arg(asked)
                                    .arg(files - asked)
                                    .arg(files));
}

bool Demonstration::startExport()
{
    return check(person_.click(control("startButton")) && services_.session.downloadInProgress,
                 u"The export started."_s);
}

bool Demonstration::waitForEnd()
{
    const auto ended = [this] {
        printNewLines();
        return !services_.session.downloadInProgress;
    };
    return check(person_.waitUntil(ended, 300s), u"The export ended."_s);
}

void Demonstration::printNewLines()
{
    const auto* log = delegate_.controller()->downloader().findChild<LogView*>();
    for (; printedLines_ < log->lineCount(); ++printedLines_)
        print(u"  "_s + log->lineText(printedLines_));
}

bool Demonstration::check(bool asExpected, const QString& sentence)
{
    print((asExpected ? u"ok: "_s : u"WRONG, expected: "_s) + sentence);
    return asExpected;
}

bool Demonstration::checkDisk(const QString& folder)
{
    const DiskReport report = reportOn(folder, service_);
    for (const QString& line : report.table)
        print(u"  "_s + line);
    for (const QString& fault : report.faults)
        print(u"  WRONG: "_s + fault);
    return check(report.faults.isEmpty(), u"%1 files are on disk, whole and rightly named."_s.arg(report.files));
}

int Demonstration::assetRequests() const
{
    const QList<SeenRequest> seen = service_.requests();
    const auto isFile = [](const SeenRequest& request) {
        // The page's own pictures come with the site's cookie.
        return request.cookie.isEmpty() && (request.target.endsWith(".mp3") || request.target.startsWith("/image/"));
    };
    return static_cast<int>(std::ranges::count_if(seen, isFile));
}

QWidget& Demonstration::control(const char* name) const
{
    auto* found = delegate_.controller()->downloader().findChild<QWidget*>(QLatin1StringView(name));
    if (!found)
        qFatal("The window has no control of the name %s.", name);
    return *found;
}

} // namespace orvane::demo
