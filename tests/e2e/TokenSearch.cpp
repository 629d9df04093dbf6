#include "tests/e2e/TokenSearch.h"

#include <QDirIterator>
#include <QFile>

#include <algorithm>

namespace orvane::test {

using namespace Qt::Literals::StringLiterals;

namespace {

QByteArray withEach(const QByteArray& secret, const QByteArray& before, const QByteArray& behind)
{
    QByteArray form;
    for (const char byte : secret)
        form += before + byte + behind;
    return form;
}

/// What of the secret is sure to be seen in base64 when `skew` bytes of something else stand before it.
QByteArray base64At(const QByteArray& secret, int skew)
{
    const QByteArray whole = (QByteArray(skew, 'x') + secret).toBase64(QByteArray::OmitTrailingEquals);
    const qsizetype first = (skew * 8 + 5) / 6;
    const qsizetype last = (skew + secret.size()) * 8 / 6;
    return whole.sliced(first, last - first);
}

QByteArray percentEncoded(const QByteArray& secret)
{
    QByteArray form;
    for (const char byte : secret)
        form += '%' + QByteArray(1, byte).toHex();
    return form;
}

} // namespace

QByteArrayList formsOf(const QByteArray& secret)
{
    const QByteArray nought(1, '\0');
    return {secret,
            percentEncoded(secret),
            percentEncoded(secret).toUpper(),
            base64At(secret, 0),
            base64At(secret, 1),
            base64At(secret, 2),
            secret.toHex(),
            secret.toHex().toUpper(),
            withEach(secret, {}, nought),
            withEach(secret, nought, {})};
}

TokenSearch::TokenSearch(const QByteArrayList& secrets)
{
    for (const QByteArray& secret : secrets)
        needles_ += formsOf(secret);
}

bool TokenSearch::finds(const QByteArray& bytes) const
{
    return std::ranges::any_of(needles_, [&bytes](const QByteArray& needle) { return bytes.contains(needle); });
}

QStringList TokenSearch::findIn(const QString& folder, const QString& except, int& looked) const
{
    QStringList found;
    QDirIterator walk(folder, QDir::Files | QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot,
                      QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        const QString path = walk.next();
        if (!except.isEmpty() && (path + u'/').startsWith(except + u'/'))
            continue;
        QFile file(path);
        const QByteArray bytes = walk.fileInfo().isFile() && file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
        ++looked;
        if (finds(QFile::encodeName(path)) || finds(bytes))
            found.append(path);
    }
    return found;
}

} // namespace orvane::test
