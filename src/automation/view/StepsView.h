#pragma once

#include "automation/Stage.h"

#include <QList>
#include <QWidget>

class QBoxLayout;

namespace orvane {

class ElidedLabel;
class LightView;

/// How far a run is: a lamp for each stage over one bar, and the latest word about them.
class StepsView : public QWidget
{
    Q_OBJECT

public:
    explicit StepsView(QWidget* parent = nullptr);

    /// All lamps waiting, nothing done, nothing said.
    void reset();
    void light(int index, StageState::Kind state);
    void skip(int index);
    void say(const QString& text);

    /// From 0 to 1.
    double progress() const { return progress_; }

    void setProgress(double progress);

    /// Of the bar's part that is done, in points.
    double fillWidth() const;

    const QList<LightView*>& lights() const { return lights_; }

    QString caption() const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QBoxLayout* buildColumn(Stage stage);

    QList<LightView*> lights_;
    ElidedLabel* caption_ = nullptr;
    double progress_ = 0;
};

} // namespace orvane
