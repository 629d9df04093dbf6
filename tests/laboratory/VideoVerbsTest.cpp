#include "tests/laboratory/Lab.h"
#include "tests/platform/sound/Program.h"
#include "tests/platform/sound/SoundFiles.h"
#include "tests/support/TestFolder.h"

#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QJsonObject>

#include <gtest/gtest.h>

namespace orvane {
namespace {

using namespace Qt::Literals::StringLiterals;
using test::expectRefused;
using test::lab;
using test::TestFolder;

QString toneIn(const TestFolder& folder)
{
    const std::vector<float> tone = test::tones(44100, 1, 44100);
    return folder.write(u"tone.wav"_s, test::wav(test::floatBytes(tone), 44100, 1, 32, test::WavKind::Float));
}

TEST(SpectrumVerb, tellsTheBarsTheEnergyAndTheSpectrumOfAMoment)
{
    const TestFolder folder;
    const test::LabAnswer answer = lab({u"spectrum"_s, toneIn(folder), u"0.5"_s, u"--bars"_s, u"12"_s});
    ASSERT_EQ(answer.exitCode, 0) << answer.said.toStdString();
    EXPECT_EQ(answer.json[u"frame"_s].toInt(), 15);
    EXPECT_EQ(answer.json[u"bars"_s].toArray().size(), 12);
    const QJsonArray spectrum = answer.json[u"spectrum"_s].toArray();
    ASSERT_EQ(spectrum.size(), 512);
    // 220 Hz lies in bin 5.
    EXPECT_EQ(spectrum[5].toDouble(), 1.0);
    EXPECT_LT(spectrum[200].toDouble(), 0.5);
    EXPECT_GT(answer.json[u"energy"_s].toDouble(), 0.0);
}

TEST(FrameVerb, writesThePictureOfAMoment)
{
    const TestFolder folder;
    const QString picture = folder.path(u"frame.png"_s);
    const test::LabAnswer answer = lab({u"frame"_s, toneIn(folder), u"0.5"_s, picture, u"--aspect"_s, u"16:9"_s,
                                        u"--title"_s, u"Tone"_s, u"--no-watermark"_s, u"--no-artwork"_s});
    ASSERT_EQ(answer.exitCode, 0);
    EXPECT_EQ(answer.said, QString());
    const QImage image(picture);
    EXPECT_EQ(image.size(), QSize(1920, 1080));
    EXPECT_EQ(answer.json[u"width"_s].toInt(), 1920);
    EXPECT_EQ(answer.json[u"level"_s].toInt(-1), 0) << "one tone alone is little of the low end";
    // The title's letters are there, and no square behind them.
    bool isBright = false;
    for (int column = 800; column < 1120; ++column)
        isBright = isBright || qRed(image.pixel(column, 540)) > 200;
    EXPECT_TRUE(isBright);
}

TEST(RenderVerb, writesTheVideo)
{
    const TestFolder folder;
    const QString video = folder.path(u"video.mp4"_s);
    const test::LabAnswer answer =
        lab({u"render"_s, toneIn(folder), video, u"--aspect"_s, u"1:1"_s, u"--fps"_s, u"15"_s});
    ASSERT_EQ(answer.exitCode, 0);
    EXPECT_EQ(answer.said, QString());
    const test::Outcome told =
        test::run(u"ffprobe"_s, {u"-v"_s, u"error"_s, u"-select_streams"_s, u"v:0"_s, u"-show_entries"_s,
                                 u"stream=avg_frame_rate"_s, u"-of"_s, u"csv=p=0"_s, video});
    EXPECT_EQ(told.output, "15/1\n");
    EXPECT_EQ(answer.json[u"bytes"_s].toInteger(), QFile(video).size());
    EXPECT_EQ(answer.json[u"progress"_s].toArray(), (QJsonArray{1.0, 1.0}));
}

TEST(VideoVerbs, refuseWhatTheyDoNotKnowInOneSentence)
{
    const TestFolder folder;
    const QString tone = toneIn(folder);
    const QString video = folder.path(u"video.mp4"_s);
    expectRefused({u"render"_s, tone, video, u"--aspect"_s, u"4:3"_s}, u"--aspect takes 9:16, 1:1 or 16:9, not 4:3."_s);
    expectRefused({u"render"_s, tone, video, u"--fps"_s, u"0"_s}, u"--fps takes 1 to 120."_s);
    expectRefused({u"render"_s, folder.path(u"gone.mp3"_s), video}, u"Could not read gone.mp3."_s);
    expectRefused({u"render"_s, tone, folder.path(u"no/video.mp4"_s)},
                  u"The video could not be written: No such file or directory"_s);
    expectRefused({u"spectrum"_s, tone, u"soon"_s}, u"soon is not a time in seconds."_s);
    EXPECT_FALSE(QFile::exists(video));
}

} // namespace
} // namespace orvane
