#pragma once

#include <QPoint>
#include <QString>

#include <chrono>
#include <functional>

class QWidget;

namespace orvane {
class SunoTab;
}

namespace orvane::demo {

/// Someone in front of the window: clicks with the mouse, types with the keyboard, and waits with the eyes open.
class Person
{
public:
    /// Scrolls so that the control can be seen.
    void lookAt(QWidget& control);

    /// Scrolls a control into view and presses the left button in its middle; false where it is hidden or turned off.
    bool click(QWidget& control);
    /// The same at a place of the control.
    bool click(QWidget& control, const QPoint& place);

    /// Presses the left button on the element of the page that the selector finds; false where there is none.
    bool clickInPage(SunoTab& pane, const QString& selector);

    /// Lets the program go on until `seen` holds; false after `patience`.
    bool waitUntil(const std::function<bool()>& seen, std::chrono::milliseconds patience);
};

} // namespace orvane::demo
