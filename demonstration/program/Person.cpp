#include "demonstration/program/Person.h"

#include "platform/web/WebPage.h"
#include "suno/view/SunoTab.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QJsonArray>
#include <QScrollArea>
#include <QTest>
#include <QTimer>
#include <QWebEngineView>
#include <qcoro/qcorotask.h>

namespace orvane::demo {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr std::chrono::milliseconds glance{10};

/// Middle of the element, in the page's own points.
const QString findMiddle = u"const box = document.querySelector(selector).getBoundingClientRect();"
                           "return [box.x + box.width / 2, box.y + box.height / 2];"_s;

} // namespace

void Person::lookAt(QWidget& control)
{
    for (QWidget* above = control.parentWidget(); above; above = above->parentWidget()) {
        if (auto* area = qobject_cast<QScrollArea*>(above))
            area->ensureWidgetVisible(&control);
    }
}

bool Person::click(QWidget& control)
{
    return click(control, control.rect().center());
}

bool Person::click(QWidget& control, const QPoint& place)
{
    if (!control.isVisible() || !control.isEnabled())
        return false;
    lookAt(control);
    QTest::mouseClick(&control, Qt::LeftButton, {}, place);
    return true;
}

bool Person::clickInPage(SunoTab& pane, const QString& selector)
{
    const ScriptOutcome found = QCoro::waitFor(pane.page().callAsync(findMiddle, {{u"selector"_s, selector}}));
    const QJsonArray middle = found.value.toArray();
    auto* view = pane.findChild<QWebEngineView*>();
    if (middle.size() != 2 || !view || !view->focusProxy())
        return false;
    const QPointF point = QPointF(middle[0].toDouble(), middle[1].toDouble()) * pane.zoom();
    QTest::mouseClick(view->focusProxy(), Qt::LeftButton, {}, point.toPoint());
    return true;
}

bool Person::waitUntil(const std::function<bool()>& seen, std::chrono::milliseconds patience)
{
    QElapsedTimer watch;
    watch.start();
    while (!seen()) {
        if (watch.hasExpired(patience.count()))
            return false;
        QEventLoop loop;
        QTimer::singleShot(glance, &loop, &QEventLoop::quit);
        loop.exec();
    }
    return true;
}

} // namespace orvane::demo
