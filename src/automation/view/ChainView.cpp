#include "automation/view/ChainView.h"

#include "automation/view/Arrow.h"
#include "main/Chrome/RowKeys.h"
#include "main/Chrome/SideScroller.h"

#include <QHBoxLayout>
#include <QKeyEvent>

#include <algorithm>

namespace orvane {

ChainView::ChainView(const QList<Module>& modules, QWidget* parent)
    : QWidget(parent)
    , track_(new QWidget)
    , row_(new SideScroller(track_, Theme::card, this))
{
    buildCards(modules);
    auto* whole = new QVBoxLayout(this);
    whole->setContentsMargins({});
    whole->addWidget(row_);
    select(0);
}

void ChainView::buildCards(const QList<Module>& modules)
{
    auto* stack = new QHBoxLayout(track_);
    stack->setContentsMargins({});
    stack->setSpacing(0);
    for (const Module& module : modules)
        addCard(stack, module);
    stack->addStretch();
}

void ChainView::addCard(QHBoxLayout* stack, const Module& module)
{
    const int index = static_cast<int>(cards_.size());
    if (index > 0)
        stack->addWidget(new Arrow(track_));
    auto* card = new ModuleCard(module, track_);
    card->onClick = [this, index] { select(index); };
    card->onToggle = [this, index](bool isTicked) {
        if (onToggle)
            onToggle(index, isTicked);
    };
    card->installEventFilter(this);
    stack->addWidget(card);
    cards_.append(card);
}

void ChainView::select(int index)
{
    if (index < 0 || index >= cards_.size())
        return;
    selected_ = index;
    for (int each = 0; each < cards_.size(); ++each)
        cards_.at(each)->setSelected(each == index);
    row_->scrollIntoView(cards_.at(index));
    if (onSelect)
        onSelect(index);
}

ModuleCard* ChainView::card(Stage stage) const
{
    const auto isOf = [stage](const ModuleCard* card) { return card->module().stage == stage; };
    const auto found = std::ranges::find_if(cards_, isOf);
    return found == cards_.end() ? nullptr : *found;
}

void ChainView::setState(Stage stage, const StageState& state)
{
    ModuleCard* found = card(stage);
    if (!found)
        return;
    found->setState(state);
    if (state.kind == StageState::Kind::running)
        row_->scrollIntoView(found);
}

void ChainView::setSummary(Stage stage, const QString& summary)
{
    if (ModuleCard* found = card(stage))
        found->setSummary(summary);
}

void ChainView::resetStates()
{
    for (ModuleCard* each : cards_)
        each->setState(StageState::waiting());
}

void ChainView::setTicked(Stage stage, bool isTicked)
{
    if (ModuleCard* found = card(stage))
        found->setTicked(isTicked);
}

bool ChainView::isTicked(Stage stage) const
{
    const ModuleCard* found = card(stage);
    return found && found->module().isTicked;
}

int ChainView::indexFor(int key) const
{
    return indexForKey(key, *this, selected_, static_cast<int>(cards_.size()));
}

bool ChainView::eventFilter(QObject* watched, QEvent* event)
{
    // The scroll area between would take the arrow keys for itself.
    if (event->type() == QEvent::KeyPress) {
        auto* key = static_cast<QKeyEvent*>(event);
        if (indexFor(key->key()) >= 0) {
            keyPressEvent(key);
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void ChainView::keyPressEvent(QKeyEvent* event)
{
    const int index = indexFor(event->key());
    if (index < 0)
        return QWidget::keyPressEvent(event);
    select(index);
    cards_.at(index)->setFocus(Qt::TabFocusReason);
}

} // namespace orvane
