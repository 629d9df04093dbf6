#pragma once

#include "main/Chrome/Theme.h"

#include <QScrollArea>
#include <QWidget>

class QWheelEvent;

namespace orvane {

/// A row of views that scrolls sideways where it does not fit, by wheel and trackpad, and fades out at an end only
/// while there is more in that direction. Where there is no more, the wheel is left to what the row stands in.
class SideScroller : public QWidget
{
    Q_OBJECT

public:
    /// Takes `track`, which holds the views; `ground` is the colour that the row runs out into.
    explicit SideScroller(QWidget* track, const QColor& ground = Theme::card, QWidget* parent = nullptr);

    /// The end where the row begins.
    QWidget* fadeLeading() const { return fadeLeading_; }

    /// The end where the row ends.
    QWidget* fadeTrailing() const { return fadeTrailing_; }

    QScrollArea* scroller() const { return scroller_; }

    /// Scrolls as little as it takes to show the view, a child of the track, clear of the fades.
    void scrollIntoView(const QWidget* view);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildScroller();
    void buildFades(const QColor& ground);
    bool scrollBy(const QWheelEvent& wheel);
    void placeParts();
    void updateFades();

    QWidget* track_;
    QScrollArea* scroller_;
    QWidget* fadeLeading_ = nullptr;
    QWidget* fadeTrailing_ = nullptr;
};

} // namespace orvane
