#pragma once

#include <QColor>
#include <QList>
#include <QPlainTextEdit>
#include <QTime>

namespace orvane {

/// One line of a log.
struct LogLine
{
    QTime time;
    QString message;
    QColor colour;
};

/// A list of lines "[time] message", each in its colour, read-only, to select and copy. It follows the end unless the
/// user scrolled up. Messages are plain text of any origin: control characters do nothing, and what is written from
/// right to left stays inside its message.
class LogView : public QPlainTextEdit
{
    Q_OBJECT

public:
    /// Older lines are dropped.
    static constexpr int mostLines = 20'000;
    /// A longer message is cut and ends with "…".
    static constexpr int longestMessage = 4'000;

    explicit LogView(QWidget* parent = nullptr);

    void append(const LogLine& line);
    /// All at once, which costs far less than one after the other.
    void append(const QList<LogLine>& lines);

    int lineCount() const;
    /// "[time] message" as it is copied. `line` is 0 … lineCount() - 1.
    QString lineText(int line) const;
    QColor lineColour(int line) const;

    /// The last line is in view, so that new ones will be too.
    bool isAtEnd() const;

protected:
    QMimeData* createMimeDataFromSelection() const override;
    void changeEvent(QEvent* event) override;

private:
    void insert(const QList<LogLine>& lines);
    void dropOldest();
    void followDirection();
};

} // namespace orvane
