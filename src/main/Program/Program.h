#pragma once

#include <QApplication>

namespace orvane {

/// Settings that must stand before the application object exists.
void prepareApplication();

/// What every program does with its new application object, before any view exists: language, reading direction, look.
/// The preferences must be known to `L10n` by then.
void dressApplication(QApplication& application);

} // namespace orvane
