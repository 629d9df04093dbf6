#include "suno/view/WorkspacePicker.h"

#include "main/App/L10n.h"
#include "main/App/Session.h"
#include "main/Chrome/CardView.h"
#include "main/Chrome/DarkField.h"
#include "main/Chrome/PopUpButton.h"
#include "main/Chrome/Theme.h"

#include <QLabel>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace orvane {

using namespace Qt::Literals::StringLiterals;

WorkspacePicker::WorkspacePicker(const Session& session, const QString& sunoSiteDomain, QWidget* parent)
    : QWidget(parent)
    , session_(session)
    , sunoSiteDomain_(sunoSiteDomain)
    , choices_(workspaceChoices({}))
{
    buildRows();
    fillRows();
    workspaceChanged();
}

void WorkspacePicker::buildRows()
{
    QLabel* label = makeNote(L10n::t(L10n::Key::workspace), this);
    picker_ = new PopUpButton(this);
    picker_->setObjectName(u"workspacePicker"_s);
    picker_->setAccessibleName(label->text());
    label->setBuddy(picker_);
    manualField_ = DarkField::make(u"Paste a workspace ID"_s, this);
    manualField_->setObjectName(u"manualField"_s);
    manualField_->setAccessibleName(manualField_->placeholderText());

    auto* labelled = new QVBoxLayout;
    labelled->setSpacing(Theme::Space::tight);
    labelled->addWidget(label);
    labelled->addWidget(picker_);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->setSpacing(Theme::Space::small);
    column->addLayout(labelled);
    column->addWidget(manualField_);
    connect(picker_, &PopUpButton::currentIndexChanged, this, &WorkspacePicker::workspaceChanged);
    connect(picker_, &PopUpButton::activated, this, &WorkspacePicker::offerTyping);
}

void WorkspacePicker::fillRows()
{
    picker_->clear();
    for (qsizetype row = 0; row < choices_.size(); ++row) {
        if (startsSection(choices_, row))
            picker_->addSeparator();
        picker_->addItem(title(choices_.at(row)), row);
    }
}

void WorkspacePicker::rebuild(const QList<Workspace>& workspaces)
{
    const WorkspaceChoice previous = selectedChoice();
    const std::optional<QString> identifier = selectedWorkspaceID();
    choices_ = workspaceChoices(workspaces);
    {
        const QSignalBlocker quiet(picker_);
        fillRows();
        picker_->setCurrentIndex(picker_->findData(rowToSelect(choices_, previous, identifier)));
    }
    workspaceChanged();
}

WorkspaceChoice WorkspacePicker::selectedChoice() const
{
    bool isRow = false;
    const qsizetype row = picker_->currentData().toLongLong(&isRow);
    return isRow ? choices_.at(row) : WorkspaceChoice{};
}

std::optional<QString> WorkspacePicker::selectedWorkspaceID() const
{
    return workspaceID(
        selectedChoice(),
        {.openSunoURL = session_.openSunoURL, .sunoSiteDomain = sunoSiteDomain_, .typed = manualField_->text()});
}

void WorkspacePicker::workspaceChanged()
{
    manualField_->setVisible(selectedChoice().kind == WorkspaceChoice::Kind::manual);
}

void WorkspacePicker::offerTyping()
{
    if (!manualField_->isHidden())
        manualField_->setFocus();
}

} // namespace orvane
