#pragma once

#include "main/Chrome/FlowRows.h"

#include <QWidget>

namespace orvane {

/// Lays its views out in rows from the leading edge and is as high as its rows. Hidden views take no room.
class FlowStack : public QWidget
{
    Q_OBJECT

public:
    explicit FlowStack(QWidget* parent = nullptr);
    ~FlowStack() override;

    /// Takes the views and shows them in this order; `trailing` stay at the trailing edge of the last row. Views of an
    /// earlier call that are in neither list are let go of: hidden, without a parent, and their maker's again.
    void setViews(const QList<QWidget*>& views, const QList<QWidget*>& trailing = {});

    const QList<QWidget*>& views() const { return views_; }

    const QList<QWidget*>& trailing() const { return trailing_; }

    int columnSpacing() const { return rows_.columnSpacing; }

    void setColumnSpacing(int spacing);

    int rowSpacing() const { return rows_.rowSpacing; }

    void setRowSpacing(int spacing);

    bool centresRows() const { return rows_.centresRows; }

    void setCentresRows(bool centres);

    /// The height of all rows at the present width.
    int laidOutHeight() const { return laidOutHeight_; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    bool hasHeightForWidth() const override { return true; }

    int heightForWidth(int width) const override;

protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    FlowRows::Placement placement(int width) const;
    void takeIn(const QList<QWidget*>& views);
    void letGoOf(QWidget* view);
    void forget(QObject* view);
    void rowsChanged();
    void layOut();

    FlowRows rows_;
    QList<QWidget*> views_;
    QList<QWidget*> trailing_;
    int laidOutHeight_ = 0;
};

} // namespace orvane
