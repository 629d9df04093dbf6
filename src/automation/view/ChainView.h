#pragma once

#include "automation/view/ModuleCard.h"

#include <QList>
#include <QWidget>

#include <functional>
#include <memory>

class QHBoxLayout;

namespace orvane {

class RowKeys;
class SideScroller;

/// The stages of a run as a row of cards that scrolls sideways. One of them is selected.
class ChainView : public QWidget
{
    Q_OBJECT

public:
    using Module = ModuleCard::Module;

    explicit ChainView(const QList<Module>& modules, QWidget* parent = nullptr);
    ~ChainView() override;

    /// Called with the place of the card that was selected, and of the one whose box the user ticked.
    std::function<void(int index)> onSelect;
    std::function<void(int index, bool isTicked)> onToggle;

    const QList<ModuleCard*>& cards() const { return cards_; }

    int selected() const { return selected_; }

    /// An index beyond the cards does nothing.
    void select(int index);

    void setState(Stage stage, const StageState& state);
    void setSummary(Stage stage, const QString& summary);
    /// All waiting, without a note.
    void resetStates();
    void setTicked(Stage stage, bool isTicked);
    bool isTicked(Stage stage) const;

private:
    void buildCards(const QList<Module>& modules);
    void addCard(QHBoxLayout* stack, const Module& module);
    ModuleCard* card(Stage stage) const;
    void goTo(int index);

    QWidget* track_;
    SideScroller* row_;
    std::unique_ptr<RowKeys> keys_;
    QList<ModuleCard*> cards_;
    int selected_ = 0;
};

} // namespace orvane
