#pragma once

#include "prompt/Chance.h"
#include "prompt/Crate.h"

namespace orvane::test {

/// A whole scene of the given name and family, two of each list, in D minor at 100 to 110 beats per minute.
Prompt::Scene scene(const QString& id, const QString& family = QStringLiteral("house"));

/// Luck that is written down: fractions come in the given order, and after the last it comes again; a whole number is
/// the least that was asked for.
Prompt::Chance written(QList<double> fractions);

} // namespace orvane::test
