#include "demo/service/Library.h"

#include "demo/service/Words.h"

#include <QJsonDocument>
#include <QUuid>

namespace orvane::demo {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int instrumentalOrdinal = 2;
constexpr int untitledOrdinal = 3;
constexpr int withoutAddressOrdinal = 1;

/// Titles of the telling tracks; absent where the written title serves.
std::optional<QString> tellingTitle(int ordinal)
{
    static const QList<QString> hostile{
        u"Twin Lights"_s,
        u"Twin Lights"_s,
        u"../../etc/passwd"_s,
        u"Bell\u0007 and \u0001 line\nbreak"_s,
        u"Turned \u202Egnos\u202C round"_s,
        u"👨‍👩‍👧‍👦 Family"_s,
        u"धीरे "_s.repeated(60),
        u"CON"_s,
        u"\"Quoted\" <b>bold</b> 100% *?|"_s,
        u"..."_s,
    };
    constexpr int first = 4;
    const int place = ordinal - first;
    return place >= 0 && place < hostile.size() ? std::optional(hostile[place]) : std::nullopt;
}

/// Written titles repeat sooner or later, so in a large library each carries its number.
QString plainTitle(int ordinal, unsigned seed)
{
    constexpr int fewEnough = 16;
    return ordinal < fewEnough ? titleOf(seed) : titleOf(seed) + u' ' + QString::number(ordinal);
}

QString identifier(unsigned seed, const QString& name)
{
    static const QUuid space(u"{7f6e2f0a-5f0c-4f43-9d53-1c3f4f0d8a11}"_s);
    return QUuid::createUuidV5(space, QString::number(seed) + u'/' + name).toString(QUuid::WithoutBraces);
}

QString keyName(const Song& song)
{
    static const QStringList tonics{u"C"_s,  u"C#"_s, u"D"_s,  u"D#"_s, u"E"_s,  u"F"_s,
                                    u"F#"_s, u"G"_s,  u"G#"_s, u"A"_s,  u"A#"_s, u"B"_s};
    return song.minor ? tonics[song.tonic] + u" minor"_s : tonics[song.tonic];
}

Song songOf(const LibraryOptions& options, unsigned seed)
{
    static constexpr double tempos[] = {72, 87, 96, 104, 110, 118, 124, 128, 140, 174};
    const double span = options.longestSeconds - options.shortestSeconds;
    return {.bpm = tempos[seed % std::size(tempos)],
            .tonic = static_cast<int>((seed * 7) % 12),
            .minor = seed % 3 == 0,
            .seconds = std::round(options.shortestSeconds + span * ((seed * 37) % 100) / 100.0),
            .seed = seed};
}

QJsonValue inForm(ProjectForm form, const QJsonArray& projects)
{
    switch (form) {
    case ProjectForm::list:
        return projects;
    case ProjectForm::wrappedInProjects:
        return QJsonObject{{u"projects"_s, projects}};
    case ProjectForm::wrappedInProject:
        return QJsonObject{{u"project"_s, projects.first()}};
    case ProjectForm::wrappedInData:
        return QJsonObject{{u"data"_s, projects}};
    case ProjectForm::wrappedInResults:
        return QJsonObject{{u"results"_s, projects}};
    case ProjectForm::wrappedInItems:
        return QJsonObject{{u"items"_s, projects}};
    case ProjectForm::nested:
        return QJsonObject{{u"data"_s, QJsonObject{{u"results"_s, QJsonObject{{u"items"_s, projects}}}}}};
    case ProjectForm::single:
        break;
    }
    return projects.first();
}

QByteArray text(const QJsonValue& value)
{
    const QJsonDocument document = value.isArray() ? QJsonDocument(value.toArray()) : QJsonDocument(value.toObject());
    return document.toJson(QJsonDocument::Compact);
}

} // namespace

Library::Library(LibraryOptions options)
    : options_(std::move(options))
{
}

int Library::ordinalAt(int position) const
{
    return position < added_ ? options_.tracks + added_ - 1 - position : position - added_;
}

Track Library::at(int position) const
{
    const int ordinal = ordinalAt(position);
    const unsigned seed = options_.seed * 1'000'003U + static_cast<unsigned>(ordinal);
    static const QString extensions[] = {u"jpg"_s, u"png"_s, u"webp"_s};
    Track track{.id = trackId(ordinal),
                .title =
                    (options_.plainOnly ? std::nullopt : tellingTitle(ordinal)).value_or(plainTitle(ordinal, seed)),
                .isUntitled = tells(ordinal, untitledOrdinal),
                .hasLyrics = !tells(ordinal, instrumentalOrdinal),
                .hasAudioAddress = !tells(ordinal, withoutAddressOrdinal),
                .artworkExtension = extensions[ordinal % 3],
                .tags = tagsOf(seed),
                .song = songOf(options_, seed)};
    if (track.isUntitled)
        track.title.clear();
    track.key = keyName(track.song);
    return track;
}

std::optional<int> Library::positionOf(const QString& id) const
{
    for (int ordinal = static_cast<int>(ordinals_.size()); ordinal < size(); ++ordinal)
        ordinals_.insert(trackId(ordinal), ordinal);
    const auto found = ordinals_.constFind(id);
    if (found == ordinals_.constEnd() || *found >= size())
        return std::nullopt;
    return *found < options_.tracks ? *found + added_ : options_.tracks + added_ - 1 - *found;
}

QString Library::trackId(int ordinal) const
{
    return identifier(options_.seed, u"track "_s + QString::number(ordinal));
}

QString Library::lyricsAt(int position) const
{
    const int ordinal = ordinalAt(position);
    if (tells(ordinal, instrumentalOrdinal))
        return {};
    const QString written = lyricsOf(options_.seed * 31 + static_cast<unsigned>(ordinal));
    if (options_.lyricsBytes <= 0)
        return written;
    return written.repeated(options_.lyricsBytes / written.size() + 1).first(options_.lyricsBytes);
}

QJsonObject Library::record(int position, const QByteArray& siteAddress) const
{
    const Track track = at(position);
    const QString site = QString::fromLatin1(siteAddress);
    const QString image = site + u"/image/"_s + track.id + u'.' + track.artworkExtension;
    QJsonObject record{
        {u"id"_s, track.id},
        {u"title"_s, track.isUntitled ? QJsonValue() : QJsonValue(track.title)},
        {u"image_url"_s, image + u"?width=200"_s},
        {u"image_large_url"_s, image},
        {u"status"_s, u"complete"_s},
        {u"is_public"_s, false},
        {u"play_count"_s, position * 3},
        {u"created_at"_s, u"2026-10-01T12:00:00.000Z"_s},
        {u"metadata"_s, QJsonObject{{u"prompt"_s, lyricsAt(position)},
                                    {u"tags"_s, track.tags},
                                    {u"duration"_s, track.song.seconds},
                                    {u"type"_s, u"gen"_s}}},
    };
    if (track.hasAudioAddress)
        record.insert(u"audio_url"_s, site + u'/' + track.id + u".mp3"_s);
    return record;
}

QList<int> Library::positionsOf(const QString& projectId, int from, int count) const
{
    QList<int> positions;
    if (projectId.isEmpty()) {
        for (int position = from; position < std::min(from + count, size()); ++position)
            positions.append(position);
        return positions;
    }
    for (int position = 0; position < size(); ++position) {
        if (options_.projects > 0 && this->projectId(ordinalAt(position) % options_.projects) == projectId)
            positions.append(position);
    }
    return positions.mid(from, count);
}

QByteArray Library::page(int number, const QString& projectId, const QByteArray& siteAddress) const
{
    QJsonArray clips;
    for (const int position : positionsOf(projectId, (std::max(1, number) - 1) * options_.pageSize, options_.pageSize))
        clips.append(record(position, siteAddress));
    return text(QJsonObject{{u"clips"_s, clips}, {u"num_total_results"_s, size()}, {u"current_page"_s, number}});
}

QString Library::projectId(int project) const
{
    return identifier(options_.seed, u"project "_s + QString::number(project));
}

QByteArray Library::projects() const
{
    static const QString nameKeys[] = {u"name"_s, u"display_name"_s, u"title"_s, u"project_name"_s};
    QJsonArray projects;
    for (int project = 0; project < options_.projects; ++project) {
        const QString name = titleOf(options_.seed + 900U + static_cast<unsigned>(project)) + u" sessions"_s;
        projects.append(QJsonObject{{u"id"_s, projectId(project)}, {nameKeys[project % 4], name}});
    }
    return projects.isEmpty() ? QByteArray("[]") : text(inForm(options_.projectForm, projects));
}

} // namespace orvane::demo
