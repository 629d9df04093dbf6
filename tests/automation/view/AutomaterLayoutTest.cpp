#include "automation/view/RunCard.h"
#include "main/App/L10n.h"
#include "main/Chrome/ToolColumn.h"
#include "tests/automation/view/AutomaterTabFixture.h"

#include <QAbstractButton>
#include <QApplication>
#include <QScrollBar>

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

/// The least window less its tab bar, roughly; and a screen that stands upright.
constexpr int shortHeight = 460;
constexpr int tallHeight = 1900;

class AutomaterLayoutTest : public AutomaterTabFixture
{
protected:
    ~AutomaterLayoutTest() override
    {
        tab.reset();
        L10n::setPreferences(nullptr);
        QApplication::setLayoutDirection(Qt::LeftToRight);
    }

    void show(int height)
    {
        tab->resize(ToolColumn::leastWidth, height);
        tab->show();
        QCoreApplication::processEvents();
    }

    int widthNeeded() const { return part<ToolColumn>()->widget()->minimumSizeHint().width(); }

    int widthThere() const { return part<ToolColumn>()->viewport()->width(); }
};

TEST_F(AutomaterLayoutTest, everyLanguageAndPanelFitsTheColumnBesideItsScrollBar)
{
    L10n::setPreferences(&preferences);
    for (const L10n::Language& language : L10n::languages()) {
        L10n::setCode(language.code);
        session.setToken({});
        assets = {};
        launch();
        show(shortHeight);
        for (const Stage stage : stageOrder) {
            part<ChainView>()->select(indexOf(stage));
            QCoreApplication::processEvents();
            EXPECT_LE(widthNeeded(), widthThere()) << language.code.toStdString() << indexOf(stage);
        }
    }
}

TEST_F(AutomaterLayoutTest, longWordsOfARunWidenNothing)
{
    show(shortHeight);
    const QString endless(500, u'w');
    Q_EMIT run().stageChanged(Stage::read, StageState::failed(endless));
    Q_EMIT run().progressed({.stage = Stage::read, .done = 1, .count = 2, .label = endless});
    part<RunCard>()->showPlan(endless);
    session.setDestination(QUrl::fromLocalFile(home.filePath(QString(200, u'w'))));
    QCoreApplication::processEvents();
    EXPECT_LE(widthNeeded(), widthThere());
}

TEST_F(AutomaterLayoutTest, aTallColumnGivesTheRestToTheLog)
{
    show(tallHeight);
    EXPECT_EQ(part<ToolColumn>()->verticalScrollBar()->maximum(), 0);
    const int before = part<LogView>(u"logView"_s)->height();
    show(tallHeight + 100);
    EXPECT_EQ(part<LogView>(u"logView"_s)->height(), before + 100);
}

TEST_F(AutomaterLayoutTest, theChainRunsInTheReadingDirection)
{
    const auto xOf = [this](Stage stage) { return card(stage)->x(); };
    show(tallHeight);
    EXPECT_LT(xOf(Stage::read), xOf(Stage::download));
    QApplication::setLayoutDirection(Qt::RightToLeft);
    launch();
    show(tallHeight);
    EXPECT_GT(xOf(Stage::read), xOf(Stage::download));
}

TEST_F(AutomaterLayoutTest, everythingThatIsOperatedHasANameForAScreenReader)
{
    show(tallHeight);
    for (const Stage stage : stageOrder) {
        part<ChainView>()->select(indexOf(stage));
        for (QWidget* widget : tab->findChildren<QWidget*>()) {
            const bool isPart = widget->parentWidget()->inherits("QComboBox") || widget->inherits("QScrollArea");
            if (widget->focusPolicy() == Qt::NoFocus || !widget->isVisible() || isPart)
                continue;
            const auto* button = qobject_cast<QAbstractButton*>(widget);
            EXPECT_FALSE(widget->accessibleName().isEmpty() && (!button || button->text().isEmpty()))
                << widget->metaObject()->className() << " " << widget->objectName().toStdString();
        }
    }
}

} // namespace
} // namespace orvane::test
