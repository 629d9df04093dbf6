#include "main/Chrome/ToolColumn.h"

#include "main/Chrome/Theme.h"

#include <QVBoxLayout>

namespace orvane {

ToolColumn::ToolColumn(QWidget* parent)
    : QScrollArea(parent)
{
    auto* column = new QWidget;
    rows_ = new QVBoxLayout(column);
    rows_->setContentsMargins(Theme::Space::medium, Theme::Space::medium, Theme::Space::medium, Theme::Space::medium);
    rows_->setSpacing(Theme::Space::medium);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setWidgetResizable(true);
    setWidget(column);
    viewport()->setAutoFillBackground(false);
    column->setAutoFillBackground(false);
}

void ToolColumn::add(QWidget* view, Height height)
{
    rows_->addWidget(view, height == Height::rest ? 1 : 0);
}

} // namespace orvane
