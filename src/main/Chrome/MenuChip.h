#pragma once

#include "main/Chrome/ToggleChip.h"

#include <QList>

class QMenu;

namespace orvane {

/// A chip that opens a menu of items. While the item of `offTag` is chosen it is dark and shows its own text; else it
/// is lit and shows the item's title.
class MenuChip : public ToggleChip
{
    Q_OBJECT

public:
    struct Item
    {
        QString title;
        int tag = 0;

        bool operator==(const Item&) const = default;
    };

    explicit MenuChip(const QString& text = {}, QWidget* parent = nullptr);
    ~MenuChip() override;

    const QList<Item>& items() const { return items_; }

    void setItems(const QList<Item>& items);

    int selectedTag() const { return selectedTag_; }

    /// Sends nothing: only `pick` does.
    void setSelectedTag(int tag);

    int offTag() const { return offTag_; }

    void setOffTag(int tag);

    /// The user's choice in the menu: the item with that tag becomes the selected one.
    void pick(int tag);

    /// Opens the menu below the chip and returns at once.
    void openMenu();

    /// The open menu, else null.
    QMenu* menu() const { return menu_; }

    QString shownText() const override;

Q_SIGNALS:
    /// Sent by every pick, also of the item that was selected already.
    void picked(int tag);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    int trailingRoom() const override;
    void drawTrailing(QPainter& painter, const QRect& rect, const QColor& colour) const override;

private:
    QString selectedTitle() const;
    void follow();
    void menuClosed();

    QList<Item> items_;
    int selectedTag_ = 0;
    int offTag_ = 0;
    QMenu* menu_ = nullptr;
};

} // namespace orvane
