#pragma once

#include "main/Chrome/Theme.h"

#include <QWidget>

#include <initializer_list>

class QLabel;

namespace orvane {

/// A rounded card on the window's ground. What stands on it is laid out by the owner or by one of the factories.
class CardView : public QWidget
{
    Q_OBJECT

public:
    explicit CardView(QWidget* parent = nullptr);

    /// A card with a heading and, below it, `content` in order. Its accessible name is the title.
    static CardView* titled(const QString& title, std::initializer_list<QWidget*> content, QWidget* parent = nullptr);
    /// A card around one view, `inset` points from each edge.
    static CardView* plain(QWidget* view, int inset, QWidget* parent = nullptr);

    QColor fill() const { return fill_; }

    void setFill(const QColor& fill);

    QColor stroke() const { return stroke_; }

    void setStroke(const QColor& stroke);

    double radius() const { return radius_; }

    void setRadius(double radius);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QColor fill_ = Theme::card;
    QColor stroke_ = Theme::cardBorder;
    double radius_ = Theme::Radius::card;
};

/// Where a line begins and where it ends in the layout, whatever script its text is written in: a text that is not
/// translated stands with those that are.
Qt::Alignment leadingEdge();
Qt::Alignment trailingEdge();

/// The text with places to break inside words that no line would hold, such as paths: for labels that wrap.
QString breakable(const QString& text);

/// The heading of a section, as cards show it.
QLabel* makeHeading(const QString& text, QWidget* parent = nullptr);
/// A note in small type that wraps and shows its text as it stands.
QLabel* makeNote(const QString& text, QWidget* parent = nullptr);

} // namespace orvane
