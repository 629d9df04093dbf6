#include "demo/service/Tokens.h"

#include <QCryptographicHash>
#include <QRandomGenerator>

#include <algorithm>

namespace orvane::demo {
namespace {

QByteArray freshSecret()
{
    QByteArray secret(16, '\0');
    for (char& byte : secret)
        byte = static_cast<char>(QRandomGenerator::system()->generate());
    return secret;
}

} // namespace

Tokens::Tokens()
    : secret_(freshSecret())
{
    age_.start();
}

void Tokens::setLifetime(std::chrono::milliseconds lifetime)
{
    const std::lock_guard guard(lock_);
    lifetime_ = lifetime;
}

QByteArray Tokens::current() const
{
    const std::lock_guard guard(lock_);
    return tokenOf(period());
}

bool Tokens::isValid(const QByteArray& token) const
{
    const std::lock_guard guard(lock_);
    const qint64 now = period();
    // The pane takes a token every 20 seconds only, so several are good at a time.
    const qint64 oldest = now - std::max<qint64>(1, goodFor / std::max(std::chrono::milliseconds(1), lifetime_));
    for (qint64 past = now; past >= oldest; --past) {
        if (token == tokenOf(past))
            return true;
    }
    return false;
}

void Tokens::expire()
{
    const std::lock_guard guard(lock_);
    secret_ = freshSecret();
}

qint64 Tokens::period() const
{
    return age_.elapsed() / std::max<qint64>(1, lifetime_.count());
}

QByteArray Tokens::tokenOf(qint64 period) const
{
    return "stand-in-" +
           QCryptographicHash::hash(secret_ + QByteArray::number(period), QCryptographicHash::Sha256).toHex();
}

} // namespace orvane::demo
