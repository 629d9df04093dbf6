#include "main/Chrome/Dialogs.h"

#include "main/App/L10n.h"

#include <QFileDialog>
#include <QLabel>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>

namespace orvane {
namespace {

QMessageBox* makeBox(QWidget* over, const QString& text, const QString& informativeText)
{
    auto* box = new QMessageBox(over);
    box->setTextFormat(Qt::PlainText);
    box->setText(text);
    box->setInformativeText(informativeText);
    // The box guesses the second text's format, and outside words may look like markup.
    for (QLabel* label : box->findChildren<QLabel*>())
        label->setTextFormat(Qt::PlainText);
    return box;
}

// Runs the box's own event loop. The parent may be deleted meanwhile, and the box with it.
bool answersWith(const QPointer<QMessageBox>& box, const QPushButton* button)
{
    box->exec();
    const bool answer = box && box->clickedButton() == button;
    delete box;
    return answer;
}

} // namespace

bool SystemDialogs::ask(QWidget* over, const Question& question)
{
    QMessageBox* box = makeBox(over, question.text, question.informativeText);
    QPushButton* first = box->addButton(question.firstButton, QMessageBox::AcceptRole);
    QPushButton* second = box->addButton(question.secondButton, QMessageBox::RejectRole);
    box->setDefaultButton(first);
    box->setEscapeButton(second);
    return answersWith(box, first);
}

void SystemDialogs::tell(QWidget* over, const QString& text, const QString& informativeText)
{
    QMessageBox* box = makeBox(over, text, informativeText);
    QPushButton* ok = box->addButton(L10n::t(L10n::Key::ok), QMessageBox::AcceptRole);
    box->setDefaultButton(ok);
    box->setEscapeButton(ok);
    answersWith(box, ok);
}

std::optional<QUrl> SystemDialogs::chooseFolder(QWidget* over, const QUrl& startingAt)
{
    const QPointer<QFileDialog> panel = new QFileDialog(over, L10n::t(L10n::Key::chooseFolder));
    panel->setFileMode(QFileDialog::Directory);
    panel->setOption(QFileDialog::ShowDirsOnly);
    panel->setDirectoryUrl(startingAt);
    std::optional<QUrl> chosen;
    if (panel->exec() == QDialog::Accepted && panel && !panel->selectedUrls().isEmpty())
        chosen = panel->selectedUrls().constFirst();
    delete panel;
    return chosen;
}

} // namespace orvane
