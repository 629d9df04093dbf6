#include "platform/async/Clock.h"
#include "suno/Engine.h"
#include "tests/support/TraceMark.h"

#include <QCoreApplication>

#include <cstdio>

/// asset_saver ADDRESS PATH: saves the file at the address under the path, in one attempt. Exits with 1 and the reason
/// on standard error where that fails.
int main(int argc, char** argv)
{
    if (argc != 3)
        return 2;
    QCoreApplication application(argc, argv);
    orvane::HttpClient client;
    orvane::SystemClock clock;
    orvane::Engine engine(client, clock, orvane::Endpoints());
    const QString from = QString::fromLocal8Bit(argv[1]);
    const QString to = QString::fromLocal8Bit(argv[2]);
    orvane::test::markTrace();
    const orvane::DownloadOutcome outcome = QCoro::waitFor(engine.downloadFile(from, to, QString(), 1));
    orvane::test::markTrace();
    if (outcome.isOnDisk())
        return 0;
    std::fprintf(stderr, "%s\n", qPrintable(outcome.reason));
    return 1;
}
