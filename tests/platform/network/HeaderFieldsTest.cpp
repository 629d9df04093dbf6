#include "platform/network/HeaderFields.h"

#include <gmock/gmock.h>

namespace orvane {
namespace {

QList<HttpHeader> lengths(const QList<QByteArray>& values)
{
    QList<HttpHeader> headers;
    for (const QByteArray& value : values)
        headers.append({.name = "content-LENGTH", .value = value});
    return headers;
}

TEST(HeaderFields, anAnnouncedLengthIsAPlainNumber)
{
    EXPECT_EQ(contentLength({}), std::nullopt);
    EXPECT_EQ(contentLength(lengths({"0"})), 0);
    EXPECT_EQ(contentLength(lengths({"007"})), 7);
    EXPECT_EQ(contentLength(lengths({"9223372036854775807"})), 9223372036854775807LL);
    for (const QByteArray value : {"", "-1", "+1", "1.0", "0x1", "1 2", "9223372036854775808", "x", ","})
        EXPECT_THROW(contentLength(lengths({value})), HttpError) << value.constData();
}

TEST(HeaderFields, severalAnnouncementsMustAgree)
{
    EXPECT_EQ(contentLength(lengths({"5", "5"})), 5);
    EXPECT_EQ(contentLength(lengths({"5, 5", "05"})), 5);
    EXPECT_THROW(contentLength(lengths({"5", "6"})), HttpError);
    EXPECT_THROW(contentLength(lengths({"5, 6"})), HttpError);
    EXPECT_THROW(contentLength(lengths({"5", "x"})), HttpError);
}

TEST(HeaderFields, theFirstValueIsFoundWithoutCase)
{
    const QList<HttpHeader> headers = {{.name = "A", .value = "1"}, {.name = "a", .value = "2"}};
    EXPECT_EQ(firstValue(headers, "a"), "1");
    EXPECT_EQ(firstValue(headers, "b"), std::nullopt);
    EXPECT_THAT(listedValues(headers, "a"), testing::ElementsAre("1", "2"));
}

TEST(HeaderFields, oneCodingIsNamedAndSeveralAreRefused)
{
    EXPECT_EQ(contentCoding({}), "");
    EXPECT_EQ(contentCoding({{.name = "Content-Encoding", .value = "identity"}}), "");
    EXPECT_EQ(contentCoding({{.name = "Content-Encoding", .value = "GZip"}}), "gzip");
    EXPECT_THROW(contentCoding({{.name = "Content-Encoding", .value = "gzip, br"}}), HttpError);
}

TEST(HeaderFields, onlyWhatStaysOneLineIsSendable)
{
    EXPECT_TRUE(isSendable({.name = "X-Name", .value = "any (text) \xc3\xa9"}));
    EXPECT_TRUE(isSendable({.name = "X", .value = ""}));
    for (const QByteArray name : {"", "a b", "a:", "a\n", "a\x7f"})
        EXPECT_FALSE(isSendable({.name = name, .value = "x"})) << name.constData();
    for (const QByteArray& value : {QByteArray("a\rb"), QByteArray("a\nb"), QByteArray("a\0b", 3)})
        EXPECT_FALSE(isSendable({.name = "X", .value = value}));
}

} // namespace
} // namespace orvane
