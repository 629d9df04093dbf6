#pragma once

#include <QComboBox>

namespace orvane {

/// A button that shows the chosen row of a list and opens the list. Rows are plain text; a long one is cut where it
/// stands chosen and whole in the list.
class PopUpButton : public QComboBox
{
    Q_OBJECT

public:
    explicit PopUpButton(QWidget* parent = nullptr);

    /// A line below the last row. It counts as a row and cannot be chosen.
    void addSeparator();
    /// The row is such a line.
    bool isSeparator(int row) const;

    void showPopup() override;

protected:
    /// The wheel scrolls the column that the button stands in, unless the button has the focus.
    void wheelEvent(QWheelEvent* event) override;
};

} // namespace orvane
