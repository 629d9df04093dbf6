#include "main/Chrome/Dialogs.h"

#include "main/App/L10n.h"
#include "main/Chrome/Theme.h"

#include <QFileDialog>
#include <QGridLayout>
#include <QLabel>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>

namespace orvane {
namespace {

constexpr int leastWidth = 360;

void makeRoom(QMessageBox& box)
{
    if (auto* grid = qobject_cast<QGridLayout*>(box.layout()))
        grid->addItem(new QSpacerItem(leastWidth, 0), grid->rowCount(), 0, 1, grid->columnCount());
}

// The box guesses the second text's format, and outside words may look like markup.
void dress(QLabel& label, bool isQuestion)
{
    label.setTextFormat(Qt::PlainText);
    label.setFont(isQuestion ? Theme::font(14, QFont::DemiBold) : Theme::body());
    QPalette palette = label.palette();
    palette.setColor(QPalette::WindowText, isQuestion ? Theme::textPrimary : Theme::textSecond);
    label.setPalette(palette);
}

QMessageBox* makeBox(QWidget* over, const QString& text, const QString& informativeText)
{
    auto* box = new QMessageBox(over);
    box->setTextFormat(Qt::PlainText);
    box->setText(text);
    box->setInformativeText(informativeText);
    makeRoom(*box);
    const QList<QLabel*> labels = box->findChildren<QLabel*>();
    for (QLabel* label : labels)
        dress(*label, label->text() == text);
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

// As above.
std::optional<QUrl> chosenIn(const QPointer<QFileDialog>& panel, const QUrl& startingAt)
{
    panel->setDirectoryUrl(startingAt);
    std::optional<QUrl> chosen;
    if (panel->exec() == QDialog::Accepted && panel && !panel->selectedUrls().isEmpty())
        chosen = panel->selectedUrls().constFirst();
    delete panel;
    return chosen;
}

// "*.wav *.mp3": without a name before it, such a filter is shown as it stands.
QString filterFor(const QStringList& extensions)
{
    QStringList patterns;
    for (const QString& extension : extensions)
        patterns.append(QStringLiteral("*.") + extension);
    return patterns.join(u' ');
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
    return chosenIn(panel, startingAt);
}

std::optional<QUrl> SystemDialogs::chooseFile(QWidget* over, const QUrl& startingAt, const QStringList& extensions)
{
    const QPointer<QFileDialog> panel = new QFileDialog(over, L10n::t(L10n::Key::chooseFile));
    panel->setFileMode(QFileDialog::ExistingFile);
    panel->setNameFilter(filterFor(extensions));
    return chosenIn(panel, startingAt);
}

} // namespace orvane
