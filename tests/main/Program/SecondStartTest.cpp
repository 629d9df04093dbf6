#include "tests/support/TestFolder.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTest>

#include <gmock/gmock.h>
#include <memory>
#include <unistd.h>

/// The built program, started more than once by one user.

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

const QByteArray farewell = "Orvane is already running; its window has been brought to the front.\n";

class SecondStartTest : public testing::Test
{
protected:
    SecondStartTest()
    {
        for (const QString& name : {u"home"_s, u"runtime"_s, u"home/Downloads"_s}) {
            const QString path = folder.path(name);
            QDir().mkpath(path);
            QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
            giveAway(path);
        }
    }

    ~SecondStartTest() override
    {
        for (const auto& process : processes) {
            process->kill();
            process->waitForFinished();
        }
    }

    /// To the user that the program runs as.
    static void giveAway(const QString& path)
    {
        constexpr uid_t nobody = 65534;
        const bool isGiven = geteuid() != 0 || ::chown(QFile::encodeName(path).constData(), nobody, nobody) == 0;
        EXPECT_TRUE(isGiven) << qPrintable(path);
    }

    QProcessEnvironment environment() const
    {
        QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
        for (const QString& name : {u"XDG_CONFIG_HOME"_s, u"XDG_DATA_HOME"_s, u"XDG_CACHE_HOME"_s})
            variables.remove(name);
        variables.insert(u"HOME"_s, folder.path(u"home"_s));
        variables.insert(u"XDG_RUNTIME_DIR"_s, folder.path(u"runtime"_s));
        // No page of the outside world is asked for.
        variables.insert(u"QTWEBENGINE_CHROMIUM_FLAGS"_s, u"--disable-gpu --host-resolver-rules=\"MAP * ~NOTFOUND\""_s);
        variables.insert(u"QT_QUICK_BACKEND"_s, u"software"_s);
        return variables;
    }

    QProcess& start()
    {
        processes.push_back(std::make_unique<QProcess>());
        QProcess& process = *processes.back();
        process.setProcessEnvironment(environment());
        process.setChildProcessModifier(becomeUnprivileged);
        process.start(QStringLiteral(ORVANE_PROGRAM), QStringList());
        EXPECT_TRUE(process.waitForStarted());
        return process;
    }

    static bool hasEnded(const QProcess& process) { return process.state() == QProcess::NotRunning; }

    static bool ends(const QProcess& process)
    {
        return QTest::qWaitFor([&process] { return hasEnded(process); }, 60'000);
    }

    static void expectFarewell(QProcess& process)
    {
        EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(process.exitCode(), 0);
        EXPECT_THAT(process.readAllStandardError().toStdString(), testing::EndsWith(farewell.toStdString()));
    }

    QString lock() const { return folder.path(u"home/.local/share/orvane/web.lock"_s); }

    TestFolder folder;
    std::vector<std::unique_ptr<QProcess>> processes;
};

TEST_F(SecondStartTest, ofTwoStartsAtOnceOneGoesOnAndTheOtherEndsWithASentence)
{
    QProcess& one = start();
    QProcess& other = start();
    ASSERT_TRUE(QTest::qWaitFor([&] { return hasEnded(one) || hasEnded(other); }, 60'000));
    QProcess& second = hasEnded(one) ? one : other;
    QProcess& first = hasEnded(one) ? other : one;
    expectFarewell(second);

    QProcess& third = start();
    ASSERT_TRUE(ends(third));
    expectFarewell(third);
    EXPECT_FALSE(hasEnded(first)) << first.readAllStandardError().constData();
}

TEST_F(SecondStartTest, aKilledProgramStartsAgain)
{
    QProcess& killed = start();
    QProcess& called = start();
    ASSERT_TRUE(QTest::qWaitFor([&] { return hasEnded(killed) || hasEnded(called); }, 60'000));
    QProcess& first = hasEnded(killed) ? called : killed;
    first.kill();
    ASSERT_TRUE(ends(first));
    EXPECT_TRUE(QFile::exists(lock())) << "a killed program takes nothing away";

    QProcess& again = start();
    QProcess& later = start();
    ASSERT_TRUE(QTest::qWaitFor([&] { return hasEnded(again) || hasEnded(later); }, 60'000));
    expectFarewell(hasEnded(again) ? again : later);
    EXPECT_NE(hasEnded(again), hasEnded(later));
}

} // namespace
} // namespace orvane::test
