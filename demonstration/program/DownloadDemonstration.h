#pragma once

#include "demonstration/program/Demonstration.h"

namespace orvane::demo {

/// The Downloader's job: export a library, stop a second export half-way and finish it.
class DownloadDemonstration : public Demonstration
{
public:
    using Demonstration::Demonstration;

    bool run() override;

private:
    bool exportFirstLibrary();
    bool stopHalfWay();
    bool finishSecondLibrary();

    bool startExport();
    bool waitForEnd();
    bool checkDisk(const QString& saved);
    int assetRequests();

    int requestsOfFirstRun_ = 0;
};

} // namespace orvane::demo
