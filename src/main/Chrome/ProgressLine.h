#pragma once

#include <QWidget>

namespace orvane {

/// A slim bar that shows how far a run is.
class ProgressLine : public QWidget
{
    Q_OBJECT

public:
    explicit ProgressLine(QWidget* parent = nullptr);

    /// From 0 (nothing) to 1 (all).
    double value() const { return value_; }

    /// What lies outside 0 … 1 is held to it; what is no number is 0.
    void setValue(double value);

    QSize sizeHint() const override;

    QSize minimumSizeHint() const override { return sizeHint(); }

Q_SIGNALS:
    void valueChanged(double value);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    double value_ = 0;
};

} // namespace orvane
