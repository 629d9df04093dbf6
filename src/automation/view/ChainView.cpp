#include "automation/view/ChainView.h"

#include "automation/view/Arrow.h"
#include "main/Chrome/RowKeys.h"
#include "main/Chrome/SideScroller.h"

#include <QHBoxLayout>

#include <algorithm>

namespace orvane {

ChainView::ChainView(const QList<Module>& modules, QWidget* parent)
    : QWidget(parent)
    , track_(new QWidget)
    , row_(new SideScroller(track_, Theme::card, this))
    , keys_(std::make_unique<RowKeys>(
          *this, [this] { return RowKeys::Place{.current = selected_, .count = static_cast<int>(cards_.size())}; },
          [this](int index) { goTo(index); }))
{
    buildCards(modules);
    auto* whole = new QVBoxLayout(this);
    whole->setContentsMargins({});
    whole->addWidget(row_);
    select(0);
}

ChainView::~ChainView() = default;

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
    keys_->watch(*card);
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

void ChainView::goTo(int index)
{
    select(index);
    cards_.at(index)->setFocus(Qt::TabFocusReason);
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

} // namespace orvane
