#include "suno/TimeLeft.h"

#include <algorithm>
#include <numeric>

namespace orvane {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr std::size_t window = 20;
constexpr int enough = 3;

qint64 roundedTo(qint64 step, qint64 value)
{
    return (value + step / 2) / step * step;
}

} // namespace

TimeLeft::TimeLeft(int downloads, int skips)
{
    rate(Work::download).left = downloads;
    rate(Work::skip).left = skips;
}

void TimeLeft::done(Work work, std::chrono::milliseconds took)
{
    Rate& kind = rate(work);
    kind.left = std::max(kind.left - 1, 0);
    ++kind.measured;
    kind.latest.push_back(took);
    if (kind.latest.size() > window)
        kind.latest.pop_front();
}

std::optional<std::chrono::milliseconds> TimeLeft::remaining() const
{
    const Rate& downloads = rate(Work::download);
    const Rate& skips = rate(Work::skip);
    const bool isEarly = downloads.measured + skips.measured < enough;
    if (isEarly || (downloads.left > 0 && downloads.measured < enough))
        return std::nullopt;
    return downloads.forTheRest() + skips.forTheRest();
}

std::chrono::milliseconds TimeLeft::Rate::forTheRest() const
{
    if (latest.empty())
        return std::chrono::milliseconds::zero();
    const auto sum = std::accumulate(latest.begin(), latest.end(), std::chrono::milliseconds::zero());
    return sum * left / static_cast<int>(latest.size());
}

QString timeLeftText(std::chrono::milliseconds remaining)
{
    const qint64 minutes = roundedTo(60'000, remaining.count()) / 60'000;
    if (minutes < 1)
        return u"less than a minute left"_s;
    if (minutes < 60)
        return u"about %1 min left"_s.arg(minutes);
    const qint64 coarse = roundedTo(5, minutes);
    if (coarse % 60 == 0)
        return u"about %1 h left"_s.arg(coarse / 60);
    return u"about %1 h %2 min left"_s.arg(coarse / 60).arg(coarse % 60);
}

} // namespace orvane
