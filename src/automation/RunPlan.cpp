#include "automation/RunPlan.h"

#include "automation/Prerequisite.h"
#include "automation/Stage.h"

#include <QStringList>

namespace orvane {

using namespace Qt::Literals::StringLiterals;

namespace {

QString counted(int tracks)
{
    return tracks == 1 ? u"1 track"_s : u"%1 tracks"_s.arg(tracks);
}

QString countedOrEvery(std::optional<int> tracks)
{
    return tracks ? counted(*tracks) : u"every track"_s;
}

QString folderName(const PlanFacts& facts)
{
    return Prerequisites::folderDetail(facts.config.destination.toLocalFile());
}

QString readWork(const PlanFacts& facts)
{
    if (facts.choices.source != RunSource::download)
        return u"not needed, uses the files in %1"_s.arg(folderName(facts));
    return facts.config.workspace.isEmpty() ? u"the whole library"_s : u"one workspace"_s;
}

QString downloadWork(const PlanFacts& facts)
{
    if (facts.choices.source != RunSource::download)
        return u"nothing, %1 already here"_s.arg(counted(facts.tracks.value_or(0)));
    return u"%1 of %2 into %3, what is there already stays"_s.arg(Prerequisites::assetDetail(facts.config.assets),
                                                                  countedOrEvery(facts.tracks), folderName(facts));
}

QString ifTicked(bool isTicked, const PlanFacts& facts, const QString& work)
{
    if (!isTicked)
        return u"turned off"_s;
    return facts.tracks == 0 ? u"nothing to work on"_s : work;
}

QString renameWork(const PlanFacts& facts)
{
    return u"%1, formatted as %2, with a Tracklist.txt"_s.arg(countedOrEvery(facts.tracks), facts.pattern);
}

QString tagWork(const PlanFacts& facts)
{
    return facts.taggable ? u"%1 with an MP3"_s.arg(counted(*facts.taggable)) : u"every track with an MP3"_s;
}

QString masterWork(const PlanFacts& facts)
{
    const Master::Platform& platform = facts.target.platform;
    return u"%1 for %2 at %3 LUFS as %4, into Mastered"_s.arg(countedOrEvery(facts.tracks), platform.name,
                                                              QString::number(platform.target, 'g', 4),
                                                              Master::rawValue(facts.target.format));
}

QString videoWork(const PlanFacts& facts)
{
    const QString renderer =
        facts.choices.renderer == VideoRenderer::own ? u"the app's own engine"_s : u"the website"_s;
    return u"%1 with %2, into Videos, what is there already stays"_s.arg(countedOrEvery(facts.tracks), renderer);
}

} // namespace

QString planText(const PlanFacts& facts)
{
    const RunChoices& choices = facts.choices;
    const auto line = [](Stage stage, const QString& work) { return nameOf(stage) + u" — "_s + work; };
    const QStringList lines{line(Stage::read, readWork(facts)),
                            line(Stage::download, downloadWork(facts)),
                            line(Stage::rename, ifTicked(choices.rename, facts, renameWork(facts))),
                            line(Stage::tag, ifTicked(choices.tag, facts, tagWork(facts))),
                            line(Stage::master, ifTicked(choices.master, facts, masterWork(facts))),
                            line(Stage::video, ifTicked(choices.video, facts, videoWork(facts)))};
    return lines.join(u'\n');
}

} // namespace orvane
