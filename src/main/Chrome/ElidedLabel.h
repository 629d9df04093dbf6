#pragma once

#include <QLabel>

namespace orvane {

/// One line of text that is cut in its middle where the width does not hold it, such as the path of a folder. The tool
/// tip of a cut one, and the accessible name, are whole. It reads from left to right in every language, as paths do.
class ElidedLabel : public QLabel
{
    Q_OBJECT

public:
    explicit ElidedLabel(const QString& text = {}, QWidget* parent = nullptr);

    Qt::TextElideMode elideMode() const { return elideMode_; }

    void setElideMode(Qt::TextElideMode mode);

    /// What is shown at the present width.
    QString shownText() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    Qt::TextElideMode elideMode_ = Qt::ElideMiddle;
};

} // namespace orvane
