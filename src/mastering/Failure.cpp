#include "mastering/Failure.h"

#include "platform/filesystem/FileError.h"
#include "platform/sound/SoundError.h"

namespace orvane::Master {

using namespace Qt::Literals::StringLiterals;

Failure::Failure(Code code, const QString& sentence)
    : std::runtime_error(sentence.toStdString())
    , code_(code)
{
}

QString Failure::domain()
{
    return u"Orvane"_s;
}

QString sentenceOf(const std::exception& error)
{
    if (const auto* file = dynamic_cast<const FileError*>(&error))
        return file->sentence();
    if (const auto* sound = dynamic_cast<const SoundError*>(&error))
        return sound->sentence();
    return QString::fromUtf8(error.what());
}

} // namespace orvane::Master
