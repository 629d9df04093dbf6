#include "mastering/platforms/PlatformNames.h"
#include "tests/support/Sandbox.h"
#include "tests/trackfiles/HostileNames.h"
#include "trackfiles/keys/TrackKeys.h"

#include <gtest/gtest.h>

/// Where taking a mark off a name a second time changes nothing, over a million names. The rules are told here once
/// more, letter by letter.

namespace orvane {
namespace {

using namespace Qt::Literals::StringLiterals;
using Library::trackKey;
using TrackNamer::stripIndexPrefix;

constexpr int names = 1'000'000;

bool isWhite(QChar character)
{
    return character.isSpace();
}

/// How many characters the number before a title takes; 0 where there is none.
qsizetype prefixLength(const QString& name)
{
    qsizetype at = 0;
    const auto skip = [&name, &at](auto belongs) {
        const qsizetype from = at;
        while (at < name.size() && belongs(name[at]))
            ++at;
        return at - from;
    };
    skip(isWhite);
    const qsizetype digits = skip([](QChar character) { return character.isDigit(); });
    skip(isWhite);
    const bool hasMark = at < name.size() && u"-.)"_s.contains(name[at++]);
    const bool hasBlank = skip(isWhite) > 0;
    return digits >= 1 && digits <= 4 && hasMark && hasBlank ? at : 0;
}

/// Whether a stem ends in something that is no part of a track's key.
bool hasEnding(const QString& stem)
{
    if (stem.endsWith(u" lyrics"_s))
        return true;
    const qsizetype bracket = stem.lastIndexOf(u'(');
    return bracket >= 0 && stem.endsWith(u')') && Master::platformNames().contains(stem.mid(bracket + 1).chopped(1));
}

QString name(int index, std::mt19937& random)
{
    const QStringList& naughty = test::naughtyNames();
    return index < naughty.size() ? naughty[index] : test::randomName(random);
}

TEST(StripIndexPrefixProperty, aSecondTimeChangesNothingUnlessANumberStoodBehindTheNumber)
{
    std::mt19937 random(test::seed());
    int stripped = 0;
    int strippedTwice = 0;
    for (int index = 0; index < names; ++index) {
        const QString before = name(index, random);
        const QString once = stripIndexPrefix(before);
        const qsizetype length = prefixLength(before);
        ASSERT_EQ(once, before.sliced(length)) << before.toStdString();
        ASSERT_EQ(stripIndexPrefix(once) == once, prefixLength(once) == 0) << before.toStdString();
        stripped += length > 0 ? 1 : 0;
        strippedTwice += prefixLength(once) > 0 ? 1 : 0;
    }
    EXPECT_GT(stripped, names / 1000);
    EXPECT_GT(strippedTwice, 0);
}

TEST(TrackKeyProperty, theKeyOfAKeyIsTheKeyUnlessAnotherEndingStoodBeforeTheEnding)
{
    std::mt19937 random(test::seed());
    int shortened = 0;
    int shortenedTwice = 0;
    for (int index = 0; index < names; ++index) {
        const QString stem = name(index, random);
        if (stem.isEmpty())
            continue;
        const QString key = trackKey(stem + u".mp3"_s);
        ASSERT_EQ(key == stem, !hasEnding(stem)) << stem.toStdString();
        shortened += key != stem ? 1 : 0;
        if (key.isEmpty())
            continue;
        ASSERT_EQ(trackKey(key + u".wav"_s) == key, !hasEnding(key)) << stem.toStdString();
        shortenedTwice += hasEnding(key) ? 1 : 0;
    }
    EXPECT_GT(shortened, names / 1000);
    EXPECT_GT(shortenedTwice, 0);
}

} // namespace
} // namespace orvane
