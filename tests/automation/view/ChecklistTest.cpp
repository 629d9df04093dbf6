#include "automation/view/Checklist.h"

#include "automation/view/LightView.h"
#include "automation/view/PrereqRow.h"
#include "main/Chrome/ElidedLabel.h"

#include <QLabel>
#include <QPushButton>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace orvane::test {
namespace {

class ChecklistTest : public testing::Test
{
protected:
    ChecklistTest()
    {
        list.onFix = [this](int pane) { fixed.append(pane); };
        list.rebuild({{.title = u"First"_s,
                       .fix = u"Mend it"_s,
                       .tab = 3,
                       .isMet = [this] { return isFirstMet; },
                       .detail = [this] { return isFirstMet ? u"good"_s : u"bad"_s; }},
                      {.title = u"Second"_s,
                       .fix = u"Elsewhere"_s,
                       .tab = {},
                       .isMet = [this] { return isSecondMet; },
                       .detail = [] { return u"detail"_s; }}});
    }

    template <typename Widget>
    Widget* part(int row, const QString& name) const
    {
        return list.rows().at(row)->findChild<Widget*>(name);
    }

    Checklist list;
    bool isFirstMet = false;
    bool isSecondMet = false;
    QList<int> fixed;
};

TEST_F(ChecklistTest, eachRowTellsWhatItIsAndHowItStands)
{
    EXPECT_EQ(list.refresh(), 2);
    EXPECT_EQ(part<QLabel>(0, u"title"_s)->text(), u"First"_s);
    EXPECT_EQ(part<ElidedLabel>(0, u"detail"_s)->text(), u"bad"_s);
    EXPECT_EQ(list.rows().at(0)->findChild<LightView*>()->state(), LightView::State::waiting);
    isFirstMet = true;
    EXPECT_EQ(list.refresh(), 1);
    EXPECT_EQ(part<ElidedLabel>(0, u"detail"_s)->text(), u"good"_s);
    EXPECT_EQ(list.rows().at(0)->findChild<LightView*>()->state(), LightView::State::done);
}

TEST_F(ChecklistTest, aFixButtonIsThereOnlyForWhatIsNotMetAndHasARemedy)
{
    list.refresh();
    EXPECT_FALSE(part<QPushButton>(0, u"fix"_s)->isHidden());
    EXPECT_EQ(part<QPushButton>(0, u"fix"_s)->text(), u"Mend it"_s);
    EXPECT_TRUE(part<QPushButton>(1, u"fix"_s)->isHidden());
    part<QPushButton>(0, u"fix"_s)->click();
    EXPECT_EQ(fixed, QList<int>{3});
    isFirstMet = true;
    list.refresh();
    EXPECT_TRUE(part<QPushButton>(0, u"fix"_s)->isHidden());
}

TEST_F(ChecklistTest, itIsHiddenWhileNothingIsMissing)
{
    list.refresh();
    EXPECT_FALSE(list.isHidden());
    isFirstMet = isSecondMet = true;
    EXPECT_EQ(list.refresh(), 0);
    EXPECT_TRUE(list.isHidden());
    list.rebuild({});
    EXPECT_EQ(list.refresh(), 0);
    EXPECT_TRUE(list.isHidden());
}

} // namespace
} // namespace orvane::test
