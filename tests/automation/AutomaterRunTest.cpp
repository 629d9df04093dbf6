#include "tests/automation/AutomationFixture.h"

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

class AutomaterRunTest : public AutomationFixture
{
};

TEST_F(AutomaterRunTest, aWholeRunReadsDownloadsRenamesTagsAndMasters)
{
    runToTheEnd();
    EXPECT_TRUE(summaries.value(0).isSuccess());
    EXPECT_EQ(logged().last(), u"success: Finished — 5 done, 1 switched off."_s);
    for (const demo::Track& track : service.tracks()) {
        EXPECT_TRUE(files().contains(track.title + u".mp3"_s)) << track.title.toStdString();
        EXPECT_TRUE(files(u"Mastered"_s).contains(track.title + u".wav"_s)) << track.title.toStdString();
    }
}

} // namespace
} // namespace orvane::test
