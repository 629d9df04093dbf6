#include "suno/Engine.h"

#include <algorithm>
#include <cctype>

namespace orvane {

namespace {

using std::chrono::milliseconds;

constexpr milliseconds serverFirst{800};
constexpr milliseconds serverCap{8'000};
constexpr milliseconds rateLimitFirst{2'000};
constexpr milliseconds rateLimitCap{30'000};
constexpr int longestRetryAfterSeconds = 60;

/// `first` doubled `attempt` times, at most `cap`.
milliseconds doubled(milliseconds first, int attempt, milliseconds cap)
{
    constexpr int bitsOfAPower = 64;
    constexpr int wellBeyondEveryCap = 16;
    if (attempt >= bitsOfAPower)
        return milliseconds(0);
    return std::min(cap, first * (1 << std::clamp(attempt, 0, wellBeyondEveryCap)));
}

/// The seconds that the server asks for, at most 60; absent for a date, for nothing and for less than one.
std::optional<int> retryAfterSeconds(const HttpResponse& response)
{
    QByteArrayView value;
    const std::optional<QByteArray> header = response.header("Retry-After");
    if (!header)
        return std::nullopt;
    value = *header;
    if (value.startsWith('+') || value.startsWith('-'))
        value = value.sliced(1);
    const bool digits =
        std::all_of(value.begin(), value.end(), [](char digit) { return digit >= '0' && digit <= '9'; });
    if (value.isEmpty() || !digits || header->startsWith('-'))
        return std::nullopt;
    int seconds = 0;
    for (const char digit : value)
        seconds = std::min(seconds * 10 + (digit - '0'), longestRetryAfterSeconds);
    return seconds >= 1 ? std::optional(seconds) : std::nullopt;
}

} // namespace

std::optional<milliseconds> Engine::retryDelay(int attempt, const HttpResponse* response)
{
    constexpr int tooManyRequests = 429;
    if (!response)
        return doubled(serverFirst, attempt, serverCap);
    if (response->status == tooManyRequests) {
        const auto asked = retryAfterSeconds(*response);
        return asked ? std::chrono::seconds(*asked) : doubled(rateLimitFirst, attempt, rateLimitCap);
    }
    const bool serverFailed = response->status >= 500 && response->status <= 599;
    return serverFailed ? std::optional(doubled(serverFirst, attempt, serverCap)) : std::nullopt;
}

} // namespace orvane
