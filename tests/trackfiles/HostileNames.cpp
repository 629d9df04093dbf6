#include "tests/trackfiles/HostileNames.h"

namespace orvane::test {

using namespace Qt::Literals::StringLiterals;

const QStringList& naughtyNames()
{
    static const QStringList names{u"../../x"_s,
                                   u"/etc/passwd"_s,
                                   u""_s,
                                   u"."_s,
                                   u".."_s,
                                   u"..."_s,
                                   u" "_s,
                                   u"\u3000"_s,
                                   u"CON"_s,
                                   u"con.mp3"_s,
                                   u"NUL"_s,
                                   u"a\u0000b"_s,
                                   u"line\nbreak"_s,
                                   u"\u202Egnp.exe"_s,
                                   u"\u2066isolated"_s,
                                   QString(QChar(0xD800)),
                                   QString(QChar(0xDC00)),
                                   u"👨‍👩‍👧‍👦"_s.repeated(100),
                                   u"e\u0301"_s,
                                   u"é"_s,
                                   u"<b>bold</b>"_s,
                                   u"%s%n%@"_s,
                                   u"-rf"_s,
                                   u"~"_s,
                                   u"$HOME"_s,
                                   u"; rm"_s,
                                   u"\uFEFFbom"_s,
                                   u"ﬀ"_s,
                                   u"İ"_s,
                                   u"ß"_s,
                                   u"ẞ"_s,
                                   u"Ǆ"_s,
                                   u"name (2)"_s,
                                   u"name"_s,
                                   u"NAME"_s,
                                   u"x"_s.repeated(5000),
                                   u"न"_s.repeated(300),
                                   u"a\u0301\u0302\u0303"_s.repeated(200)};
    return names;
}

QString randomName(std::mt19937& random)
{
    static const QString letters =
        u"aAbBkKsS01239 .-_()[]/\\:*?\"<>|,;!'&%#~\t\n\r\u0085\u2028\u0301\u00A0\u3000\u200D\u200E\u202E\u2066\u00DF"
        "\u1E9E\u0130\u0131\u03A3\u03C2\u01C4éÉ漢字ｶ\u0663\uFF11\uFEFF\uFFFD"_s;
    static const QStringList pieces{u"👩"_s,
                                    u"👨‍👩‍👧"_s,
                                    u"🎵"_s,
                                    QString(QChar(0xD83D)),
                                    QString(QChar(0xDE00)),
                                    u"Track "_s,
                                    u"untitled"_s,
                                    u"03 - "_s,
                                    u"12. "_s,
                                    u"7) "_s,
                                    u" lyrics"_s,
                                    u" (Tidal)"_s,
                                    u" (X)"_s,
                                    u" (2)"_s,
                                    u" (Live)"_s,
                                    u".."_s,
                                    u"../"_s,
                                    u".mp3"_s,
                                    u"ocean"_s,
                                    u"OCEAN"_s};
    std::uniform_int_distribution<int> count(0, 12);
    std::uniform_int_distribution<qsizetype> place(0, letters.size() + pieces.size() - 1);
    QString name;
    for (int left = count(random); left > 0; --left) {
        const qsizetype chosen = place(random);
        if (chosen < letters.size())
            name += letters[chosen];
        else
            name += pieces[chosen - letters.size()];
    }
    return name;
}

} // namespace orvane::test
