#include "platform/network/ResponseParser.h"

#include "platform/network/HeaderFields.h"

#include <algorithm>

namespace orvane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// As many as always fit; a further one is refused like any other character.
constexpr int maxChunkDigits = 15;

[[noreturn]] void refuse(const QString& sentence)
{
    throw HttpError(HttpError::Code::Transport, sentence);
}

[[noreturn]] void refuseAsNotHttp()
{
    refuse(u"the answer is not HTTP"_s);
}

int digit(char character)
{
    return character >= '0' && character <= '9' ? character - '0' : -1;
}

int hexDigit(char character)
{
    const char lower = static_cast<char>(character | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : digit(character);
}

/// Whether `line`, of which more may come, can still become a status line.
bool mayBeStatusLine(const QByteArray& line)
{
    constexpr QByteArrayView prefix = "HTTP/1.";
    const qsizetype common = std::min(line.size(), prefix.size());
    return QByteArrayView(line).first(common) == prefix.first(common);
}

bool hasBody(int status)
{
    return status >= 200 && status != 204 && status != 304;
}

} // namespace

std::optional<QByteArray> ResponseHead::header(QByteArrayView name) const
{
    return firstValue(headers, name);
}

void ResponseParser::feed(QByteArrayView bytes)
{
    received_ += bytes.size();
    while (!bytes.isEmpty() && state_ != State::done)
        bytes = step(bytes);
    if (!bytes.isEmpty())
        refuse(u"the answer is longer than announced"_s);
}

void ResponseParser::end()
{
    switch (state_) {
    case State::done:
        return;
    case State::untilClose:
        state_ = State::done;
        return;
    case State::sizedBody:
        refuse(u"truncated transfer (%1 of %2 bytes)"_s.arg(bodyBytes_).arg(bodyBytes_ + remaining_));
    case State::statusLine:
    case State::headerLine:
        refuse(u"the connection was closed before an answer"_s);
    case State::chunkSize:
    case State::chunkData:
    case State::chunkEnd:
    case State::trailer:
        refuse(u"truncated transfer (the connection was closed after %1 bytes)"_s.arg(bodyBytes_));
    }
}

QByteArrayView ResponseParser::step(QByteArrayView bytes)
{
    switch (state_) {
    case State::sizedBody:
        return takeBody(bytes, State::done);
    case State::chunkData:
        return takeBody(bytes, State::chunkEnd);
    case State::untilClose:
        bodyBytes_ += bytes.size();
        onBody(bytes);
        return {};
    default:
        return takeLine(bytes);
    }
}

QByteArrayView ResponseParser::takeLine(QByteArrayView bytes)
{
    const qsizetype newline = bytes.indexOf('\n');
    const qsizetype taken = newline < 0 ? bytes.size() : newline + 1;
    lineBytes_ += taken;
    if (lineBytes_ > maxHeadBytes)
        refuse(u"the head of the answer is too long"_s);
    line_.append(bytes.first(taken));
    if (state_ == State::statusLine && !mayBeStatusLine(line_))
        refuseAsNotHttp();
    if (newline < 0)
        return {};
    line_.chop(line_.endsWith("\r\n") ? 2 : 1);
    const QByteArray line = std::exchange(line_, {});
    readLine(line);
    return bytes.sliced(taken);
}

QByteArrayView ResponseParser::takeBody(QByteArrayView bytes, State next)
{
    const qsizetype taken = std::min<qint64>(bytes.size(), remaining_);
    remaining_ -= taken;
    bodyBytes_ += taken;
    if (remaining_ == 0)
        state_ = next;
    onBody(bytes.first(taken));
    return bytes.sliced(taken);
}

void ResponseParser::readLine(const QByteArray& line)
{
    switch (state_) {
    case State::statusLine:
        return readStatusLine(line);
    case State::headerLine:
        return line.isEmpty() ? endHead() : readHeaderLine(line);
    case State::chunkSize:
        return readChunkSize(line);
    case State::chunkEnd:
        if (!line.isEmpty())
            refuse(u"a chunk of the answer does not end where it should"_s);
        state_ = State::chunkSize;
        lineBytes_ = 0;
        return;
    default:
        if (line.isEmpty())
            state_ = State::done;
    }
}

void ResponseParser::readStatusLine(const QByteArray& line)
{
    // "HTTP/1.1 200" and whatever reason behind it.
    constexpr qsizetype shortest = 12;
    const bool shaped = line.size() >= shortest && digit(line[7]) >= 0 && line[8] == ' ' &&
                        (line.size() == shortest || line[shortest] == ' ');
    const bool numbered = shaped && std::all_of(line.begin() + 9, line.begin() + shortest,
                                                [](char character) { return digit(character) >= 0; });
    if (!numbered)
        refuseAsNotHttp();
    head_ = {};
    head_.status = line.sliced(9, 3).toInt();
    http11_ = line[7] != '0';
    state_ = State::headerLine;
}

void ResponseParser::readHeaderLine(const QByteArray& line)
{
    if (line[0] == ' ' || line[0] == '\t') {
        if (head_.headers.isEmpty())
            refuseAsNotHttp();
        head_.headers.last().value += ' ' + line.trimmed();
        return;
    }
    const qsizetype colon = line.indexOf(':');
    if (colon <= 0 || line[colon - 1] == ' ' || line[colon - 1] == '\t')
        refuse(u"the answer has an invalid header"_s);
    head_.headers.append({.name = line.first(colon), .value = line.sliced(colon + 1).trimmed()});
}

void ResponseParser::readChunkSize(const QByteArray& line)
{
    qint64 size = 0;
    qsizetype digits = 0;
    while (digits < line.size() && hexDigit(line[digits]) >= 0 && digits < maxChunkDigits)
        size = size * 16 + hexDigit(line[digits++]);
    const QByteArray rest = line.sliced(digits).trimmed();
    if (digits == 0 || !(rest.isEmpty() || rest.startsWith(';')))
        refuse(u"invalid chunk size after %1 bytes"_s.arg(bodyBytes_));
    remaining_ = size;
    state_ = size == 0 ? State::trailer : State::chunkData;
    lineBytes_ = 0;
}

void ResponseParser::endHead()
{
    if (head_.status == 101)
        refuse(u"the server changed the protocol unasked"_s);
    if (head_.status < 200) {
        state_ = State::statusLine;
        return;
    }
    chooseFraming();
    head_.keepAlive = state_ != State::untilClose && keepsAlive(head_.headers, http11_);
    lineBytes_ = 0;
    const ResponseHead head = std::exchange(head_, {});
    onHead(head);
}

void ResponseParser::chooseFraming()
{
    const std::optional<qint64> announced = contentLength(head_.headers);
    if (!hasBody(head_.status)) {
        state_ = State::done;
        return;
    }
    head_.chunked = isChunked(head_.headers);
    if (head_.chunked) {
        state_ = State::chunkSize;
        return;
    }
    head_.contentLength = announced;
    remaining_ = announced.value_or(0);
    state_ = !announced ? State::untilClose : *announced == 0 ? State::done : State::sizedBody;
}

} // namespace orvane
