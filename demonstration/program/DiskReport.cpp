#include "demonstration/program/DiskReport.h"

#include "demonstration/program/FolderInspection.h"
#include "suno/TrackNames.h"

namespace orvane::demo {

using namespace Qt::Literals::StringLiterals;

namespace {

QString cell(qint64 bytes)
{
    return bytes < 0 ? u"-"_s : QString::number((bytes + 512) / 1024) + u" KB"_s;
}

/// The line of the table.
QString inspect(FolderInspection& folder, const StandInService& service, const Track& track, int position)
{
    const Clip clip = clipOf(track, service.lyricsOf(position));
    const QString base = clipNames(clip, position, {}).base;
    const qint64 audio = folder.expectFile(base + u".mp3"_s, service.audioOf(track.id));
    const QByteArray timed = lrc(clip.title, u"Suno AI"_s, clip.lyrics, clip.durationSeconds).toUtf8();
    const qint64 lines = folder.expectFile(base + u".lrc"_s, timed);
    const qint64 words = track.hasLyrics ? folder.expectFile(base + u" lyrics.txt"_s, lyricsText(clip).toUtf8()) : -1;
    const qint64 cover = folder.expectFile(base + u'.' + track.artworkExtension, service.artworkOf(track.id));
    return u"%1  %2  %3  %4  %5"_s.arg(cell(audio), 9)
        .arg(cell(words), 7)
        .arg(cell(lines), 7)
        .arg(cell(cover), 7)
        .arg(base);
}

} // namespace

DiskReport reportOn(const QString& folder, const StandInService& service)
{
    FolderInspection inspection(folder);
    DiskReport report{.table = {u"    audio   lyrics    timed    cover  track"_s}, .faults = {}, .files = 0};
    const QList<Track> tracks = service.tracks();
    for (int position = 0; position < tracks.size(); ++position)
        report.table.append(inspect(inspection, service, tracks[position], position));
    inspection.expectNothingElse();
    report.faults = inspection.faults();
    report.files = inspection.entries();
    return report;
}

} // namespace orvane::demo
