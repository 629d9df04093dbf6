#include "fuzz/Law.h"
#include "suno/TrackNames.h"

#include <QRegularExpression>

#include <cstring>

using orvane::fuzz::mustHold;

/// Every line has a time, the times never go back and none lies behind the end; sections leave no line.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const QRegularExpression timed(QStringLiteral("^\\[(\\d{2,}):([0-5]\\d)\\.00\\](.+)$"));
    double duration = 0;
    if (size < sizeof duration)
        return 0;
    std::memcpy(&duration, data, sizeof duration);
    const QString lyrics = QString::fromUtf8(orvane::fuzz::bytes(data + sizeof duration, size - sizeof duration));
    const QString text = orvane::lrc(QStringLiteral("T"), QStringLiteral("A"), lyrics, duration);

    QStringList lines = text.split(u'\n');
    mustHold(lines.size() >= 5 && lines.takeLast().isEmpty());
    mustHold(lines.mid(0, 3).join(u'|') == u"[ti:T]|[ar:A]|[al:Suno AI]");
    qint64 last = 0;
    for (const QString& line : lines.mid(3)) {
        const QRegularExpressionMatch match = timed.match(line);
        mustHold(match.hasMatch());
        const qint64 seconds = match.captured(1).toLongLong() * 60 + match.captured(2).toLongLong();
        mustHold(seconds >= last);
        mustHold(seconds == 0 || static_cast<double>(seconds) <= duration);
        const QString words = match.captured(3);
        mustHold(!(words.startsWith(u'[') && words.endsWith(u']')));
        last = seconds;
    }
    return 0;
}
