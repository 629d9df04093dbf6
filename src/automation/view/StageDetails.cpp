#include "automation/view/StageDetails.h"

#include "automation/view/StageRow.h"
#include "main/App/L10n.h"
#include "main/Chrome/CardView.h"
#include "main/Chrome/PopUpButton.h"
#include "main/Chrome/SegmentBar.h"
#include "main/Chrome/TickBox.h"
#include "mastering/PlatformTexts.h"
#include "trackfiles/namer/NameRules.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace orvane {

using namespace Qt::Literals::StringLiterals;
using L10n::Key;

namespace {

QStringList patternRows()
{
    QStringList rows;
    for (const TrackNamer::Pattern& pattern : TrackNamer::patterns())
        rows.append(pattern.label);
    return rows;
}

QStringList platformRows()
{
    QStringList rows;
    for (const Master::Platform& platform : Master::platforms())
        rows.append(platform.name);
    return rows;
}

QStringList formatRows()
{
    QStringList rows;
    for (const Master::Format format : Master::allFormats)
        rows.append(Master::rawValue(format));
    return rows;
}

QWidget* sideBySide(QWidget* wide, QWidget* narrow)
{
    auto* row = new QWidget;
    auto* across = new QHBoxLayout(row);
    across->setContentsMargins({});
    across->setSpacing(Theme::Space::small);
    across->addWidget(wide, 3);
    across->addWidget(narrow, 2);
    return row;
}

} // namespace

StageDetails::StageDetails(QWidget* parent)
    : QWidget(parent)
    , column_(new QVBoxLayout(this))
    , row_(new StageRow(this))
{
    column_->setContentsMargins(0, Theme::Space::tight, 0, 0);
    column_->setSpacing(Theme::Space::small);
    column_->addWidget(row_);
    buildSummaries();
    buildRename();
    buildTags();
    buildMaster();
    buildVideo();
    resetStates();
    select(Stage::read);
}

void StageDetails::addView(Stage stage, const QList<QWidget*>& content)
{
    auto* view = new QWidget(this);
    auto* rows = new QVBoxLayout(view);
    rows->setContentsMargins({});
    rows->setSpacing(Theme::Space::small);
    for (QWidget* each : content)
        rows->addWidget(each);
    view->hide();
    column_->addWidget(view);
    views_.insert(stage, view);
}

QWidget* StageDetails::makeToggle(Stage stage, const QString& title)
{
    auto* toggle = new TickBox(title);
    toggle->setChecked(true);
    connect(toggle, &TickBox::clicked, this, [this, stage](bool isTicked) {
        if (onToggle)
            onToggle(stage, isTicked);
        changed();
    });
    toggles_.insert(stage, toggle);
    return toggle;
}

PopUpButton* StageDetails::makePicker(const QString& name, const QString& title, const QStringList& rows)
{
    auto* picker = new PopUpButton;
    picker->setObjectName(name);
    picker->setAccessibleName(title);
    picker->addItems(rows);
    connect(picker, &PopUpButton::activated, this, &StageDetails::changed);
    return picker;
}

void StageDetails::buildSummaries()
{
    for (const Stage stage : {Stage::read, Stage::download}) {
        QLabel* summary = makeNote({});
        summaries_.insert(stage, summary);
        addView(stage, {summary});
    }
    summaries_.value(Stage::download)->setObjectName(u"assetSummary"_s);
}

void StageDetails::buildRename()
{
    QWidget* toggle = makeToggle(Stage::rename, L10n::t(Key::stageRename));
    toggle->setObjectName(u"renameToggle"_s);
    patternPicker_ = makePicker(u"patternPicker"_s, L10n::t(Key::format), patternRows());
    addView(Stage::rename, {toggle, makeNote(u"using the format set in the Namer tab"_s), patternPicker_});
}

void StageDetails::buildTags()
{
    QWidget* toggle = makeToggle(Stage::tag, L10n::t(Key::stageTags));
    toggle->setObjectName(u"tagToggle"_s);
    addView(Stage::tag, {toggle, makeNote(u"title, album, artwork and lyrics, so players show them"_s)});
}

void StageDetails::buildMaster()
{
    QWidget* toggle = makeToggle(Stage::master, L10n::t(Key::stageMaster));
    toggle->setObjectName(u"masterToggle"_s);
    platformPicker_ = makePicker(u"platformPicker"_s, u"Platform"_s, platformRows());
    formatPicker_ = makePicker(u"formatPicker"_s, L10n::t(Key::format), formatRows());
    platformNote_ = makeNote({});
    platformNote_->setObjectName(u"platformNote"_s);
    connect(platformPicker_, &PopUpButton::activated, this, &StageDetails::masteringChanged);
    addView(Stage::master, {toggle, makeNote(u"to the target set in the Mastering tab, into Mastered/"_s),
                            sideBySide(platformPicker_, formatPicker_), platformNote_});
    masteringChanged();
}

void StageDetails::buildVideo()
{
    QWidget* toggle = makeToggle(Stage::video, L10n::t(Key::stageVideo));
    toggle->setObjectName(u"videoToggle"_s);
    // Hours of work are not for everybody: whoever wants them says so.
    toggles_.value(Stage::video)->setChecked(false);
    rendererPicker_ = new SegmentBar({{u"Orvane"_s, static_cast<int>(VideoRenderer::own)},
                                      {u"Website"_s, static_cast<int>(VideoRenderer::website), false}});
    rendererPicker_->setObjectName(u"rendererPicker"_s);
    rendererPicker_->setAccessibleName(L10n::t(Key::videoRenderer));
    rendererPicker_->setSelectedTag(static_cast<int>(VideoRenderer::own));
    connect(rendererPicker_, &SegmentBar::selectionChanged, this, &StageDetails::rendererChanged);
    videoNote_ = makeNote({});
    videoNote_->setObjectName(u"videoNote"_s);
    addView(Stage::video, {toggle, makeNote(u"using the look set in the Visualizer tab, into Videos/"_s),
                           makeHeading(L10n::t(Key::videoRenderer)), rendererPicker_, videoNote_});
    rendererChanged();
}

void StageDetails::select(Stage stage)
{
    views_.value(selected_)->hide();
    selected_ = stage;
    views_.value(stage)->show();
    row_->setName(nameOf(stage));
    row_->apply(states_.value(stage));
}

void StageDetails::setState(Stage stage, const StageState& state)
{
    states_.insert(stage, state);
    if (stage == selected_)
        row_->apply(state);
}

void StageDetails::resetStates()
{
    for (const Stage stage : stageOrder)
        setState(stage, StageState::waiting());
}

void StageDetails::setSummary(Stage stage, const QString& summary)
{
    if (QLabel* label = summaries_.value(stage))
        label->setText(summary);
}

void StageDetails::setTicked(Stage stage, bool isTicked)
{
    if (TickBox* toggle = toggles_.value(stage))
        toggle->setChecked(isTicked);
}

RunChoices StageDetails::choices() const
{
    return {.source = RunSource::download,
            .rename = toggles_.value(Stage::rename)->isChecked(),
            .tag = toggles_.value(Stage::tag)->isChecked(),
            .master = toggles_.value(Stage::master)->isChecked(),
            .video = toggles_.value(Stage::video)->isChecked(),
            .renderer = static_cast<VideoRenderer>(rendererPicker_->selectedTag()),
            .patternIndex = patternPicker_->currentIndex(),
            .platformIndex = platformPicker_->currentIndex(),
            .formatIndex = formatPicker_->currentIndex(),
            .openWhenDone = false};
}

void StageDetails::masteringChanged()
{
    const RunChoices chosen{.platformIndex = platformPicker_->currentIndex()};
    platformNote_->setText(Master::summary(targetOf(chosen).platform));
}

void StageDetails::rendererChanged()
{
    videoNote_->setText(L10n::t(choices().renderer == VideoRenderer::own ? Key::videoFastNote : Key::videoWebNote));
    changed();
}

void StageDetails::changed()
{
    if (onChange)
        onChange();
}

} // namespace orvane
