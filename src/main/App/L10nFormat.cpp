#include "main/App/L10n.h"

#include <QRegularExpression>

#include <charconv>

namespace orvane::L10n {

using namespace Qt::Literals::StringLiterals;

namespace {

/// As the C library prints it in its own locale: always a point, ties to even.
QString fixed(double value, int decimals)
{
    // The largest double has 309 digits before the point.
    constexpr int digits = 330;
    char text[digits + 99];
    const std::to_chars_result end = std::to_chars(text, std::end(text), value, std::chars_format::fixed, decimals);
    return QString::fromLatin1(text, end.ptr - text);
}

QString shown(const QRegularExpressionMatch& placeholder, const QVariant& argument)
{
    const QStringView kind = placeholder.capturedView(1);
    if (kind == u"@")
        return argument.toString();
    if (kind == u"d")
        return QString::number(argument.toLongLong());
    return fixed(argument.toDouble(), placeholder.capturedView(2).toInt());
}

} // namespace

QString filled(const QString& format, const QVariantList& arguments)
{
    static const QRegularExpression placeholders(u"%(%|@|d|\\.(\\d{1,2})f)"_s);
    QString text;
    qsizetype copied = 0;
    auto argument = arguments.begin();
    for (auto matches = placeholders.globalMatch(format); matches.hasNext();) {
        const QRegularExpressionMatch placeholder = matches.next();
        text += QStringView(format).sliced(copied, placeholder.capturedStart() - copied);
        copied = placeholder.capturedEnd();
        if (placeholder.capturedView(1) == u"%")
            text += u'%';
        else if (argument == arguments.end())
            text += placeholder.capturedView();
        else
            text += shown(placeholder, *argument++);
    }
    text += QStringView(format).sliced(copied);
    return text;
}

} // namespace orvane::L10n
