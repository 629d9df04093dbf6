#pragma once

#include <QColor>
#include <QWidget>

namespace orvane {

/// One line of state in its colour. A "●" or "○" at the start of the text is drawn as a lamp, on or off; a text that is
/// too long wraps.
class StatusPill : public QWidget
{
    Q_OBJECT

public:
    explicit StatusPill(QWidget* parent = nullptr);

    /// The whole text, the lamp's character included. It is also the accessible name.
    QString text() const { return text_; }

    QColor colour() const { return colour_; }

    void setStatus(const QString& text, const QColor& colour);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    bool hasHeightForWidth() const override { return true; }

    int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString text_;
    QColor colour_;
};

} // namespace orvane
