#include "dj/CueSheet.h"

#include <gmock/gmock.h>

using namespace orvane;
using namespace Qt::Literals::StringLiterals;

namespace {

DJ::Analysis track(const QString& title, double bpm = 120.0, const DJ::Key& key = {})
{
    return {.title = title, .bpm = bpm, .key = key};
}

QList<DJ::Move> movesAt(const QList<double>& starts)
{
    QList<DJ::Move> moves;
    for (const double start : starts)
        moves.append(DJ::Move{.atSeconds = start});
    return moves;
}

struct Sheet
{
    const char* name;
    DJ::Set set;
    QList<double> starts;
    double bpm;
    QSet<QString> unmatched;
    QHash<QString, int> shifted;
    const char* wanted;
};

const DJ::Key aMinor{.tonic = 9, .isMinor = true};
const DJ::Key eFlatMinor{.tonic = 3, .isMinor = true};

} // namespace

TEST(CueSheet, isTheTracklistCharacterForCharacter)
{
    const std::vector<Sheet> sheets{
        {"nothing", {}, {}, 120.0, {}, {}, "Orvane DJ Mix\n0 tracks · around 120 BPM\n"},
        {"one",
         {track(u"Alone"_s)},
         {},
         120.0,
         {},
         {},
         "Orvane DJ Mix\n1 tracks · around 120 BPM\n\n01. Alone  [8B · 120 BPM]  0:00"},
        {"two",
         {track(u"A"_s), track(u"B"_s, 121.4, aMinor)},
         {232.99},
         121.4,
         {},
         {},
         "Orvane DJ Mix\n2 tracks · around 121 BPM\n\n01. A  [8B · 120 BPM]  0:00\n02. B  [8A · 121 BPM]  3:52"},
        {"not matched",
         {track(u"A"_s, 84.0), track(u"B"_s)},
         {10.0},
         120.0,
         {u"A"_s},
         {},
         "Orvane DJ Mix\n2 tracks · around 120 BPM\n\n01. A  [8B · 84 BPM]  0:00  (tempo not matched)\n"
         "02. B  [8B · 120 BPM]  0:10"},
        {"one semitone up",
         {track(u"A"_s, 120.0, eFlatMinor)},
         {},
         120.0,
         {},
         {{u"A"_s, 1}},
         "Orvane DJ Mix\n1 tracks · around 120 BPM\n\n01. A  [9A · 120 BPM]  0:00  (+1 semitone, from 2A)"},
        {"one semitone down",
         {track(u"A"_s)},
         {},
         120.0,
         {},
         {{u"A"_s, -1}},
         "Orvane DJ Mix\n1 tracks · around 120 BPM\n\n01. A  [1B · 120 BPM]  0:00  (-1 semitone, from 8B)"},
        {"two semitones",
         {track(u"A"_s), track(u"B"_s)},
         {61.0},
         120.0,
         {},
         {{u"A"_s, 2}, {u"B"_s, -2}},
         "Orvane DJ Mix\n2 tracks · around 120 BPM\n\n01. A  [10B · 120 BPM]  0:00  (+2 semitones, from 8B)\n"
         "02. B  [6B · 120 BPM]  1:01  (-2 semitones, from 8B)"},
        {"both notes",
         {track(u"A"_s)},
         {},
         120.0,
         {u"A"_s},
         {{u"A"_s, 2}},
         "Orvane DJ Mix\n1 tracks · around 120 BPM\n\n"
         "01. A  [10B · 120 BPM]  0:00  (tempo not matched)  (+2 semitones, from 8B)"},
        {"a move of nothing",
         {track(u"A"_s)},
         {},
         120.0,
         {},
         {{u"A"_s, 0}},
         "Orvane DJ Mix\n1 tracks · around 120 BPM\n\n01. A  [8B · 120 BPM]  0:00"},
        {"past the moves",
         {track(u"A"_s), track(u"B"_s), track(u"C"_s), track(u"D"_s)},
         {65.0, 3725.9},
         120.0,
         {},
         {},
         "Orvane DJ Mix\n4 tracks · around 120 BPM\n\n01. A  [8B · 120 BPM]  0:00\n02. B  [8B · 120 BPM]  1:05\n"
         "03. C  [8B · 120 BPM]  62:05\n04. D  [8B · 120 BPM]  62:05"},
        {"halves go to the even number",
         {track(u"A"_s, 126.5), track(u"B"_s, 127.5)},
         {},
         126.5,
         {},
         {},
         "Orvane DJ Mix\n2 tracks · around 126 BPM\n\n01. A  [8B · 126 BPM]  0:00\n02. B  [8B · 128 BPM]  0:00"},
        {"titles",
         {track(u"50% %1 · [x]"_s), track(u""_s), track(u"two\nlines\u2028and\rmore"_s)},
         {},
         99.6,
         {},
         {},
         "Orvane DJ Mix\n3 tracks · around 100 BPM\n\n01. 50% %1 · [x]  [8B · 120 BPM]  0:00\n"
         "02.   [8B · 120 BPM]  0:00\n03. two lines and more  [8B · 120 BPM]  0:00"},
    };
    for (const Sheet& sheet : sheets) {
        const QString found = DJ::cueSheet(sheet.set, movesAt(sheet.starts), sheet.bpm, sheet.unmatched, sheet.shifted);
        EXPECT_EQ(found.toStdString(), sheet.wanted) << sheet.name;
    }
}

TEST(CueSheet, aHundredTracksAreCountedByAsManyDigitsAsItTakes)
{
    const DJ::Set set(120, track(u"x"_s));
    const QStringList lines = DJ::cueSheet(set, {}, 120.0, {}).split(u'\n');
    ASSERT_EQ(lines.size(), 123);
    EXPECT_TRUE(lines[11].startsWith(u"09. x"));
    EXPECT_TRUE(lines[102].startsWith(u"100. x"));
}

TEST(Move, tellsTheKeysAndTheTempoOfTheRecords)
{
    const DJ::Move move = DJ::moveBetween(track(u"A"_s, 120.0, aMinor), track(u"B"_s, 117.5, eFlatMinor), 12.5);
    EXPECT_EQ(
        move,
        (DJ::Move{.from = u"A"_s, .to = u"B"_s, .atSeconds = 12.5, .keyMove = u"8A → 2A"_s, .tempoChange = -2.5}));
}
