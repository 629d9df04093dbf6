#include "main/App/L10n.h"
#include "main/Chrome/AccentButton.h"
#include "suno/view/AssetPicker.h"
#include "suno/view/ProgressCard.h"
#include "tests/suno/view/DownloaderFixture.h"

#include <QApplication>
#include <QLayout>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

constexpr int columnWidth = 400;
/// The least window less its tab bar, roughly.
constexpr int shortHeight = 460;
constexpr int tallHeight = 900;

class DownloaderLayoutTest : public DownloaderFixture
{
protected:
    ~DownloaderLayoutTest() override
    {
        tab.reset();
        L10n::setPreferences(nullptr);
        QApplication::setLayoutDirection(Qt::LeftToRight);
    }

    void show(int height)
    {
        if (!tab)
            makeTab();
        tab->resize(columnWidth, height);
        tab->show();
        QCoreApplication::processEvents();
    }

    QScrollArea* scroller() const { return qobject_cast<QScrollArea*>(tab->layout()->itemAt(0)->widget()); }

    int slack() const { return scroller()->verticalScrollBar()->maximum(); }
};

TEST_F(DownloaderLayoutTest, isNeverNarrowerThanTheColumn)
{
    makeTab();
    EXPECT_EQ(tab->minimumWidth(), columnWidth);
}

TEST_F(DownloaderLayoutTest, aTallColumnGivesTheRestToTheLogAndDoesNotScroll)
{
    show(tallHeight);
    EXPECT_EQ(slack(), 0);
    const int before = part<LogView>(u"logView"_s)->height();
    show(tallHeight + 100);
    EXPECT_EQ(part<LogView>(u"logView"_s)->height(), before + 100);
}

TEST_F(DownloaderLayoutTest, aShortColumnScrollsAndCutsNothing)
{
    show(shortHeight);
    EXPECT_GT(slack(), 0);
    const auto* log = part<LogView>(u"logView"_s);
    EXPECT_GE(log->height(), log->minimumHeight());
}

TEST_F(DownloaderLayoutTest, everyLanguageFitsTheColumnBesideItsScrollBar)
{
    L10n::setPreferences(&preferences);
    for (const L10n::Language& language : L10n::languages()) {
        L10n::setCode(language.code);
        tab.reset();
        show(shortHeight);
        EXPECT_LE(scroller()->widget()->minimumSizeHint().width(), scroller()->viewport()->width())
            << language.code.toStdString();
    }
}

TEST_F(DownloaderLayoutTest, aLongNameOfATrackWidensNothing)
{
    show(tallHeight);
    const int before = scroller()->widget()->minimumSizeHint().width();
    tab->findChild<ProgressCard*>()->show(
        ExportProgress{.done = 1, .count = 2, .base = QString(500, u'w'), .timeLeft = std::chrono::hours(30)});
    pick(u"Enter an ID manually…"_s);
    QCoreApplication::processEvents();
    EXPECT_LE(scroller()->widget()->minimumSizeHint().width(), columnWidth);
    EXPECT_LE(before, columnWidth);
}

TEST_F(DownloaderLayoutTest, theSecondColumnOfBoxesStandsOnTheReadingSide)
{
    const auto xOf = [this](const QString& asset) { return tab->findChild<QWidget*>(asset)->x(); };
    show(tallHeight);
    EXPECT_LT(xOf(u"audio"_s), xOf(u"lyrics"_s));
    QApplication::setLayoutDirection(Qt::RightToLeft);
    tab.reset();
    show(tallHeight);
    EXPECT_GT(xOf(u"audio"_s), xOf(u"lyrics"_s));
}

TEST_F(DownloaderLayoutTest, everythingThatIsOperatedHasANameForAScreenReader)
{
    show(tallHeight);
    for (QWidget* widget : tab->findChildren<QWidget*>()) {
        if (widget->focusPolicy() == Qt::NoFocus || !widget->isVisible() ||
            widget->parentWidget()->inherits("QComboBox"))
            continue;
        if (widget->inherits("QScrollArea"))
            continue;
        const auto* button = qobject_cast<QAbstractButton*>(widget);
        EXPECT_FALSE(widget->accessibleName().isEmpty() && (!button || button->text().isEmpty()))
            << widget->metaObject()->className() << " " << widget->objectName().toStdString();
    }
}

} // namespace
} // namespace orvane::test
