#include "platform/desktop/TaskbarProgress.h"

#include "tests/platform/desktop/FakeService.h"
#include "tests/platform/desktop/FakeTaskBar.h"

#include <gmock/gmock.h>
#include <memory>

namespace orvane::test {

namespace {

using namespace Qt::Literals::StringLiterals;

using Update = FakeTaskBar::Update;

const QString program = u"application://example.orvane.Orvane.desktop"_s;

class TaskbarProgressTest : public testing::Test
{
protected:
    FakeTaskBar taskBar;
    std::unique_ptr<TaskbarProgress> progress =
        std::make_unique<TaskbarProgress>(testBus(), u"example.orvane.Orvane"_s);
};

TEST_F(TaskbarProgressTest, tellsTheShareUnderTheNameOfTheDesktopFileAndTakesItAway)
{
    progress->show(0.0);
    progress->show(0.25);
    progress->show(std::nullopt);
    EXPECT_EQ(taskBar.told(), (QList<Update>{{program, 0.0, true}, {program, 0.25, true}, {program, 0.0, false}}));
}

TEST_F(TaskbarProgressTest, isToldOnceForEachPerCent)
{
    for (int step = 0; step < 1000; ++step)
        progress->show(0.10 + step * 0.00002);
    EXPECT_EQ(taskBar.told(), (QList<Update>{{program, 0.10, true}, {program, 0.11, true}}));
}

TEST_F(TaskbarProgressTest, tellsNothingWhereNothingWasShown)
{
    progress->show(std::nullopt);
    progress.reset();
    EXPECT_EQ(taskBar.told(), QList<Update>());
}

TEST_F(TaskbarProgressTest, goesWithTheProgram)
{
    progress->show(1.0);
    progress.reset();
    EXPECT_EQ(taskBar.told(), (QList<Update>{{program, 1.0, true}, {program, 0.0, false}}));
}

TEST_F(TaskbarProgressTest, aShareOutsideOfItsRangeIsHeldAtItsEnds)
{
    progress->show(-0.5);
    progress->show(1.5);
    EXPECT_EQ(taskBar.told(), (QList<Update>{{program, 0.0, true}, {program, 1.0, true}}));
}

TEST(TaskbarProgressWithoutABus, isNoFailure)
{
    TaskbarProgress progress(unreachableBus(), u"example.orvane.Orvane"_s);
    progress.show(0.5);
    progress.show(std::nullopt);
    SUCCEED();
}

} // namespace
} // namespace orvane::test
