#include "platform/desktop/Reveal.h"

#include "tests/platform/desktop/FakeService.h"

#include <QTest>

#include <gmock/gmock.h>

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

class FakeFileManager : public FakeService
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.FileManager1")

public:
    FakeFileManager()
        : FakeService(u"org.freedesktop.FileManager1"_s, u"/org/freedesktop/FileManager1"_s)
    {
    }

public Q_SLOTS:

    void ShowItems(const QStringList& addresses, const QString& startup) { noteCall({addresses, startup}, {}); }
};

struct RevealFile : testing::Test
{
    QStringList opened;
    std::function<void(const QString&)> open = [this](const QString& folder) { opened.append(folder); };
};

TEST_F(RevealFile, showsTheFileInTheFileViewer)
{
    FakeFileManager service;
    revealFile(testBus(), u"/music/50% of #1 ü.mp3"_s, open);
    ASSERT_TRUE(QTest::qWaitFor([&] { return service.count(u"ShowItems"_s) == 1; }));
    EXPECT_EQ(service.last(u"ShowItems"_s),
              (QVariantList{QStringList{u"file:///music/50%25%20of%20%231%20%C3%BC.mp3"_s}, QString()}));
    settle();
    EXPECT_TRUE(opened.isEmpty());
}

TEST_F(RevealFile, opensTheFolderWhereNoFileViewerAnswers)
{
    revealFile(testBus(), u"/music/Song.mp3"_s, open);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !opened.isEmpty(); }));
    EXPECT_EQ(opened, QStringList{u"/music"_s});
}

TEST_F(RevealFile, opensTheFolderWhereTheFileViewerRefuses)
{
    FakeFileManager service;
    service.refuses = true;
    revealFile(testBus(), u"/music/Song.mp3"_s, open);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !opened.isEmpty(); }));
    EXPECT_EQ(opened, QStringList{u"/music"_s});
}

TEST_F(RevealFile, opensTheFolderWithoutABus)
{
    revealFile(unreachableBus(), u"/music/Song.mp3"_s, open);
    EXPECT_EQ(opened, QStringList{u"/music"_s});
}

} // namespace
} // namespace orvane::test

#include "RevealTest.moc"
