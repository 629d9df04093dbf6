#include "main/Chrome/MenuChip.h"

#include "main/Chrome/Paint.h"

#include <QKeyEvent>
#include <QMenu>

namespace orvane {
namespace {

constexpr int markWidth = 14;

// An ampersand in a title is a letter, and no shortcut.
QString inMenu(const QString& title)
{
    return QString(title).replace(u'&', QStringLiteral("&&"));
}

} // namespace

MenuChip::MenuChip(const QString& text, QWidget* parent)
    : ToggleChip(text, parent)
{
    connect(this, &QAbstractButton::clicked, this, &MenuChip::openMenu);
    follow();
}

MenuChip::~MenuChip()
{
    // A menu that is open closes after this object's fields are gone.
    if (menu_)
        menu_->disconnect(this);
}

void MenuChip::setItems(const QList<Item>& items)
{
    items_ = items;
    follow();
}

void MenuChip::setSelectedTag(int tag)
{
    selectedTag_ = tag;
    follow();
}

void MenuChip::setOffTag(int tag)
{
    offTag_ = tag;
    follow();
}

void MenuChip::pick(int tag)
{
    setSelectedTag(tag);
    Q_EMIT picked(tag);
}

void MenuChip::follow()
{
    setLit(selectedTag_ != offTag_);
    const QString title = selectedTitle();
    const bool isNamed = !text().isEmpty() && !title.isEmpty();
    setAccessibleName(isNamed ? QStringLiteral("%1: %2").arg(text(), title) : text() + title);
    updateGeometry();
    update();
}

QString MenuChip::selectedTitle() const
{
    for (const Item& item : items_) {
        if (item.tag == selectedTag_)
            return item.title;
    }
    return {};
}

QString MenuChip::shownText() const
{
    const QString title = selectedTitle();
    const bool showsOwn = title.isEmpty() || (selectedTag_ == offTag_ && !text().isEmpty());
    return showsOwn ? text() : title;
}

void MenuChip::openMenu()
{
    if (menu_ || items_.isEmpty())
        return;
    menu_ = new QMenu(this);
    menu_->setAttribute(Qt::WA_DeleteOnClose);
    for (const Item& item : items_) {
        QAction* action = menu_->addAction(inMenu(item.title));
        action->setCheckable(true);
        action->setChecked(item.tag == selectedTag_);
        connect(action, &QAction::triggered, this, [this, tag = item.tag] { pick(tag); });
    }
    connect(menu_, &QMenu::aboutToHide, this, &MenuChip::menuClosed);
    setOpen(true);
    const QPoint below =
        isRightToLeft() ? QPoint(width() - menu_->sizeHint().width(), height() + 2) : QPoint(0, height() + 2);
    menu_->popup(mapToGlobal(below));
}

void MenuChip::menuClosed()
{
    menu_ = nullptr;
    setOpen(false);
}

void MenuChip::keyPressEvent(QKeyEvent* event)
{
    const bool opens = event->key() == Qt::Key_Down || event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (opens)
        openMenu();
    else
        ToggleChip::keyPressEvent(event);
}

int MenuChip::trailingRoom() const
{
    return markWidth;
}

void MenuChip::drawTrailing(QPainter& painter, const QRect& rect, const QColor& colour) const
{
    Paint::chevron(painter, rect, colour);
}

} // namespace orvane
