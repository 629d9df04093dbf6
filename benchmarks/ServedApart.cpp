#include "benchmarks/ServedApart.h"

#include <QCoreApplication>
#include <QFile>

#include <cstdio>
#include <string_view>

namespace orvane::bench {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr std::string_view serveArgument = "--serve";

demo::LibraryOptions optionsFrom(char** argv)
{
    demo::LibraryOptions options{.tracks = std::atoi(argv[2]), .lyricsBytes = std::atoi(argv[3])};
    const qint64 assetBytes = std::atoll(argv[4]);
    if (assetBytes > 0)
        options.assetBytes = assetBytes;
    return options;
}

} // namespace

ServedApart::ServedApart(const demo::LibraryOptions& options)
{
    const QStringList arguments{QString::fromLatin1(serveArgument), QString::number(options.tracks),
                                QString::number(options.lyricsBytes), QString::number(options.assetBytes.value_or(0))};
    server_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    server_.start(QCoreApplication::applicationFilePath(), arguments);
    while (!server_.canReadLine()) {
        if (!server_.waitForReadyRead(30'000))
            qFatal("The stand-in service did not start.");
    }
    port_ = server_.readLine().trimmed().toUShort();
}

ServedApart::~ServedApart()
{
    server_.closeWriteChannel();
    server_.waitForFinished();
}

Endpoints ServedApart::endpoints() const
{
    return demo::StandInService::endpointsAt(port_);
}

std::optional<int> ServedApart::serveIfAsked(int argc, char** argv)
{
    if (argc != 5 || argv[1] != serveArgument)
        return std::nullopt;
    demo::StandInService service(optionsFrom(argv));
    service.setTokenRequired(false);
    std::printf("%d\n", service.endpoints().sunoHome.port());
    std::fflush(stdout);
    while (std::getchar() != EOF) {
    }
    return 0;
}

} // namespace orvane::bench
