#pragma once

#include "automation/Stage.h"

#include <QWidget>

class QLabel;

namespace orvane {

class LightView;

/// A stage in one row: its mark, its name and what it has come to, in full.
class StageRow : public QWidget
{
    Q_OBJECT

public:
    explicit StageRow(QWidget* parent = nullptr);

    void setName(const QString& name);
    void apply(const StageState& state);

    QString note() const;
    QColor noteColour() const;

private:
    LightView* mark_;
    QLabel* name_;
    QLabel* note_;
};

} // namespace orvane
