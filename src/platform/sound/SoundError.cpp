#include "platform/sound/SoundError.h"

#include <QFileInfo>

extern "C" {
#include <libavutil/error.h>
}

#include <array>

namespace orvane {

using namespace Qt::Literals::StringLiterals;

SoundError::SoundError(Kind kind, const QString& path, const QString& words)
    : std::runtime_error(words.toStdString())
    , kind_(kind)
    , path_(path)
{
}

SoundError SoundError::fromLibrary(const QString& path, int code)
{
    std::array<char, AV_ERROR_MAX_STRING_SIZE> words{};
    av_strerror(code, words.data(), words.size());
    return {Kind::Platform, path, QString::fromLocal8Bit(words.data())};
}

QString SoundError::sentence() const
{
    return u"%1: %2"_s.arg(QFileInfo(path_).fileName(), QString::fromStdString(what()));
}

} // namespace orvane
