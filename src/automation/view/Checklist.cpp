#include "automation/view/Checklist.h"

#include "automation/view/PrereqRow.h"
#include "main/App/L10n.h"

#include <QLabel>
#include <QVBoxLayout>

namespace orvane {

Checklist::Checklist(QWidget* parent)
    : CardView(parent)
    , column_(new QVBoxLayout(this))
{
    const QString title = L10n::t(L10n::Key::beforeItCanRun);
    setAccessibleName(title);
    column_->setContentsMargins(Theme::Space::large, Theme::Space::medium, Theme::Space::large, Theme::Space::large);
    column_->setSpacing(Theme::Space::medium);
    column_->addWidget(makeHeading(title, this));
    hide();
}

void Checklist::rebuild(const QList<Prerequisite>& prerequisites)
{
    qDeleteAll(rows_);
    rows_.clear();
    prerequisites_ = prerequisites;
    for (int index = 0; index < prerequisites_.size(); ++index) {
        auto* row = new PrereqRow(this);
        row->onFix = [this](int pane) {
            if (onFix)
                onFix(pane);
        };
        column_->addWidget(row);
        rows_.append(row);
    }
}

int Checklist::refresh()
{
    int unmet = 0;
    for (int index = 0; index < rows_.size(); ++index) {
        if (!rows_.at(index)->update(prerequisites_.at(index)))
            ++unmet;
    }
    setVisible(unmet > 0);
    return unmet;
}

} // namespace orvane
