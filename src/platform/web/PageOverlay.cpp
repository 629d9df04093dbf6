#include "platform/web/PageOverlay.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace orvane {

PageOverlay::PageOverlay(const QString& sentence, const QString& button, QWidget* parent)
    : QWidget(parent)
{
    setAutoFillBackground(true);
    setAccessibleName(sentence);
    auto* label = new QLabel(sentence, this);
    label->setTextFormat(Qt::PlainText);
    label->setAlignment(Qt::AlignCenter);
    label->setWordWrap(true);
    auto* reload = new QPushButton(button, this);
    connect(reload, &QPushButton::clicked, this, &PageOverlay::reloadRequested);
    setFocusProxy(reload);

    auto* column = new QVBoxLayout(this);
    column->addStretch(2);
    column->addWidget(label);
    column->addSpacing(12);
    column->addWidget(reload, 0, Qt::AlignHCenter);
    column->addStretch(3);
}

} // namespace orvane
