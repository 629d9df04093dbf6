#include "main/App/SafeAt.h"

#include <QList>
#include <QString>

#include <array>
#include <gmock/gmock.h>
#include <span>
#include <vector>

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

TEST(SafeAt, givesTheElementInsideTheList)
{
    const QList<QString> list = {u"first"_s, u"second"_s};
    EXPECT_EQ(safeAt(list, 0), u"first"_s);
    EXPECT_EQ(safeAt(list, 1), u"second"_s);
}

TEST(SafeAt, isAbsentOutsideTheListOnEitherSide)
{
    const QList<QString> list = {u"first"_s, u"second"_s};
    EXPECT_EQ(safeAt(list, -1), std::nullopt);
    EXPECT_EQ(safeAt(list, 2), std::nullopt);
    EXPECT_EQ(safeAt(list, std::numeric_limits<std::ptrdiff_t>::max()), std::nullopt);
    EXPECT_EQ(safeAt(list, std::numeric_limits<std::ptrdiff_t>::min()), std::nullopt);
    EXPECT_EQ(safeAt(QList<int>(), 0), std::nullopt);
}

TEST(SafeAt, takesEveryKindOfArray)
{
    const std::array<int, 2> array = {7, 8};
    const std::vector<bool> flags = {false, true};
    EXPECT_EQ(safeAt(array, 1), 8);
    EXPECT_EQ(safeAt(std::span(array), 2), std::nullopt);
    EXPECT_EQ(safeAt(flags, 1), true);
}

} // namespace
} // namespace orvane::test
