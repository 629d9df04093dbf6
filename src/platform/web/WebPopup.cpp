#include "platform/web/WebPopup.h"

#include "platform/web/WebPage.h"
#include "platform/web/WebPane.h"
#include "platform/web/WebProfile.h"

#include <QLabel>
#include <QVBoxLayout>

namespace orvane {
namespace {

constexpr QSize usualSize{520, 720};
constexpr int margin = 10;

} // namespace

WebPopup::WebPopup(WebProfile& profile, QWidget* parent)
    : QDialog(parent)
    , pane_(new WebPane(profile, this))
{
    setAttribute(Qt::WA_DeleteOnClose);
    resize(usualSize);
    buildAddressLine();
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(address_);
    column->addWidget(pane_, 1);
    setFocusProxy(pane_);
    connect(&page(), &WebPage::committed, this, &WebPopup::showAddress);
    connect(&page(), &WebPage::closeRequested, this, &QWidget::close);
}

void WebPopup::buildAddressLine()
{
    address_ = new QLabel(this);
    address_->setTextFormat(Qt::PlainText);
    address_->setMargin(margin);
    address_->setMinimumWidth(1);
    // Also in a layout that runs from right to left an address reads from its scheme on.
    address_->setAlignment(Qt::AlignLeft | Qt::AlignAbsolute | Qt::AlignVCenter);
}

WebPage& WebPopup::page()
{
    return pane_->page();
}

QString WebPopup::displayed(const QUrl& address)
{
    return QString::fromLatin1(address.toEncoded(QUrl::RemoveUserInfo));
}

void WebPopup::showAddress(const QUrl& address)
{
    text_ = displayed(address);
    setWindowTitle(address.host(QUrl::FullyEncoded));
    address_->setAccessibleName(text_);
    elideAddress();
}

void WebPopup::elideAddress()
{
    // The host stands in front and is what must be seen.
    address_->setText(address_->fontMetrics().elidedText(text_, Qt::ElideRight, address_->width() - 2 * margin));
}

void WebPopup::resizeEvent(QResizeEvent* event)
{
    QDialog::resizeEvent(event);
    elideAddress();
}

} // namespace orvane
