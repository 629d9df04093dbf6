#pragma once

#include <QStringList>

namespace orvane::test {

/// Titles that would lead a careless program out of its folder, past the length of a name or into another spelling.
inline QStringList hostileTitles()
{
    const QChar loneHigh(0xd83d);
    const QChar loneLow(0xde00);
    QStringList titles{
        QStringLiteral("../../x"),
        QStringLiteral("/etc/passwd"),
        QString(),
        QStringLiteral("."),
        QStringLiteral(".."),
        QStringLiteral("...."),
        QStringLiteral(" . . "),
        QStringLiteral("a\\..\\b"),
        QStringLiteral("line\nbreak\r\n\u2028here"),
        QStringLiteral("\u0001\u0002\u001b[31mred\u007f"),
        QStringLiteral("photo\u202egpj.exe"),
        QStringLiteral("\u2066\u2067\u200f"),
        QStringLiteral("\U0001F468\u200D\U0001F469\u200D\U0001F467\u200D\U0001F466").repeated(50),
        QStringLiteral("CON"),
        QStringLiteral("nul.mp3"),
        QStringLiteral("COM1"),
        QStringLiteral("<b>bold</b><img src=x>"),
        QStringLiteral("%1 %2 %s %@ %n"),
        QStringLiteral("Cafe\u0301"),
        QStringLiteral("caf\u00e9"),
        QStringLiteral("CAF\u00c9"),
        QStringLiteral("\ud55c\uae00").normalized(QString::NormalizationForm_D),
        QStringLiteral("\u0130stanbul \u0131\u015f\u0131k"),
        QStringLiteral("\u039f\u0394\u039f\u03a3"),
        QStringLiteral("q") + QString(4000, QChar(0x0301)),
        QStringLiteral("\u6f22").repeated(400),
        QStringLiteral("tail . . .").repeated(30),
        QString(10 * 1024 * 1024, QLatin1Char('x')),
    };
    titles.append(QStringLiteral("nul") + QChar(QChar::Null) + QStringLiteral("byte"));
    titles.append(QStringLiteral("half ") + loneHigh);
    titles.append(loneLow + QStringLiteral(" half"));
    return titles;
}

} // namespace orvane::test
