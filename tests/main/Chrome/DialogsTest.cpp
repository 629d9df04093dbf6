#include "main/Chrome/Dialogs.h"

#include <QApplication>
#include <QFileDialog>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <functional>
#include <gtest/gtest.h>
#include <memory>

using namespace Qt::StringLiterals;

namespace orvane::test {
namespace {

const Question question{.text = u"Quit <b>now</b>?"_s,
                        .informativeText = u"Saved <i>files</i> are kept."_s,
                        .firstButton = u"Keep downloading"_s,
                        .secondButton = u"Quit anyway"_s};

template <typename Dialog>
void whenOpen(std::function<void(Dialog&)> act)
{
    QTimer::singleShot(0, qApp, [act = std::move(act)] {
        auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
        ASSERT_TRUE(dialog);
        act(*dialog);
    });
}

QAbstractButton* buttonOf(const QMessageBox& box, const QString& text)
{
    for (QAbstractButton* button : box.buttons()) {
        if (button->text() == text)
            return button;
    }
    return nullptr;
}

bool askAnd(std::function<void(QMessageBox&)> act)
{
    whenOpen<QMessageBox>(std::move(act));
    return SystemDialogs().ask(nullptr, question);
}

TEST(SystemDialogs, theFirstButtonIsYesAndTheSecondNo)
{
    EXPECT_TRUE(askAnd([](QMessageBox& box) { buttonOf(box, question.firstButton)->click(); }));
    EXPECT_FALSE(askAnd([](QMessageBox& box) { buttonOf(box, question.secondButton)->click(); }));
}

TEST(SystemDialogs, returnIsTheFirstButtonAndEscapeTheSecond)
{
    EXPECT_TRUE(askAnd([](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Return); }));
    EXPECT_FALSE(askAnd([](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Escape); }));
}

TEST(SystemDialogs, closingAQuestionIsNo)
{
    EXPECT_FALSE(askAnd([](QMessageBox& box) { box.close(); }));
}

TEST(SystemDialogs, theButtonsStandInTheGivenOrderWithTheFirstAsDefault)
{
    askAnd([](QMessageBox& box) {
        QAbstractButton* first = buttonOf(box, question.firstButton);
        QAbstractButton* second = buttonOf(box, question.secondButton);
        EXPECT_EQ(box.buttons().size(), 2);
        EXPECT_LT(first->x(), second->x());
        EXPECT_EQ(box.defaultButton(), first);
        EXPECT_EQ(box.escapeButton(), second);
        box.close();
    });
}

TEST(SystemDialogs, bothTextsStandAsTheyAre)
{
    askAnd([](QMessageBox& box) {
        int found = 0;
        for (const QLabel* label : box.findChildren<QLabel*>()) {
            const bool isText = label->text() == question.text || label->text() == question.informativeText;
            found += isText ? 1 : 0;
            EXPECT_EQ(label->textFormat(), Qt::PlainText);
        }
        EXPECT_EQ(found, 2);
        box.close();
    });
}

TEST(SystemDialogs, anAlertHasOneButtonThatEndsIt)
{
    bool wasOpen = false;
    whenOpen<QMessageBox>([&wasOpen](QMessageBox& box) {
        wasOpen = true;
        EXPECT_EQ(box.buttons().size(), 1);
        EXPECT_EQ(box.text(), u"Could not save"_s);
        EXPECT_EQ(box.informativeText(), u"The disk is full."_s);
        QTest::keyClick(&box, Qt::Key_Escape);
    });
    SystemDialogs().tell(nullptr, u"Could not save"_s, u"The disk is full."_s);
    EXPECT_TRUE(wasOpen);
}

TEST(SystemDialogs, aQuestionWhoseWindowGoesAwayIsNo)
{
    auto window = std::make_unique<QWidget>();
    window->show();
    whenOpen<QMessageBox>([&window](QMessageBox&) { window.reset(); });
    EXPECT_FALSE(SystemDialogs().ask(window.get(), question));
}

TEST(SystemDialogs, aChosenFolderComesBack)
{
    const QTemporaryDir folder;
    whenOpen<QFileDialog>([](QFileDialog& panel) {
        EXPECT_EQ(panel.fileMode(), QFileDialog::Directory);
        EXPECT_TRUE(panel.testOption(QFileDialog::ShowDirsOnly));
        static_cast<QDialog&>(panel).accept();
    });
    const auto chosen = SystemDialogs().chooseFolder(nullptr, QUrl::fromLocalFile(folder.path()));
    ASSERT_TRUE(chosen);
    EXPECT_EQ(chosen->toLocalFile(), folder.path());
}

TEST(SystemDialogs, aChosenFileComesBack)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"tag.wav"_s);
    QFile(path).open(QIODevice::WriteOnly);
    whenOpen<QFileDialog>([&path](QFileDialog& panel) {
        EXPECT_EQ(panel.fileMode(), QFileDialog::ExistingFile);
        EXPECT_EQ(panel.nameFilters(), QStringList{u"*.wav *.mp3"_s});
        EXPECT_EQ(panel.directory().path(), QFileInfo(path).path());
        panel.selectFile(path);
        static_cast<QDialog&>(panel).accept();
    });
    const QUrl start = QUrl::fromLocalFile(folder.path());
    const auto chosen = SystemDialogs().chooseFile(nullptr, start, {u"wav"_s, u"mp3"_s});
    ASSERT_TRUE(chosen);
    EXPECT_EQ(chosen->toLocalFile(), path);
}

TEST(SystemDialogs, aClosedPanelGivesNoFile)
{
    whenOpen<QFileDialog>([](QFileDialog& panel) { panel.reject(); });
    EXPECT_FALSE(SystemDialogs().chooseFile(nullptr, QUrl::fromLocalFile(QDir::tempPath()), {u"wav"_s}));
}

TEST(SystemDialogs, aClosedPanelGivesNoFolder)
{
    whenOpen<QFileDialog>([](QFileDialog& panel) { panel.reject(); });
    EXPECT_FALSE(SystemDialogs().chooseFolder(nullptr, QUrl::fromLocalFile(QDir::tempPath())));
}

} // namespace
} // namespace orvane::test
