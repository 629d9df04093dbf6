#pragma once

#include "main/Chrome/CardView.h"

#include <QTimer>

#include <functional>

class QBoxLayout;
class QLabel;

namespace orvane {

class PopUpButton;
class TickBox;

/// Whether the library is watched for new tracks, how often, and what came of it.
class WatchCard : public CardView
{
    Q_OBJECT

public:
    explicit WatchCard(QWidget* parent = nullptr);

    /// Called when the user changed the switch or the interval.
    std::function<void()> onChange;
    /// Gives the status; asked every so often while the card is seen, as it tells how long ago something was.
    std::function<QString()> statusProvider;

    bool isOn() const;
    /// Minutes between two checks; `otherwise` where none of the offered ones is chosen.
    int interval(int otherwise) const;
    /// Shows the stored settings; an interval that is not offered chooses none.
    void setSettings(bool isOn, int minutes);
    void updateStatus();

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    QBoxLayout* buildInterval();
    void changed();

    TickBox* watchToggle_ = nullptr;
    PopUpButton* watchInterval_ = nullptr;
    QLabel* watchStatus_ = nullptr;
    QTimer beat_;
};

} // namespace orvane
