#include "main/Chrome/ProgressCaption.h"

#include "main/Chrome/ElidedLabel.h"

#include <QLabel>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace orvane::test {
namespace {

class ProgressCaptionTest : public testing::Test
{
protected:
    ProgressCaption caption_;
    ElidedLabel* text_ = caption_.findChild<ElidedLabel*>(u"progressLabel"_s);
    QLabel* timeLeft_ = caption_.findChild<QLabel*>(u"timeLeft"_s);
};

TEST_F(ProgressCaptionTest, tellsWhatIsAtHandAndHowLongTheRestTakes)
{
    caption_.tell(u"3 of 9 — Night Drive"_s, u"about 2 min left"_s);
    EXPECT_EQ(text_->text(), u"3 of 9 — Night Drive"_s);
    EXPECT_EQ(timeLeft_->text(), u"about 2 min left"_s);
}

TEST_F(ProgressCaptionTest, anEarlierTimeIsNotLeftBesideANewText)
{
    caption_.tell(u"one"_s, u"about 2 min left"_s);
    caption_.tell(u"two"_s);
    EXPECT_EQ(timeLeft_->text(), QString());
}

TEST_F(ProgressCaptionTest, theTimeMayGoAndTheTextStay)
{
    caption_.tell(u"one"_s, u"about 2 min left"_s);
    caption_.clearTimeLeft();
    EXPECT_EQ(text_->text(), u"one"_s);
    EXPECT_EQ(timeLeft_->text(), QString());
}

TEST_F(ProgressCaptionTest, isEmptyOnceCleared)
{
    caption_.tell(u"one"_s, u"about 2 min left"_s);
    caption_.clear();
    EXPECT_EQ(text_->text(), QString());
    EXPECT_EQ(timeLeft_->text(), QString());
}

TEST_F(ProgressCaptionTest, aLongTextLeavesTheTimeItsRoom)
{
    caption_.tell(QString(u"Night Drive "_s).repeated(40), u"about 2 min left"_s);
    caption_.resize(300, caption_.sizeHint().height());
    caption_.show();
    EXPECT_GE(timeLeft_->width(), timeLeft_->sizeHint().width());
    EXPECT_LE(timeLeft_->geometry().right(), caption_.rect().right());
    EXPECT_LT(text_->geometry().right(), timeLeft_->geometry().left());
}

} // namespace
} // namespace orvane::test
