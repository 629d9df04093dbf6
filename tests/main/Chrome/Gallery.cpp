#include "tests/main/Chrome/Gallery.h"

#include "main/Chrome/AccentButton.h"
#include "main/Chrome/Badge.h"
#include "main/Chrome/CardView.h"
#include "main/Chrome/DarkField.h"
#include "main/Chrome/ElidedLabel.h"
#include "main/Chrome/FlowStack.h"
#include "main/Chrome/Hairline.h"
#include "main/Chrome/LogView.h"
#include "main/Chrome/MenuChip.h"
#include "main/Chrome/PopUpButton.h"
#include "main/Chrome/ProgressLine.h"
#include "main/Chrome/SegmentBar.h"
#include "main/Chrome/StatusPill.h"
#include "main/Chrome/TabBar.h"
#include "main/Chrome/TickBox.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>
#include <QWidget>

using namespace Qt::StringLiterals;

namespace orvane::test {
namespace {

QWidget* row(std::initializer_list<QWidget*> views)
{
    auto* widget = new QWidget;
    auto* line = new QHBoxLayout(widget);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(Theme::Space::small);
    for (QWidget* view : views)
        line->addWidget(view);
    return widget;
}

AccentButton* button(const QString& text, bool isDanger, bool isEnabled)
{
    auto* made = new AccentButton(text);
    made->setDanger(isDanger);
    made->setEnabled(isEnabled);
    return made;
}

QWidget* buttons()
{
    auto* plain = new QPushButton(u"Choose folder…"_s);
    auto* off = new QPushButton(u"Choose folder…"_s);
    off->setEnabled(false);
    return CardView::titled(u"BUTTONS"_s, {button(u"Start batch export"_s, false, true),
                                           row({button(u"Stop"_s, true, true), button(u"Start"_s, false, false),
                                                button(u"Stop"_s, true, false)}),
                                           row({plain, off})});
}

StatusPill* pill(const QString& text, const QColor& colour)
{
    auto* made = new StatusPill;
    made->setStatus(text, colour);
    return made;
}

Badge* badge(const QString& text, const QColor& colour)
{
    auto* made = new Badge;
    made->setBadge(text, colour);
    return made;
}

QWidget* states()
{
    auto* line = new ProgressLine;
    line->setValue(0.4);
    auto* empty = new ProgressLine;
    auto* full = new ProgressLine;
    full->setValue(1);
    auto* little = new ProgressLine;
    little->setValue(0.01);
    return CardView::titled(
        u"SUNO SESSION"_s,
        {pill(u"● Signed in — token captured automatically"_s, Theme::ok),
         pill(u"○ Sign in on the left; the token is picked up on its own"_s, Theme::textMuted),
         pill(u"● Angemeldet — das Sitzungstoken wurde soeben vollautomatisch übernommen und geprüft"_s, Theme::ok),
         row({badge(u"IDLE"_s, Theme::textMuted), badge(u"RUNNING"_s, Theme::accent),
              badge(u"ВЫПОЛНЯЕТСЯ"_s, Theme::ok)}),
         empty, little, line, full});
}

TickBox* tick(const QString& text, bool isOn, bool isEnabled = true)
{
    auto* box = new TickBox(text);
    box->setChecked(isOn);
    box->setEnabled(isEnabled);
    return box;
}

QWidget* ticks()
{
    return CardView::titled(
        u"DOWNLOAD ASSETS"_s,
        {row({tick(u"MP3 audio"_s, true), tick(u"Lyrics (.txt)"_s, false)}),
         row({tick(u"Timed (.lrc)"_s, true, false), tick(u"Cover art"_s, false, false)}),
         tick(u"Die Originaldatei behalten und das Ergebnis danebenlegen, auch wenn es gleich heißt"_s, true),
         tick(u"اكتب العلامات في الملف الأصلي"_s, true)});
}

QWidget* fields()
{
    auto* picker = new PopUpButton;
    picker->addItem(u"All tracks — your whole library, with a very long name after it all"_s);
    auto* off = new PopUpButton;
    off->addItem(u"Night drives"_s);
    off->setEnabled(false);
    auto* typed = DarkField::make({});
    typed->setText(u"9b2c14de-70f1"_s);
    typed->setSelection(0, 8);
    return CardView::titled(
        u"SAVE LOCATION"_s,
        {picker, off, DarkField::make(u"Paste a workspace ID"_s), typed,
         new ElidedLabel(u"/home/someone/Music/Suno exports/2026/Night drives and long roads/Mastered"_s),
         makeNote(u"Space for about 1,250 songs is left on this disk."_s)});
}

QWidget* log()
{
    auto* view = new LogView;
    view->setFixedHeight(130);
    const QTime at(14, 3);
    view->append({{at, u"Ready. Sign in on the left, then start."_s, Theme::textSecond},
                  {at, u"Found 128 tracks."_s, Theme::ok},
                  {at, u"Neon Rain — server answered 503, waiting 4 s"_s, Theme::bad},
                  {at, u"مطر النيون saved (3.1 MB)"_s, Theme::textSecond}});
    return CardView::titled(u"LIVE PROGRESS"_s, {view});
}

SegmentBar* segments(const QStringList& titles, bool isEnabled = true)
{
    auto* bar = new SegmentBar;
    QList<SegmentBar::Item> items;
    for (const QString& title : titles)
        items.append({title, int(items.size())});
    bar->setItems(items);
    bar->setSelectedTag(1);
    bar->setEnabled(isEnabled);
    return bar;
}

ToggleChip* chip(const QString& text, bool isLit, bool isEnabled = true)
{
    auto* made = new ToggleChip(text);
    made->setLit(isLit);
    made->setEnabled(isEnabled);
    return made;
}

MenuChip* menuChip(const QString& text, int tag)
{
    auto* made = new MenuChip(text);
    made->setItems({{u"Any"_s, 0}, {u"Synthwave"_s, 1}, {u"Drum & bass"_s, 2}});
    made->setSelectedTag(tag);
    return made;
}

QWidget* flow(bool centres)
{
    auto* stack = new FlowStack;
    stack->setCentresRows(centres);
    auto* open = menuChip(u"Mood"_s, 0);
    open->setOpen(true);
    stack->setViews({chip(u"Level match"_s, true), chip(u"Match tempo"_s, false), menuChip(u"Genre"_s, 0),
                     menuChip(u"Genre"_s, 2), open, chip(u"Fade edges"_s, false, false), chip(u"Sweep"_s, true, false)},
                    {new QPushButton(u"Roll"_s)});
    return stack;
}

QWidget* choices()
{
    return CardView::titled(
        u"CHOICES"_s, {segments({u"WAV"_s, u"FLAC"_s, u"ALAC"_s, u"MP3"_s}), segments({u"16:9"_s, u"9:16"_s}, false),
                       segments({u"Nur leiser"_s, u"Lauter und leiser"_s, u"Unverändert lassen"_s, u"Unbekannt"_s}),
                       new Hairline, flow(false), new Hairline, flow(true)});
}

QWidget* tabs()
{
    const QStringList titles = {u"Downloader"_s, u"Files"_s,     u"Namer"_s, u"Mastering"_s,
                                u"Visualizer"_s, u"Automater"_s, u"DJ"_s,    u"Prompt Master"_s};
    auto* widget = new QWidget;
    auto* column = new QVBoxLayout(widget);
    column->setContentsMargins(0, 0, 0, 0);
    for (const int index : {0, 4, 7}) {
        auto* bar = new TabBar(titles);
        bar->resize(376, bar->sizeHint().height());
        bar->select(index);
        column->addWidget(bar);
    }
    return widget;
}

} // namespace

QWidget* makeGallery()
{
    auto* gallery = new QWidget;
    auto* across = new QHBoxLayout(gallery);
    across->setContentsMargins(Theme::Space::large, Theme::Space::large, Theme::Space::large, Theme::Space::large);
    across->setSpacing(Theme::Space::large);
    const QList<QList<QWidget*>> columns = {{tabs(), states(), fields(), log()}, {buttons(), ticks(), choices()}};
    for (const auto& views : columns) {
        auto* column = new QVBoxLayout;
        for (QWidget* view : views)
            column->addWidget(view);
        column->addStretch();
        across->addLayout(column);
    }
    const int width = 2 * 376 + 3 * Theme::Space::large;
    gallery->setFixedSize(width, gallery->heightForWidth(width));
    return gallery;
}

} // namespace orvane::test
