#include "main/Window/WindowTitle.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace orvane::test {
namespace {

TEST(WindowTitle, isTheProgramsNameWhileNothingGoes)
{
    EXPECT_EQ(windowTitle(u"Orvane"_s, std::nullopt), u"Orvane"_s);
}

TEST(WindowTitle, saysHowFarARunIs)
{
    EXPECT_EQ(windowTitle(u"Orvane"_s, 0.0), u"0% — Orvane"_s);
    EXPECT_EQ(windowTitle(u"Orvane"_s, 0.429), u"42% — Orvane"_s);
}

TEST(WindowTitle, neverSaysThatARunIsOverBeforeItIs)
{
    EXPECT_EQ(windowTitle(u"Orvane"_s, 1.0), u"99% — Orvane"_s);
    EXPECT_EQ(windowTitle(u"Orvane"_s, -3.0), u"0% — Orvane"_s);
}

} // namespace
} // namespace orvane::test
