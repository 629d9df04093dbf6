#include "suno/Credential.h"

#include <gmock/gmock.h>

namespace orvane {
namespace {

using namespace Qt::Literals::StringLiterals;

HttpHeader authorization(const QByteArray& value)
{
    return {.name = "Authorization", .value = value};
}

HttpHeader cookie(const QByteArray& value)
{
    return {.name = "Cookie", .value = value};
}

TEST(Credential, aBareTokenIsSentAsABearer)
{
    EXPECT_EQ(credentialHeader(u"abc.def"_s), authorization("Bearer abc.def"));
}

TEST(Credential, aTokenThatNamesItsSchemeStaysAsItStands)
{
    EXPECT_EQ(credentialHeader(u"Bearer abc"_s), authorization("Bearer abc"));
    EXPECT_EQ(credentialHeader(u"bearer abc"_s), authorization("Bearer bearer abc"));
    EXPECT_EQ(credentialHeader(u"Bearerabc"_s), authorization("Bearer Bearerabc"));
}

TEST(Credential, aPastedCookieLineIsSentAsACookie)
{
    EXPECT_EQ(credentialHeader(u"a=1; __session=x; b=2"_s), cookie("a=1; __session=x; b=2"));
    EXPECT_EQ(credentialHeader(u"__client=y"_s), cookie("__client=y"));
    EXPECT_EQ(credentialHeader(u"Bearer __session=x"_s), cookie("Bearer __session=x"));
    EXPECT_EQ(credentialHeader(u"session=x"_s), authorization("Bearer session=x"));
}

TEST(Credential, aTokenWithSurroundingQuotesAndATrailingNewlineIsTrimmed)
{
    EXPECT_EQ(credentialHeader(u" \t\"'abc'\"\n"_s), authorization("Bearer abc"));
    EXPECT_EQ(credentialHeader(u"\"Bearer abc\"\n"_s), authorization("Bearer abc"));
}

TEST(Credential, anEmptyTokenAddsNothing)
{
    EXPECT_EQ(credentialHeader(QString()), std::nullopt);
    EXPECT_EQ(credentialHeader(u" \"\"\n"_s), std::nullopt);
}

TEST(Credential, aValueThatWouldEndTheHeaderEarlyAddsNothing)
{
    EXPECT_EQ(credentialHeader(u"abc\r\nHost: elsewhere"_s), std::nullopt);
    EXPECT_EQ(credentialHeader(u"abc\0def"_s), std::nullopt);
}

} // namespace
} // namespace orvane
