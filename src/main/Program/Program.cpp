#include "main/Program/Program.h"

#include "main/App/L10n.h"
#include "main/Chrome/Dialogs.h"
#include "main/Chrome/Theme.h"
#include "platform/desktop/SoleInstance.h"

#include <QLibraryInfo>
#include <QTranslator>

#include <cstdio>

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

std::optional<Farewell> farewellUnlessFirst(SoleInstance& instance, std::chrono::milliseconds patience)
{
    switch (instance.take(qgetenv("XDG_ACTIVATION_TOKEN"), patience)) {
    case SoleInstance::Standing::First:
        return std::nullopt;
    case SoleInstance::Standing::Second:
        return Farewell{.sentence = u"Orvane is already running; its window has been brought to the front."_s};
    case SoleInstance::Standing::Unanswered:
        break;
    }
    return Farewell{.sentence = u"Orvane is already running but does not answer; end it first, then start it again."_s,
                    .isUnanswered = true};
}

int sayFarewell(QApplication& application, const Farewell& farewell)
{
    std::fprintf(stderr, "%s\n", qUtf8Printable(farewell.sentence));
    if (!farewell.isUnanswered)
        return 0;
    dressApplication(application);
    SystemDialogs().tell(nullptr, farewell.sentence, {});
    return 1;
}

} // namespace orvane
