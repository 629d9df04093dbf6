#pragma once

#include <QProxyStyle>

class QStyleOptionButton;
class QStyleOptionComboBox;
class QStyleOptionMenuItem;

namespace orvane {

/// How the desktop toolkit's own widgets are drawn: Fusion's manners in the program's look. Whoever needs a field, a
/// list, a menu or a dialog uses the ordinary one.
class ChromeStyle final : public QProxyStyle
{
    Q_OBJECT

public:
    ChromeStyle();

    void polish(QWidget* widget) override;
    using QProxyStyle::polish;

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget = nullptr) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget = nullptr) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget = nullptr) const override;
    /// Text in the order of its own script.
    void drawItemText(QPainter* painter, const QRect& rect, int flags, const QPalette& palette, bool enabled,
                      const QString& text, QPalette::ColorRole role = QPalette::NoRole) const override;
    QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                         const QWidget* widget = nullptr) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                           const QWidget* widget = nullptr) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption* option = nullptr,
                    const QWidget* widget = nullptr) const override;
    int styleHint(StyleHint hint, const QStyleOption* option = nullptr, const QWidget* widget = nullptr,
                  QStyleHintReturn* answer = nullptr) const override;

private:
    void drawButtonLabel(const QStyleOptionButton& option, QPainter& painter, const QWidget* widget) const;
    void drawComboLabel(const QStyleOptionComboBox& option, QPainter& painter, const QWidget* widget) const;
    void drawMenuItem(const QStyleOptionMenuItem& option, QPainter& painter, const QWidget* widget) const;
};

} // namespace orvane
