#pragma once

#include "demonstration/service/StandInService.h"

#include <QProcess>
#include <QString>

namespace orvane::bench {

/// The stand-in service in a process of its own, so that its memory and its work are not counted as ours.
class ServedApart
{
public:
    /// Starts this very program again as the server of that library.
    explicit ServedApart(const demo::LibraryOptions& options);
    ~ServedApart();

    Endpoints endpoints() const;

    /// Serves in the process that the constructor started, until its standard input ends; absent in any other process.
    static std::optional<int> serveIfAsked(int argc, char** argv);

private:
    QProcess server_;
    quint16 port_ = 0;
};

} // namespace orvane::bench
