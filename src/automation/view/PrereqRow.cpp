#include "automation/view/PrereqRow.h"

#include "automation/view/LightView.h"
#include "main/Chrome/CardView.h"
#include "main/Chrome/ElidedLabel.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace orvane {

using namespace Qt::Literals::StringLiterals;

PrereqRow::PrereqRow(QWidget* parent)
    : QWidget(parent)
    , mark_(new LightView(this))
    , title_(new QLabel(this))
    , detail_(new ElidedLabel({}, this))
    , fixButton_(new QPushButton(this))
{
    title_->setObjectName(u"title"_s);
    title_->setTextFormat(Qt::PlainText);
    title_->setWordWrap(true);
    title_->setAlignment(leadingEdge());
    detail_->setObjectName(u"detail"_s);
    detail_->setFont(Theme::small());
    fixButton_->setObjectName(u"fix"_s);
    connect(fixButton_, &QPushButton::clicked, this, [this] {
        if (onFix)
            onFix(pane_);
    });

    auto* texts = new QVBoxLayout;
    texts->setSpacing(1);
    texts->addWidget(title_);
    texts->addWidget(detail_);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins({});
    row->setSpacing(Theme::Space::small);
    row->addWidget(mark_);
    row->addLayout(texts, 1);
    row->addWidget(fixButton_);
}

bool PrereqRow::update(const Prerequisite& prerequisite)
{
    const bool isMet = prerequisite.isMet();
    mark_->setState(isMet ? LightView::State::done : LightView::State::waiting);
    title_->setText(prerequisite.title);
    detail_->setText(prerequisite.detail());
    QPalette palette = detail_->palette();
    palette.setColor(QPalette::WindowText, isMet ? Theme::ok : Theme::textMuted);
    detail_->setPalette(palette);
    fixButton_->setText(prerequisite.fix);
    fixButton_->setVisible(!isMet && prerequisite.tab.has_value());
    pane_ = prerequisite.tab.value_or(0);
    return isMet;
}

} // namespace orvane
