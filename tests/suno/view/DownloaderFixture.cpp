#include "tests/suno/view/DownloaderFixture.h"

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>

namespace orvane::test {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

demo::LibraryOptions sevenTracks()
{
    demo::LibraryOptions options;
    options.tracks = 7;
    options.pageSize = 5;
    options.assetBytes = 2000;
    return options;
}

} // namespace

DownloaderFixture::DownloaderFixture()
    : service(sevenTracks())
{
    service.setTokenLifetime(1h);
    session.setDestination(QUrl::fromLocalFile(folder()));
}

void DownloaderFixture::makeTab(const QDBusConnection& bus)
{
    notifier = std::make_unique<Notifier>(bus);
    sleep = std::make_unique<SleepInhibitor>(QDBusConnection(u"none"_s), bus);
    const DownloaderServices services{.session = session,
                                      .client = client,
                                      .clock = clock,
                                      .dialogs = dialogs,
                                      .notifier = *notifier,
                                      .sleep = *sleep,
                                      .endpoints = service.endpoints()};
    tab = std::make_unique<DownloaderTab>(services);
}

void DownloaderFixture::signIn()
{
    session.setToken(service.currentToken());
}

void DownloaderFixture::signInAndList()
{
    signIn();
    ASSERT_TRUE(waitUntil([this] { return rows().size() == 6; }));
}

bool DownloaderFixture::waitUntil(const std::function<bool()>& condition) const
{
    QDeadlineTimer deadline(30s);
    QTimer beat;
    beat.start(5);
    while (!condition() && !deadline.hasExpired()) {
        QEventLoop turn;
        QObject::connect(&beat, &QTimer::timeout, &turn, &QEventLoop::quit);
        turn.exec();
    }
    return condition();
}

void DownloaderFixture::startAndHold()
{
    service.script(silent(u"page=1"_s));
    tab->toggleRun();
    ASSERT_TRUE(session.downloadInProgress);
}

bool DownloaderFixture::waitForIdle() const
{
    return waitUntil([this] { return !session.downloadInProgress; });
}

void DownloaderFixture::runToTheEnd()
{
    tab->toggleRun();
    ASSERT_TRUE(waitForIdle());
}

QList<ShownLine> DownloaderFixture::lines() const
{
    const auto* log = part<LogView>(u"logView"_s);
    QList<ShownLine> shown;
    for (int line = 0; line < log->lineCount(); ++line)
        shown.append({.text = log->lineText(line), .colour = log->lineColour(line)});
    return shown;
}

QStringList DownloaderFixture::rows() const
{
    const auto* picker = part<PopUpButton>(u"workspacePicker"_s);
    QStringList texts;
    for (int row = 0; row < picker->count(); ++row)
        texts.append(picker->isSeparator(row) ? u"--"_s : picker->itemText(row));
    return texts;
}

void DownloaderFixture::pick(const QString& row)
{
    auto* picker = part<PopUpButton>(u"workspacePicker"_s);
    const int index = picker->findText(row);
    ASSERT_GE(index, 0) << row.toStdString();
    picker->setCurrentIndex(index);
    Q_EMIT picker->activated(index);
}

int DownloaderFixture::requests(const QString& path) const
{
    int count = 0;
    for (const demo::SeenRequest& request : service.requests())
        count += QString::fromUtf8(request.target).startsWith(path);
    return count;
}

} // namespace orvane::test
