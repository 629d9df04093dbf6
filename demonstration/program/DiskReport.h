#pragma once

#include "demonstration/service/StandInService.h"

#include <QString>
#include <QStringList>

namespace orvane::demo {

/// What lies on disk after an export, held against what the service has.
struct DiskReport
{
    /// One line for each track, ready to print.
    QStringList table;
    /// One sentence for each file that is missing, different or unexpected.
    QStringList faults;
    int files = 0;
};

/// Looks at every file of `folder`, into which the whole library of `service` was saved by a first run.
DiskReport reportOn(const QString& folder, const StandInService& service);

} // namespace orvane::demo
