#include "demonstration/service/JsonWriter.h"

#include <QLocale>
#include <QString>

#include <algorithm>

namespace orvane::demo {
namespace {

bool isPlain(char16_t unit)
{
    return unit >= 0x20 && unit < 0x7F && unit != u'"' && unit != u'\\';
}

QByteArray escaped(char16_t unit)
{
    return "\\u" + QByteArray::number(unit, 16).rightJustified(4, '0');
}

} // namespace

void JsonWriter::separate()
{
    if (needsComma_)
        bytes_ += ',';
    needsComma_ = true;
}

void JsonWriter::open(char bracket)
{
    separate();
    bytes_ += bracket;
    needsComma_ = false;
}

void JsonWriter::close(char bracket)
{
    bytes_ += bracket;
    needsComma_ = true;
}

JsonWriter& JsonWriter::key(const char* name)
{
    separate();
    bytes_ += '"';
    bytes_ += name;
    bytes_ += "\":";
    needsComma_ = false;
    return *this;
}

void JsonWriter::text(QStringView value)
{
    separate();
    bytes_ += '"';
    // Everything beyond ASCII is escaped by its units of UTF-16, which says lone surrogates as well.
    for (const QChar* at = value.begin(); at != value.end();) {
        const QChar* end = std::find_if_not(at, value.end(), [](QChar unit) { return isPlain(unit.unicode()); });
        bytes_ += QStringView(at, end).toLatin1();
        at = end;
        if (at != value.end())
            bytes_ += escaped((at++)->unicode());
    }
    bytes_ += '"';
}

void JsonWriter::number(double value)
{
    separate();
    bytes_ += QByteArray::number(value, 'g', QLocale::FloatingPointShortest);
}

void JsonWriter::number(int value)
{
    separate();
    bytes_ += QByteArray::number(value);
}

void JsonWriter::boolean(bool value)
{
    separate();
    bytes_ += value ? "true" : "false";
}

void JsonWriter::null()
{
    separate();
    bytes_ += "null";
}

} // namespace orvane::demo
