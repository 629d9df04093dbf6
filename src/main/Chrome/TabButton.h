#pragma once

#include <QAbstractButton>

namespace orvane {

/// One tab of a TabBar.
class TabButton : public QAbstractButton
{
    Q_OBJECT

public:
    explicit TabButton(const QString& title, QWidget* parent = nullptr);

    bool isActive() const { return isActive_; }

    /// Also its state for screen readers. Only the active tab takes the focus by Tab.
    void setActive(bool isActive);

    /// The pointer is over it.
    bool isHovered() const { return isHovered_; }

    QSize sizeHint() const override;

    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    /// Arrow keys are the bar's.
    void keyPressEvent(QKeyEvent* event) override;

private:
    void setHovered(bool isHovered);

    bool isActive_ = false;
    bool isHovered_ = false;
};

} // namespace orvane
