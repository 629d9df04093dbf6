#include "dj/Writer.h"

#include "dj/Failure.h"
#include "main/App/L10n.h"
#include "mastering/Codec.h"
#include "mastering/Failure.h"
#include "platform/filesystem/AtomicFile.h"
#include "platform/sound/AudioWriter.h"
#include "platform/sound/Mp3Encoder.h"

#include <QFileInfo>

#include <algorithm>
#include <cerrno>

namespace orvane::DJ {

namespace {

constexpr std::size_t channelCount = 2;
constexpr std::size_t pieceLength = 65536;

double asWritten(double sample)
{
    return double(std::clamp(float(sample), -1.0F, 1.0F));
}

} // namespace

/// A file and what encodes into it.
struct Writer::Mp3
{
    Mp3(const QString& path, double sampleRate, Master::MP3Rate rate)
        : file(path, temporarySibling(path))
        , encoder(sampleRate, channelCount, rawValue(rate))
    {
    }

    void write()
    {
        file.write(encoded);
        encoded.clear();
    }

    AtomicFile file;
    Mp3Encoder encoder;
    QByteArray encoded;
};

Writer::Writer(const QString& path, const Settings& settings)
    : stream_(open(path, settings))
    , piece_(channelCount)
{
}

Writer::~Writer()
{
    finish();
}

Writer::Stream Writer::open(const QString& path, const Settings& settings)
{
    if (settings.output.format == Master::Format::mp3) {
        try {
            return std::make_unique<Mp3>(path, settings.sampleRate, settings.output.mp3Rate);
        } catch (const FileError&) {
            throw Failure::empty();
        } catch (Mp3Failure) {
            throw Failure::empty();
        }
    }
    if (QFileInfo(path).isDir())
        throw FileError(path, EISDIR);
    return std::make_unique<AudioWriter>(path, temporarySibling(path),
                                         AudioWriter::Settings{.codec = Master::codecOf(settings.output.format),
                                                               .sampleRate = int(settings.sampleRate),
                                                               .channelCount = int(channelCount),
                                                               .expectedFrames = settings.expectedFrames});
}

template <typename Work>
void Writer::attempt(Work work)
{
    try {
        work();
        return;
    } catch (Mp3Failure) {
        failure_ = std::make_exception_ptr(Master::Failure(Master::Failure::Mp3Failed, L10n::t(L10n::Key::mp3Failed)));
    } catch (...) {
        failure_ = std::current_exception();
    }
    stream_ = {};
}

void Writer::write(const Channels& channels)
{
    write(channels, 0, channels.empty() ? 0 : channels.front().size());
}

void Writer::write(const Channels& channels, std::size_t first, std::size_t end)
{
    if (channels.empty() || first >= end || closed_)
        return;
    attempt([&] {
        if (auto* const file = std::get_if<std::unique_ptr<AudioWriter>>(&stream_);
            file && channels.size() == channelCount)
            return (*file)->write(channels, first, end - first);
        for (; first < end; first += pieceLength)
            writePiece(piece(channels, first, std::min(pieceLength, end - first)));
    });
}

/// The frames as two channels of what the file holds of them.
const Channels& Writer::piece(const Channels& channels, std::size_t first, std::size_t count)
{
    for (std::size_t channel = 0; channel < channelCount; ++channel) {
        const auto& source = channels[std::min(channel, channels.size() - 1)];
        piece_[channel].resize(count);
        std::transform(source.begin() + std::ptrdiff_t(first), source.begin() + std::ptrdiff_t(first + count),
                       piece_[channel].begin(), asWritten);
    }
    return piece_;
}

void Writer::writePiece(const Channels& piece)
{
    const std::size_t count = piece.front().size();
    if (auto* const file = std::get_if<std::unique_ptr<AudioWriter>>(&stream_))
        (*file)->write(piece, 0, count);
    if (auto* const mp3 = std::get_if<std::unique_ptr<Mp3>>(&stream_)) {
        (*mp3)->encoder.encode(piece, 0, count, (*mp3)->encoded);
        (*mp3)->write();
    }
}

void Writer::finish()
{
    if (closed_)
        return;
    closed_ = true;
    attempt([&] {
        if (auto* const file = std::get_if<std::unique_ptr<AudioWriter>>(&stream_))
            (*file)->finish();
        if (auto* const mp3 = std::get_if<std::unique_ptr<Mp3>>(&stream_)) {
            (*mp3)->encoder.flush((*mp3)->encoded);
            (*mp3)->write();
            (*mp3)->file.commit();
        }
    });
    stream_ = {};
}

void Writer::requireWhole() const
{
    if (failure_)
        std::rethrow_exception(failure_);
}

void Writer::abandon()
{
    closed_ = true;
    stream_ = {};
}

} // namespace orvane::DJ
