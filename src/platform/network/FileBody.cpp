#include "platform/filesystem/FileError.h"
#include "platform/network/Body.h"
#include "platform/network/HeaderFields.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace orvane {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr mode_t ordinaryFile = 0666;

class FileBody final : public Body
{
public:
    explicit FileBody(QString path)
        : path_(std::move(path))
        , encodedPath_(QFile::encodeName(path_))
    {
    }

    ~FileBody() override { abandon(); }

    QByteArray acceptedCoding() const override { return "identity"; }

    bool begin(const ResponseHead& head) override
    {
        expected_ = head.contentLength;
        if (head.status != 200)
            return false;
        if (!contentCoding(head.headers).isEmpty())
            throw HttpError(HttpError::Code::Transport, u"the answer is encoded in a way that was not asked for"_s);
        openFile();
        return true;
    }

    void write(QByteArrayView bytes) override
    {
        while (!bytes.isEmpty()) {
            const ssize_t written = ::write(descriptor_, bytes.data(), static_cast<std::size_t>(bytes.size()));
            if (written < 0 && errno == EINTR)
                continue;
            if (written <= 0)
                fail(written < 0 ? errno : ENOSPC);
            size_ += written;
            bytes = bytes.sliced(written);
        }
    }

    void finish(HttpResponse& response) override
    {
        response.expectedContentLength = expected_;
        response.size = size_;
        if (descriptor_ < 0) {
            abandon();
            return;
        }
        const int descriptor = std::exchange(descriptor_, -1);
        if (::close(descriptor) != 0)
            fail(errno);
        settled_ = true;
    }

    void abandon() noexcept override
    {
        if (std::exchange(settled_, true))
            return;
        if (descriptor_ >= 0)
            ::close(std::exchange(descriptor_, -1));
        struct stat there = {};
        if (::lstat(encodedPath_.constData(), &there) == 0 && S_ISREG(there.st_mode))
            ::unlink(encodedPath_.constData());
    }

private:
    /// Without waiting for the other end of a pipe that may stand there, and never through a link.
    void openFile()
    {
        if (path_.contains(QChar::Null))
            fail(EINVAL);
        descriptor_ = ::open(encodedPath_.constData(),
                             O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, ordinaryFile);
        if (descriptor_ < 0)
            fail(errno);
        struct stat opened = {};
        if (::fstat(descriptor_, &opened) != 0)
            fail(errno);
        if (!S_ISREG(opened.st_mode))
            fail(EINVAL);
    }

    [[noreturn]] void fail(int code) const
    {
        throw HttpError(HttpError::Code::Storage, FileError(path_, code).sentence());
    }

    QString path_;
    QByteArray encodedPath_;
    int descriptor_ = -1;
    qint64 size_ = 0;
    std::optional<qint64> expected_;
    /// The file is whole, or gone: what stands at the path from now on is not ours.
    bool settled_ = false;
};

} // namespace

std::unique_ptr<Body> makeFileBody(QString path)
{
    return std::make_unique<FileBody>(std::move(path));
}

} // namespace orvane
