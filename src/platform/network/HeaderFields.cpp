#include "platform/network/HeaderFields.h"

#include <algorithm>

namespace orvane {

using namespace Qt::Literals::StringLiterals;

namespace {

bool isNamed(const HttpHeader& header, QByteArrayView name)
{
    return QByteArrayView(header.name).compare(name, Qt::CaseInsensitive) == 0;
}

[[noreturn]] void refuse(const QString& sentence)
{
    throw HttpError(HttpError::Code::Transport, sentence);
}

/// QByteArray reads signs and blanks too, which no length has.
std::optional<qint64> plainNumber(const QByteArray& text)
{
    const bool digits =
        std::all_of(text.begin(), text.end(), [](char character) { return character >= '0' && character <= '9'; });
    bool fits = false;
    const qint64 number = text.toLongLong(&fits);
    return digits && fits ? std::optional(number) : std::nullopt;
}

bool lists(const QList<HttpHeader>& headers, QByteArrayView name, QByteArrayView element)
{
    const QList<QByteArray> values = listedValues(headers, name);
    return std::any_of(values.begin(), values.end(), [element](const QByteArray& value) {
        return QByteArrayView(value).compare(element, Qt::CaseInsensitive) == 0;
    });
}

bool isTokenCharacter(char character)
{
    return character > ' ' && character < '\x7f' && character != ':';
}

} // namespace

std::optional<QByteArray> firstValue(const QList<HttpHeader>& headers, QByteArrayView name)
{
    const auto found = std::find_if(headers.begin(), headers.end(),
                                    [name](const HttpHeader& header) { return isNamed(header, name); });
    return found == headers.end() ? std::nullopt : std::optional(found->value);
}

QList<QByteArray> listedValues(const QList<HttpHeader>& headers, QByteArrayView name)
{
    QList<QByteArray> values;
    for (const HttpHeader& header : headers) {
        if (!isNamed(header, name))
            continue;
        for (const QByteArray& element : header.value.split(',')) {
            if (const QByteArray value = element.trimmed(); !value.isEmpty())
                values.append(value);
        }
    }
    return values;
}

std::optional<qint64> contentLength(const QList<HttpHeader>& headers)
{
    constexpr QByteArrayView name = "Content-Length";
    if (!firstValue(headers, name))
        return std::nullopt;
    const QList<QByteArray> announced = listedValues(headers, name);
    const std::optional<qint64> length = announced.isEmpty() ? std::nullopt : plainNumber(announced.first());
    const bool agreed = std::all_of(announced.begin(), announced.end(),
                                    [length](const QByteArray& other) { return plainNumber(other) == length; });
    if (!length || !agreed)
        refuse(u"invalid Content-Length"_s);
    return length;
}

bool isChunked(const QList<HttpHeader>& headers)
{
    const QList<QByteArray> codings = listedValues(headers, "Transfer-Encoding");
    if (codings.isEmpty())
        return false;
    if (codings.size() > 1 || codings.first().compare("chunked", Qt::CaseInsensitive) != 0)
        refuse(u"the answer has an unknown transfer coding"_s);
    return true;
}

bool keepsAlive(const QList<HttpHeader>& headers, bool http11)
{
    return http11 ? !lists(headers, "Connection", "close") : lists(headers, "Connection", "keep-alive");
}

QByteArray contentCoding(const QList<HttpHeader>& headers)
{
    QList<QByteArray> codings = listedValues(headers, "Content-Encoding");
    codings.removeIf([](const QByteArray& coding) { return coding.compare("identity", Qt::CaseInsensitive) == 0; });
    if (codings.size() > 1)
        refuse(u"the answer is encoded more than once"_s);
    return codings.isEmpty() ? QByteArray() : codings.first().toLower();
}

bool isSendable(const HttpHeader& header)
{
    const bool named = !header.name.isEmpty() && std::all_of(header.name.begin(), header.name.end(), &isTokenCharacter);
    const bool clean = std::none_of(header.value.begin(), header.value.end(), [](char character) {
        return character == '\r' || character == '\n' || character == '\0';
    });
    return named && clean;
}

} // namespace orvane
