#include "main/Chrome/LogView.h"

#include "main/Chrome/Theme.h"

#include <QLocale>
#include <QMimeData>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextDocumentFragment>

namespace orvane {
namespace {

constexpr QChar isolate(0x2068);
constexpr QChar endOfIsolate(0x2069);

bool isDirectionControl(QChar character)
{
    const char16_t code = character.unicode();
    return (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069) || code == 0x200E ||
           code == 0x200F || code == 0x061C;
}

bool isLineBreak(QChar character)
{
    return character == u'\n' || character == QChar::LineSeparator || character == QChar::ParagraphSeparator;
}

QChar harmless(QChar character)
{
    if (isLineBreak(character))
        return QChar::LineSeparator;
    return character.category() == QChar::Other_Control || character == QChar::ObjectReplacementCharacter ? QChar(u' ')
                                                                                                          : character;
}

QString cut(const QString& message)
{
    if (message.size() <= LogView::longestMessage)
        return message;
    const qsizetype kept = LogView::longestMessage - 1;
    return message.left(message.at(kept - 1).isHighSurrogate() ? kept - 1 : kept) + u'\u2026';
}

QString cleaned(const QString& message)
{
    QString clean;
    for (const QChar character : cut(message).trimmed()) {
        if (!isDirectionControl(character))
            clean += harmless(character);
    }
    return clean;
}

QString shown(const LogLine& line)
{
    const QString time = QLocale().toString(line.time, QLocale::ShortFormat);
    return u'[' + time + QStringLiteral("] ") + isolate + cleaned(line.message) + endOfIsolate;
}

QString withoutIsolates(QString text)
{
    return text.remove(isolate).remove(endOfIsolate).replace(QChar::LineSeparator, u'\n');
}

QTextCharFormat formatOf(const LogLine& line)
{
    QTextCharFormat format;
    format.setForeground(line.colour);
    return format;
}

} // namespace

LogView::LogView(QWidget* parent)
    : QPlainTextEdit(parent)
{
    setReadOnly(true);
    setUndoRedoEnabled(false);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    setFont(Theme::mono(11));
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    document()->setDocumentMargin(Theme::Space::small);
    followDirection();
}

void LogView::append(const LogLine& line)
{
    append(QList<LogLine>{line});
}

void LogView::append(const QList<LogLine>& lines)
{
    if (lines.isEmpty())
        return;
    QScrollBar* bar = verticalScrollBar();
    const bool follows = isAtEnd();
    // A cursor stays with its text when lines before it are dropped.
    const QTextCursor seen(firstVisibleBlock());
    const int linesAbove = bar->value() - firstVisibleBlock().firstLineNumber();
    insert(lines.size() > mostLines ? lines.last(mostLines) : lines);
    dropOldest();
    bar->setValue(follows ? bar->maximum() : seen.block().firstLineNumber() + linesAbove);
}

void LogView::insert(const QList<LogLine>& lines)
{
    QTextCursor end(document());
    end.movePosition(QTextCursor::End);
    end.beginEditBlock();
    bool isFirst = document()->isEmpty();
    for (const LogLine& line : lines) {
        if (!isFirst)
            end.insertBlock();
        isFirst = false;
        end.insertText(shown(line), formatOf(line));
    }
    end.endEditBlock();
}

void LogView::dropOldest()
{
    const int tooMany = document()->blockCount() - mostLines;
    if (tooMany <= 0)
        return;
    QTextCursor oldest(document());
    oldest.movePosition(QTextCursor::NextBlock, QTextCursor::KeepAnchor, tooMany);
    oldest.removeSelectedText();
}

int LogView::lineCount() const
{
    return document()->isEmpty() ? 0 : document()->blockCount();
}

QString LogView::lineText(int line) const
{
    return withoutIsolates(document()->findBlockByNumber(line).text());
}

QColor LogView::lineColour(int line) const
{
    const QTextBlock block = document()->findBlockByNumber(line);
    return block.begin().fragment().charFormat().foreground().color();
}

bool LogView::isAtEnd() const
{
    return verticalScrollBar()->value() >= verticalScrollBar()->maximum();
}

QMimeData* LogView::createMimeDataFromSelection() const
{
    auto* copied = new QMimeData;
    copied->setText(withoutIsolates(textCursor().selection().toPlainText()));
    return copied;
}

void LogView::changeEvent(QEvent* event)
{
    QPlainTextEdit::changeEvent(event);
    if (event->type() == QEvent::LayoutDirectionChange)
        followDirection();
}

void LogView::followDirection()
{
    QTextOption option = document()->defaultTextOption();
    const bool isMirrored = layoutDirection() == Qt::RightToLeft;
    option.setTextDirection(layoutDirection());
    option.setAlignment(Qt::AlignAbsolute | (isMirrored ? Qt::AlignRight : Qt::AlignLeft));
    document()->setDefaultTextOption(option);
}

} // namespace orvane
