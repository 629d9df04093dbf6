#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QString>
#include <QStringList>

namespace orvane::test {

/// Every form in which a secret could lie in a file: as it is, percent-encoded, in base64 at each of its three
/// alignments, in hexadecimal digits, and in UTF-16 of both byte orders.
QByteArrayList formsOf(const QByteArray& secret);

/// Looks for secrets in bytes and files, in each of their forms.
class TokenSearch
{
public:
    /// `secrets` are at least 12 bytes each.
    explicit TokenSearch(const QByteArrayList& secrets);

    bool finds(const QByteArray& bytes) const;

    /// The paths below `folder` whose name or content holds a secret, but for the folder `except`. Adds the number of
    /// files it looked into to `looked`.
    QStringList findIn(const QString& folder, const QString& except, int& looked) const;

private:
    QByteArrayList needles_;
};

} // namespace orvane::test
