#pragma once

#include <QLineEdit>
#include <QSize>

namespace orvane {

/// A line of text to type: 8-point corners, a 1-point border, 12-point text.
class DarkField : public QLineEdit
{
    Q_OBJECT

public:
    explicit DarkField(QWidget* parent = nullptr);

    static DarkField* make(const QString& placeholder, QWidget* parent = nullptr);

    /// Distance of the text from the field's edges: the same when drawn, edited and selected, so that the caret does
    /// not jump when the field takes focus.
    QSize padding() const { return padding_; }

    void setPadding(const QSize& padding);

private:
    QSize padding_;
};

} // namespace orvane
