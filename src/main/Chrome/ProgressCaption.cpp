#include "main/Chrome/ProgressCaption.h"

#include "main/Chrome/CardView.h"
#include "main/Chrome/ElidedLabel.h"
#include "main/Chrome/Theme.h"

#include <QHBoxLayout>
#include <QLabel>

namespace orvane {

using namespace Qt::Literals::StringLiterals;

ProgressCaption::ProgressCaption(QWidget* parent)
    : QWidget(parent)
    , text_(new ElidedLabel({}, this))
    , timeLeft_(makeNote({}, this))
{
    text_->setObjectName(u"progressLabel"_s);
    text_->setElideMode(Qt::ElideRight);
    text_->setFont(Theme::small());
    timeLeft_->setObjectName(u"timeLeft"_s);
    timeLeft_->setWordWrap(false);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins({});
    row->addWidget(text_, 1);
    row->addWidget(timeLeft_);
}

void ProgressCaption::tell(const QString& text, const QString& timeLeft)
{
    text_->setText(text);
    timeLeft_->setText(timeLeft);
}

void ProgressCaption::clear()
{
    tell({});
}

void ProgressCaption::clearTimeLeft()
{
    timeLeft_->clear();
}

} // namespace orvane
