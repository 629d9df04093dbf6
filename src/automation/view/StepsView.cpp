#include "automation/view/StepsView.h"

#include "automation/view/ChainTexts.h"
#include "automation/view/LightView.h"
#include "automation/view/StageLook.h"
#include "main/Chrome/ElidedLabel.h"
#include "main/Chrome/Paint.h"
#include "main/Chrome/Theme.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

#include <algorithm>

namespace orvane {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr double barHeight = 4;

void tint(QWidget& widget, const QColor& colour)
{
    QPalette palette = widget.palette();
    palette.setColor(QPalette::WindowText, colour);
    widget.setPalette(palette);
}

/// Between two names that fill their columns.
constexpr int nameMargin = 2;

} // namespace

StepsView::StepsView(QWidget* parent)
    : QWidget(parent)
{
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins({});
    rows->setSpacing(Theme::Space::small);
    auto* columns = new QHBoxLayout;
    columns->setSpacing(0);
    for (const Stage stage : stageOrder)
        columns->addLayout(buildColumn(stage), 1);
    rows->addLayout(columns);
    caption_ = new ElidedLabel({}, this);
    caption_->setObjectName(u"stepsCaption"_s);
    caption_->setElideMode(Qt::ElideRight);
    caption_->setFont(Theme::small());
    rows->addWidget(caption_);
    reset();
}

QBoxLayout* StepsView::buildColumn(Stage stage)
{
    auto* light = new LightView(this);
    lights_.append(light);
    auto* label = new ElidedLabel(ChainTexts::shortNameOf(stage), this);
    label->setElideMode(Qt::ElideRight);
    label->setContentsMargins(nameMargin, 0, nameMargin, 0);
    label->setFont(Theme::font(10, QFont::Medium));
    label->setAlignment(Qt::AlignCenter);
    // The six share the width evenly, also in a font so large that a name is cut.
    label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    tint(*label, Theme::textSecond);

    auto* column = new QVBoxLayout;
    column->setSpacing(Theme::Space::tight);
    column->addWidget(light, 0, Qt::AlignHCenter);
    column->addWidget(label);
    return column;
}

void StepsView::reset()
{
    for (int index = 0; index < lights_.size(); ++index)
        light(index, StageState::Kind::waiting);
    setProgress(0);
    say({});
}

void StepsView::light(int index, StageState::Kind state)
{
    LightView* light = lights_.value(index);
    if (!light)
        return;
    light->setState(state);
    const QString note = StageLook::noteOf({.kind = state, .note = {}});
    const Stage stage = stageOrder.at(static_cast<std::size_t>(index));
    light->setAccessibleName(note.isEmpty() ? nameOf(stage) : nameOf(stage) + u" — "_s + note);
}

void StepsView::skip(int index)
{
    light(index, StageState::Kind::skipped);
}

void StepsView::say(const QString& text)
{
    caption_->setText(text);
}

QString StepsView::caption() const
{
    return caption_->text();
}

void StepsView::setProgress(double progress)
{
    progress_ = std::clamp(progress, 0.0, 1.0);
    update();
}

double StepsView::fillWidth() const
{
    return width() * progress_;
}

void StepsView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const QRectF light = lights_.first()->geometry();
    const QRectF track(0, light.center().y() - barHeight / 2, width(), barHeight);
    Paint::box(painter, track, barHeight / 2, Theme::cardBorder);
    QRectF fill = track;
    fill.setWidth(fillWidth());
    if (isRightToLeft())
        fill.moveRight(track.right());
    Paint::box(painter, fill, barHeight / 2, Paint::mixed(Theme::card, Theme::accent, 0.7));
}

} // namespace orvane
