#pragma once

#include <QWidget>

class QLabel;

namespace orvane {

class ElidedLabel;

/// The line under a progress bar: what is at hand, shortened where it is too long, and at its end how long the rest
/// takes. The two are found by the names "progressLabel" and "timeLeft".
class ProgressCaption : public QWidget
{
    Q_OBJECT

public:
    explicit ProgressCaption(QWidget* parent = nullptr);

    void tell(const QString& text, const QString& timeLeft = {});
    void clear();
    void clearTimeLeft();

private:
    ElidedLabel* text_;
    QLabel* timeLeft_;
};

} // namespace orvane
