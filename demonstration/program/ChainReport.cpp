#include "demonstration/program/ChainReport.h"

#include "automation/RunChoices.h"
#include "automation/TrackWork.h"
#include "demonstration/program/FolderInspection.h"
#include "demonstration/program/SecondOpinion.h"
#include "suno/TrackNames.h"
#include "trackfiles/tags/Tags.h"

#include <QFileInfo>

#include <cmath>

namespace orvane::demo {

using namespace Qt::Literals::StringLiterals;

namespace {

/// By how much a master may miss its target in LU, where the limiter has taken loudness away and where it has not.
constexpr double mostUnderTarget = 1.0;
constexpr double mostOverTarget = 0.1;
/// By how much two meters may differ about a true peak, in dB.
constexpr double mostOverCeiling = 0.1;

QString sizeText(qint64 bytes)
{
    return QString::number(static_cast<double>(bytes) / 1e6, 'f', 2) + u" MB"_s;
}

QString loudnessText(const std::optional<Loudness>& loudness)
{
    return loudness ? QString::number(loudness->integrated, 'f', 1) : u"-"_s;
}

QByteArray soundOf(const QByteArray& mp3)
{
    return mp3.sliced(Tags::audioOffset(mp3));
}

/// Everything that a run leaves.
struct Folders
{
    FolderInspection tracks;
    FolderInspection masters;
    FolderInspection videos;
};

/// One track, looked at stage by stage. A stage that joins the chain adds a look of its own.
class TrackInspection
{
public:
    TrackInspection(Folders& folders, const MasteringTarget& target, QString stem)
        : folder_(folders.tracks)
        , masters_(folders.masters)
        , videos_(folders.videos)
        , target_(target)
        , stem_(std::move(stem))
    {
    }

    void lookAtAssets(const Clip& clip, const Track& track, const StandInService& service)
    {
        const QString audio = stem_ + u".mp3"_s;
        if (folder_.expect(audio) && soundOf(contentsOf(folder_.path(audio))) != soundOf(service.audioOf(track.id)))
            folder_.addFault(audio + u" does not hold the sound that the service has."_s);
        const QByteArray timed = lrc(clip.title, u"Suno AI"_s, clip.lyrics, clip.durationSeconds).toUtf8();
        folder_.expectFile(stem_ + u".lrc"_s, timed);
        if (track.hasLyrics)
            folder_.expectFile(stem_ + u" lyrics.txt"_s, lyricsText(clip).toUtf8());
        folder_.expectFile(stem_ + u'.' + track.artworkExtension, service.artworkOf(track.id));
    }

    void lookAtTags(const TagsRead& expected)
    {
        tags_ = tagsOf(folder_.path(stem_ + u".mp3"_s));
        if (tags_ != expected)
            folder_.addFault(u"The tags of %1.mp3 are not what the service tells of it."_s.arg(stem_));
    }

    void lookAtMaster()
    {
        const QString name = stem_ + u'.' + Master::extension(target_.format);
        before_ = loudnessOf(folder_.path(stem_ + u".mp3"_s));
        if (!masters_.expect(name))
            return;
        after_ = loudnessOf(masters_.path(name));
        const double target = target_.platform.target;
        const bool isRight = after_ && after_->integrated > target - mostUnderTarget &&
                             after_->integrated < target + mostOverTarget &&
                             after_->truePeak < target_.platform.ceiling + mostOverCeiling;
        if (!isRight)
            folder_.addFault(
                u"Mastered/%1 misses %2 LUFS or %3 dBTP."_s.arg(name).arg(target).arg(target_.platform.ceiling));
    }

    /// As long as the recording to a frame, in the usual shape, with sound; a picture of its middle goes to `pictures`.
    void lookAtVideo(const QString& pictures)
    {
        const QString name = stem_ + u".mp4"_s;
        if (!videos_.expect(name))
            return;
        video_ = videoOf(videos_.path(name));
        const double seconds = before_ ? before_->seconds : 0.0;
        const bool isRight = video_.pictureCodec == u"h264" && video_.soundCodec == u"aac" &&
                             video_.size == QSize(1080, 1920) && std::abs(video_.seconds - seconds) <= 2.0 / 30 &&
                             video_.frames == static_cast<int>(seconds * 30);
        if (!isRight)
            folder_.addFault(u"Videos/%1 is not the film of %2 s that it should be."_s.arg(name).arg(seconds));
        if (!savePicture(videos_.path(name), video_.seconds / 2, pictures + u'/' + stem_ + u".png"_s))
            folder_.addFault(u"Videos/%1 shows no picture at its middle."_s.arg(name));
    }

    QStringList lines() const
    {
        const qint64 bytes = QFileInfo(folder_.path(stem_ + u".mp3"_s)).size();
        const QString peak = after_ ? QString::number(after_->truePeak, 'f', 1) : u"-"_s;
        const QString cover = tags_.cover.isEmpty() ? u"no cover"_s : tags_.coverType;
        return {u"%1  %2  %3  %4  %5"_s.arg(sizeText(bytes), 8)
                    .arg(loudnessText(before_), 6)
                    .arg(loudnessText(after_), 6)
                    .arg(peak, 5)
                    .arg(stem_),
                u"%1%2 · %3 · %4 · %5 · %6 · %7 characters of lyrics · %8"_s.arg(QString(), 33)
                    .arg(tags_.title, tags_.artist, tags_.album, tags_.track, tags_.genre)
                    .arg(tags_.lyrics.size())
                    .arg(cover),
                u"%1%2 × %3, %4 frames"_s.arg(QString(), 33)
                    .arg(video_.size.width())
                    .arg(video_.size.height())
                    .arg(video_.frames)};
    }

private:
    FolderInspection& folder_;
    FolderInspection& masters_;
    FolderInspection& videos_;
    const MasteringTarget& target_;
    QString stem_;
    TagsRead tags_;
    std::optional<Loudness> before_;
    std::optional<Loudness> after_;
    VideoRead video_;
};

TagsRead expectedTags(const Clip& clip, const QString& stem, const QString& folder, int number, int total)
{
    return {.title = stem,
            .artist = u"Suno AI"_s,
            .album = QFileInfo(folder).fileName(),
            .genre = clip.tags,
            .track = u"%1/%2"_s.arg(number).arg(total),
            .lyrics = clip.lyrics,
            .coverType = {},
            .cover = {}};
}

/// A WebP picture stays beside the track: players know none in a tag.
void expectCover(TagsRead& expected, const Track& track, const StandInService& service)
{
    if (track.artworkExtension == u"webp")
        return;
    expected.coverType = track.artworkExtension == u"png" ? u"image/png"_s : u"image/jpeg"_s;
    expected.cover = service.artworkOf(track.id);
}

QByteArray tracklistOf(const QStringList& names)
{
    QStringList lines;
    for (const QString& name : names)
        lines.append(QString::number(lines.size() + 1).rightJustified(2, u'0') + u". "_s + name);
    return lines.join(u'\n').toUtf8();
}

} // namespace

ChainReport reportOnChain(const QString& folder, const StandInService& service, const MasteringTarget& target,
                          const std::optional<QString>& pictures)
{
    Folders folders{FolderInspection(folder), FolderInspection(folder + u"/Mastered"_s),
                    FolderInspection(folder + u"/Videos"_s)};
    const QList<Track> tracks = service.tracks();
    const int count = static_cast<int>(tracks.size());
    QList<SavedTrack> saved;
    for (int position = 0; position < count; ++position)
        saved.append({.clip = clipOf(tracks.at(position), service.lyricsOf(position)), .base = {}});
    const QStringList names = TrackWork::namesOf(saved, u"clean"_s);
    const QStringList stems = TrackWork::stemsFor(names);

    ChainReport report{.table = {u"    size  LUFS before, after   dBTP  track"_s}, .faults = {}, .tracks = count};
    for (int position = 0; position < count; ++position) {
        const Track& track = tracks.at(position);
        const Clip& clip = saved.at(position).clip;
        TagsRead expected = expectedTags(clip, stems.at(position), folder, position + 1, count);
        expectCover(expected, track, service);
        TrackInspection look(folders, target, stems.at(position));
        look.lookAtAssets(clip, track, service);
        look.lookAtTags(expected);
        look.lookAtMaster();
        if (pictures)
            look.lookAtVideo(*pictures);
        report.table.append(look.lines());
    }
    folders.tracks.expectFile(u"Tracklist.txt"_s, tracklistOf(names));
    folders.tracks.expect(u"Mastered"_s);
    if (pictures)
        folders.tracks.expect(u"Videos"_s);
    for (FolderInspection* each : {&folders.tracks, &folders.masters, &folders.videos}) {
        each->expectNothingElse();
        report.faults += each->faults();
    }
    return report;
}

} // namespace orvane::demo
