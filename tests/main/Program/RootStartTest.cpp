#include <QProcess>
#include <QProcessEnvironment>

#include <gtest/gtest.h>
#include <unistd.h>

namespace orvane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// The command that starts the program as root; an ordinary user is root in a user namespace of his own.
QStringList commandAsRoot()
{
    const QString program = QStringLiteral(ORVANE_PROGRAM);
    if (geteuid() == 0)
        return {program};
    return {u"unshare"_s, u"--map-root-user"_s, program};
}

struct Start
{
    int exitCode = 0;
    QByteArray out;
    QByteArray error;
};

Start startAsRoot(const QProcessEnvironment& environment)
{
    const QStringList command = commandAsRoot();
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(command.first(), command.sliced(1));
    if (!process.waitForFinished(60'000)) {
        process.kill();
        process.waitForFinished();
        return {.exitCode = -1, .out = {}, .error = "The program goes on."};
    }
    return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
}

} // namespace

TEST(RootStart, rootIsTurnedAwayWithOneLineOnStandardError)
{
    const Start start = startAsRoot(QProcessEnvironment::systemEnvironment());
    EXPECT_EQ(start.exitCode, 1) << start.error.constData();
    EXPECT_EQ(start.out, "");
    EXPECT_EQ(start.error, "Orvane does not run as root, because the sandbox that web pages are kept in cannot protect "
                           "root; start it as an ordinary user.\n");
}

TEST(RootStart, noEnvironmentVariableLetsRootIn)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"QTWEBENGINE_DISABLE_SANDBOX"_s, u"1"_s);
    environment.insert(u"QTWEBENGINE_CHROMIUM_FLAGS"_s, u"--no-sandbox"_s);
    const Start start = startAsRoot(environment);
    EXPECT_EQ(start.exitCode, 1) << start.error.constData();
    EXPECT_EQ(start.error.count('\n'), 1) << start.error.constData();
}

} // namespace orvane
