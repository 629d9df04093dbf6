#include "suno/Credential.h"

#include <algorithm>

namespace orvane {

namespace {

bool isWrapping(QChar character)
{
    return character == u' ' || character == u'"' || character == u'\'' || character == u'\n' || character == u'\t';
}

QStringView unwrapped(QStringView value)
{
    while (!value.isEmpty() && isWrapping(value.front()))
        value = value.sliced(1);
    while (!value.isEmpty() && isWrapping(value.back()))
        value.chop(1);
    return value;
}

bool isControl(QChar character)
{
    return character.unicode() < 0x20 || character.unicode() == 0x7f;
}

} // namespace

std::optional<HttpHeader> credentialHeader(const QString& value)
{
    const QStringView credential = unwrapped(value);
    if (credential.isEmpty() || std::any_of(credential.begin(), credential.end(), isControl))
        return std::nullopt;
    if (credential.contains(u"__session=") || credential.contains(u"__client="))
        return HttpHeader{.name = "Cookie", .value = credential.toUtf8()};
    const QByteArray scheme = credential.startsWith(u"Bearer ") ? QByteArray() : QByteArray("Bearer ");
    return HttpHeader{.name = "Authorization", .value = scheme + credential.toUtf8()};
}

} // namespace orvane
