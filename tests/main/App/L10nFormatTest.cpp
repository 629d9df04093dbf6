#include "main/App/L10n.h"

#include <cmath>
#include <gmock/gmock.h>
#include <limits>

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;
using L10n::filled;

TEST(Filled, takesATextAnIntegerAndAReal)
{
    EXPECT_EQ(filled(u"Tagging failed for %@: %@"_s, {u"Song"_s, u"full"_s}), u"Tagging failed for Song: full"_s);
    EXPECT_EQ(filled(u"%d × %d, about %.0f MB"_s, {1920, 1080, 123.4}), u"1920 × 1080, about 123 MB"_s);
    EXPECT_EQ(filled(u"%.1f dB"_s, {-0.95}), u"-0.9 dB"_s);
}

TEST(Filled, showsAsManyDecimalsAsThePlaceholderAsksFor)
{
    const double pi = 3.14159265358979;
    EXPECT_EQ(filled(u"%.0f %.1f %.2f %.3f %.10f"_s, {pi, pi, pi, pi, pi}), u"3 3.1 3.14 3.142 3.1415926536"_s);
}

TEST(Filled, roundsTheExactValueAndTiesToEven)
{
    EXPECT_EQ(filled(u"%.0f %.0f %.0f %.0f"_s, {0.5, 1.5, 2.5, -0.5}), u"0 2 2 -0"_s);
    EXPECT_EQ(filled(u"%.1f %.1f"_s, {0.25, 0.35}), u"0.2 0.3"_s);
}

TEST(Filled, showsRealsOfEverySize)
{
    EXPECT_EQ(filled(u"%.1f"_s, {1e15}), u"1000000000000000.0"_s);
    EXPECT_EQ(filled(u"%.99f"_s, {std::numeric_limits<double>::max()}).size(), 309 + 1 + 99);
    EXPECT_EQ(filled(u"%.99f"_s, {std::numeric_limits<double>::lowest()}).size(), 1 + 309 + 1 + 99);
    EXPECT_EQ(filled(u"%.1f"_s, {-std::numeric_limits<double>::infinity()}), u"-inf"_s);
}

TEST(Filled, showsAWholeNumberWhereARealIsAskedFor)
{
    EXPECT_EQ(filled(u"%.1f MB"_s, {7}), u"7.0 MB"_s);
    EXPECT_EQ(filled(u"%d"_s, {qint64(1) << 40}), u"1099511627776"_s);
    EXPECT_EQ(filled(u"%d"_s, {-3}), u"-3"_s);
}

TEST(Filled, turnsADoubledSignIntoOne)
{
    EXPECT_EQ(filled(u"%d%% of %@"_s, {40, u"all"_s}), u"40% of all"_s);
    EXPECT_EQ(filled(u"%%@"_s, {u"unused"_s}), u"%@"_s);
    EXPECT_EQ(filled(u"%%%d"_s, {5}), u"%5"_s);
}

TEST(Filled, leavesAPlaceholderWithoutAnArgument)
{
    EXPECT_EQ(filled(u"%@ of %@ at %.1f"_s, {u"one"_s}), u"one of %@ at %.1f"_s);
}

TEST(Filled, leavesOutAnArgumentWithoutAPlaceholder)
{
    EXPECT_EQ(filled(u"only %d"_s, {1, 2, 3}), u"only 1"_s);
}

TEST(Filled, leavesWhatIsNoPlaceholder)
{
    EXPECT_EQ(filled(u"100 % sure, %s %f %.f %.123f %"_s, {1, 2}), u"100 % sure, %s %f %.f %.123f %"_s);
    EXPECT_EQ(filled(QString(), {1}), QString());
}

TEST(Filled, fillsNothingInsideAnArgument)
{
    EXPECT_EQ(filled(u"%@ and %@"_s, {u"%@ %d %1 %%"_s, u"b"_s}), u"%@ %d %1 %% and b"_s);
}

} // namespace
} // namespace orvane::test
