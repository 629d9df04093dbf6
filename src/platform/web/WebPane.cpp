#include "platform/web/WebPane.h"

#include "platform/web/PageOverlay.h"
#include "platform/web/WebPage.h"
#include "platform/web/WebPopup.h"
#include "platform/web/WebProfile.h"

#include <QMenu>
#include <QShortcut>
#include <QVBoxLayout>
#include <QWebEngineContextMenuRequest>
#include <QWebEngineHistory>
#include <QWebEngineView>

namespace orvane {

WebPane::WebPane(WebProfile& profile, QWidget* parent)
    : WebPane(profile, Words(), parent)
{
}

WebPane::WebPane(WebProfile& profile, const Words& words, QWidget* parent)
    : QWidget(parent)
    , words_(words)
    , page_(new WebPage(profile, this))
{
    buildView();
    buildOverlay();
    setPopUpsAllowed(true);
    auto* leave = new QShortcut(QKeySequence(Qt::Key_F6), this, nullptr, nullptr, Qt::WidgetWithChildrenShortcut);
    connect(leave, &QShortcut::activated, this, &WebPane::leaveRequested);
}

WebPane::~WebPane()
{
    qDeleteAll(findChildren<WebPopup*>(Qt::FindDirectChildrenOnly));
    delete view_;
    delete page_;
}

void WebPane::buildView()
{
    view_ = new QWebEngineView(this);
    view_->setPage(&page_->enginePage());
    view_->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(view_, &QWidget::customContextMenuRequested, this, &WebPane::showMenu);
    setFocusProxy(view_);
    auto* fill = new QVBoxLayout(this);
    fill->setContentsMargins(0, 0, 0, 0);
    fill->addWidget(view_);
}

void WebPane::buildOverlay()
{
    // A sibling of the view: the view raises its own surface over its children.
    overlay_ = new PageOverlay(words_.stopped, words_.reload, this);
    overlay_->hide();
    connect(overlay_, &PageOverlay::reloadRequested, page_, &WebPage::reload);
    connect(page_, &WebPage::stoppedWorking, this, &WebPane::showStopped);
    connect(page_, &WebPage::started, overlay_, &QWidget::hide);
}

void WebPane::setPopUpsAllowed(bool allowed)
{
    page_->windowOpener = allowed ? std::function<WebPage*()>([this] { return openPopUp(); }) : nullptr;
}

void WebPane::undo()
{
    view_->triggerPageAction(QWebEnginePage::Undo);
}

void WebPane::redo()
{
    view_->triggerPageAction(QWebEnginePage::Redo);
}

void WebPane::cut()
{
    view_->triggerPageAction(QWebEnginePage::Cut);
}

void WebPane::copy()
{
    view_->triggerPageAction(QWebEnginePage::Copy);
}

void WebPane::paste()
{
    view_->triggerPageAction(QWebEnginePage::Paste);
}

void WebPane::selectAll()
{
    view_->triggerPageAction(QWebEnginePage::SelectAll);
}

WebPage* WebPane::openPopUp()
{
    auto* popUp = new WebPopup(page_->profile(), this);
    popUp->show();
    return &popUp->page();
}

void WebPane::showStopped()
{
    overlay_->setGeometry(rect());
    overlay_->show();
    overlay_->raise();
}

void WebPane::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    overlay_->setGeometry(rect());
}

void WebPane::showMenu(const QPoint& position)
{
    QWebEnginePage& page = page_->enginePage();
    const QWebEngineContextMenuRequest* request = view_->lastContextMenuRequest();
    const auto flags = request ? request->editFlags() : QWebEngineContextMenuRequest::EditFlags();
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(page.action(QWebEnginePage::Back));
    menu->addAction(page.action(QWebEnginePage::Forward));
    menu->addAction(page.action(QWebEnginePage::Reload));
    menu->addSeparator();
    if (flags.testFlag(QWebEngineContextMenuRequest::CanCopy))
        menu->addAction(page.action(QWebEnginePage::Copy));
    if (flags.testFlag(QWebEngineContextMenuRequest::CanPaste))
        menu->addAction(page.action(QWebEnginePage::Paste));
    menu->popup(view_->mapToGlobal(position));
}

} // namespace orvane
