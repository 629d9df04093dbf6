#include "demonstration/service/FaultScript.h"

#include <gtest/gtest.h>

namespace orvane::demo {
namespace {

using namespace Qt::Literals::StringLiterals;

int statusFor(FaultScript& script, const QByteArray& target)
{
    const std::optional<Fault> fault = script.take(target);
    return fault ? fault->status : 200;
}

TEST(FaultScript, faultsApplyInTheOrderInWhichTheyWereScripted)
{
    FaultScript script;
    script.add({.status = 500});
    script.add({.times = 2, .status = 503});
    EXPECT_EQ(statusFor(script, "/a"), 500);
    EXPECT_EQ(statusFor(script, "/a"), 503);
    EXPECT_EQ(statusFor(script, "/b"), 503);
    EXPECT_EQ(statusFor(script, "/a"), 200);
}

TEST(FaultScript, aFaultThatLetsARequestPassDecidesAboutIt)
{
    FaultScript script;
    script.add({.where = u"/a"_s, .after = 2, .status = 500});
    script.add({.status = 503});
    EXPECT_EQ(statusFor(script, "/a"), 200);
    EXPECT_EQ(statusFor(script, "/b"), 503);
    EXPECT_EQ(statusFor(script, "/a"), 200);
    EXPECT_EQ(statusFor(script, "/a"), 500);
}

TEST(FaultScript, findsItsTextInPathAndQuery)
{
    FaultScript script;
    script.add({.where = u"page=2"_s, .times = 9, .status = 500});
    EXPECT_EQ(statusFor(script, "/feed?page=1"), 200);
    EXPECT_EQ(statusFor(script, "/feed?page=2"), 500);
}

TEST(FaultScript, loopsHaveNoEndBeforeTheyAreCleared)
{
    FaultScript script;
    script.add({.kind = Fault::Kind::redirectLoop});
    for (int round = 0; round < 100; ++round)
        EXPECT_TRUE(script.take("/a"));
    script.clear();
    EXPECT_FALSE(script.take("/a"));
}

} // namespace
} // namespace orvane::demo
