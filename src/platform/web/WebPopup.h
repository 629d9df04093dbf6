#pragma once

#include <QDialog>
#include <QUrl>

class QLabel;

namespace orvane {

class WebPage;
class WebPane;
class WebProfile;

/// A window that a page opened, such as a sign-in at another site: a dialog with the page and, above it, the address
/// that the page cannot touch. It closes when its page closes itself, and deletes itself when it is closed.
class WebPopup : public QDialog
{
    Q_OBJECT

public:
    WebPopup(WebProfile& profile, QWidget* parent);

    WebPage& page();

    /// The address as it is shown: with its host as the network knows it and without a user name, so that nothing in it
    /// passes for another host.
    static QString displayed(const QUrl& address);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void buildAddressLine();
    void showAddress(const QUrl& address);
    void elideAddress();

    QLabel* address_ = nullptr;
    WebPane* pane_ = nullptr;
    QString text_;
};

} // namespace orvane
