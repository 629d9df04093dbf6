#include "suno/Clip.h"

#include "suno/Asset.h"

#include <QJsonDocument>

#include <gmock/gmock.h>

namespace orvane {
namespace {

using namespace Qt::Literals::StringLiterals;

std::optional<Clip> read(const char* json)
{
    const QJsonDocument document = QJsonDocument::fromJson(json);
    EXPECT_TRUE(document.isObject()) << json;
    return Clip::fromJson(document.object());
}

TEST(AssetTest, theCasesComeInTheOrderInWhichTheyAreSaved)
{
    QStringList names;
    for (const Asset asset : allAssets)
        names.append(rawValue(asset));
    EXPECT_EQ(names, (QStringList{u"audio"_s, u"lyrics"_s, u"lrc"_s, u"artwork"_s}));
}

TEST(ClipTest, aWholeRecordIsReadFieldByField)
{
    const auto clip = read(R"({"id": "abc", "title": "Song", "audio_url": "https://a", "image_url": "https://small",
        "image_large_url": "https://large", "prompt": "outer",
        "metadata": {"prompt": "inner", "tags": "house", "duration": 61.5}})");
    EXPECT_EQ(clip, (Clip{.id = u"abc"_s,
                          .title = u"Song"_s,
                          .audioURL = u"https://a"_s,
                          .imageURL = u"https://large"_s,
                          .lyrics = u"inner"_s,
                          .tags = u"house"_s,
                          .durationSeconds = 61.5}));
}

TEST(ClipTest, aClipWithoutIdOrWithAnIdThatIsANumberIsDropped)
{
    EXPECT_EQ(read(R"({"title": "Song"})"), std::nullopt);
    EXPECT_EQ(read(R"({"id": 7, "title": "Song"})"), std::nullopt);
    EXPECT_EQ(read(R"({"id": null})"), std::nullopt);
    EXPECT_EQ(read(R"({"id": ""})"), std::nullopt);
}

TEST(ClipTest, noOtherKeyCanMakeAClipFail)
{
    const auto clip = read(R"({"id": "a", "title": 1, "audio_url": 2, "image_url": [], "image_large_url": {},
        "prompt": 3, "metadata": [4]})");
    EXPECT_EQ(clip, (Clip{.id = u"a"_s, .title = u"Untitled"_s}));
}

TEST(ClipTest, aTitleThatIsNullOrEmptyIsUntitled)
{
    EXPECT_EQ(read(R"({"id": "a", "title": null})")->title, u"Untitled"_s);
    EXPECT_EQ(read(R"({"id": "a", "title": ""})")->title, u"Untitled"_s);
    EXPECT_EQ(read(R"({"id": "a"})")->title, u"Untitled"_s);
    EXPECT_EQ(read(R"({"id": "a", "title": " "})")->title, u" "_s);
}

TEST(ClipTest, metadataNullKeepsTheClip)
{
    const auto clip = read(R"({"id": "a", "title": "T", "prompt": "la la", "tags": "outer", "duration": 5,
        "metadata": null})");
    EXPECT_EQ(clip, (Clip{.id = u"a"_s, .title = u"T"_s, .lyrics = u"la la"_s, .tags = {}, .durationSeconds = 180.0}));
}

TEST(ClipTest, anEmptyAudioAddressStaysAnEmptyString)
{
    EXPECT_EQ(read(R"({"id": "a", "audio_url": ""})")->audioURL, QString());
    EXPECT_EQ(read(R"({"id": "a", "audio_url": null})")->audioURL, std::nullopt);
}

TEST(ClipTest, theLargeImageCountsWhenItIsTextEvenAnEmptyOne)
{
    EXPECT_EQ(read(R"({"id": "a", "image_large_url": "", "image_url": "small"})")->imageURL, QString());
    EXPECT_EQ(read(R"({"id": "a", "image_large_url": 1, "image_url": "small"})")->imageURL, u"small"_s);
    EXPECT_EQ(read(R"({"id": "a", "image_url": "small"})")->imageURL, u"small"_s);
    EXPECT_EQ(read(R"({"id": "a", "image_large_url": null, "image_url": 1})")->imageURL, std::nullopt);
}

TEST(ClipTest, anEmptyPromptInTheMetadataHidesTheOneOnTop)
{
    EXPECT_EQ(read(R"({"id": "a", "prompt": "top", "metadata": {"prompt": ""}})")->lyrics, QString());
    EXPECT_EQ(read(R"({"id": "a", "prompt": "top", "metadata": {"prompt": 1}})")->lyrics, u"top"_s);
    EXPECT_EQ(read(R"({"id": "a", "metadata": {}})")->lyrics, QString());
}

TEST(ClipTest, aDurationOfZeroStaysZero)
{
    EXPECT_EQ(read(R"({"id": "a", "metadata": {"duration": 0}})")->durationSeconds, 0.0);
    EXPECT_EQ(read(R"({"id": "a", "metadata": {"duration": 200}})")->durationSeconds, 200.0);
}

TEST(ClipTest, aDurationGivenAsTextCountsAsMissing)
{
    EXPECT_EQ(read(R"({"id": "a", "metadata": {"duration": "12"}})")->durationSeconds, 180.0);
    EXPECT_EQ(read(R"({"id": "a", "metadata": {"duration": true}})")->durationSeconds, 180.0);
    EXPECT_EQ(read(R"({"id": "a", "metadata": {"duration": null}})")->durationSeconds, 180.0);
    EXPECT_EQ(read(R"({"id": "a", "duration": 12})")->durationSeconds, 180.0);
}

} // namespace
} // namespace orvane
