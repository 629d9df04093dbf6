#pragma once

#include <QWidget>

class QWebEngineView;

namespace orvane {

class PageOverlay;
class WebPage;
class WebProfile;

/// A page on screen: fills its widget, has a short context menu, opens the page's pop-ups as dialogs of the same
/// profile, and offers to reload a page whose process died.
///
/// The page has the keyboard while it has the focus; F6 leaves it.
class WebPane : public QWidget
{
    Q_OBJECT

public:
    /// The words of the pane.
    struct Words
    {
        QString stopped = QStringLiteral("The page stopped working.");
        QString reload = QStringLiteral("Reload");
    };

    explicit WebPane(WebProfile& profile, QWidget* parent = nullptr);
    WebPane(WebProfile& profile, const Words& words, QWidget* parent = nullptr);
    ~WebPane() override;

    WebPage& page() { return *page_; }

    /// Whether the page may open further windows; it may at first.
    void setPopUpsAllowed(bool allowed);

public Q_SLOTS:
    /// The edit commands, by the names that a text field has them under, on what is focused or selected in the page.
    void undo();
    void redo();
    void cut();
    void copy();
    void paste();
    void selectAll();

Q_SIGNALS:
    /// F6 was pressed in the page: the focus wants to go elsewhere.
    void leaveRequested();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void buildView();
    void buildOverlay();
    WebPage* openPopUp();
    void showMenu(const QPoint& position);
    void showStopped();

    Words words_;
    WebPage* page_;
    QWebEngineView* view_ = nullptr;
    PageOverlay* overlay_ = nullptr;
};

} // namespace orvane
