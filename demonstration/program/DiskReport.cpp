#include "demonstration/program/DiskReport.h"

#include "suno/Clip.h"
#include "suno/TrackNames.h"

#include <QDir>
#include <QFile>
#include <QSet>

namespace orvane::demo {

using namespace Qt::Literals::StringLiterals;

namespace {

QByteArray contentsOf(const QString& path)
{
    QFile file(path);
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
}

QString cell(qint64 bytes)
{
    return bytes < 0 ? u"-"_s : QString::number((bytes + 512) / 1024) + u" KB"_s;
}

/// The folder while its files are ticked off.
class Inspection
{
public:
    explicit Inspection(const QString& folder)
        : folder_(folder)
    {
        const QStringList names =
            QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
        unseen_ = QSet<QString>(names.begin(), names.end());
        report.files = static_cast<int>(names.size());
    }

    /// Size of the file; -1 and a fault where it does not hold exactly `expected`.
    qint64 expectFile(const QString& name, const QByteArray& expected)
    {
        if (!unseen_.remove(name)) {
            report.faults.append(name + u" is missing."_s);
            return -1;
        }
        if (contentsOf(folder_ + u'/' + name) != expected)
            report.faults.append(name + u" does not hold what the service has."_s);
        return expected.size();
    }

    void expectNothingElse()
    {
        for (const QString& name : unseen_)
            report.faults.append(name + u" should not be there."_s);
    }

    DiskReport report;

private:
    QString folder_;
    QSet<QString> unseen_;
};

Clip clipOf(const Track& track, const QString& lyrics)
{
    return {.id = track.id,
            .title = track.isUntitled ? u"Untitled"_s : track.title,
            .lyrics = lyrics,
            .tags = track.tags,
            .durationSeconds = track.song.seconds};
}

void inspect(Inspection& inspection, const StandInService& service, const Track& track, int position)
{
    const Clip clip = clipOf(track, service.lyricsOf(position));
    const QString base = clipNames(clip, position, {}).base;
    const qint64 audio = inspection.expectFile(base + u".mp3"_s, service.audioOf(track.id));
    const QByteArray timed = lrc(clip.title, u"Suno AI"_s, clip.lyrics, clip.durationSeconds).toUtf8();
    const qint64 lines = inspection.expectFile(base + u".lrc"_s, timed);
    const qint64 words =
        track.hasLyrics ? inspection.expectFile(base + u" lyrics.txt"_s, lyricsText(clip).toUtf8()) : -1;
    const qint64 cover = inspection.expectFile(base + u'.' + track.artworkExtension, service.artworkOf(track.id));
    inspection.report.table.append(u"%1  %2  %3  %4  %5"_s.arg(cell(audio), 9)
                                       .arg(cell(words), 7)
                                       .arg(cell(lines), 7)
                                       .arg(cell(cover), 7)
                                       .arg(base));
}

} // namespace

DiskReport reportOn(const QString& folder, const StandInService& service)
{
    Inspection inspection(folder);
    inspection.report.table.append(u"    audio   lyrics    timed    cover  track"_s);
    const QList<Track> tracks = service.tracks();
    for (int position = 0; position < tracks.size(); ++position)
        inspect(inspection, service, tracks[position], position);
    inspection.expectNothingElse();
    return inspection.report;
}

} // namespace orvane::demo
