#include "platform/web/WebPopup.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace orvane {

TEST(WebPopup, anAddressShowsNothingThatPassesForAnotherHost)
{
    EXPECT_EQ(WebPopup::displayed(QUrl(u"https://accounts.example@evil.example/x"_s)), u"https://evil.example/x"_s);
    EXPECT_EQ(WebPopup::displayed(QUrl(u"https://аccounts.example/"_s)), u"https://xn--ccounts-1fg.example/"_s);
    EXPECT_EQ(WebPopup::displayed(QUrl(u"https://a.example/\u202Eb<b>"_s)), u"https://a.example/%E2%80%AEb%3Cb%3E"_s);
}

} // namespace orvane
