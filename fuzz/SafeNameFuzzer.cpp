#include "fuzz/Law.h"
#include "suno/TrackNames.h"
#include "trackfiles/keys/TrackKeys.h"

#include <algorithm>
#include <cstring>

using orvane::safeName;
using orvane::fuzz::mustHold;

namespace {

bool isHarmful(QChar character)
{
    constexpr QStringView forbidden = u"/\\?%*:|\"<>";
    const char16_t unit = character.unicode();
    const bool breaksLine = unit == 0x0085 || unit == 0x2028 || unit == 0x2029;
    const bool isUnseen = unit == 0xfeff || unit == 0x061c || unit == 0x200e || unit == 0x200f ||
                          (unit >= 0x202a && unit <= 0x202e) || (unit >= 0x2066 && unit <= 0x2069);
    return unit < 0x20 || breaksLine || isUnseen || forbidden.contains(character);
}

void checkName(const QString& title)
{
    const QString fallback = QStringLiteral("track_1");
    const QString name = safeName(title, fallback);
    mustHold(!name.isEmpty() && name != u"." && name != u"..");
    mustHold(std::none_of(name.begin(), name.end(), isHarmful));
    mustHold(!name.endsWith(u'.') && !name.endsWith(u' ') && !name.startsWith(u' '));
    const QByteArray onDisk = name.toUtf8();
    mustHold(onDisk.size() <= 200);
    mustHold(QString::fromUtf8(onDisk) == name);
    mustHold(name.normalized(QString::NormalizationForm_C) == name);
    // Blanks go after dots do, so only a dot that a blank stood before is taken in a second round.
    mustHold(name.startsWith(u'.') || safeName(name, fallback) == name);

    const QString base = orvane::ExistingFiles::base(name, 0, {});
    mustHold(orvane::TrackNamer::stripIndexPrefix(base) == name || name.front().isSpace());
}

} // namespace

/// Whatever a title is, its name stays in its folder, fits, and is found again.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    checkName(QString::fromUtf8(orvane::fuzz::bytes(data, size)));
    QString units(static_cast<qsizetype>(size / sizeof(char16_t)), QChar(u' '));
    if (!units.isEmpty())
        std::memcpy(units.data(), data, static_cast<std::size_t>(units.size()) * sizeof(char16_t));
    checkName(units);
    return 0;
}
