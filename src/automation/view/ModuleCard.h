#pragma once

#include "automation/Stage.h"

#include <QAbstractButton>
#include <QString>

#include <functional>

namespace orvane {

class TickBox;

/// One stage of the chain as a card: its number and state, its name, what it is set to, and for a stage that may be
/// left out the box that ticks it. A click selects it.
class ModuleCard : public QAbstractButton
{
    Q_OBJECT

public:
    struct Module
    {
        Stage stage = Stage::read;
        QString title;
        /// What it is set to, in a few words.
        QString summary;
        StageState state;
        /// The user may leave it out.
        bool isOptional = false;
        bool isTicked = true;

        bool operator==(const Module&) const = default;
    };

    explicit ModuleCard(const Module& module, QWidget* parent = nullptr);

    std::function<void()> onClick;
    std::function<void(bool isTicked)> onToggle;

    const Module& module() const { return module_; }

    void setState(const StageState& state);
    void setSummary(const QString& summary);
    void setTicked(bool isTicked);

    bool isSelected() const { return isSelected_; }

    /// Only the selected card takes the focus by Tab.
    void setSelected(bool isSelected);

    /// Absent for a stage that always goes.
    TickBox* toggle() const { return toggle_; }

    /// The words of the state, as they stand on the card.
    QString status() const;

    QSize sizeHint() const override;

    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void buildToggle();
    void placeToggle();
    void drawGround(QPainter& painter) const;
    void drawTexts(QPainter& painter) const;
    QRect room() const;
    void changed();

    Module module_;
    TickBox* toggle_ = nullptr;
    bool isSelected_ = false;
};

} // namespace orvane
