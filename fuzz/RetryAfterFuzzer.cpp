#include "fuzz/Law.h"
#include "suno/Engine.h"

using orvane::fuzz::mustHold;
using std::chrono::milliseconds;

/// Whatever a server writes into Retry-After, a rate limit waits at least a second and at most a minute.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    orvane::HttpResponse response;
    response.status = 429;
    response.headers = {{.name = "Retry-After", .value = orvane::fuzz::bytes(data, size)}};
    const auto first = orvane::Engine::retryDelay(0, &response);
    mustHold(first && *first >= milliseconds(1'000) && *first <= milliseconds(60'000));
    mustHold(first->count() % 1'000 == 0);
    // A wish of the server's does not grow with the attempts; without one the wait doubles.
    const auto second = orvane::Engine::retryDelay(1, &response);
    mustHold(second == first || (*first == milliseconds(2'000) && *second == milliseconds(4'000)));
    response.status = 503;
    mustHold(orvane::Engine::retryDelay(0, &response) == milliseconds(800));
    response.status = 404;
    mustHold(!orvane::Engine::retryDelay(0, &response));
    return 0;
}
