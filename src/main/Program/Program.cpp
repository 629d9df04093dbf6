#include "main/Program/Program.h"

#include "main/App/L10n.h"
#include "main/Chrome/Theme.h"

#include <QLibraryInfo>
#include <QTranslator>

namespace orvane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// The texts of Qt's own dialogs, in the program's language.
void installQtTranslations(QApplication& application)
{
    auto* translator = new QTranslator(&application);
    const QString folder = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
    if (translator->load(QLocale(L10n::code()), u"qtbase"_s, u"_"_s, folder))
        QCoreApplication::installTranslator(translator);
}

} // namespace

void prepareApplication()
{
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QCoreApplication::setApplicationName(u"orvane"_s);
    QGuiApplication::setApplicationDisplayName(u"Orvane"_s);
    QGuiApplication::setDesktopFileName(u"example.orvane.Orvane"_s);
}

void dressApplication(QApplication& application)
{
    L10n::applyLayoutDirection();
    QGuiApplication::setLayoutDirection(L10n::isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    installQtTranslations(application);
    Theme::apply(application);
}

} // namespace orvane
