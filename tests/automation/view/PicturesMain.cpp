#include "automation/view/ChainView.h"
#include "main/App/L10n.h"
#include "main/Chrome/SegmentBar.h"
#include "main/Chrome/Theme.h"
#include "main/Chrome/ToolColumn.h"
#include "tests/automation/view/AutomaterWorld.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QPainter>

#include <cstdio>

using namespace Qt::StringLiterals;
using namespace orvane;

namespace {

/// Heights of the tool in the least window, in a small and in a large one; and one in which nothing scrolls.
constexpr int leastHeight = 460;
constexpr int smallHeight = 560;
constexpr int largeHeight = 1000;
constexpr int wholeHeight = 1560;

/// A word as long as those of the wordiest language.
QString stretched(const QString& text)
{
    QStringList words;
    for (const QString& word : text.split(u' '))
        words.append(word.size() < 4 ? word : word + word.left(word.size() / 2).toLower() + u"ungs"_s);
    return words.join(u' ');
}

void stretchTexts(QWidget& window)
{
    for (auto* label : window.findChildren<QLabel*>())
        label->setText(stretched(label->text()));
    for (auto* button : window.findChildren<QAbstractButton*>())
        button->setText(stretched(button->text()));
    for (auto* bar : window.findChildren<SegmentBar*>()) {
        QList<SegmentBar::Item> items = bar->items();
        for (SegmentBar::Item& item : items)
            item.title = stretched(item.title);
        bar->setItems(items);
    }
}

bool save(test::AutomaterWorld& world, const QDir& folder, const QString& name, int height)
{
    constexpr double scale = 1.5;
    world.tab->resize(ToolColumn::leastWidth, height);
    world.tab->show();
    QApplication::processEvents();
    QImage picture((QSizeF(world.tab->size()) * scale).toSize(), QImage::Format_RGB32);
    picture.setDevicePixelRatio(scale);
    picture.fill(Theme::bg);
    world.tab->render(&picture, QPoint(), QRegion(), QWidget::DrawChildren);
    return picture.save(folder.filePath(name + u".png"_s));
}

void showRunning(AutomaterRun& run)
{
    Q_EMIT run.runningChanged(true);
    Q_EMIT run.stageChanged(Stage::read, StageState::done(u"128 tracks"_s));
    Q_EMIT run.stageChanged(Stage::download, StageState::done(u"127 of 128 tracks, 1 problem(s)"_s));
    Q_EMIT run.logged(u"MP3 failed for Neon Rain: the server answered 404"_s, LogLevel::error);
    Q_EMIT run.stageChanged(Stage::rename, StageState::skipped(u"turned off"_s));
    Q_EMIT run.stageChanged(Stage::tag, StageState::done(u"127 file(s)"_s));
    Q_EMIT run.stageChanged(Stage::master, StageState::running());
    Q_EMIT run.logged(u"Mastering: Spotify · WAV, from the Mastering tab."_s, LogLevel::info);
    Q_EMIT run.logged(u"Night Drive: -11.2 → -14.0 LUFS, -1.3 dBTP"_s, LogLevel::info);
    Q_EMIT run.progressed({.stage = Stage::master,
                           .done = 40,
                           .count = 127,
                           .label = u"mastering 41 of 127 — Night Drive and the long road home again"_s,
                           .timeLeft = std::chrono::minutes(14)});
}

void showFinished(AutomaterRun& run, const StageState& master)
{
    Q_EMIT run.stageChanged(Stage::master, master);
    Q_EMIT run.stageChanged(Stage::video, StageState::skipped(u"turned off"_s));
    const bool isRight = master.kind == StageState::Kind::done;
    const RunSummary summary{
        .done = isRight ? 4 : 3, .failed = isRight ? 0 : 1, .skipped = 2, .notReached = 0, .wasStopped = false};
    Q_EMIT run.runningChanged(false);
    Q_EMIT run.logged(summary.sentence(), isRight ? LogLevel::success : LogLevel::error);
    Q_EMIT run.finished(summary);
}

/// After a run that went well, at its card: in the least window, in one of 900 by 640 points and in a large one.
bool paintFinished(test::AutomaterWorld& world, const QDir& folder, const QString& name)
{
    showFinished(world.tab->automater().run(), StageState::done(u"127 mastered for Spotify"_s));
    bool isDone = true;
    for (const int height : {leastHeight, smallHeight, largeHeight}) {
        world.tab->resize(ToolColumn::leastWidth, height);
        world.tab->show();
        QApplication::processEvents();
        world.part<ToolColumn>()->ensureWidgetVisible(world.part<QWidget>(u"logView"_s));
        isDone = save(world, folder, name + u"-finished-%1"_s.arg(height), height) && isDone;
    }
    return isDone;
}

bool paintStates(const QDir& folder, const QString& name)
{
    test::AutomaterWorld world({});
    world.launch();
    bool isDone = save(world, folder, name + u"-fresh-least"_s, leastHeight) &&
                  save(world, folder, name + u"-fresh-whole"_s, wholeHeight);
    world.session.setToken(u"token"_s);
    const auto chain = world.part<ChainView>();
    chain->select(indexOf(Stage::master));
    showRunning(world.tab->automater().run());
    isDone = isDone && save(world, folder, name + u"-running-large"_s, largeHeight) &&
             save(world, folder, name + u"-running-whole"_s, wholeHeight);
    showFinished(world.tab->automater().run(), StageState::failed(u"No space left on device"_s));
    isDone = isDone && save(world, folder, name + u"-failed-whole"_s, wholeHeight);
    return paintFinished(world, folder, name) && isDone;
}

bool paintStretched(const QDir& folder)
{
    test::AutomaterWorld world({});
    world.launch();
    world.part<ChainView>()->select(indexOf(Stage::master));
    stretchTexts(*world.tab);
    showRunning(world.tab->automater().run());
    return save(world, folder, u"stretched-least"_s, leastHeight) &&
           save(world, folder, u"stretched-whole"_s, wholeHeight) && paintFinished(world, folder, u"stretched"_s);
}

bool paintDetails(const QDir& folder, const QString& name)
{
    test::AutomaterWorld world({});
    world.launch();
    bool isDone = true;
    for (const Stage stage : {Stage::download, Stage::rename, Stage::tag, Stage::video}) {
        world.part<ChainView>()->select(indexOf(stage));
        isDone = isDone && save(world, folder, name + u"-detail-%1"_s.arg(indexOf(stage)), largeHeight);
    }
    return isDone;
}

} // namespace

// Usage: FOLDER. Paints the Automater in its states and in several languages into FOLDER.
int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    Theme::apply(application);
    if (argc != 2) {
        std::fputs("usage: orvane_automation_view_test_pictures FOLDER\n", stderr);
        return 2;
    }
    const QDir folder(QString::fromLocal8Bit(argv[1]));
    bool isDone = folder.mkpath(u"."_s);
    const QTemporaryDir home;
    Preferences preferences(home.filePath(u"preferences.json"_s));
    L10n::setPreferences(&preferences);
    for (const QString& language : {u"en"_s, u"ar"_s}) {
        L10n::setCode(language);
        QApplication::setLayoutDirection(L10n::isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
        isDone = isDone && paintStates(folder, language) && paintDetails(folder, language);
    }
    QApplication::setLayoutDirection(Qt::LeftToRight);
    isDone = isDone && paintStretched(folder);
    L10n::setPreferences(nullptr);
    return isDone ? 0 : 1;
}
