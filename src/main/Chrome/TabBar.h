#pragma once

#include <QList>
#include <QWidget>

#include <functional>
#include <memory>

class QScrollArea;

namespace orvane {

class CardView;
class RowKeys;
class SideScroller;
class TabButton;

/// The tools' tabs in a card. Where they do not fit it scrolls sideways, by wheel, trackpad and keyboard, and fades out
/// at an end only while there is more in that direction.
class TabBar : public QWidget
{
    Q_OBJECT

public:
    explicit TabBar(const QStringList& titles, QWidget* parent = nullptr);
    ~TabBar() override;

    /// Called with the index of the tab that the user chose, after it was selected here.
    std::function<void(int)> onSelect;

    int selected() const { return selected_; }

    /// Makes it the active tab and scrolls it into view. An index beyond the buttons does nothing.
    void select(int index);

    const QList<TabButton*>& buttons() const { return buttons_; }

    /// The end where the first tab is.
    QWidget* fadeLeading() const;
    /// The end where the last tab is.
    QWidget* fadeTrailing() const;
    QScrollArea* scroller() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void buildTrack(const QStringList& titles);
    void choose(int index);
    void placeParts();
    void goTo(int index);

    CardView* card_;
    QWidget* track_;
    SideScroller* row_;
    std::unique_ptr<RowKeys> keys_;
    QList<TabButton*> buttons_;
    int selected_ = 0;
};

} // namespace orvane
