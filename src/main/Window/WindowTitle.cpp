#include "main/Window/WindowTitle.h"

#include <QLocale>

#include <algorithm>

namespace orvane {

QString windowTitle(const QString& program, std::optional<double> share)
{
    if (!share)
        return program;
    const int percent = std::clamp(static_cast<int>(*share * 100), 0, 99);
    return QLocale().toString(percent) + QStringLiteral("% — ") + program;
}

} // namespace orvane
