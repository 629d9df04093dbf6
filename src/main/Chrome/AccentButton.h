#pragma once

#include <QPushButton>

namespace orvane {

/// The one button of a tool that starts its work: an accent gradient, or the tones of failure while `isDanger` is on.
class AccentButton : public QPushButton
{
    Q_OBJECT

public:
    explicit AccentButton(const QString& text = {}, QWidget* parent = nullptr);

    bool isDanger() const { return isDanger_; }

    void setDanger(bool isDanger);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    bool isDanger_ = false;
};

} // namespace orvane
