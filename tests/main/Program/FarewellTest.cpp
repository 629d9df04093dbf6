#include "main/Program/Program.h"
#include "platform/desktop/SoleInstance.h"
#include "tests/support/TestFolder.h"

#include <gtest/gtest.h>

namespace orvane::test {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

TEST(Farewell, theFirstStartSaysNone)
{
    const TestFolder folder;
    SoleInstance first(folder.path(u"orvane/web"_s));
    EXPECT_EQ(farewellUnlessFirst(first, 0ms), std::nullopt);
}

TEST(Farewell, aStartWhoseCallIsNotAnsweredSaysWhatToDo)
{
    const TestFolder folder;
    SoleInstance first(folder.path(u"orvane/web"_s));
    SoleInstance second(folder.path(u"orvane/web"_s));
    ASSERT_EQ(farewellUnlessFirst(first, 0ms), std::nullopt);
    const auto farewell = farewellUnlessFirst(second, 0ms);
    ASSERT_TRUE(farewell);
    EXPECT_EQ(farewell->sentence,
              u"Orvane is already running but does not answer; end it first, then start it again."_s);
    EXPECT_TRUE(farewell->isUnanswered);
}

} // namespace orvane::test
