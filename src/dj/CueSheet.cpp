#include "dj/CueSheet.h"

#include "dj/KeyText.h"
#include "platform/text/Characters.h"

#include <QStringList>

#include <cstdio>
#include <cstdlib>

namespace orvane::DJ {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Without a fraction, a half to the even number.
QString whole(double number)
{
    char text[400];
    std::snprintf(text, sizeof text, "%.0f", number);
    return QString::fromLatin1(text);
}

QString twoDigits(qint64 number)
{
    return QString::number(number).rightJustified(2, u'0');
}

QString inOneLine(const QString& title)
{
    QStringList parts;
    for (const QStringView line : lines(title))
        parts.append(line.toString());
    return parts.join(u' ');
}

QString clock(double seconds)
{
    const auto whole = qint64(seconds);
    return QString::number(whole / 60) + u':' + twoDigits(whole % 60);
}

QString moveNote(int semitones, const Key& key)
{
    const QString sign = semitones < 0 ? QString() : u"+"_s;
    const QString plural = std::abs(semitones) == 1 ? QString() : u"s"_s;
    return u"  ("_s + sign + QString::number(semitones) + u" semitone"_s + plural + u", from "_s + camelot(key) + u')';
}

} // namespace

QString cueSheet(const Set& set, const QList<Move>& moves, double bpm, const QSet<QString>& unmatched,
                 const QHash<QString, int>& shifted)
{
    QStringList sheet{u"Orvane DJ Mix"_s, QString::number(set.size()) + u" tracks · around "_s + whole(bpm) + u" BPM"_s,
                      QString()};
    double start = 0.0;
    for (qsizetype index = 0; index < set.size(); ++index) {
        const Analysis& track = set[index];
        if (index > 0 && index <= moves.size())
            start = moves[index - 1].atSeconds;
        const int semitones = shifted.value(track.title);
        QString note = unmatched.contains(track.title) ? u"  (tempo not matched)"_s : QString();
        if (semitones != 0)
            note += moveNote(semitones, track.key);
        sheet.append(twoDigits(index + 1) + u". "_s + inOneLine(track.title) + u"  ["_s +
                     camelot(track.key.shifted(semitones)) + u" · "_s + whole(track.bpm) + u" BPM]  "_s + clock(start) +
                     note);
    }
    return sheet.join(u'\n');
}

} // namespace orvane::DJ
