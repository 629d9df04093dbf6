#include "demonstration/program/DownloadDemonstration.h"

#include "demonstration/program/DiskReport.h"
#include "demonstration/service/StandInService.h"
#include "main/Window/MainController.h"
#include "main/Window/ProgramServices.h"
#include "suno/view/DownloaderTab.h"

#include <QDir>

#include <algorithm>

namespace orvane::demo {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

const LibraryOptions secondLibrary{.tracks = 16, .plainOnly = true, .pageSize = 5, .seed = 2, .longestSeconds = 24};

int recordingsIn(const QString& folder)
{
    return static_cast<int>(QDir(folder).entryList({u"*.mp3"_s}, QDir::Files).size());
}

} // namespace

bool DownloadDemonstration::run()
{
    return signIn() && tickAllAssets() && exportFirstLibrary() && takePicture() && stopHalfWay() &&
           finishSecondLibrary();
}

bool DownloadDemonstration::exportFirstLibrary()
{
    print(u"\nExporting the library"_s);
    services().session.setDestination(QUrl::fromLocalFile(folder() + u"/library"_s));
    return startExport() && waitForEnd() && checkDisk(folder() + u"/library"_s);
}

bool DownloadDemonstration::stopHalfWay()
{
    print(u"\nStopping half-way through a second library"_s);
    const QString second = folder() + u"/second library"_s;
    service().setLibrary(secondLibrary);
    services().session.setDestination(QUrl::fromLocalFile(second));
    service().clearRequests();
    if (!startExport())
        return false;
    person().waitUntil([&second] { return recordingsIn(second) >= secondLibrary.tracks / 2; }, 120s);
    person().click(control(controller().downloader(), "startButton"));
    if (!waitForEnd())
        return false;
    requestsOfFirstRun_ = assetRequests();
    const int saved = recordingsIn(second);
    return check(saved > 0 && saved < secondLibrary.tracks,
                 u"%1 of %2 recordings are on disk."_s.arg(saved).arg(secondLibrary.tracks));
}

bool DownloadDemonstration::finishSecondLibrary()
{
    print(u"\nStarting it again"_s);
    service().clearRequests();
    if (!startExport() || !waitForEnd() || !checkDisk(folder() + u"/second library"_s))
        return false;
    const int files = 2 * secondLibrary.tracks;
    const int asked = assetRequests();
    return check(asked < files, u"The first run made %1 requests for files, the second %2: %3 of %4 were saved."_s
                                    .arg(requestsOfFirstRun_)
                                    .arg(asked)
                                    .arg(files - asked)
                                    .arg(files));
}

bool DownloadDemonstration::startExport()
{
    const bool isClicked = person().click(control(controller().downloader(), "startButton"));
    return check(isClicked && services().session.downloadInProgress, u"The export started."_s);
}

bool DownloadDemonstration::waitForEnd()
{
    const auto ended = [this] {
        printNewLines(controller().downloader());
        return !services().session.downloadInProgress;
    };
    return check(person().waitUntil(ended, 300s), u"The export ended."_s);
}

bool DownloadDemonstration::checkDisk(const QString& saved)
{
    const DiskReport report = reportOn(saved, service());
    for (const QString& line : report.table)
        print(u"  "_s + line);
    for (const QString& fault : report.faults)
        print(u"  WRONG: "_s + fault);
    return check(report.faults.isEmpty(), u"%1 files are on disk, whole and rightly named."_s.arg(report.files));
}

int DownloadDemonstration::assetRequests()
{
    const QList<SeenRequest> seen = service().requests();
    const auto isFile = [](const SeenRequest& request) {
        // The page's own pictures come with the site's cookie.
        return request.cookie.isEmpty() && (request.target.endsWith(".mp3") || request.target.startsWith("/image/"));
    };
    return static_cast<int>(std::ranges::count_if(seen, isFile));
}

} // namespace orvane::demo
