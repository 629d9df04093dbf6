#pragma once

#include <QCheckBox>

namespace orvane {

/// A check box whose text wraps instead of being cut, and which can be clicked anywhere.
class TickBox : public QCheckBox
{
    Q_OBJECT

public:
    explicit TickBox(const QString& text = {}, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    bool hasHeightForWidth() const override { return true; }

    int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent* event) override;

    bool hitButton(const QPoint& position) const override { return rect().contains(position); }
};

} // namespace orvane
