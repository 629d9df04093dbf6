#include "suno/FeedPage.h"

#include <gmock/gmock.h>

namespace orvane {
namespace {

using namespace Qt::Literals::StringLiterals;

TEST(FeedPageTest, recordsThatCannotBeReadStillCount)
{
    const FeedPage page = readFeedPage(R"({"clips": [{"id": "a"}, {"id": 3}, {}]})");
    EXPECT_EQ(page.records, 3);
    EXPECT_EQ(page.clips, (QList{Clip{.id = u"a"_s, .title = u"Untitled"_s}}));
    EXPECT_TRUE(page.error.isEmpty());
}

TEST(FeedPageTest, noListIsAPageWithoutRecords)
{
    for (const char* const body : {"{}", "[]", "[1]", R"({"clips": {}})", R"({"clips": [[]]})", R"({"data": []})"})
        EXPECT_EQ(readFeedPage(body), FeedPage()) << body;
}

TEST(FeedPageTest, whatIsNoJsonIsAnError)
{
    for (const char* const body : {"", "null", "17", "{", "<html></html>"})
        EXPECT_FALSE(readFeedPage(body).error.isEmpty()) << body;
}

} // namespace
} // namespace orvane
