#pragma once

#include <QScrollArea>

class QVBoxLayout;

namespace orvane {

/// The cards of a tool, one below the other. It scrolls where the window is too low for them; where there is height to
/// spare, one of them takes it. What lies behind the tools shows through.
class ToolColumn : public QScrollArea
{
    Q_OBJECT

public:
    /// Width of the tools' column in points.
    static constexpr int leastWidth = 400;

    enum class Height
    {
        own,
        rest
    };

    explicit ToolColumn(QWidget* parent = nullptr);

    /// Takes the view and puts it below those before it.
    void add(QWidget* view, Height height = Height::own);

private:
    QVBoxLayout* rows_;
};

} // namespace orvane
