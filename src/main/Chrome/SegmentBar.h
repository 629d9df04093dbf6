#pragma once

#include <QList>
#include <QWidget>

namespace orvane {

/// A choice of one out of a few, side by side in one rounded bar. Click, arrow keys, Home and End choose.
class SegmentBar : public QWidget
{
    Q_OBJECT

public:
    struct Item
    {
        QString title;
        int tag = 0;
        /// Can be chosen; one that cannot is shown all the same.
        bool isEnabled = true;

        bool operator==(const Item&) const = default;
    };

    /// The tag that stands for no item.
    static constexpr int none = -1;

    explicit SegmentBar(QWidget* parent = nullptr);
    explicit SegmentBar(const QList<Item>& items, QWidget* parent = nullptr);

    const QList<Item>& items() const { return items_; }

    /// Keeps `selectedTag`, also where no item has it.
    void setItems(const QList<Item>& items);

    int selectedTag() const { return selectedTag_; }

    /// Sends nothing: only the user's choice does.
    void setSelectedTag(int tag);

    /// The tag under the pointer, else `none`.
    int hovered() const { return hovered_; }

    /// Where the item is drawn; `index` is its place in `items`.
    QRect itemRect(int index) const;
    /// The place of the item at a position, else -1.
    int indexAt(const QPoint& position) const;
    /// The place of the selected item, else -1.
    int selectedIndex() const;

    /// Chooses as the user would: sends the signal if that changes the selection. An index beyond the items, or of an
    /// item that cannot be chosen, does nothing.
    void choose(int index);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// The user chose another item.
    void selectionChanged(int tag);

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    int naturalWidth(int index) const;
    QList<int> widths(int room) const;
    void setHovered(int tag);
    void drawItem(QPainter& painter, int index) const;
    bool canChoose(int index) const;
    int nextFrom(int index, int step) const;
    int indexFor(int key) const;

    QList<Item> items_;
    int selectedTag_ = none;
    int hovered_ = none;
    int pressed_ = -1;
};

} // namespace orvane
