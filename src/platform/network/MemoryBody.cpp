#include "platform/network/Body.h"
#include "platform/network/HeaderFields.h"
#include "platform/network/Inflater.h"

#include <algorithm>
#include <optional>

namespace orvane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// An announcement is believed for as much as this, and no more until the bytes are there.
constexpr qint64 reservedAtOnce = qint64{1024} * 1024;

class MemoryBody final : public Body
{
public:
    explicit MemoryBody(qint64 limit)
        : limit_(limit)
    {
    }

    QByteArray acceptedCoding() const override { return "gzip"; }

    bool begin(const ResponseHead& head) override
    {
        expected_ = head.contentLength;
        const QByteArray coding = contentCoding(head.headers);
        if (coding == "gzip" || coding == "x-gzip")
            inflater_.emplace(limit_);
        else if (!coding.isEmpty())
            throw HttpError(HttpError::Code::Transport, u"the answer is encoded in a way that was not asked for"_s);
        refuseAbove(expected_.value_or(0));
        bytes_.reserve(std::min(expected_.value_or(0), reservedAtOnce));
        return true;
    }

    void write(QByteArrayView bytes) override
    {
        if (inflater_) {
            inflater_->feed(bytes, bytes_);
            return;
        }
        refuseAbove(bytes_.size() + bytes.size());
        bytes_.append(bytes);
    }

    void finish(HttpResponse& response) override
    {
        if (inflater_)
            inflater_->end();
        else
            response.expectedContentLength = expected_;
        response.size = bytes_.size();
        response.body = std::move(bytes_);
    }

    void abandon() noexcept override { bytes_.clear(); }

private:
    void refuseAbove(qint64 size) const
    {
        if (size > limit_)
            throw HttpError(HttpError::Code::TooLarge, u"the answer is larger than %1 bytes"_s.arg(limit_));
    }

    qint64 limit_;
    std::optional<qint64> expected_;
    std::optional<Inflater> inflater_;
    QByteArray bytes_;
};

} // namespace

std::unique_ptr<Body> makeMemoryBody(qint64 limit)
{
    return std::make_unique<MemoryBody>(limit);
}

} // namespace orvane
