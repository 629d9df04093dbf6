#pragma once

#include <QWidget>

namespace orvane {

/// Stands between two cards and points to the later one.
class Arrow : public QWidget
{
    Q_OBJECT

public:
    explicit Arrow(QWidget* parent = nullptr);

    QSize sizeHint() const override;

    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace orvane
