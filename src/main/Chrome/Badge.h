#pragma once

#include <QColor>
#include <QWidget>

namespace orvane {

/// A word in a small capsule, such as "IDLE" or "RUNNING".
class Badge : public QWidget
{
    Q_OBJECT

public:
    explicit Badge(QWidget* parent = nullptr);

    QString text() const { return text_; }

    QColor colour() const { return colour_; }

    /// The text is also the accessible name.
    void setBadge(const QString& text, const QColor& colour);

    QSize sizeHint() const override;

    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString text_;
    QColor colour_;
};

} // namespace orvane
