#pragma once

#include "main/Chrome/CardView.h"
#include "suno/LogLevel.h"

#include <QString>
#include <QTime>

class QBoxLayout;

namespace orvane {

class Badge;
class LogView;
class ProgressCaption;
class ProgressLine;
struct ExportProgress;

/// What an export is doing at this moment, how far it is, and everything that it said.
class ProgressCard : public CardView
{
    Q_OBJECT

public:
    explicit ProgressCard(QWidget* parent = nullptr);

    /// The badge; the bar goes back to nothing at a start, and the words beside it go at an end.
    void setRunning(bool running);
    /// The mark that the machine is kept awake.
    void setAwake(bool awake);
    void show(const ExportProgress& progress);
    void log(const QTime& time, const QString& message, LogLevel level);

    using CardView::show;

private:
    QBoxLayout* buildHead();
    void buildBar();
    void buildLog();

    Badge* awakeMark_ = nullptr;
    Badge* stateBadge_ = nullptr;
    ProgressLine* progress_ = nullptr;
    ProgressCaption* caption_ = nullptr;
    LogView* logView_ = nullptr;
};

} // namespace orvane
