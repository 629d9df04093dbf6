#include "main/App/AppInfo.h"

#include <gmock/gmock.h>

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

TEST(AppInfo, putsALetterInFrontOfTheRelease)
{
    EXPECT_EQ(AppInfo::version(u"1.2"_s), u"v1.2"_s);
}

TEST(AppInfo, callsABuildWithoutAReleaseDev)
{
    EXPECT_EQ(AppInfo::version(QString()), u"dev"_s);
}

TEST(AppInfo, tellsTheReleaseThatThisBuildWasConfiguredWith)
{
    EXPECT_EQ(AppInfo::version(), AppInfo::version(QString::fromUtf16(RELEASE_OF_THIS_BUILD)));
}

TEST(AppInfo, namesTheSiteThatThisBuildWasConfiguredWith)
{
    EXPECT_EQ(AppInfo::siteName(), QString::fromUtf16(DOMAIN_OF_THIS_BUILD));
}

} // namespace
} // namespace orvane::test
