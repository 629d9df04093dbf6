#include "tests/automation/AutomationFixture.h"

#include <QRegularExpression>

#include <gmock/gmock.h>

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

/// Where a run is stopped: nowhere, as the stage begins, in its middle, or as it ends.
enum class StopAt
{
    nowhere,
    beginning,
    middle,
    end
};

struct Case
{
    RunSource source = RunSource::download;
    bool rename = false;
    bool tag = false;
    bool master = false;
    StopAt stopAt = StopAt::nowhere;
    Stage stage = Stage::read;
};

const QString stopping = u"error: Stopping…"_s;

QString began(const QString& name)
{
    return u"> %1: running"_s.arg(name);
}

/// What a run says, told stage by stage for three tracks, or for one that is selected: the written expectation.
class Expectation
{
public:
    Expectation(const Case& which, const QStringList& stems)
        : case_(which)
        , stems_(stems)
    {
    }

    QStringList lines()
    {
        if (case_.source == RunSource::download) {
            readAndDownload();
        } else {
            add(u"> Read the library: skipped, using files already here"_s);
            stopAfter(Stage::read);
            add(u"> Download assets: skipped, %1 already here"_s.arg(stems_.size()));
            skipped_ += 2;
            stopAfter(Stage::download);
        }
        rename();
        tag();
        master();
        off(Stage::video, u"Render videos"_s);
        finish();
        return lines_;
    }

private:
    bool isHere(Stage stage, StopAt where) const { return case_.stage == stage && case_.stopAt == where; }

    void add(const QString& line) { lines_.append(line); }

    void stop()
    {
        add(stopping);
        stopped_ = true;
    }

    void stopAfter(Stage stage)
    {
        if (!stopped_ && isHere(stage, StopAt::end))
            stop();
    }

    void fail(const QString& line)
    {
        add(line);
        ++failed_;
    }

    void readAndDownload()
    {
        add(u"> Read the library: running"_s);
        if (isHere(Stage::read, StopAt::beginning) || isHere(Stage::read, StopAt::middle)) {
            stop();
            const int read = case_.stopAt == StopAt::middle ? 1 : 0;
            fail(u"> Read the library: failed, only %1 tracks read before Suno stopped responding"_s.arg(read));
            add(u"error: Stopping here: this is a partial library, and finishing on it would produce an incomplete set "
                "that looks complete."_s);
            return;
        }
        add(u"> Read the library: done, 3 tracks"_s);
        ++done_;
        stopAfter(Stage::read);
        add(u"> Download assets: running"_s);
        if (!stopped_ && (isHere(Stage::download, StopAt::beginning) || isHere(Stage::download, StopAt::middle)))
            stop();
        if (stopped_)
            return fail(u"> Download assets: failed, stopped %1 of 3"_s.arg(case_.stopAt == StopAt::middle ? 1 : 0));
        add(u"> Download assets: done, 3 tracks"_s);
        ++done_;
        stopAfter(Stage::download);
    }

    void rename()
    {
        if (!case_.rename)
            return off(Stage::rename, u"Rename to your scheme"_s);
        if (stopped_)
            return;
        add(began(u"Rename to your scheme"_s));
        const bool stops = stopIn(Stage::rename, {u"info: Naming: each track after itself, formatted as clean."_s});
        if (!stops)
            end(Stage::rename, u"> Rename to your scheme: done, %1 file(s) renamed"_s.arg(stems_.size()));
    }

    void tag()
    {
        if (!case_.tag)
            return off(Stage::tag, u"Write tags"_s);
        if (stopped_)
            return;
        add(began(u"Write tags"_s));
        if (!stopIn(Stage::tag, {}))
            end(Stage::tag, u"> Write tags: done, %1 file(s)"_s.arg(stems_.size()));
    }

    void master()
    {
        if (!case_.master)
            return off(Stage::master, u"Master audio"_s);
        if (stopped_)
            return;
        add(began(u"Master audio"_s));
        const QString target = u"info: Mastering: Spotify · WAV 24-bit, from the Mastering tab."_s;
        if (isHere(Stage::master, StopAt::beginning)) {
            stop();
            add(target);
            return fail(stoppedLine(Stage::master, 0));
        }
        add(target);
        for (int index = 0; index < stems_.size(); ++index) {
            if (isHere(Stage::master, StopAt::middle) && index == middle())
                stop();
            add(u"success: %1: LOUDNESS"_s.arg(case_.rename ? renamed(index) : stems_.at(index)));
            if (stopped_ && index + 1 < stems_.size())
                return fail(stoppedLine(Stage::master, index + 1));
        }
        end(Stage::master, u"> Master audio: done, %1 mastered for Spotify"_s.arg(stems_.size()));
    }

    /// The stop at the beginning or in the middle of a stage whose tracks have no lines of their own; `opening` are its
    /// lines before the first track. True where the stage does not come to its end.
    bool stopIn(Stage stage, const QStringList& opening)
    {
        if (isHere(stage, StopAt::beginning)) {
            stop();
            lines_ += opening;
            fail(stoppedLine(stage, 0));
            return true;
        }
        lines_ += opening;
        if (!isHere(stage, StopAt::middle))
            return false;
        stop();
        if (middle() + 1 == stems_.size())
            return false;
        fail(stoppedLine(stage, middle() + 1));
        return true;
    }

    void end(Stage stage, const QString& line)
    {
        add(line);
        ++done_;
        stopAfter(stage);
    }

    void off(Stage stage, const QString& name)
    {
        if (stopped_)
            return;
        add(u"> %1: skipped, turned off"_s.arg(name));
        ++skipped_;
        stopAfter(stage);
    }

    void finish()
    {
        const int notReached = 6 - done_ - skipped_ - failed_;
        QString summary = u"%1 done"_s.arg(done_);
        if (skipped_ > 0)
            summary += u", %1 switched off"_s.arg(skipped_);
        if (failed_ > 0)
            summary += u", %1 failed"_s.arg(failed_);
        if (notReached > 0)
            summary += u", %1 not reached"_s.arg(notReached);
        const bool isWhole = failed_ == 0 && notReached == 0;
        add((isWhole ? u"success: Finished — %1."_s : u"error: Stopped — %1."_s).arg(summary));
    }

    QString stoppedLine(Stage stage, int reached) const
    {
        return u"> %1: failed, stopped %2 of %3"_s.arg(nameOf(stage)).arg(reached).arg(stems_.size());
    }

    QString renamed(int index) const { return stems_.at(index).section(u" - "_s, 1); }

    /// Position of the track at which a stop in the middle comes.
    int middle() const { return stems_.size() == 1 ? 0 : 1; }

    Case case_;
    QStringList stems_;
    QStringList lines_;
    bool stopped_ = false;
    int done_ = 0;
    int skipped_ = 0;
    int failed_ = 0;
};

class RunMatrix : public AutomationFixture, public testing::WithParamInterface<RunSource>
{
protected:
    RunMatrix()
        : AutomationFixture(3)
    {
        // One track on each page, so that there is a middle of the read.
        demo::LibraryOptions library = shortTracks(3);
        library.pageSize = 1;
        service.setLibrary(library);
        const QList<demo::Track> tracks = service.tracks();
        for (int index = 0; index < tracks.size(); ++index)
            stems.append(u"00%1 - %2"_s.arg(index + 1).arg(tracks.at(index).title));
        assets = {Asset::audio};
    }

    /// A fresh folder with what the source needs.
    void prepare(const Case& which)
    {
        session.setDestination(QUrl::fromLocalFile(home.filePath(u"Run %1"_s.arg(++number))));
        lines.clear();
        choices = {.source = which.source, .rename = which.rename, .tag = which.tag, .master = which.master};
        const QString where = session.destination().toLocalFile();
        if (which.source != RunSource::download)
            for (const QString& stem : stems)
                write(u"../Run %1/"_s.arg(number) + stem + u".mp3"_s, recording());
        const QUrl audio = QUrl::fromLocalFile(where + u'/' + stems.at(1) + u".mp3"_s);
        session.setSelection(TrackRef{.name = stems.at(1), .audio = audio, .artwork = {}, .lyrics = {}});
    }

    void stopWhere(const Case& which)
    {
        onLine = nullptr;
        onProgress = nullptr;
        const QString head = u"> "_s + nameOf(which.stage) + u": "_s;
        if (which.stopAt == StopAt::beginning)
            onLine = [this, head](const QString& line) { stopIf(line == head + u"running"_s); };
        if (which.stopAt == StopAt::end)
            onLine = [this, head](const QString& line) {
                stopIf(line.startsWith(head + u"done"_s) || line.startsWith(head + u"skipped"_s));
            };
        if (which.stopAt == StopAt::middle && which.stage == Stage::read)
            onLine = [this](const QString& line) { stopIf(line.startsWith(u"info: Page 1"_s)); };
        if (which.stopAt == StopAt::middle && which.stage != Stage::read)
            onProgress = [this, which](const RunProgress& at) {
                stopIf(at.stage == which.stage && at.done == (at.count == 1 ? 0 : 1));
            };
    }

    void stopIf(bool isThere)
    {
        if (isThere)
            run().stop();
    }

    QStringList normalised() const
    {
        static const QRegularExpression loudness(uR"(: \S+ → \S+ LUFS, \S+ dBTP( \(limited\))?$)"_s);
        QStringList said = told();
        said.replaceInStrings(loudness, u": LOUDNESS"_s);
        return said;
    }

    void walk(const Case& which)
    {
        prepare(which);
        stopWhere(which);
        runToTheEnd();
        const bool isSelection = which.source == RunSource::selection;
        const QStringList worked = isSelection ? QStringList{stems.at(1)} : stems;
        EXPECT_EQ(normalised(), Expectation(which, worked).lines())
            << "rename " << which.rename << " tag " << which.tag << " master " << which.master << " stop "
            << static_cast<int>(which.stopAt) << " in " << nameOf(which.stage).toStdString();
    }

    static bool isTicked(const Case& which)
    {
        switch (which.stage) {
        case Stage::read:
        case Stage::download:
            return which.source == RunSource::download;
        case Stage::rename:
            return which.rename;
        case Stage::tag:
            return which.tag;
        case Stage::master:
            return which.master;
        case Stage::video:
            break;
        }
        return false;
    }

    QStringList stems;
    int number = 0;
};

TEST_P(RunMatrix, saysTheSameWhereverItIsStopped)
{
    for (int ticks = 0; ticks < 8; ++ticks) {
        Case which{
            .source = GetParam(), .rename = (ticks & 1) != 0, .tag = (ticks & 2) != 0, .master = (ticks & 4) != 0};
        walk(which);
        for (const Stage stage : stageOrder) {
            which.stage = stage;
            for (const StopAt stopAt : {StopAt::beginning, StopAt::middle, StopAt::end}) {
                which.stopAt = stopAt;
                // A stage that does not run has an end only.
                if (stopAt == StopAt::end || isTicked(which))
                    walk(which);
            }
        }
    }
    std::printf("%d runs walked\n", number);
}

INSTANTIATE_TEST_SUITE_P(Sources, RunMatrix, testing::ValuesIn(allRunSources));

} // namespace
} // namespace orvane::test
