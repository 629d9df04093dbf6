#pragma once

#include <QString>

#include <optional>

namespace orvane {

/// The program's name, after how far its work is where any goes: what a task bar shows of a window. `share` is from
/// 0 to 1; the last per cent is kept for the end.
QString windowTitle(const QString& program, std::optional<double> share);

} // namespace orvane
