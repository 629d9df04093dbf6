#include "main/Window/MainController.h"
#include "suno/view/SunoTab.h"
#include "tests/e2e/BusListener.h"
#include "tests/e2e/TokenSearch.h"
#include "tests/e2e/World.h"
#include "tests/platform/desktop/FakeNotifications.h"
#include "tests/platform/desktop/FakeScreenSaver.h"
#include "tests/support/ScriptedServer.h"
#include "tests/support/TestFolder.h"

#include <QDir>
#include <QFile>
#include <QLoggingCategory>
#include <QMainWindow>
#include <QSet>
#include <QUrl>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <mutex>
#include <unistd.h>

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

/// Everything that Qt's logging says, in every category.
class CollectedLog
{
public:
    CollectedLog()
    {
        QLoggingCategory::setFilterRules(u"*=true"_s);
        qInstallMessageHandler(collect);
    }

    ~CollectedLog()
    {
        qInstallMessageHandler(nullptr);
        QLoggingCategory::setFilterRules({});
    }

    static QByteArray text()
    {
        const std::lock_guard guard(lock_);
        return text_;
    }

private:
    static void collect(QtMsgType, const QMessageLogContext& context, const QString& message)
    {
        const std::lock_guard guard(lock_);
        text_ += QByteArray(context.category) + ": " + message.toUtf8() + '\n';
    }

    inline static std::mutex lock_;
    inline static QByteArray text_;
};

/// Standard error, also that of child processes that start from now on, in a file.
class RedirectedError
{
public:
    explicit RedirectedError(const QString& path)
        : kept_(dup(STDERR_FILENO))
    {
        const int file = ::open(QFile::encodeName(path).constData(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
        dup2(file, STDERR_FILENO);
        ::close(file);
    }

    ~RedirectedError()
    {
        dup2(kept_, STDERR_FILENO);
        ::close(kept_);
    }

    RedirectedError(const RedirectedError&) = delete;
    RedirectedError& operator=(const RedirectedError&) = delete;

private:
    int kept_;
};

QByteArray contentsOf(const QString& path)
{
    QFile file(path);
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
}

QByteArray parentOf(const QByteArray& process)
{
    const QByteArray stat = contentsOf(u"/proc/"_s + QString::fromLatin1(process) + u"/stat"_s);
    const QByteArrayList fields = stat.sliced(std::max<qsizetype>(0, stat.lastIndexOf(')'))).split(' ');
    return fields.value(2);
}

bool descendsFromUs(QByteArray process)
{
    const QByteArray ourselves = QByteArray::number(getpid());
    while (process.size() > 1 || process > "1") {
        process = parentOf(process);
        if (process == ourselves)
            return true;
    }
    return false;
}

/// The part of a token that is its secret, as much of it as is left where something is cut short.
QByteArray secretOf(const QString& token)
{
    return token.toLatin1().sliced(qstrlen("stand-in-")).first(24);
}

class CanaryTest : public testing::Test
{
protected:
    CanaryTest()
    {
        QDir().mkpath(temporary);
        qputenv("TMPDIR", QFile::encodeName(temporary));
        // What would go to the system's bus is listened to as well.
        qputenv("DBUS_SYSTEM_BUS_ADDRESS", qgetenv("DBUS_SESSION_BUS_ADDRESS"));
        world = std::make_unique<World>(ProgramFolders::ofUser(u"orvane"_s), destination, shortLibrary(8, 2));
        QObject::connect(&world->services.session, &Session::tokenChanged, &world->delegate, [this] { noteToken(); });
        otherWindow.show();
    }

    /// A person's click goes to the window in front.
    bool turnToTheProgram()
    {
        QWidget* window = world->delegate.window();
        window->activateWindow();
        return world->waitUntil([window] { return window->isActiveWindow(); });
    }

    /// The end of an export is notified only to somebody who does not see it.
    void turnToAnotherWindow() { otherWindow.activateWindow(); }

    void noteToken()
    {
        if (!world->services.session.token().isEmpty())
            secrets.insert(secretOf(world->services.session.token()));
    }

    /// Notes every token that the service was sent.
    void noteRequests()
    {
        for (const demo::SeenRequest& request : world->service.requests()) {
            if (!request.authorization.isEmpty())
                secrets.insert(secretOf(QString::fromLatin1(request.authorization.sliced(qstrlen("Bearer ")))));
        }
    }

    /// Arguments and environment of every process that the program has started.
    void lookAtChildren()
    {
        for (const QString& name : QDir(u"/proc"_s).entryList(QDir::Dirs)) {
            const QByteArray process = name.toLatin1();
            if (process.toInt() == 0 || !descendsFromUs(process))
                continue;
            const QByteArray arguments = contentsOf(u"/proc/"_s + name + u"/cmdline"_s);
            childrenSeen += arguments.isEmpty() ? 0 : 1;
            children += arguments + '\n' + contentsOf(u"/proc/"_s + name + u"/environ"_s) + '\n';
        }
    }

    /// One export from its start to its end.
    bool exportOnce()
    {
        if (!turnToTheProgram() || !world->startExport()) {
            ADD_FAILURE() << "the log says: " << qPrintable(world->log().join(u'\n'));
            return false;
        }
        ++exports;
        turnToAnotherWindow();
        lookAtChildren();
        const bool ended = world->waitForEnd();
        lookAtChildren();
        return ended;
    }

    const QString home = QDir::homePath();
    const QString destination = home + u"/Downloads/Orvane"_s;
    const QString temporary = home + u"/tmp"_s;
    const CollectedLog log;
    const RedirectedError error{home + u"/standard error"_s};
    BusListener bus{home + u"/bus"_s};
    FakeNotifications notifications;
    FakeScreenSaver screenSaver;
    QWidget otherWindow;
    ScriptedServer elsewhere{u"127.0.0.2"_s};
    QSet<QByteArray> secrets;
    QByteArray children;
    int childrenSeen = 0;
    int exports = 0;
    std::unique_ptr<World> world;
};

bool mayCarryToken(const QByteArray& target)
{
    return target.startsWith("/api/feed/v2?") || target.startsWith("/api/project") || target.startsWith("/image/") ||
           target.endsWith(".mp3");
}

} // namespace

TEST(TokenSearchTest, findsASecretInEachOfItsForms)
{
    const QByteArray secret = "0123456789abcdef01234567";
    const TokenSearch search({secret});
    const QString text = QString::fromLatin1("before " + secret + " behind");
    const TestFolder folder;
    folder.write(u"plain"_s, text.toUtf8());
    folder.write(u"percent"_s, text.toUtf8().toPercentEncoding({}, "0123456789abcdef"));
    for (const QByteArray& before : {QByteArray(), QByteArray("a"), QByteArray("ab"), QByteArray("abc")})
        folder.write(u"base64 %1"_s.arg(before.size()), (before + secret + "tail").toBase64());
    folder.write(u"hex"_s, text.toUtf8().toHex());
    folder.write(u"HEX"_s, text.toUtf8().toHex().toUpper());
    QByteArray little;
    QByteArray big;
    for (const QChar letter : text) {
        little += QByteArray(1, letter.toLatin1()) + QByteArray(1, '\0');
        big += QByteArray(1, '\0') + QByteArray(1, letter.toLatin1());
    }
    folder.write(u"utf-16le"_s, little);
    folder.write(u"utf-16be"_s, big);
    folder.write(u".hidden/below/deep"_s, text.toUtf8());
    folder.write(u"named "_s + QString::fromLatin1(secret), "nothing");
    int looked = 0;
    EXPECT_EQ(search.findIn(folder.path(), {}, looked).size(), 12);
    EXPECT_EQ(looked, 14);
}

TEST(TokenSearchTest, findsNothingWhereThereIsNone)
{
    const TestFolder folder;
    folder.write(u"other"_s, "0123456789abcdef0123456 7");
    folder.write(u"left out/plain"_s, "0123456789abcdef01234567");
    int looked = 0;
    EXPECT_EQ(TokenSearch({"0123456789abcdef01234567"}).findIn(folder.path(), folder.path(u"left out"_s), looked),
              QStringList());
    EXPECT_EQ(looked, 1);
}

TEST_F(CanaryTest, noTokenIsLeftAnywhere)
{
    using Kind = demo::Fault::Kind;
    elsewhere.play({send(answer("200 OK", "Content-Type: application/json\r\n", R"({"clips": []})"))});
    ASSERT_TRUE(world->signIn());
    demo::StandInService& service = world->service;
    const QByteArray there = elsewhere.url(u"/api/feed/v2"_s).toEncoded();

    service.script({.kind = Kind::status, .where = u"/api/feed"_s, .status = 401});
    ASSERT_TRUE(exportOnce());
    service.script({.kind = Kind::redirect, .where = u"/api/feed"_s, .location = there});
    ASSERT_TRUE(exportOnce());
    service.script({.kind = Kind::redirect,
                    .where = u"/api/feed"_s,
                    .times = 4,
                    .location = "ftp://127.0.0.1/feed?token=" + world->services.session.token().toLatin1()});
    ASSERT_TRUE(exportOnce());
    service.clearFaults();
    service.script({.kind = Kind::badJson, .where = u"/api/feed"_s});
    ASSERT_TRUE(exportOnce());
    service.script({.kind = Kind::resetInBody, .where = u"/api/feed"_s});
    service.script({.kind = Kind::resetInBody, .where = u".mp3"_s});
    service.script({.kind = Kind::redirect, .where = u"/image/"_s, .location = elsewhere.url(u"/cover"_s).toEncoded()});
    ASSERT_TRUE(world->capture());
    ASSERT_TRUE(exportOnce());
    ASSERT_TRUE(world->logHas(u"Found 8 tracks."_s));
    EXPECT_TRUE(world->logHas(u"Suno rejected the session (HTTP 401). Open the Suno tab and sign in again."_s));
    EXPECT_GE(elsewhere.connections(), 2);

    noteRequests();
    ASSERT_FALSE(secrets.isEmpty());
    const TokenSearch search(secrets.values());
    for (const demo::SeenRequest& request : service.requests()) {
        EXPECT_TRUE(request.authorization.isEmpty() || mayCarryToken(request.target)) << request.target.constData();
        EXPECT_FALSE(search.finds(request.target + ' ' + request.userAgent));
        // The page has the site's own session cookie; what the program itself asks for has none.
        EXPECT_TRUE(request.authorization.isEmpty() || request.cookie.isEmpty());
        EXPECT_TRUE(request.host.startsWith("127.0.0.1:")) << request.host.constData();
    }
    EXPECT_FALSE(search.finds(elsewhere.requests().join('\n')));
    EXPECT_FALSE(elsewhere.requests().join('\n').toLower().contains("authorization"));
    EXPECT_FALSE(search.finds(world->log().join(u'\n').toUtf8()));
    EXPECT_GT(childrenSeen, 0);
    EXPECT_FALSE(search.finds(children));

    ASSERT_TRUE(world->waitUntil([this] { return screenSaver.count(u"UnInhibit"_s) == exports; }));
    ASSERT_TRUE(world->waitUntil([this] { return notifications.count(u"Notify"_s) > 0; }));
    ASSERT_TRUE(bus.caughtUp());
    EXPECT_TRUE(bus.heard().contains("Saving your Suno library"));
    EXPECT_TRUE(bus.heard().contains("Open folder"));
    EXPECT_FALSE(search.finds(bus.heard()));

    world->services.preferences.flush();
    int looked = 0;
    EXPECT_EQ(search.findIn(home, ProgramFolders::ofUser(u"orvane"_s).webProfile, looked), QStringList());
    EXPECT_GE(looked, 8 * 3) << "the exported files are among what was searched";
    EXPECT_TRUE(QFile::exists(ProgramFolders::ofUser(u"orvane"_s).preferences));
    EXPECT_TRUE(QFile::exists(home + u"/standard error"_s));
    const QByteArray said = CollectedLog::text();
    EXPECT_GT(said.count('\n'), 100) << "the categories are on";
    EXPECT_FALSE(search.finds(said));
}

} // namespace orvane::test
