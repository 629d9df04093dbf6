#include "suno/Engine.h"

#include <gmock/gmock.h>
#include <limits>

namespace orvane {
namespace {

using std::chrono::milliseconds;
using testing::Optional;

std::optional<milliseconds> delay(int attempt, int status, std::optional<QByteArray> retryAfter = {})
{
    HttpResponse response;
    response.status = status;
    if (retryAfter)
        response.headers = {HttpHeader{.name = "retry-after", .value = *retryAfter}};
    return Engine::retryDelay(attempt, &response);
}

TEST(RetryDelay, aTransportErrorDoublesFrom800MillisecondsTo8Seconds)
{
    const int expected[] = {800, 1600, 3200, 6400, 8000, 8000};
    for (int attempt = 0; attempt < 6; ++attempt)
        EXPECT_THAT(Engine::retryDelay(attempt, nullptr), Optional(milliseconds(expected[attempt])));
}

TEST(RetryDelay, aServersFailureWaitsAsATransportErrorDoes)
{
    for (const int status : {500, 502, 503, 504, 599})
        EXPECT_THAT(delay(2, status), Optional(milliseconds(3200))) << status;
    EXPECT_THAT(delay(40, 500), Optional(milliseconds(8000)));
    EXPECT_THAT(delay(1, 503, "30"), Optional(milliseconds(1600)));
}

TEST(RetryDelay, aRateLimitDoublesFrom2To30Seconds)
{
    const int expected[] = {2000, 4000, 8000, 16000, 30000, 30000};
    for (int attempt = 0; attempt < 6; ++attempt)
        EXPECT_THAT(delay(attempt, 429), Optional(milliseconds(expected[attempt])));
}

TEST(RetryDelay, aRateLimitsRetryAfterIsTakenInSecondsUpTo60)
{
    EXPECT_THAT(delay(3, 429, "1"), Optional(milliseconds(1000)));
    EXPECT_THAT(delay(3, 429, "+7"), Optional(milliseconds(7000)));
    EXPECT_THAT(delay(3, 429, "007"), Optional(milliseconds(7000)));
    EXPECT_THAT(delay(0, 429, "60"), Optional(milliseconds(60000)));
    EXPECT_THAT(delay(0, 429, "61"), Optional(milliseconds(60000)));
    EXPECT_THAT(delay(0, 429, "1000000000"), Optional(milliseconds(60000)));
    EXPECT_THAT(delay(0, 429, "9999999999999999999999999"), Optional(milliseconds(60000)));
}

TEST(RetryDelay, aRetryAfterThatIsNoNumberOfSecondsCountsAsNone)
{
    for (const char* const value : {"0", "-5", "", "+", "1.5", "5s", "1e3", "Wed, 21 Oct 2026 07:28:00 GMT"})
        EXPECT_THAT(delay(1, 429, value), Optional(milliseconds(4000))) << value;
}

TEST(RetryDelay, anyOtherStatusIsNotTriedAgain)
{
    for (const int status : {0, 200, 301, 400, 401, 403, 404, 408, 428, 430, 499, 600})
        EXPECT_EQ(delay(0, status, "5"), std::nullopt) << status;
}

TEST(RetryDelay, fromTheSixtyFourthAttemptOnThereIsNoDelay)
{
    EXPECT_THAT(Engine::retryDelay(63, nullptr), Optional(milliseconds(8000)));
    EXPECT_THAT(Engine::retryDelay(64, nullptr), Optional(milliseconds(0)));
    EXPECT_THAT(delay(std::numeric_limits<int>::max(), 429), Optional(milliseconds(0)));
    EXPECT_THAT(delay(64, 429, "5"), Optional(milliseconds(5000)));
}

} // namespace
} // namespace orvane
