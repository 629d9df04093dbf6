#include "main/Chrome/AccentButton.h"
#include "main/Chrome/Badge.h"
#include "main/Chrome/MenuChip.h"
#include "main/Chrome/SegmentBar.h"
#include "main/Chrome/StatusPill.h"
#include "main/Chrome/TabButton.h"
#include "main/Chrome/Theme.h"
#include "main/Chrome/TickBox.h"
#include "tests/main/Chrome/Picture.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace orvane::test {
namespace {

struct Sample
{
    const char* language;
    const char16_t* text;
};

constexpr Sample samples[] = {
    {"English", u"Start batch export of everything"},
    {"German", u"Stapelverarbeitungsvorgang unverzüglich starten"},
    {"Russian", u"Запустить пакетное экспортирование немедленно"},
    {"French", u"Démarrer l’exportation de toute la bibliothèque"},
    {"Portuguese", u"Começar a exportação de todas as músicas já"},
    {"Hindi", u"सभी गीतों का निर्यात अभी शुरू करें और सहेजें"},
    {"Arabic", u"ابدأ تصدير جميع المسارات إلى المجلد الآن"},
    {"Hebrew", u"התחל לייצא את כל הרצועות לתיקייה עכשיו"},
    {"Japanese", u"すべての曲の一括書き出しを今すぐ開始する"},
    {"Chinese", u"立即开始批量导出整个音乐库中的所有曲目"},
    {"Thai", u"เริ่มส่งออกเพลงทั้งหมดในคลังเดี๋ยวนี้เลยนะ"},
    {"Unbroken", u"Donaudampfschifffahrtsgesellschaftskapitänsmützenabzeichen"},
};

class Language : public testing::TestWithParam<std::tuple<Sample, Qt::LayoutDirection>>
{
protected:
    QString text() const { return QString::fromUtf16(std::get<0>(GetParam()).text); }

    Qt::LayoutDirection direction() const { return std::get<1>(GetParam()); }

    /// The edge is the same with the text as without it (`setText` takes it away), so none of the text is cut there.
    template <typename Widget, typename SetText>
    void expectTextInside(Widget& widget, const QSize& size, SetText setText, int edge)
    {
        widget.setLayoutDirection(direction());
        widget.resize(size);
        const QImage full = pictureOf(widget, 2);
        setText(QString());
        widget.resize(size);
        const QImage empty = pictureOf(widget, 2);
        EXPECT_NE(full, empty);
        EXPECT_TRUE(hasSameEdge(full, empty, 2 * edge));
    }
};

TEST_P(Language, anAccentButtonHoldsItsLabel)
{
    AccentButton button(text());
    expectTextInside(
        button, button.sizeHint(), [&](const QString& none) { button.setText(none); }, 3);
}

TEST_P(Language, aTickBoxWrapsItsLabelInsideItself)
{
    TickBox box(text());
    const QSize size(150, box.heightForWidth(150));
    expectTextInside(
        box, size, [&](const QString& none) { box.setText(none); }, 1);
}

TEST_P(Language, aStatusPillWrapsItsWordsInsideItself)
{
    StatusPill pill;
    pill.setStatus(text(), Theme::ok);
    const QSize size(150, pill.heightForWidth(150));
    expectTextInside(
        pill, size, [&](const QString&) { pill.setStatus(text(), Theme::field); }, 3);
}

TEST_P(Language, aBadgeHoldsItsWord)
{
    Badge badge;
    badge.setBadge(text(), Theme::ok);
    expectTextInside(
        badge, badge.sizeHint(), [&](const QString& none) { badge.setBadge(none, Theme::ok); }, 1);
}

TEST_P(Language, aChipHoldsItsTextAtAnyWidth)
{
    for (const int width : {0, 60}) {
        ToggleChip chip(text());
        const QSize size(width > 0 ? width : chip.sizeHint().width(), chip.sizeHint().height());
        expectTextInside(
            chip, size, [&](const QString& none) { chip.setText(none); }, 2);
    }
}

TEST_P(Language, aTabHoldsItsTitle)
{
    TabButton button(text());
    expectTextInside(
        button, button.sizeHint(), [&](const QString& none) { button.setText(none); }, 2);
}

TEST_P(Language, aSegmentBarHoldsItsTitlesAtAnyWidth)
{
    for (const int width : {0, 100}) {
        SegmentBar bar({{text(), 1}, {text(), 2}});
        const QSize size(width > 0 ? width : bar.sizeHint().width(), bar.sizeHint().height());
        expectTextInside(
            bar, size,
            [&](const QString& none) {
                bar.setItems({{none, 1}, {none, 2}});
            },
            3);
    }
}

INSTANTIATE_TEST_SUITE_P(Chrome, Language,
                         testing::Combine(testing::ValuesIn(samples),
                                          testing::Values(Qt::LeftToRight, Qt::RightToLeft)),
                         [](const auto& run) {
                             const bool isMirrored = std::get<1>(run.param) == Qt::RightToLeft;
                             return std::string(std::get<0>(run.param).language) + (isMirrored ? "Mirrored" : "");
                         });

} // namespace
} // namespace orvane::test
