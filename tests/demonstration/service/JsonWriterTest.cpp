#include "demonstration/service/JsonWriter.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

namespace orvane::demo {
namespace {

TEST(JsonWriter, separatesWhatItWrites)
{
    JsonWriter json;
    json.beginObject();
    json.key("a").number(1);
    json.key("b").beginArray();
    json.text(u"x");
    json.beginObject();
    json.endObject();
    json.null();
    json.endArray();
    json.key("c").boolean(false);
    json.key("d").number(23.4);
    json.endObject();
    EXPECT_EQ(json.bytes(), R"({"a":1,"b":["x",{},null],"c":false,"d":23.4})");
}

TEST(JsonWriter, everyCharacterComesBackFromAReader)
{
    QString every;
    for (int unit = 0; unit < 0xD800; ++unit)
        every += QChar(unit);
    every += QStringLiteral("\xD83D\xDC68");
    JsonWriter json;
    json.beginArray();
    json.text(every);
    json.endArray();
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(json.bytes(), &error);
    EXPECT_EQ(error.error, QJsonParseError::NoError);
    EXPECT_EQ(document.array().at(0).toString(), every);
}

TEST(JsonWriter, writesALoneSurrogateByItsNumber)
{
    JsonWriter json;
    json.text(QString(QChar(0xD83D)));
    EXPECT_EQ(json.bytes(), R"("\ud83d")");
}

} // namespace
} // namespace orvane::demo
