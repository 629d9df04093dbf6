#include "main/Chrome/AccentButton.h"
#include "main/Chrome/Badge.h"
#include "main/Chrome/ElidedLabel.h"
#include "main/Chrome/SegmentBar.h"
#include "main/Chrome/TabButton.h"
#include "main/Chrome/Theme.h"
#include "main/Chrome/ToggleChip.h"
#include "tests/main/Chrome/Picture.h"

#include <QApplication>
#include <QPushButton>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

/// A text that ends in dots shows them where its own script ends, also in a window of the other direction.

namespace orvane::test {
namespace {

class TextDirection : public testing::TestWithParam<const char16_t*>
{
protected:
    QString text() const { return QString::fromUtf16(GetParam()); }

    ~TextDirection() override { QApplication::setLayoutDirection(Qt::LeftToRight); }

    static QImage pictureIn(Qt::LayoutDirection direction, QWidget& widget)
    {
        QApplication::setLayoutDirection(direction);
        return pictureOf(widget);
    }

    /// A text in the middle looks the same in both directions.
    static void expectSame(QWidget& widget)
    {
        widget.resize(widget.sizeHint());
        EXPECT_EQ(pictureIn(Qt::RightToLeft, widget), pictureIn(Qt::LeftToRight, widget));
    }
};

TEST_P(TextDirection, anAccentButtonShowsTheSame)
{
    AccentButton button(text());
    expectSame(button);
}

TEST_P(TextDirection, aButtonShowsTheSame)
{
    QPushButton button(text());
    expectSame(button);
}

TEST_P(TextDirection, aChipShowsTheSame)
{
    ToggleChip chip(text());
    expectSame(chip);
}

TEST_P(TextDirection, aBadgeShowsTheSame)
{
    Badge badge;
    badge.setBadge(text(), Theme::accent);
    expectSame(badge);
}

TEST_P(TextDirection, aTabShowsTheSame)
{
    TabButton tab(text());
    expectSame(tab);
}

TEST_P(TextDirection, aSegmentShowsTheSame)
{
    SegmentBar bar;
    bar.setItems({{text(), 0}});
    expectSame(bar);
}

TEST_P(TextDirection, aLabelInTheMiddleShowsTheSame)
{
    ElidedLabel label(text());
    label.setAlignment(Qt::AlignCenter);
    expectSame(label);
}

TEST_P(TextDirection, aLabelBeginsAtTheLeadingEdge)
{
    ElidedLabel label(text());
    label.resize(label.sizeHint().width() + 60, label.sizeHint().height());
    const QRect leftEnd(0, 0, 50, label.height());
    const QRect rightEnd(label.width() - 50, 0, 50, label.height());
    for (const auto& [direction, leading, other] :
         {std::tuple(Qt::LeftToRight, leftEnd, rightEnd), std::tuple(Qt::RightToLeft, rightEnd, leftEnd)}) {
        const QImage picture = pictureIn(direction, label);
        EXPECT_GT(brightnessOf(picture.copy(leading)), brightnessOf(picture.copy(other)));
    }
}

INSTANTIATE_TEST_SUITE_P(Scripts, TextDirection, testing::Values(u"Choose folder…", u"اختر مجلدًا…"));

} // namespace
} // namespace orvane::test
