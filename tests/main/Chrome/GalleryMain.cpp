#include "main/Chrome/Dialogs.h"
#include "main/Chrome/PopUpButton.h"
#include "main/Chrome/Theme.h"
#include "tests/main/Chrome/Gallery.h"
#include "tests/main/Chrome/Picture.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QMenu>
#include <QTimer>
#include <QWidget>

#include <cstdio>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

bool paint(const QDir& folder, Qt::LayoutDirection direction, double scale)
{
    QApplication::setLayoutDirection(direction);
    const std::unique_ptr<QWidget> gallery(orvane::test::makeGallery());
    gallery->show();
    QApplication::processEvents();
    const QString side = direction == Qt::RightToLeft ? QStringLiteral("rtl") : QStringLiteral("ltr");
    const QString name = QStringLiteral("controls-%1-%2.png").arg(side).arg(scale, 0, 'f', 2);
    return orvane::test::pictureOf(*gallery, scale).save(folder.filePath(name));
}

bool save(const QDir& folder, const QString& name, QWidget& window)
{
    window.show();
    QApplication::processEvents();
    return orvane::test::pictureOf(window, 2).save(folder.filePath(name + QStringLiteral(".png")));
}

void fillMenu(QMenu& menu)
{
    for (const auto& title : {u"Undo"_s, u"Redo"_s, u"Select All"_s})
        menu.addAction(title, QKeySequence(u"Ctrl+Z"_s), [] {});
    menu.addSeparator();
    QAction* ticked = menu.addAction(u"Orvane Cursor"_s);
    ticked->setCheckable(true);
    ticked->setChecked(true);
    menu.addAction(u"Reload Suno"_s)->setEnabled(false);
    menu.addMenu(u"View"_s)->addAction(u"Nothing"_s);
    menu.setActiveAction(menu.actions().constFirst());
}

bool askedIsSaved(const QDir& folder)
{
    bool isSaved = false;
    QTimer::singleShot(0, qApp, [&] {
        QWidget* box = QApplication::activeModalWidget();
        isSaved = box && save(folder, u"dialog"_s, *box);
        if (box)
            box->close();
    });
    orvane::SystemDialogs().ask(nullptr, {u"Quit while downloading?"_s,
                                          u"What is saved already is kept; starting again goes on from there."_s,
                                          u"Keep downloading"_s, u"Quit anyway"_s});
    return isSaved;
}

bool paintWindows(const QDir& folder)
{
    QFileDialog panel(nullptr, u"Choose folder…"_s, QDir::rootPath());
    panel.setOption(QFileDialog::DontUseNativeDialog);

    QMenu menu;
    fillMenu(menu);

    orvane::PopUpButton picker;
    for (int row = 0; row < 30; ++row) {
        picker.addItem(u"Project %1 with its name"_s.arg(row));
        if (row == 0)
            picker.addSeparator();
    }
    picker.resize(300, picker.sizeHint().height());
    picker.show();
    picker.showPopup();
    return askedIsSaved(folder) && save(folder, u"panel"_s, panel) && save(folder, u"menu"_s, menu) &&
           save(folder, u"list"_s, *picker.view()->window());
}

} // namespace

// Usage: FOLDER. Paints the controls at several scales, in both directions, into FOLDER.
int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    orvane::Theme::apply(application);
    if (argc != 2) {
        std::fputs("usage: orvane_chrome_gallery FOLDER\n", stderr);
        return 2;
    }
    const QDir folder(QString::fromLocal8Bit(argv[1]));
    bool isDone = folder.mkpath(QStringLiteral("."));
    for (const auto direction : {Qt::LeftToRight, Qt::RightToLeft}) {
        for (const double scale : {1.0, 1.25, 1.5, 2.0})
            isDone = isDone && paint(folder, direction, scale);
    }
    QApplication::setLayoutDirection(Qt::LeftToRight);
    isDone = isDone && paintWindows(folder);
    return isDone ? 0 : 1;
}
