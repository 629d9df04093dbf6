#include "fuzz/Law.h"
#include "platform/text/Characters.h"
#include "trackfiles/namer/NameRules.h"

using orvane::fuzz::mustHold;
using orvane::TrackNamer::Source;
using orvane::TrackNamer::sourceFromSidecar;

namespace {

QString joined(const QList<QStringView>& lines)
{
    QString text;
    for (qsizetype index = 0; index < lines.size(); ++index) {
        if (index > 0)
            text += u'\n';
        text += lines[index];
    }
    return text;
}

bool isOneLine(const QString& text)
{
    return orvane::lines(text).size() == 1 && orvane::trimmedBlanks(text) == text;
}

} // namespace

/// A saved file's header is lines, its lyrics are the end of the file, and what was read, written and read again is the
/// same.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString stem = QStringLiteral("stem");
    const QString text = QString::fromUtf8(orvane::fuzz::bytes(data, size));
    const Source source = sourceFromSidecar(text, stem);
    mustHold(source.fileStem == stem);
    mustHold(isOneLine(source.title) && isOneLine(source.tags));
    mustHold(joined(orvane::lines(text)).endsWith(source.lyrics));
    if (source.title.isEmpty())
        return 0;
    const QString again = QStringLiteral("Title: %1\nTags: %2\n\n").arg(source.title, source.tags) + source.lyrics;
    mustHold(sourceFromSidecar(again, stem) == source);
    return 0;
}
