#include "automation/AutomaterRun.h"
#include "automation/StageTime.h"
#include "main/App/L10n.h"
#include "main/App/Session.h"
#include "mastering/Format.h"
#include "mastering/WatermarkSettings.h"

#include <QFileInfo>
#include <QtConcurrentRun>
#include <qcoro/qcorofuture.h>

#include <cmath>

namespace orvane {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString turnedOff = u"turned off"_s;

QString oneDecimal(double value)
{
    return QString::number(value, 'f', 1);
}

StageState stoppedAt(int done, qsizetype count)
{
    return StageState::failed(u"stopped %1 of %2"_s.arg(done).arg(count));
}

QString labelFor(const QString& verb, int index, qsizetype count, const QString& stem)
{
    return u"%1 %2 of %3 — %4"_s.arg(verb).arg(index + 1).arg(count).arg(stem);
}

bool isMp3(const QString& path)
{
    return QFileInfo(path).suffix().toLower() == u"mp3";
}

} // namespace

QCoro::Task<> AutomaterRun::runRemaining(QList<SavedTrack> saved, PipelineConfig config)
{
    co_await renameTracks(saved, config);
    co_await tagTracks(saved, config);
    co_await masterTracks(saved, config);
    co_await renderVideos(saved);
}

bool AutomaterRun::enters(Stage stage, bool isTicked, const QList<SavedTrack>& saved, const QString& otherwise)
{
    if (engine_.isStopping())
        return false;
    if (isTicked && !saved.isEmpty()) {
        setStage(stage, StageState::running());
        return true;
    }
    setStage(stage, StageState::skipped(isTicked ? otherwise : turnedOff));
    return false;
}

QString AutomaterRun::stemOf(const SavedTrack& track) const
{
    return renamedStems_.value(track.base, track.base);
}

QCoro::Task<QString> AutomaterRun::chosenPattern(RunChoices current)
{
    std::optional<QString> fromNamer;
    if (namingProvider)
        fromNamer = co_await namingProvider();
    co_return fromNamer.value_or(patternOf(current));
}

QCoro::Task<> AutomaterRun::renameTracks(QList<SavedTrack> saved, PipelineConfig config)
{
    if (!enters(Stage::rename, choices_.rename, saved, u"nothing downloaded to rename"_s))
        co_return;
    const QString folder = config.destination.toLocalFile();
    const QString pattern = co_await chosenPattern(choices_);
    log(L10n::t(L10n::Key::log7, {pattern}), LogLevel::info);
    auto naming = QtConcurrent::run(TrackWork::namesOf, saved, pattern);
    const QStringList names = co_await naming;
    const Loop moved = co_await rename(saved, names, folder);
    if (moved.stopped) {
        setStage(Stage::rename, stoppedAt(moved.reached, saved.size()));
        Q_EMIT services_.session.filesChanged();
        co_return;
    }
    auto writing = QtConcurrent::run(TrackWork::writeTracklist, names, folder);
    const QString refusal = co_await writing;
    if (refusal.isEmpty()) {
        setStage(Stage::rename, StageState::done(u"%1 file(s) renamed"_s.arg(moved.done)));
    } else {
        failAloud(Stage::rename, refusal);
        log(L10n::t(L10n::Key::log8, {Prerequisites::folderDetail(folder)}), LogLevel::info);
    }
    Q_EMIT services_.session.filesChanged();
}

QCoro::Task<AutomaterRun::Loop> AutomaterRun::rename(QList<SavedTrack> saved, QStringList names, QString folder)
{
    auto listing = QtConcurrent::run(FolderListing::of, folder);
    const FolderListing files = co_await listing;
    auto forming = QtConcurrent::run(TrackWork::stemsFor, names);
    const QStringList stems = co_await forming;
    StageTime time(services_.clock, saved.size());
    Loop loop;
    for (int index = 0; index < static_cast<int>(std::min(saved.size(), stems.size())); ++index) {
        loop.stopped = engine_.isStopping();
        if (loop.stopped)
            co_return loop;
        const QString& base = saved.at(index).base;
        const QString& stem = stems.at(index);
        const auto timeLeft = time.begin();
        report({Stage::rename, index, static_cast<int>(saved.size()),
                labelFor(u"renaming"_s, index, saved.size(), stem), timeLeft});
        renamedStems_.insert(base, stem);
        auto moving = QtConcurrent::run(TrackWork::renameFiles, folder, files.belongingTo(base), base, stem);
        const TrackWork::Renamed renamed = co_await moving;
        for (const TrackWork::NotRenamed& problem : renamed.problems)
            logNotRenamed(problem);
        loop.done += renamed.moved;
        ++loop.reached;
        time.end();
    }
    co_return loop;
}

void AutomaterRun::logNotRenamed(const TrackWork::NotRenamed& problem)
{
    if (problem.reason.isEmpty())
        log(L10n::t(L10n::Key::log11, {problem.file, problem.target}), LogLevel::info);
    else
        log(L10n::t(L10n::Key::log24, {problem.file, problem.reason}), LogLevel::error);
}

QCoro::Task<> AutomaterRun::tagTracks(QList<SavedTrack> saved, PipelineConfig config)
{
    if (!enters(Stage::tag, choices_.tag, saved, u"nothing downloaded to tag"_s))
        co_return;
    const Loop tagged = co_await tagAll(saved, config.destination.toLocalFile());
    if (tagged.stopped)
        setStage(Stage::tag, stoppedAt(tagged.reached, saved.size()));
    else if (tagged.failed > 0)
        setStage(Stage::tag, StageState::done(u"%1 tagged, %2 failed"_s.arg(tagged.done).arg(tagged.failed)));
    else
        setStage(Stage::tag, StageState::done(u"%1 file(s)"_s.arg(tagged.done)));
    Q_EMIT services_.session.filesChanged();
}

QCoro::Task<AutomaterRun::Loop> AutomaterRun::tagAll(QList<SavedTrack> saved, QString folder)
{
    auto listing = QtConcurrent::run(FolderListing::of, folder);
    const FolderListing files = co_await listing;
    StageTime time(services_.clock, saved.size());
    Loop loop;
    for (int index = 0; index < static_cast<int>(saved.size()); ++index) {
        loop.stopped = engine_.isStopping();
        if (loop.stopped)
            co_return loop;
        const QString stem = stemOf(saved.at(index));
        const auto timeLeft = time.begin();
        report({Stage::tag, index, static_cast<int>(saved.size()), labelFor(u"tagging"_s, index, saved.size(), stem),
                timeLeft});
        ++loop.reached;
        const auto audio = files.audio(stem);
        if (audio && isMp3(*audio)) {
            const QString destination = services_.session.destination().toLocalFile();
            const TrackWork::TagOrder order{.audio = *audio,
                                            .artwork = files.artwork(stem),
                                            .clip = saved.at(index).clip,
                                            .album = Prerequisites::folderDetail(destination),
                                            .number = index + 1,
                                            .total = static_cast<int>(saved.size())};
            auto tagging = QtConcurrent::run(TrackWork::tagTrack, order);
            const QString refusal = co_await tagging;
            if (!refusal.isEmpty())
                log(L10n::t(L10n::Key::log23, {stem, refusal}), LogLevel::error);
            ++(refusal.isEmpty() ? loop.done : loop.failed);
        }
        time.end();
    }
    co_return loop;
}

MasteringTarget AutomaterRun::chosenTarget(const RunChoices& current) const
{
    const auto fromTab = masteringProvider ? masteringProvider() : std::nullopt;
    return fromTab.value_or(targetOf(current));
}

TrackWork::MasterOrder AutomaterRun::masterOrder(const MasteringTarget& target) const
{
    return {.audio = {},
            .output = {},
            .target = target.platform.target,
            .ceiling = target.platform.ceiling,
            .as = {.format = target.format, .mp3Rate = Master::chosenMP3Rate(services_.preferences)},
            .watermark = WatermarkSettings::stored(services_.preferences, u"auto"_s)};
}

QCoro::Task<> AutomaterRun::masterTracks(QList<SavedTrack> saved, PipelineConfig config)
{
    if (!enters(Stage::master, choices_.master, saved, u"nothing downloaded to master"_s))
        co_return;
    const MasteringTarget target = chosenTarget(choices_);
    log(L10n::t(L10n::Key::log9, {target.platform.name, Master::rawValue(target.format)}), LogLevel::info);
    const TrackWork::MasterOrder order = masterOrder(target);
    if (order.watermark.isUsable())
        logWatermark(order.watermark);
    const QString folder = config.destination.toLocalFile();
    auto making = QtConcurrent::run(TrackWork::makeMasteredFolder, folder);
    const QString refusal = co_await making;
    if (!refusal.isEmpty()) {
        failAloud(Stage::master, refusal);
        co_return;
    }
    const Loop mastered = co_await masterAll(saved, folder, order);
    if (mastered.stopped)
        setStage(Stage::master, stoppedAt(mastered.reached, saved.size()));
    else if (mastered.failed > 0)
        setStage(Stage::master, StageState::done(u"%1 mastered, %2 failed"_s.arg(mastered.done).arg(mastered.failed)));
    else
        setStage(Stage::master, StageState::done(u"%1 mastered for %2"_s.arg(mastered.done).arg(target.platform.name)));
    Q_EMIT services_.session.filesChanged();
}

QCoro::Task<AutomaterRun::Loop> AutomaterRun::masterAll(QList<SavedTrack> saved, QString folder,
                                                        TrackWork::MasterOrder order)
{
    auto listing = QtConcurrent::run(FolderListing::of, folder);
    const FolderListing files = co_await listing;
    StageTime time(services_.clock, saved.size());
    Loop loop;
    for (int index = 0; index < static_cast<int>(saved.size()); ++index) {
        loop.stopped = engine_.isStopping();
        if (loop.stopped)
            co_return loop;
        const QString stem = stemOf(saved.at(index));
        const auto timeLeft = time.begin();
        report({Stage::master, index, static_cast<int>(saved.size()),
                labelFor(u"mastering"_s, index, saved.size(), stem), timeLeft});
        ++loop.reached;
        if (const auto audio = files.audio(stem)) {
            order.audio = *audio;
            order.output = folder + u"/Mastered/"_s + stem + u'.' + Master::extension(order.as.format);
            auto mastering = QtConcurrent::run(TrackWork::masterTrack, order);
            const TrackWork::Mastered mastered = co_await mastering;
            if (mastered.refusal.isEmpty())
                logMastered(stem, mastered.result);
            else
                log(L10n::t(L10n::Key::log10, {stem, mastered.refusal}), LogLevel::error);
            ++(mastered.refusal.isEmpty() ? loop.done : loop.failed);
        }
        time.end();
    }
    co_return loop;
}

void AutomaterRun::logWatermark(const Master::Watermark& watermark)
{
    const QString file = QFileInfo(watermark.file.value_or(QString())).fileName();
    const QString placement = WatermarkSettings::placementName(watermark.placement).value_or(QString());
    log(L10n::t(L10n::Key::wmLogOn, {file, static_cast<int>(std::abs(watermark.level)), placement}), LogLevel::info);
}

void AutomaterRun::logMastered(const QString& stem, const Master::Result& result)
{
    log(u"%1: %2 → %3 LUFS, %4 dBTP%5"_s.arg(stem, oneDecimal(result.before.integrated),
                                             oneDecimal(result.after.integrated), oneDecimal(result.after.truePeak),
                                             result.limited ? u" (limited)"_s : QString()),
        LogLevel::success);
}

} // namespace orvane
