#include "automation/view/StageLook.h"

#include "main/Chrome/Paint.h"
#include "main/Chrome/Theme.h"

#include <QPainter>

namespace orvane {

using namespace Qt::Literals::StringLiterals;

namespace {

void drawNumber(QPainter& painter, const QRectF& rect, const QString& number, const QColor& colour)
{
    painter.save();
    painter.setFont(Theme::font(11, QFont::DemiBold));
    painter.setPen(colour);
    painter.drawText(rect, Qt::AlignCenter | Qt::TextSingleLine, number);
    painter.restore();
}

void drawRunning(QPainter& painter, const QRectF& rect, const QString& number)
{
    Paint::box(painter, rect, rect.width() / 2, Paint::mixed(Theme::card, Theme::accent, 0.22), Theme::accent, 2);
    const double inset = rect.width() * 0.3;
    if (number.isEmpty())
        Paint::box(painter, rect.adjusted(inset, inset, -inset, -inset), rect.width(), Theme::accent);
    else
        drawNumber(painter, rect, number, Theme::accentTop);
}

} // namespace

QString StageLook::noteOf(const StageState& state)
{
    switch (state.kind) {
    case StageState::Kind::running:
        return u"running…"_s;
    case StageState::Kind::waiting:
        return u"waiting"_s;
    case StageState::Kind::done:
    case StageState::Kind::failed:
    case StageState::Kind::skipped:
        break;
    }
    return state.note;
}

QColor StageLook::colourOf(StageState::Kind kind)
{
    switch (kind) {
    case StageState::Kind::done:
        return Theme::ok;
    case StageState::Kind::failed:
        return Theme::bad;
    case StageState::Kind::running:
        return Theme::accent;
    case StageState::Kind::skipped:
    case StageState::Kind::waiting:
        break;
    }
    return Theme::textMuted;
}

QColor StageLook::colourOf(LogLevel level)
{
    switch (level) {
    case LogLevel::error:
        return Theme::bad;
    case LogLevel::success:
        return Theme::ok;
    case LogLevel::info:
        break;
    }
    return Theme::textSecond;
}

void StageLook::drawMark(QPainter& painter, const QRectF& rect, StageState::Kind kind, const QString& number)
{
    const double radius = rect.width() / 2;
    switch (kind) {
    case StageState::Kind::done:
        Paint::box(painter, rect, radius, Theme::ok);
        Paint::tick(painter, rect, Theme::onAccent);
        break;
    case StageState::Kind::failed:
        Paint::box(painter, rect, radius, Theme::bad);
        Paint::cross(painter, rect, Theme::onAccent);
        break;
    case StageState::Kind::skipped:
        Paint::box(painter, rect, radius, Theme::field, Theme::textMuted, 1.5);
        Paint::dash(painter, rect, Theme::textSecond);
        break;
    case StageState::Kind::running:
        drawRunning(painter, rect, number);
        break;
    case StageState::Kind::waiting:
        Paint::box(painter, rect, radius, Theme::field, Theme::controlBorder, 1.5);
        drawNumber(painter, rect, number, Theme::textSecond);
        break;
    }
}

} // namespace orvane
