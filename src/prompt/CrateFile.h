#pragma once

#include "prompt/Scene.h"

#include <QByteArray>
#include <QList>

namespace orvane::Prompt {

/// The scenes of a family's file: a JSON array of objects with the fields of Scene, `bpm` as its two ends.
QList<Scene> scenesOf(const QString& family, const QByteArray& json);

/// All scenes that are compiled in, in the table's order.
QList<Scene> compiledScenes();

} // namespace orvane::Prompt
