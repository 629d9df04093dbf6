#include "tests/laboratory/Lab.h"
#include "tests/support/TestFolder.h"
#include "trackfiles/tags/Tags.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QUrl>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace orvane {
namespace {

using namespace Qt::Literals::StringLiterals;
using test::expectRefused;
using test::lab;
using test::TestFolder;

const QByteArray audio("\xFF\xFB the audio");

TEST(TagVerb, writesEveryFieldThatItIsGiven)
{
    const TestFolder folder;
    const QString song = folder.write(u"song.mp3"_s, audio);
    const QString lyrics = folder.write(u"words.txt"_s, "één\ntwo");
    const QString cover = folder.write(u"cover.PNG"_s, "picture");
    const test::LabAnswer answer =
        lab({u"tag"_s, song, u"--title"_s, u"夜"_s, u"--artist"_s, u"A"_s, u"--album"_s, u"B"_s, u"--genre"_s, u"C"_s,
             u"--track"_s, u"3"_s, u"--total"_s, u"12"_s, u"--artwork"_s, cover, u"--lyrics-file"_s, lyrics});
    const QByteArray expected = Tags::build({.title = u"夜"_s,
                                             .artist = u"A"_s,
                                             .album = u"B"_s,
                                             .genre = u"C"_s,
                                             .trackNumber = 3,
                                             .trackTotal = 12,
                                             .lyrics = u"één\ntwo"_s,
                                             .artwork = "picture",
                                             .artworkMime = u"image/png"_s});
    EXPECT_EQ(folder.read(u"song.mp3"_s), expected + audio);
    EXPECT_EQ(answer.exitCode, 0) << answer.said.toStdString();
    EXPECT_EQ(answer.json.object(),
              (QJsonObject{
                  {u"path"_s, song}, {u"tagBytes"_s, expected.size()}, {u"bytes"_s, expected.size() + audio.size()}}));
}

TEST(TagVerb, whatIsNotGivenStaysAtItsDefault)
{
    const TestFolder folder;
    const QString song = folder.write(u"song.mp3"_s, audio);
    const QString cover = folder.write(u"cover.webp"_s, "picture");
    EXPECT_EQ(lab({u"tag"_s, song, u"--title"_s, u"t"_s, u"--artwork"_s, cover}).exitCode, 0);
    EXPECT_EQ(folder.read(u"song.mp3"_s), Tags::build({.title = u"t"_s, .artwork = "picture"}) + audio);
}

TEST(TagVerb, aFailureIsASentenceAndTheFileStays)
{
    const TestFolder folder;
    const QString song = folder.write(u"song.mp3"_s, "RIFF");
    expectRefused({u"tag"_s, song, u"--title"_s, u"t"_s},
                  u"song.mp3 does not look like an MP3, so it was left alone."_s);
    EXPECT_EQ(folder.read(u"song.mp3"_s), "RIFF");
    expectRefused({u"tag"_s, folder.path(u"gone.mp3"_s), u"--title"_s, u"t"_s},
                  u"gone.mp3: No such file or directory"_s);
    expectRefused({u"tag"_s, song}, u"--title is missing."_s);
    expectRefused({u"tag"_s, song, u"--title"_s, u"t"_s, u"--track"_s, u"x"_s},
                  u"--track takes a whole number, not x."_s);
}

TEST(ScanVerb, describesFoldersAndTracksByTheirFields)
{
    const TestFolder folder;
    folder.write(u"Inner one/a.mp3"_s, "x");
    folder.write(u"Song.mp3"_s, "12345");
    const timespec times[2] = {{.tv_sec = 0, .tv_nsec = 0}, {.tv_sec = 1, .tv_nsec = 5'000'000}};
    ::utimensat(AT_FDCWD, QFile::encodeName(folder.path(u"Song.mp3"_s)).constData(), times, 0);
    const test::LabAnswer answer = lab({u"scan"_s, folder.path()});
    ASSERT_EQ(answer.exitCode, 0) << answer.said.toStdString();
    const QJsonObject contents = answer.json.object();
    EXPECT_EQ(contents[u"unreadable"_s], false);
    EXPECT_EQ(contents[u"missing"_s], QJsonArray{u"artwork"_s});
    const QJsonArray entries = contents[u"entries"_s].toArray();
    ASSERT_EQ(entries.size(), 2);
    const QString inner = folder.path(u"Inner one"_s);
    QJsonObject first = entries[0].toObject();
    EXPECT_FALSE(first.take(u"modified"_s).toString().isEmpty());
    EXPECT_EQ(first, (QJsonObject{{u"kind"_s, u"folder"_s},
                                  {u"name"_s, u"Inner one"_s},
                                  {u"url"_s, QUrl::fromLocalFile(inner).toString(QUrl::FullyEncoded)},
                                  {u"path"_s, inner},
                                  {u"files"_s, QJsonObject()},
                                  {u"bytes"_s, 0},
                                  {u"childCount"_s, 1},
                                  {u"duration"_s, QJsonValue::Null}}));
    const QString song = folder.path(u"Song.mp3"_s);
    EXPECT_EQ(entries[1].toObject(), (QJsonObject{{u"kind"_s, u"track"_s},
                                                  {u"name"_s, u"Song"_s},
                                                  {u"url"_s, QUrl::fromLocalFile(song).toString(QUrl::FullyEncoded)},
                                                  {u"path"_s, song},
                                                  {u"files"_s, QJsonObject{{u"audio"_s, QJsonArray{song}}}},
                                                  {u"bytes"_s, 5},
                                                  {u"modified"_s, u"1970-01-01T00:00:01.005Z"_s},
                                                  {u"childCount"_s, 0},
                                                  {u"duration"_s, QJsonValue::Null}}));
}

TEST(ScanVerb, aFileInPlaceOfTheFolderIsUnreadable)
{
    const TestFolder folder;
    const QJsonObject expected{{u"entries"_s, QJsonArray()}, {u"unreadable"_s, true}, {u"missing"_s, QJsonArray()}};
    EXPECT_EQ(lab({u"scan"_s, folder.write(u"a.mp3"_s, "x")}).json.object(), expected);
    expectRefused({u"scan"_s}, u"There are 1 arguments too few."_s);
}

QJsonArray oneRow(const TestFolder& folder, const QString& to)
{
    return {QJsonObject{{u"from"_s, u"a"_s},
                        {u"to"_s, to},
                        {u"changes"_s, to != u"a"},
                        {u"files"_s, QJsonArray{folder.path(u"a.mp3"_s)}}}};
}

TEST(NameVerb, showsThePlanAndTouchesNothing)
{
    const TestFolder folder;
    folder.write(u"a.mp3"_s, "x");
    EXPECT_EQ(lab({u"name"_s, folder.path()}).json.array(), oneRow(folder, u"a"_s));
    EXPECT_EQ(lab({u"name"_s, folder.path(), u"--pattern"_s, u"numbered"_s}).json.array(), oneRow(folder, u"01 - a"_s));
    EXPECT_EQ(folder.names(), QStringList{u"a.mp3"_s});
}

TEST(NameVerb, carriesThePlanOutWhereAsked)
{
    const TestFolder folder;
    folder.write(u"a.mp3"_s, "x");
    const QJsonObject expected{
        {u"plan"_s, oneRow(folder, u"a (Live at Sunset)"_s)}, {u"renamed"_s, 1}, {u"problems"_s, QJsonArray()}};
    EXPECT_EQ(lab({u"name"_s, u"--perform"_s, folder.path(), u"--pattern"_s, u"live"_s}).json.object(), expected);
    EXPECT_EQ(folder.names(), QStringList{u"a (Live at Sunset).mp3"_s});
}

TEST(NameVerb, aFileThatStaysIsAProblemAndNoFailure)
{
    const TestFolder folder;
    folder.write(u"a.mp3"_s, "x");
    folder.write(u"01 - a.mp3/inside"_s, "x");
    const test::LabAnswer answer = lab({u"name"_s, folder.path(), u"--pattern"_s, u"numbered"_s, u"--perform"_s});
    EXPECT_EQ(answer.exitCode, 0);
    EXPECT_EQ(answer.json.object()[u"problems"_s], QJsonArray{u"01 - a.mp3 already exists"_s});
    expectRefused({u"name"_s, folder.path(), u"--other"_s, u"x"_s}, u"There is no option --other."_s);
}

} // namespace
} // namespace orvane
