#include "platform/web/WebPane.h"

#include "platform/web/PageOverlay.h"
#include "platform/web/WebPage.h"
#include "platform/web/WebPopup.h"
#include "platform/web/WebProfile.h"
#include "tests/platform/web/PageServer.h"

#include <QApplication>
#include <QLabel>
#include <QMenu>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QWebEnginePage>
#include <QWebEngineView>

#include <csignal>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace orvane {
namespace {

using test::call;
using test::eventually;

const QByteArray opener =
    "<body style='margin:0'><button style='width:100vw;height:100vh' onclick='openOnce()'>in</button>"
    "<script>function openOnce() { if (!window.clicked) { window.clicked = true;"
    " window.opened = window.open('/signin', 'signin', 'width=300,height=300'); } }"
    "onmessage = event => { window.said = event.data; };</script>";

class WebPaneTest : public testing::Test
{
protected:
    WebPaneTest()
    {
        server.serve("/", opener);
        server.serve("/signin", test::Page{.body = "<title>sign in</title>", .headers = "Set-Cookie: user=me\r\n"});
        pane.resize(400, 300);
        pane.show();
        pane.activateWindow();
    }

    void loadOpener() { ASSERT_TRUE(test::load(pane.page(), server.url(u"/"_s))); }

    /// Clicks in the middle of the page until it takes notice of the first click: before it has been drawn it takes
    /// none.
    void click()
    {
        ASSERT_TRUE(eventually([this] {
            QWidget* target = pane.findChild<QWebEngineView*>()->focusProxy();
            if (target)
                QTest::mouseClick(target, Qt::LeftButton, Qt::NoModifier, target->rect().center());
            return call(pane.page(), u"return window.clicked === true;"_s).value.toBool();
        }));
    }

    /// Opens the sign-in by a click and waits for its page.
    void signIn()
    {
        loadOpener();
        click();
        ASSERT_TRUE(eventually([this] { return popUp() != nullptr; }));
        ASSERT_TRUE(eventually([this] {
            return popUp()->page().url() == server.url(u"/signin"_s) && !popUp()->page().enginePage().isLoading();
        }));
    }

    WebPopup* popUp() const { return pane.findChild<WebPopup*>(); }

    test::PageServer server;
    WebProfile profile{QString()};
    WebPane pane{profile};
};

} // namespace

TEST_F(WebPaneTest, aPopUpShowsItsAddressAndSharesCookies)
{
    signIn();
    WebPopup& dialog = *popUp();
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(dialog.windowTitle(), u"127.0.0.1"_s);
    const QLabel* address = dialog.findChild<QLabel*>();
    EXPECT_EQ(address->textFormat(), Qt::PlainText);
    EXPECT_EQ(address->text(), server.url(u"/signin"_s).toString());

    server.serve("/next", "<title>next</title>");
    ASSERT_TRUE(test::load(dialog.page(), server.url(u"/next"_s, u"localhost"_s)));
    EXPECT_EQ(address->text(), server.url(u"/next"_s, u"localhost"_s).toString());
    EXPECT_EQ(dialog.windowTitle(), u"localhost"_s);

    ASSERT_TRUE(test::load(pane.page(), server.url(u"/"_s)));
    EXPECT_EQ(server.cookiesSentTo("/"), "user=me");
}

TEST_F(WebPaneTest, aLongAddressKeepsItsHostInSight)
{
    WebPopup dialog(profile, &pane);
    dialog.resize(300, 300);
    dialog.show();
    server.serve("/" + QByteArray(300, 'x'), "long");
    ASSERT_TRUE(test::load(dialog.page(), server.url(u'/' + QString(300, u'x'))));
    const QString shown = dialog.findChild<QLabel*>()->text();
    EXPECT_TRUE(shown.startsWith(u"http://127.0.0.1:"_s)) << shown.toStdString();
    EXPECT_TRUE(shown.endsWith(u'…')) << shown.toStdString();
    dialog.setAttribute(Qt::WA_DeleteOnClose, false);
}

TEST_F(WebPaneTest, aPopUpSpeaksToItsOpenerAndClosesItself)
{
    signIn();
    const QPointer<WebPopup> dialog = popUp();
    dialog->page().run(u"opener.postMessage('signed in', '*'); window.close();"_s);
    ASSERT_TRUE(eventually([&] { return !dialog; }));
    EXPECT_TRUE(eventually([this] {
        return call(pane.page(), u"return window.said + window.opened.closed;"_s).text() == u"signed intrue"_s;
    }));
}

TEST_F(WebPaneTest, aPopUpThatTheUserClosesIsGone)
{
    signIn();
    const QPointer<WebPopup> dialog = popUp();
    dialog->close();
    EXPECT_TRUE(eventually([&] { return !dialog; }));
}

TEST_F(WebPaneTest, noWindowOpensWithoutAPersonsClick)
{
    loadOpener();
    EXPECT_EQ(call(pane.page(), u"return window.open('/signin') === null;"_s).value, QJsonValue(true));
    EXPECT_EQ(popUp(), nullptr);
}

TEST_F(WebPaneTest, noWindowOpensWhereTheyAreNotAllowed)
{
    pane.setPopUpsAllowed(false);
    loadOpener();
    click();
    ASSERT_TRUE(eventually([this] { return call(pane.page(), u"return window.opened;"_s).value != QJsonValue(); }));
    EXPECT_EQ(popUp(), nullptr);
    EXPECT_EQ(server.cookiesSentTo("/signin"), QByteArray());
}

TEST_F(WebPaneTest, aPageThatDiedOffersToReload)
{
    loadOpener();
    PageOverlay& overlay = *pane.findChild<PageOverlay*>();
    EXPECT_FALSE(overlay.isVisible());
    QSignalSpy stopped(&pane.page(), &WebPage::stoppedWorking);
    ::kill(pid_t(pane.page().enginePage().renderProcessPid()), SIGKILL);
    ASSERT_TRUE(eventually([&] { return stopped.size() == 1; }));
    EXPECT_TRUE(overlay.isVisible());
    EXPECT_EQ(overlay.geometry(), pane.rect());
    EXPECT_EQ(overlay.parentWidget(), &pane);
    EXPECT_EQ(overlay.findChild<QLabel*>()->text(), u"The page stopped working."_s);

    QSignalSpy finished(&pane.page(), &WebPage::finished);
    QTest::mouseClick(overlay.findChild<QPushButton*>(), Qt::LeftButton);
    ASSERT_TRUE(eventually([&] { return finished.size() == 1; }));
    EXPECT_FALSE(overlay.isVisible());
    EXPECT_EQ(call(pane.page(), u"return 1;"_s).value, QJsonValue(1));
}

TEST_F(WebPaneTest, f6LeavesThePageWhichNeverSeesIt)
{
    server.serve("/keys", "<textarea autofocus></textarea><script>window.keys = []; onkeydown = event => {"
                          " window.keys.push(event.key); event.preventDefault(); };</script>");
    ASSERT_TRUE(test::load(pane.page(), server.url(u"/keys"_s)));
    QSignalSpy left(&pane, &WebPane::leaveRequested);
    pane.setFocus();
    const auto press = [this](Qt::Key key) { QTest::keyClick(pane.windowHandle(), key); };
    const auto seen = [this] { return call(pane.page(), u"return window.keys.join();"_s).text().value_or(QString()); };
    // A page takes no key before it has been drawn.
    ASSERT_TRUE(eventually([&] {
        press(Qt::Key_F7);
        return seen().contains(u"F7"_s);
    }));
    EXPECT_TRUE(left.isEmpty());
    press(Qt::Key_F6);
    EXPECT_EQ(left.size(), 1);
    press(Qt::Key_F8);
    ASSERT_TRUE(eventually([&] { return seen().endsWith(u"F8"_s); }));
    EXPECT_FALSE(seen().contains(u"F6"_s));
}

TEST_F(WebPaneTest, theMenuIsShort)
{
    loadOpener();
    QWebEngineView* view = pane.findChild<QWebEngineView*>();
    Q_EMIT view->customContextMenuRequested(QPoint(10, 10));
    const QMenu* menu = pane.findChild<QMenu*>();
    ASSERT_NE(menu, nullptr);
    const QWebEnginePage& page = pane.page().enginePage();
    ASSERT_EQ(menu->actions().size(), 4);
    EXPECT_EQ(menu->actions().at(0), page.action(QWebEnginePage::Back));
    EXPECT_EQ(menu->actions().at(1), page.action(QWebEnginePage::Forward));
    EXPECT_EQ(menu->actions().at(2), page.action(QWebEnginePage::Reload));
    EXPECT_TRUE(menu->actions().at(3)->isSeparator());
}

TEST_F(WebPaneTest, aPaneThatGoesTakesItsPopUpsAlong)
{
    auto doomed = std::make_unique<WebPane>(profile);
    const QPointer<WebPage> opened = doomed->page().windowOpener();
    ASSERT_TRUE(opened);
    doomed.reset();
    EXPECT_FALSE(opened);
}

} // namespace orvane
