#include "mastering/PlatformTexts.h"

#include "main/App/L10n.h"

#include <algorithm>
#include <cmath>

namespace orvane::Master {

using namespace Qt::Literals::StringLiterals;
using L10n::Key;
using L10n::t;

namespace {

bool isUnnoticed(double change)
{
    return std::abs(change) < 0.05;
}

Key keyOf(Normalisation normalisation)
{
    switch (normalisation) {
    case Normalisation::upAndDown:
        return Key::normUpDown;
    case Normalisation::downOnly:
        return Key::normDownOnly;
    case Normalisation::none:
        return Key::normNone;
    case Normalisation::unknown:
        break;
    }
    return Key::normUnknown;
}

Key keyOf(Confidence confidence)
{
    switch (confidence) {
    case Confidence::official:
        return Key::confOfficial;
    case Confidence::measured:
        return Key::confMeasured;
    case Confidence::community:
        return Key::confCommunity;
    case Confidence::standard:
        break;
    }
    return Key::confStandard;
}

} // namespace

double penalty(const Platform& platform, const Reading& reading)
{
    if (!std::isfinite(reading.integrated))
        return 0.0;
    const double distance = platform.target - reading.integrated;
    switch (platform.normalisation) {
    case Normalisation::downOnly:
        return std::min(distance, 0.0);
    case Normalisation::upAndDown:
        return std::min(distance, std::max(platform.ceiling - reading.truePeak, 0.0));
    case Normalisation::none:
    case Normalisation::unknown:
        break;
    }
    return 0.0;
}

QList<PlatformRow> platformRows(const Reading& reading)
{
    QList<PlatformRow> rows;
    for (const Platform& platform : platforms())
        rows << PlatformRow{.platform = platform, .change = penalty(platform, reading)};
    return rows;
}

QString changeText(const PlatformRow& row)
{
    if (isUnnoticed(row.change))
        return t(row.platform.normalisation == Normalisation::none ? Key::playsAsIs : Key::noChange);
    return QString::asprintf("%+.1f dB", row.change);
}

ChangeTone changeTone(const PlatformRow& row)
{
    if (isUnnoticed(row.change))
        return ChangeTone::Muted;
    return row.change < 0.0 ? ChangeTone::Bad : ChangeTone::Ok;
}

bool isPublished(Confidence confidence)
{
    return confidence == Confidence::official || confidence == Confidence::standard;
}

QString text(Normalisation normalisation)
{
    return t(keyOf(normalisation));
}

QString text(Confidence confidence)
{
    return t(keyOf(confidence));
}

QString verdict(const Reading& reading)
{
    if (reading.truePeak > -1.0)
        return t(Key::verdictPeaking, {reading.truePeak});
    if (reading.integrated > -9.0)
        return t(Key::verdictLoud);
    return t(Key::verdictHealthy);
}

QString readout(const Reading& reading)
{
    return QString::asprintf("%.1f LUFS    %.1f dBTP    %.1f LU range", reading.integrated, reading.truePeak,
                             reading.range);
}

QString summary(const Platform& platform)
{
    QString line = platform.name + u' ' + text(platform.normalisation) + u". "_s +
                   u"Target %1 LUFS, %2 dBTP — "_s.arg(int(platform.target)).arg(int(platform.ceiling)) +
                   text(platform.confidence) + u'.';
    if (!platform.note.isEmpty())
        line += u' ' + platform.note;
    return line;
}

} // namespace orvane::Master
