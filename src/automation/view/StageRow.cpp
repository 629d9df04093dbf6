#include "automation/view/StageRow.h"

#include "automation/view/LightView.h"
#include "automation/view/StageLook.h"
#include "main/Chrome/CardView.h"

#include <QHBoxLayout>
#include <QLabel>

namespace orvane {

using namespace Qt::Literals::StringLiterals;

StageRow::StageRow(QWidget* parent)
    : QWidget(parent)
    , mark_(new LightView(this))
    , name_(new QLabel(this))
    , note_(makeNote({}, this))
{
    name_->setTextFormat(Qt::PlainText);
    name_->setFont(Theme::font(13, QFont::DemiBold));
    note_->setObjectName(u"stageNote"_s);
    note_->setAlignment(trailingEdge());
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins({});
    row->setSpacing(Theme::Space::small);
    row->addWidget(mark_);
    row->addWidget(name_);
    row->addWidget(note_, 1);
}

void StageRow::setName(const QString& name)
{
    name_->setText(name);
}

void StageRow::apply(const StageState& state)
{
    mark_->setState(state.kind);
    note_->setText(breakable(StageLook::noteOf(state)));
    QPalette palette = note_->palette();
    palette.setColor(QPalette::WindowText, StageLook::colourOf(state.kind));
    note_->setPalette(palette);
}

QString StageRow::note() const
{
    return note_->text();
}

QColor StageRow::noteColour() const
{
    return note_->palette().color(QPalette::WindowText);
}

} // namespace orvane
