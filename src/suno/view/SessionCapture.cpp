#include "suno/view/SessionCapture.h"

#include "main/App/Endpoints.h"

using namespace Qt::StringLiterals;

namespace orvane {
namespace {

constexpr int emptyAnswersThatMeanSignedOut = 2;

} // namespace

const QString SessionCapture::script =
    u"try { return await window.Clerk.session.getToken(); } catch (e) { return ''; }"_s;

bool SessionCapture::mayAsk(const QUrl& address, const QString& siteDomain)
{
    return isOnDomain(address.host(), siteDomain);
}

std::optional<QString> SessionCapture::take(const std::optional<QString>& answer, const QString& token)
{
    if (!answer)
        return std::nullopt;
    if (answer->isEmpty())
        return takeEmpty(token);
    emptyCaptures_ = 0;
    return *answer == token ? std::nullopt : answer;
}

std::optional<QString> SessionCapture::takeEmpty(const QString& token)
{
    ++emptyCaptures_;
    if (emptyCaptures_ < emptyAnswersThatMeanSignedOut || token.isEmpty())
        return std::nullopt;
    return QString();
}

} // namespace orvane
