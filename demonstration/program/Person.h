#pragma once

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
    /// Presses the left button in the middle of a control that is shown and enabled; false where it is not.
    bool click(QWidget& control);

    /// Presses the left button on the element of the page that the selector finds; false where there is none.
    bool clickInPage(SunoTab& pane, const QString& selector);

    /// Lets the program go on until `seen` holds; false after `patience`.
    bool waitUntil(const std::function<bool()>& seen, std::chrono::milliseconds patience);
};

} // namespace orvane::demo
