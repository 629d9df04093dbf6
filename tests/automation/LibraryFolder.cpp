#include "tests/automation/LibraryFolder.h"

#include "trackfiles/tags/Tags.h"

#include <QDir>
#include <QHash>
#include <QRegularExpression>

namespace orvane::test {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString mastered = u"Mastered/"_s;

/// What a whole file of the name may be called, and is about: "001 - Title.lrc" is of "Title".
QString withoutNumber(const QString& name)
{
    static const QRegularExpression number(u"^\\d{3,} - "_s);
    return QString(name).remove(number);
}

} // namespace

QByteArray soundOf(const QByteArray& mp3)
{
    return mp3.sliced(Tags::audioOffset(mp3));
}

LibraryFolder::LibraryFolder(const demo::LibraryOptions& library)
    : service(library)
{
    service.setTokenLifetime(std::chrono::hours(24));
}

QStringList LibraryFolder::program() const
{
    return {QStringLiteral(LIBRARY_WORKER), folder.path(u"library"_s), folder.path(u"preferences.json"_s),
            QString::number(service.endpoints().sunoHome.port()), service.currentToken()};
}

ProgramOutcome LibraryFolder::run(const QStringList& more) const
{
    return runProgram(program().first(), program().sliced(1) + more, std::chrono::minutes(30));
}

ProgramOutcome LibraryFolder::runBroken(const SystemCall& call, const QString& fault) const
{
    return test::runBroken(program(), call, fault);
}

ProgramOutcome LibraryFolder::runBrokenAt(const QString& file, const QString& calls, const QString& fault) const
{
    return test::runBrokenAt(program(), folder.path(u"library/"_s + file), calls, fault);
}

void LibraryFolder::empty() const
{
    QDir(folder.path(u"library"_s)).removeRecursively();
}

QMap<QString, QByteArray> LibraryFolder::contents() const
{
    QMap<QString, QByteArray> found;
    for (const QString& below : {QString(), mastered}) {
        const QString path = u"library/"_s + below;
        for (const QString& name : QDir(folder.path(path)).entryList(QDir::Files | QDir::Hidden))
            found.insert(below + name, folder.read(path + name));
    }
    return found;
}

QStringList LibraryFolder::faults(bool isFinal) const
{
    const QMap<QString, QByteArray> found = contents();
    QHash<QString, QStringList> byFinalName;
    for (const QString& name : found.keys())
        byFinalName[withoutNumber(name)].append(name);
    QStringList faults;
    for (const demo::Track& track : service.tracks()) {
        const QString cover = track.title + u'.' + track.artworkExtension;
        const QString recording = track.title + u".mp3"_s;
        const QStringList expected{recording, cover, track.title + u".lrc"_s, track.title + u" lyrics.txt"_s,
                                   mastered + track.title + u".wav"_s};
        for (const QString& name : expected) {
            if (isFinal && !found.contains(name))
                faults.append(name + u" is missing"_s);
        }
        for (const QString& name : byFinalName.value(recording)) {
            if (soundOf(found.value(name)) != soundOf(service.audioOf(track.id)))
                faults.append(name + u" is not the recording"_s);
        }
        for (const QString& name : byFinalName.value(cover)) {
            if (found.value(name) != service.artworkOf(track.id))
                faults.append(name + u" is not the cover"_s);
        }
    }
    return faults;
}

} // namespace orvane::test
