#include "platform/filesystem/FileError.h"

#include <QDir>
#include <QFileInfo>

#include <cstring>

namespace orvane {

using namespace Qt::Literals::StringLiterals;

FileError::FileError(const QString& path, int code)
    : std::runtime_error(std::strerror(code))
    , path_(path)
    , code_(code)
{
}

QString FileError::reason() const
{
    return QString::fromLocal8Bit(what());
}

QString FileError::sentence() const
{
    return u"%1: %2"_s.arg(QFileInfo(QDir::cleanPath(path_)).fileName(), reason());
}

} // namespace orvane
