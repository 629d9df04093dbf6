#include "demonstration/program/Demonstration.h"

#include "main/App/Session.h"
#include "main/Chrome/LogView.h"
#include "main/Chrome/TickBox.h"
#include "main/Window/AppDelegate.h"
#include "main/Window/MainController.h"
#include "main/Window/ProgramServices.h"
#include "platform/web/WebPage.h"
#include "suno/view/DownloaderTab.h"
#include "suno/view/SunoTab.h"

#include <QMainWindow>
#include <QPixmap>

#include <algorithm>
#include <cstdio>

namespace orvane::demo {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr QSize pictureSize{1320, 880};

} // namespace

Demonstration::Demonstration(StandInService& service, ProgramServices& services, AppDelegate& delegate, QString folder)
    : service_(service)
    , services_(services)
    , delegate_(delegate)
    , folder_(std::move(folder))
{
}

MainController& Demonstration::controller()
{
    return *delegate_.controller();
}

bool Demonstration::signIn()
{
    print(u"\nSigning in on the page in the left pane"_s);
    showWindow();
    SunoTab& pane = controller().suno();
    const auto pageAsks = [&pane] {
        const auto there = QCoro::waitFor(pane.page().callAsync(u"return !!document.querySelector('#sign-in');"_s));
        return there.value.toBool();
    };
    // Before the page has been drawn it takes no clicks, so a person clicks again.
    const auto clicked = [this, &pane, &pageAsks] {
        if (!services_.session.token().isEmpty())
            return true;
        if (pageAsks())
            person_.clickInPage(pane, u"#sign-in"_s);
        person_.waitUntil([this] { return !services_.session.token().isEmpty(); }, 3s);
        return !services_.session.token().isEmpty();
    };
    return check(person_.waitUntil(clicked, 60s), u"The token was captured."_s);
}

bool Demonstration::tickAllAssets()
{
    const QList<TickBox*> boxes = controller().downloader().findChildren<TickBox*>();
    for (TickBox* box : boxes) {
        if (!box->isChecked())
            person_.click(*box);
    }
    const auto isTicked = [](const TickBox* box) { return box->isChecked(); };
    return check(boxes.size() == 4 && std::ranges::all_of(boxes, isTicked), u"All four assets are ticked."_s);
}

void Demonstration::showWindow()
{
    // Screens that are none may be small; the picture shows the window in its usual size.
    delegate_.window()->resize(pictureSize);
    person_.waitUntil([this] { return controller().suno().width() > pictureSize.width() / 2; }, 10s);
}

bool Demonstration::takePicture()
{
    const QString path = folder_ + u"/window.png"_s;
    person_.waitUntil([] { return false; }, 500ms);
    print(u"\nA picture of the window: "_s + path);
    return check(delegate_.window()->grab().save(path), u"The picture was written."_s);
}

void Demonstration::print(const QString& line)
{
    std::printf("%s\n", qPrintable(line));
    std::fflush(stdout);
}

bool Demonstration::check(bool asExpected, const QString& sentence)
{
    print((asExpected ? u"ok: "_s : u"WRONG, expected: "_s) + sentence);
    return asExpected;
}

void Demonstration::printNewLines(QWidget& tool)
{
    const auto* log = tool.findChild<LogView*>();
    for (; printedLines_ < log->lineCount(); ++printedLines_)
        print(u"  "_s + log->lineText(printedLines_));
}

QWidget& Demonstration::control(QWidget& tool, const char* name)
{
    auto* found = tool.findChild<QWidget*>(QLatin1StringView(name));
    if (!found)
        qFatal("The window has no control of the name %s.", name);
    return *found;
}

} // namespace orvane::demo
