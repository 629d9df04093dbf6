#include "fuzz/Law.h"
#include "trackfiles/namer/NameRules.h"
#include "trackfiles/namer/RenamePlan.h"

#include <QFile>
#include <QSet>
#include <QTemporaryDir>

using orvane::fuzz::mustHold;
namespace TrackNamer = orvane::TrackNamer;

namespace {

constexpr int trackCount = 4;

/// A folder of tracks that is read anew for each input and never changed.
const QTemporaryDir& folder()
{
    static const QTemporaryDir made;
    static const bool filled = [] {
        for (int index = 0; index < trackCount; ++index) {
            QFile file(made.filePath(QString::number(index) + QStringLiteral(".mp3")));
            mustHold(file.open(QFile::WriteOnly));
        }
        return true;
    }();
    mustHold(filled);
    return made;
}

void checkBase(const QString& text)
{
    const TrackNamer::Source source{.title = text, .lyrics = text, .tags = {}, .fileStem = text};
    const QString base = TrackNamer::base(source, 3);
    mustHold(!base.isEmpty());
    mustHold(!TrackNamer::isPlaceholder(base) || base == u"Track 4" || TrackNamer::hook(text).has_value());
    mustHold(TrackNamer::trimmedForTitle(TrackNamer::trimmedForTitle(text)).size() <= text.size());
    for (const TrackNamer::Pattern& pattern : TrackNamer::patterns()) {
        const QString written = TrackNamer::apply(pattern.id, base, 3);
        mustHold(written.contains(base));
        mustHold(TrackNamer::name(source, 3, pattern.id) == written);
    }
}

void checkPlan(const QStringList& invented)
{
    const QList<TrackNamer::Rename> plan = TrackNamer::plan(folder().path(), QStringLiteral("clean"), invented);
    mustHold(plan.size() == trackCount);
    QSet<QString> used;
    for (const TrackNamer::Rename& row : plan) {
        mustHold(!row.to.isEmpty() && row.to != u"." && row.to != u"..");
        mustHold(!row.to.contains(u'/') && !row.to.contains(QChar::Null));
        mustHold(!used.contains(row.to.toLower()));
        used.insert(row.to.toLower());
    }
    mustHold(TrackNamer::plan(folder().path(), QStringLiteral("clean"), invented) == plan);
}

} // namespace

/// A name says something, every pattern keeps it, and a plan of whatever names stays in its folder and keeps them
/// apart.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString text = QString::fromUtf8(orvane::fuzz::bytes(data, size));
    checkBase(text);
    checkPlan(text.split(u'\n'));
    return 0;
}
