#pragma once

#include "automation/Stage.h"
#include "suno/LogLevel.h"

#include <QColor>
#include <QRectF>
#include <QString>

class QPainter;

namespace orvane::StageLook {

/// The words for a state: its note, or "running…" or "waiting".
QString noteOf(const StageState& state);

QColor colourOf(StageState::Kind kind);
QColor colourOf(LogLevel level);

/// A round mark that fills `rect`, a square: each state has a form of its own, so that it is told without its colour.
/// `number` stands in it while the stage waits or runs; without one it is a plain lamp.
void drawMark(QPainter& painter, const QRectF& rect, StageState::Kind kind, const QString& number = {});

} // namespace orvane::StageLook
