#pragma once

#include <QList>
#include <QString>
#include <QStringView>

namespace orvane {

/// Text counted and cut in characters as a person sees them: extended grapheme clusters (Unicode Standard Annex 29).

/// Number of characters of `text`.
qsizetype characterCount(QStringView text);

/// The first `count` characters of `text`, or all of it.
QStringView firstCharacters(QStringView text, qsizetype count);

/// White space as Unicode's property White_Space has it, line ends included.
bool isWhiteSpace(char16_t unit);

/// White space within a line: the tab and the space separators.
bool isBlank(char16_t unit);

/// A line end: line feed, vertical tab, form feed, carriage return, next line, line and paragraph separator.
bool isNewline(char16_t unit);

/// `text` without blanks at its ends.
QStringView trimmedBlanks(QStringView text);

/// `text` without white space and line ends at its ends.
QStringView trimmedWhiteSpace(QStringView text);

/// `text` with every run of white space replaced by one space.
QString collapsedWhiteSpace(QStringView text);

/// The lines of `text`, without their ends; a carriage return with a line feed is one end. An empty text has one line.
QList<QStringView> lines(QStringView text);

} // namespace orvane
