#include "demonstration/service/Tokens.h"

#include <QCryptographicHash>
#include <QRandomGenerator>

#include <algorithm>

namespace orvane::demo {

using namespace std::chrono_literals;

namespace {

const QByteArray prefix = "stand-in-";

QByteArray freshSecret()
{
    QByteArray secret(16, '\0');
    for (char& byte : secret)
        byte = static_cast<char>(QRandomGenerator::system()->generate());
    return secret;
}

} // namespace

std::chrono::milliseconds Tokens::machineTime()
{
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now().time_since_epoch());
}

Tokens::Tokens(Watch watch)
    : watch_(std::move(watch))
    , start_(watch_())
    , secret_(freshSecret())
{
}

void Tokens::setLifetime(std::chrono::milliseconds lifetime)
{
    const std::lock_guard guard(lock_);
    firstPeriod_ = period();
    start_ = watch_();
    lifetime_ = std::max(1ms, lifetime);
}

QByteArray Tokens::current() const
{
    const std::lock_guard guard(lock_);
    return tokenOf(period());
}

bool Tokens::isValid(const QByteArray& token) const
{
    const std::lock_guard guard(lock_);
    // A token says its period, so that not all that may be good have to be made.
    const qint64 named = token.mid(prefix.size(), token.lastIndexOf('-') - prefix.size()).toLongLong();
    const qint64 age = period() - named;
    return age >= 0 && age <= std::max<qint64>(1, goodFor / lifetime_) && token == tokenOf(named);
}

void Tokens::expire()
{
    const std::lock_guard guard(lock_);
    secret_ = freshSecret();
}

qint64 Tokens::period() const
{
    return firstPeriod_ + (watch_() - start_) / lifetime_;
}

QByteArray Tokens::tokenOf(qint64 period) const
{
    return prefix + QByteArray::number(period) + '-' +
           QCryptographicHash::hash(secret_ + QByteArray::number(period), QCryptographicHash::Sha256).toHex();
}

} // namespace orvane::demo
