#include "demonstration/service/Library.h"

#include "demonstration/service/JsonWriter.h"
#include "demonstration/service/Words.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QUuid>

namespace orvane::demo {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int instrumentalOrdinal = 2;
constexpr int untitledOrdinal = 3;
constexpr int withoutAddressOrdinal = 1;
constexpr int firstTwinOrdinal = 4;

/// Titles of the telling tracks; absent where the written title serves.
std::optional<QString> tellingTitle(int ordinal)
{
    static const QList<QString> titles{
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
        u"Half a \xD83D pair"_s,
    };
    const int place = ordinal - firstTwinOrdinal;
    return place >= 0 && place < titles.size() ? std::optional(titles[place]) : std::nullopt;
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
            .leadIn = 0.05 * (seed % 8),
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
                .title = title(ordinal),
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

QString Library::title(int ordinal) const
{
    const std::optional<QString> telling = options_.plainOnly ? std::nullopt : tellingTitle(ordinal);
    return telling ? *telling : titleOf(options_.seed, ordinal);
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

void Library::writeRecord(JsonWriter& json, int position, const QString& site) const
{
    const Track track = at(position);
    // The service is not of one mind about where the words stand.
    const bool hasWordsOnTop = ordinalAt(position) % 8 == 7;
    json.beginObject();
    json.key("id").text(track.id);
    if (track.isUntitled)
        json.key("title").null();
    else
        json.key("title").text(track.title);
    if (track.hasAudioAddress)
        json.key("audio_url").text(site + u'/' + track.id + u".mp3"_s);
    json.key("image_url").text(site + u"/thumbnail/"_s + track.id + u".jpg"_s);
    json.key("image_large_url").text(site + u"/image/"_s + track.id + u'.' + track.artworkExtension);
    json.key("status").text(u"complete");
    json.key("is_public").boolean(false);
    json.key("play_count").number(position * 3);
    json.key("created_at").text(u"2026-10-01T12:00:00.000Z");
    if (hasWordsOnTop)
        json.key("prompt").text(lyricsAt(position));
    json.key("metadata").beginObject();
    if (!hasWordsOnTop)
        json.key("prompt").text(lyricsAt(position));
    json.key("tags").text(track.tags);
    json.key("duration").number(track.song.seconds);
    json.key("type").text(u"gen");
    json.endObject();
    json.endObject();
}

std::optional<int> Library::projectOf(const QString& projectId) const
{
    for (int project = 0; project < options_.projects; ++project) {
        if (this->projectId(project) == projectId)
            return project;
    }
    return std::nullopt;
}

QList<int> Library::positionsOf(const QString& projectId) const
{
    const std::optional<int> project = projectOf(projectId);
    QList<int> positions;
    for (int position = 0; position < size(); ++position) {
        if (projectId.isEmpty() || (project && ordinalAt(position) % options_.projects == *project))
            positions.append(position);
    }
    return positions;
}

QByteArray Library::page(int number, const QString& projectId, const QByteArray& siteAddress) const
{
    const QString site = QString::fromLatin1(siteAddress);
    const QList<int> positions = positionsOf(projectId);
    const qsizetype first = (std::max(1, number) - 1LL) * options_.pageSize;
    JsonWriter json;
    json.reserve(options_.pageSize * (800LL + options_.lyricsBytes));
    json.beginObject();
    json.key("clips").beginArray();
    for (qsizetype at = first; at < std::min<qsizetype>(first + options_.pageSize, positions.size()); ++at)
        writeRecord(json, positions[at], site);
    json.endArray();
    json.key("num_total_results").number(static_cast<int>(positions.size()));
    json.key("current_page").number(number);
    json.endObject();
    return json.bytes();
}

QString Library::projectId(int project) const
{
    return identifier(options_.seed, u"project "_s + QString::number(project));
}

QString Library::projectName(int project) const
{
    return titleOf(options_.seed, 50'000 + project) + u" sessions"_s;
}

QByteArray Library::projects() const
{
    static const QString nameKeys[] = {u"name"_s, u"display_name"_s, u"title"_s, u"project_name"_s};
    QJsonArray projects;
    for (int project = 0; project < options_.projects; ++project) {
        projects.append(QJsonObject{{u"id"_s, projectId(project)}, {nameKeys[project % 4], projectName(project)}});
    }
    return projects.isEmpty() ? QByteArray("[]") : text(inForm(options_.projectForm, projects));
}

} // namespace orvane::demo
