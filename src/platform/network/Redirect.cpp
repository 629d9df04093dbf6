#include "platform/network/Redirect.h"

#include "platform/network/HttpClient.h"

#include <algorithm>
#include <array>

namespace orvane {

using namespace Qt::Literals::StringLiterals;

namespace {

struct Block
{
    QHostAddress base;
    int prefix;
};

Block block(const QString& base, int prefix)
{
    return {.base = QHostAddress(base), .prefix = prefix};
}

/// IPv4 blocks that are not globally reachable (IANA's registry of special purposes), and multicast.
const std::array<Block, 14>& specialBlocks4()
{
    static const std::array blocks = {
        block(u"0.0.0.0"_s, 8),     block(u"10.0.0.0"_s, 8),      block(u"100.64.0.0"_s, 10),
        block(u"127.0.0.0"_s, 8),   block(u"169.254.0.0"_s, 16),  block(u"172.16.0.0"_s, 12),
        block(u"192.0.0.0"_s, 24),  block(u"192.0.2.0"_s, 24),    block(u"192.168.0.0"_s, 16),
        block(u"198.18.0.0"_s, 15), block(u"198.51.100.0"_s, 24), block(u"203.0.113.0"_s, 24),
        block(u"224.0.0.0"_s, 4),   block(u"240.0.0.0"_s, 4),
    };
    return blocks;
}

/// The one IPv6 block that is globally reachable, and the documentation's part of it that is not.
bool isPublic6(const QHostAddress& address)
{
    static const Block global = block(u"2000::"_s, 3);
    static const Block documentation = block(u"2001:db8::"_s, 32);
    return address.isInSubnet(global.base, global.prefix) &&
           !address.isInSubnet(documentation.base, documentation.prefix);
}

bool isPublic4(const QHostAddress& address)
{
    return std::none_of(specialBlocks4().begin(), specialBlocks4().end(),
                        [&address](const Block& special) { return address.isInSubnet(special.base, special.prefix); });
}

/// The IPv4 address that an IPv6 one stands for: mapped, translated (64:ff9b::/96) or tunnelled (2002::/16).
std::optional<QHostAddress> embedded4(const QHostAddress& address)
{
    static const Block mapped = block(u"::ffff:0:0"_s, 96);
    static const Block translated = block(u"64:ff9b::"_s, 96);
    static const Block tunnelled = block(u"2002::"_s, 16);
    const auto within = [&address](const Block& range) { return address.isInSubnet(range.base, range.prefix); };
    const Q_IPV6ADDR bytes = address.toIPv6Address();
    const auto ipv4At = [&bytes](int place) {
        quint32 value = 0;
        for (int index = place; index < place + 4; ++index)
            value = value << 8 | bytes[index];
        return QHostAddress(value);
    };
    if (within(mapped) || within(translated))
        return ipv4At(12);
    return within(tunnelled) ? std::optional(ipv4At(2)) : std::nullopt;
}

} // namespace

bool isPublic(const QHostAddress& address)
{
    if (address.protocol() == QAbstractSocket::IPv4Protocol)
        return isPublic4(address);
    if (address.protocol() != QAbstractSocket::IPv6Protocol)
        return false;
    const std::optional<QHostAddress> inner = embedded4(address);
    return inner ? isPublic4(*inner) : isPublic6(address);
}

bool isRedirect(int status)
{
    return status == 301 || status == 302 || status == 303 || status == 307 || status == 308;
}

std::optional<QUrl> redirectTarget(const QUrl& hop, const QByteArray& location)
{
    const QUrl relative = QUrl::fromEncoded(location);
    if (location.isEmpty() || !relative.isValid())
        return std::nullopt;
    const QUrl target = hop.resolved(relative).adjusted(QUrl::RemoveUserInfo | QUrl::RemoveFragment);
    const bool web = target.scheme() == u"https" || target.scheme() == u"http";
    if (!web)
        throw HttpError(HttpError::Code::RefusedRedirect,
                        u"refused a redirect to the scheme %1"_s.arg(target.scheme()));
    if (hop.scheme() == u"https" && target.scheme() == u"http")
        throw HttpError(HttpError::Code::RefusedRedirect, u"refused a redirect from https to http"_s);
    return target.host().isEmpty() ? std::nullopt : std::optional(target);
}

} // namespace orvane
