#include "tests/platform/network/Fetch.h"
#include "tests/support/ScriptedServer.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <csignal>
#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orvane {
namespace {

using namespace Qt::Literals::StringLiterals;
using namespace test;

class Download : public testing::Test
{
protected:
    QString path() const { return folder_.filePath(u"track.mp3.part"_s); }

    QByteArray nativePath() const { return QFile::encodeName(path()); }

    void put(const QByteArray& bytes) const
    {
        QFile file(path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(bytes), bytes.size());
    }

    QByteArray content() const
    {
        QFile file(path());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("absent");
    }

    Outcome run(std::stop_token stop = {}) { return download(client_, requestFor(server_.url()), path(), stop); }

    QTemporaryDir folder_;
    ScriptedServer server_;
    HttpClient client_;
};

TEST_F(Download, aWholeBodyIsInTheFileAndNotInMemory)
{
    server_.play({send(answer("200 OK", "", "the file"))});
    const Outcome outcome = run();
    EXPECT_EQ(outcome.response.status, 200);
    EXPECT_EQ(outcome.response.size, 8);
    EXPECT_EQ(outcome.response.expectedContentLength, 8);
    EXPECT_TRUE(outcome.response.body.isEmpty());
    EXPECT_EQ(content(), "the file");
    EXPECT_TRUE(server_.requests().first().contains("\r\nAccept-Encoding: identity\r\n"));
}

TEST_F(Download, aBodyMuchLargerThanAllBuffersArrivesByteForByte)
{
    QByteArray block;
    for (int number = 0; block.size() < 1'000'000; ++number)
        block += QByteArray::number(number * 7919LL);
    constexpr int times = 20;
    const QByteArray length = QByteArray::number(block.size() * times);
    server_.play({send("HTTP/1.1 200 OK\r\nContent-Length: " + length + "\r\n\r\n"), send(block, times)});
    EXPECT_EQ(run().response.size, block.size() * times);
    EXPECT_TRUE(content() == block.repeated(times));
}

TEST_F(Download, anOlderFileIsOverwrittenToItsEnd)
{
    put("something much longer than the answer");
    server_.play({send(answer("200 OK", "", "short"))});
    run();
    EXPECT_EQ(content(), "short");
}

TEST_F(Download, anOlderFileIsGoneAfterAnotherStatusAndAfterAnError)
{
    for (const Script& script : {Script{send(answer("404 Not Found", "", "no"))}, Script{}}) {
        put("older");
        server_.clear();
        server_.play(script);
        run();
        EXPECT_EQ(content(), "absent");
    }
}

TEST_F(Download, aFileWrittenAfterAFailureIsNotRemovedByIt)
{
    server_.play({send(answer("404 Not Found", "", "no"))});
    server_.play({send(answer("200 OK", "", "the file"))});
    for (int round = 0; round < 50; ++round) {
        server_.clear();
        server_.play({send(answer("404 Not Found", "", "no"))});
        server_.play({send(answer("200 OK", "", "the file"))});
        EXPECT_EQ(run().response.status, 404);
        EXPECT_EQ(run().response.status, 200);
        ASSERT_EQ(content(), "the file");
    }
}

TEST_F(Download, anEmptyBodyIsAnEmptyFile)
{
    server_.play({send(answer("200 OK", "", ""))});
    EXPECT_EQ(run().response.size, 0);
    EXPECT_EQ(content(), "");
}

TEST_F(Download, theBodyOfAnotherStatusIsNotWaitedFor)
{
    server_.play({send(answerUnmeasured("503 Unavailable", "Content-Length: 99\r\n", "")), hold()});
    EXPECT_EQ(run().response.status, 503);
    EXPECT_TRUE(server_.waitForLeaving());
}

TEST_F(Download, aLinkIsNotFollowedAndStays)
{
    const QString precious = folder_.filePath(u"precious"_s);
    ASSERT_EQ(::symlink(QFile::encodeName(precious).constData(), nativePath().constData()), 0);
    server_.play({send(answer("200 OK", "", "the file"))});
    const Outcome outcome = run();
    EXPECT_EQ(outcome.code(), HttpError::Code::Storage);
    EXPECT_THAT(outcome.sentence().toStdString(), testing::StartsWith("track.mp3.part: "));
    EXPECT_FALSE(QFile::exists(precious));
    struct stat there = {};
    EXPECT_EQ(::lstat(nativePath().constData(), &there), 0);
}

TEST_F(Download, aPipeIsNeitherWaitedForNorRemoved)
{
    ASSERT_EQ(::mkfifo(nativePath().constData(), 0600), 0);
    server_.play({send(answer("200 OK", "", "the file"))});
    EXPECT_EQ(run().code(), HttpError::Code::Storage);
    EXPECT_TRUE(QFile::exists(path()));
}

TEST_F(Download, aFolderIsLeftAlone)
{
    ASSERT_TRUE(QDir().mkpath(path()));
    server_.play({send(answer("200 OK", "", "the file"))});
    const Outcome outcome = run();
    EXPECT_EQ(outcome.code(), HttpError::Code::Storage);
    EXPECT_EQ(outcome.sentence(), u"track.mp3.part: Is a directory");
    EXPECT_TRUE(QDir(path()).exists());
}

TEST_F(Download, aMissingFolderIsNamedByTheSystem)
{
    server_.play({send(answer("200 OK", "", "the file"))});
    const QString nowhere = folder_.filePath(u"gone/track.mp3"_s);
    const Outcome outcome = download(client_, requestFor(server_.url()), nowhere);
    EXPECT_EQ(outcome.sentence(), u"track.mp3: No such file or directory");
}

TEST_F(Download, aNulInANameOpensNoShorterName)
{
    server_.play({send(answer("200 OK", "", "the file"))});
    const Outcome outcome = download(client_, requestFor(server_.url()), path() + QChar::Null + u"x"_s);
    EXPECT_EQ(outcome.code(), HttpError::Code::Storage);
    EXPECT_TRUE(QDir(folder_.path()).isEmpty());
}

/// Files of this process end here while it lives: a disk that is full.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes)
        : handler_(std::signal(SIGXFSZ, SIG_IGN))
    {
        ::getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit small = {.rlim_cur = bytes, .rlim_max = before_.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &small);
    }

    ~FileSizeLimit()
    {
        ::setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, handler_);
    }

    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    void (*handler_)(int);
    rlimit before_ = {};
};

TEST_F(Download, aFileThatCannotGrowIsRemovedAndNamed)
{
    server_.play({send(answer("200 OK", "", QByteArray(200'000, 'x')))});
    const FileSizeLimit limit(100'000);
    const Outcome outcome = run();
    EXPECT_EQ(outcome.code(), HttpError::Code::Storage);
    EXPECT_EQ(outcome.sentence(), u"track.mp3.part: File too large");
    EXPECT_EQ(content(), "absent");
}

TEST_F(Download, aStopInTheMiddleRemovesTheFile)
{
    const QByteArray start = answerUnmeasured("200 OK", "Content-Length: 500000\r\n", QByteArray(300'000, 'x'));
    server_.play({send(start), gate()});
    std::stop_source stop;
    const QCoro::Task<Outcome> running =
        outcomeOf(client_.download(requestFor(server_.url()), path(), stop.get_token()));
    ASSERT_TRUE(server_.waitForGate());
    stop.request_stop();
    EXPECT_EQ(QCoro::waitFor(running).code(), HttpError::Code::Cancelled);
    EXPECT_EQ(content(), "absent");
}

TEST_F(Download, aStopAfterTheEndChangesNothing)
{
    server_.play({send(answer("200 OK", "", "the file"))});
    std::stop_source stop;
    EXPECT_EQ(run(stop.get_token()).response.status, 200);
    stop.request_stop();
    EXPECT_EQ(content(), "the file");
}

} // namespace
} // namespace orvane
