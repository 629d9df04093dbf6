#include "tests/e2e/World.h"

#include "main/Chrome/LogView.h"
#include "main/Chrome/StatusPill.h"
#include "main/Chrome/TickBox.h"
#include "main/Program/Program.h"
#include "main/Window/MainController.h"
#include "platform/web/WebPage.h"
#include "suno/view/DownloaderTab.h"
#include "suno/view/SunoTab.h"

#include <QApplication>
#include <qcoro/qcorotask.h>

#include <algorithm>

namespace orvane::test {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

demo::LibraryOptions shortLibrary(int tracks, int pageSize)
{
    return {.tracks = tracks, .pageSize = pageSize, .shortestSeconds = 1, .longestSeconds = 2};
}

World::World(const ProgramFolders& folders, const QString& destination, demo::LibraryOptions library)
    : service(std::move(library))
    , services(service.endpoints(), folders, dialogs)
    , delegate(services)
{
    // A closed window must not end the event loops that the next test waits in.
    QGuiApplication::setQuitOnLastWindowClosed(false);
    dressApplication(*qApp);
    services.session.setDestination(QUrl::fromLocalFile(destination));
    delegate.applicationDidFinishLaunching();
    watchPane();
}

void World::watchPane()
{
    QObject::connect(&pane().page(), &WebPage::finished, &pane(), [this] { ++loads_; });
    QObject::connect(&pane(), &SunoTab::captureEnded, &pane(), [this] { ++captures_; });
}

bool World::isQuiet() const
{
    return loads_ > 0 && captures_ >= loads_;
}

SunoTab& World::pane()
{
    return controller().suno();
}

bool World::waitUntil(const std::function<bool()>& seen)
{
    return person.waitUntil(seen, 120s);
}

bool World::pageHas(const QString& selector)
{
    const QString script = u"return !!document.querySelector(selector);"_s;
    const ScriptOutcome outcome = QCoro::waitFor(pane().page().callAsync(script, {{u"selector"_s, selector}}));
    return outcome.value.toBool();
}

bool World::clickInPageUntil(const QString& selector, const std::function<bool()>& seen)
{
    return waitUntil([&] {
        if (!seen() && pageHas(selector))
            person.clickInPage(pane(), selector);
        return person.waitUntil(seen, 700ms);
    });
}

bool World::signIn()
{
    const auto signedIn = [this] { return pageHas(u"#sign-out"_s); };
    const auto captured = [this] { return !services.session.token().isEmpty() && isQuiet(); };
    return clickInPageUntil(u"#sign-in"_s, signedIn) && waitUntil(captured);
}

bool World::capture()
{
    const int before = captures_;
    pane().captureToken();
    return waitUntil([this, before] { return captures_ > before; });
}

QWidget& World::control(const QString& name)
{
    auto* found = controller().downloader().findChild<QWidget*>(name);
    if (!found)
        qFatal("The window has no control of the name %s.", qUtf8Printable(name));
    return *found;
}

void World::tick(const QStringList& assets)
{
    for (TickBox* box : controller().downloader().findChildren<TickBox*>()) {
        if (box->isChecked() != assets.contains(box->objectName()))
            person.click(*box);
    }
}

bool World::startExport()
{
    const qsizetype before = log().size();
    if (!person.click(control(u"startButton"_s)))
        return false;
    // Where every answer is there by the time it is asked for, a short export is over before the click is.
    return services.session.downloadInProgress || log().sliced(before).contains(u"Querying page 1…"_s);
}

bool World::waitForEnd()
{
    return waitUntil([this] { return !services.session.downloadInProgress; });
}

QStringList World::log()
{
    const auto* view = controller().downloader().findChild<LogView*>();
    QStringList lines;
    for (int line = 0; line < view->lineCount(); ++line) {
        const QString text = view->lineText(line);
        lines.append(text.sliced(text.indexOf(u"] ") + 2));
    }
    return lines;
}

bool World::logHas(const QString& message)
{
    return waitUntil([this, &message] { return log().contains(message); });
}

QString World::pill()
{
    return static_cast<StatusPill&>(control(u"statusPill"_s)).text();
}

int World::assetRequests() const
{
    const QList<demo::SeenRequest> seen = service.requests();
    const auto isFile = [](const demo::SeenRequest& request) {
        // The page's own pictures come with the site's cookie.
        return request.cookie.isEmpty() && (request.target.endsWith(".mp3") || request.target.startsWith("/image/"));
    };
    return static_cast<int>(std::ranges::count_if(seen, isFile));
}

QList<demo::SeenRequest> World::feedRequests() const
{
    QList<demo::SeenRequest> feed = service.requests();
    feed.removeIf([](const demo::SeenRequest& request) { return !request.target.startsWith("/api/feed"); });
    return feed;
}

} // namespace orvane::test
