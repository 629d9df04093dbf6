#include "demonstration/service/Tokens.h"

#include "demonstration/service/SignIn.h"

#include <gtest/gtest.h>

namespace orvane::demo {
namespace {

using namespace std::chrono_literals;

class TokensTest : public testing::Test
{
protected:
    std::chrono::milliseconds now{123'456};
    Tokens tokens{[this] { return now; }};
};

TEST_F(TokensTest, rotateWithTheirLifetime)
{
    const QByteArray first = tokens.current();
    now += 4999ms;
    EXPECT_EQ(tokens.current(), first);
    now += 1ms;
    EXPECT_NE(tokens.current(), first);
}

TEST_F(TokensTest, areGoodForAMinuteBehindTheirPeriod)
{
    const QByteArray first = tokens.current();
    now += 64'999ms;
    EXPECT_TRUE(tokens.isValid(first));
    now += 1ms;
    EXPECT_FALSE(tokens.isValid(first));
    EXPECT_TRUE(tokens.isValid(tokens.current()));
}

TEST_F(TokensTest, longPeriodsAreGoodForOneMore)
{
    tokens.setLifetime(1h);
    const QByteArray first = tokens.current();
    now += 2h - 1ms;
    EXPECT_TRUE(tokens.isValid(first));
    now += 1ms;
    EXPECT_FALSE(tokens.isValid(first));
}

TEST_F(TokensTest, aTokenCannotBeMadeFromAnother)
{
    const QByteArray first = tokens.current();
    EXPECT_FALSE(tokens.isValid(first.chopped(1)));
    EXPECT_FALSE(tokens.isValid(QByteArray(first).replace("-0-", "-1-")));
    EXPECT_FALSE(tokens.isValid("stand-in-0-"));
}

TEST_F(TokensTest, aTokenOfTheFutureIsNotYetGood)
{
    now += 5s;
    const QByteArray later = tokens.current();
    now -= 5s;
    EXPECT_FALSE(tokens.isValid(later));
}

TEST_F(TokensTest, aNewLifetimeKeepsThePresentToken)
{
    now += 12s;
    const QByteArray present = tokens.current();
    tokens.setLifetime(1min);
    EXPECT_EQ(tokens.current(), present);
    now += 59'999ms;
    EXPECT_EQ(tokens.current(), present);
    now += 1ms;
    EXPECT_NE(tokens.current(), present);
    EXPECT_TRUE(tokens.isValid(present));
}

TEST_F(TokensTest, allAreWorthlessWhenTheyHaveExpired)
{
    const QByteArray first = tokens.current();
    tokens.expire();
    EXPECT_FALSE(tokens.isValid(first));
    EXPECT_TRUE(tokens.isValid(tokens.current()));
    EXPECT_FALSE(tokens.isValid({}));
}

TEST_F(TokensTest, anotherServicesTokenIsWorthless)
{
    EXPECT_FALSE(tokens.isValid(Tokens([this] { return now; }).current()));
}

TEST(SignIn, aVisitorIsKnownByASeal)
{
    const QByteArray visitor = SignIn::freshVisitor();
    EXPECT_TRUE(SignIn::isVisitor(visitor));
    EXPECT_NE(SignIn::freshVisitor(), visitor);
    EXPECT_FALSE(SignIn::isVisitor({}));
    EXPECT_FALSE(SignIn::isVisitor("yes"));
    EXPECT_FALSE(SignIn::isVisitor('x' + visitor));
    EXPECT_FALSE(SignIn::isVisitor(visitor + 'x'));
}

} // namespace
} // namespace orvane::demo
