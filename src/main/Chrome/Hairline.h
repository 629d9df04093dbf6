#pragma once

#include <QWidget>

namespace orvane {

/// A 1-point line in the colour of a card's outline, lying or standing.
class Hairline : public QWidget
{
    Q_OBJECT

public:
    explicit Hairline(Qt::Orientation orientation = Qt::Horizontal, QWidget* parent = nullptr);

    QSize sizeHint() const override { return {1, 1}; }

    QSize minimumSizeHint() const override { return {1, 1}; }

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace orvane
