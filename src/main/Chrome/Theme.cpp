#include "main/Chrome/Theme.h"

#include "main/Chrome/ChromeAccessibility.h"
#include "main/Chrome/ChromeStyle.h"

#include <QApplication>
#include <QFontDatabase>
#include <QPalette>
#include <QToolTip>

#include <algorithm>

namespace orvane {
namespace {

// A point of the window is 1/96 inch, a point of a font is 1/72 inch.
constexpr double typographicPoints = 72.0 / 96.0;
// The largest size that a desktop comes with. Whoever chose more wants larger texts.
constexpr double usualDesktopSize = 11.0;
constexpr double largestGrowth = 2.0;

double growth()
{
    static const double chosen = QFontDatabase::systemFont(QFontDatabase::GeneralFont).pointSizeF();
    return std::clamp(chosen / usualDesktopSize, 1.0, largestGrowth);
}

QFont sized(QFont font, double size)
{
    font.setPointSizeF(size * typographicPoints * growth());
    return font;
}

void setDisabled(QPalette& palette)
{
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::HighlightedText,
                            QPalette::PlaceholderText}) {
        palette.setColor(QPalette::Disabled, role, Theme::textDisabled);
    }
    palette.setColor(QPalette::Disabled, QPalette::Highlight, Theme::raised);
}

QPalette darkPalette()
{
    QPalette palette;
    const std::pair<QPalette::ColorRole, QColor> colours[] = {
        {QPalette::Window, Theme::bg},           {QPalette::WindowText, Theme::textPrimary},
        {QPalette::Base, Theme::field},          {QPalette::AlternateBase, Theme::card},
        {QPalette::Text, Theme::textPrimary},    {QPalette::PlaceholderText, Theme::textHint},
        {QPalette::Button, Theme::raised},       {QPalette::ButtonText, Theme::textPrimary},
        {QPalette::BrightText, Theme::bad},      {QPalette::Light, Theme::raisedHover},
        {QPalette::Midlight, Theme::raised},     {QPalette::Mid, Theme::cardBorder},
        {QPalette::Dark, Theme::cardBorder},     {QPalette::Shadow, Theme::bg},
        {QPalette::Highlight, Theme::selection}, {QPalette::HighlightedText, Theme::textPrimary},
        {QPalette::Link, Theme::accentTop},      {QPalette::LinkVisited, Theme::accentTop},
        {QPalette::ToolTipBase, Theme::raised},  {QPalette::ToolTipText, Theme::textPrimary},
    };
    for (const auto& [role, colour] : colours)
        palette.setColor(role, colour);
    setDisabled(palette);
    return palette;
}

} // namespace

QFont Theme::font(double size, QFont::Weight weight)
{
    QFont font = sized(QFontDatabase::systemFont(QFontDatabase::GeneralFont), size);
    font.setWeight(weight);
    return font;
}

QFont Theme::heading()
{
    QFont font = Theme::font(11, QFont::DemiBold);
    font.setLetterSpacing(QFont::PercentageSpacing, 107);
    return font;
}

QFont Theme::body()
{
    return font(13);
}

QFont Theme::small()
{
    return font(11);
}

QFont Theme::mono(double size)
{
    QFont font = sized(QFontDatabase::systemFont(QFontDatabase::FixedFont), size);
    font.setWeight(QFont::Normal);
    return font;
}

void Theme::apply(QApplication& application)
{
    application.setStyle(new ChromeStyle);
    application.setPalette(darkPalette());
    application.setFont(body());
    QToolTip::setPalette(darkPalette());
    QToolTip::setFont(font(12));
    installChromeAccessibility();
}

} // namespace orvane
