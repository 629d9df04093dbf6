#pragma once

#include "automation/Stage.h"

#include <QWidget>

namespace orvane {

/// A lamp that shows how a stage stands.
class LightView : public QWidget
{
    Q_OBJECT

public:
    using State = StageState::Kind;

    explicit LightView(QWidget* parent = nullptr);

    State state() const { return state_; }

    void setState(State state);

    QSize sizeHint() const override;

    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    State state_ = State::waiting;
};

} // namespace orvane
