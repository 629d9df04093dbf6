#pragma once

#include <QAbstractButton>

namespace orvane {

/// A small round-cornered button that is lit or not. A click changes nothing by itself: its owner lights it.
class ToggleChip : public QAbstractButton
{
    Q_OBJECT

public:
    explicit ToggleChip(const QString& text = {}, QWidget* parent = nullptr);

    bool isLit() const { return isLit_; }

    void setLit(bool isLit);

    /// Its menu is open: it is drawn as lit meanwhile.
    bool isOpen() const { return isOpen_; }

    void setOpen(bool isOpen);

    QFont chipFont() const { return font(); }

    void setChipFont(const QFont& font);

    /// What the chip shows, uncut.
    virtual QString shownText() const { return text(); }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

    /// Room at the trailing edge, in points, for what a kind of chip draws there.
    virtual int trailingRoom() const { return 0; }

    virtual void drawTrailing(QPainter& painter, const QRect& rect, const QColor& colour) const;

private:
    QRect textRect() const;

    bool isLit_ = false;
    bool isOpen_ = false;
};

} // namespace orvane
