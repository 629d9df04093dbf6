#include "automation/view/ChainTexts.h"

#include "trackfiles/namer/NameRules.h"

#include <algorithm>

namespace orvane {

using namespace Qt::Literals::StringLiterals;

namespace {

using ChainTexts::Facts;

QString readSummary(const Facts& facts)
{
    if (facts.choices.source == RunSource::selection && !facts.hasSelection)
        return u"nothing selected"_s;
    if (facts.choices.source != RunSource::download)
        return u"in place"_s;
    return facts.config.workspace.isEmpty() ? u"whole library"_s : u"one workspace"_s;
}

QString downloadSummary(const Facts& facts)
{
    if (facts.config.assets.isEmpty())
        return u"Nothing ticked in the Downloader yet."_s;
    return Prerequisites::assetDetail(facts.config.assets);
}

QString renameSummary(const Facts& facts)
{
    const QString pattern = patternOf(facts.choices);
    const auto patterns = TrackNamer::patterns();
    const auto found = std::ranges::find(patterns, pattern, &TrackNamer::Pattern::id);
    return found == patterns.end() ? pattern : found->label;
}

QString masterSummary(const Facts& facts)
{
    if (facts.target.platform.name.isEmpty())
        return u"Mastered"_s;
    return u"Target %1 LUFS, %2"_s.arg(QString::number(facts.target.platform.target, 'g', 4),
                                       Master::rawValue(facts.target.format));
}

QString videoSummary(const Facts& facts)
{
    return (facts.choices.renderer == VideoRenderer::website ? u"website"_s : u"fast"_s) + u", Videos/"_s;
}

} // namespace

QString ChainTexts::summaryOf(Stage stage, const Facts& facts)
{
    switch (stage) {
    case Stage::read:
        return readSummary(facts);
    case Stage::download:
        return downloadSummary(facts);
    case Stage::rename:
        return renameSummary(facts);
    case Stage::tag:
        return u"ID3"_s;
    case Stage::master:
        return masterSummary(facts);
    case Stage::video:
        break;
    }
    return videoSummary(facts);
}

bool ChainTexts::isTicked(Stage stage, const RunChoices& choices)
{
    switch (stage) {
    case Stage::rename:
        return choices.rename;
    case Stage::tag:
        return choices.tag;
    case Stage::master:
        return choices.master;
    case Stage::video:
        return choices.video;
    case Stage::read:
    case Stage::download:
        break;
    }
    return true;
}

QString ChainTexts::shortNameOf(Stage stage)
{
    static const std::array names{u"Library"_s, u"Download"_s, u"Rename"_s, u"Tags"_s, u"Master"_s, u"Video"_s};
    return names.at(static_cast<std::size_t>(indexOf(stage)));
}

QString ChainTexts::setupText(int unmet)
{
    if (unmet == 0)
        return {};
    return unmet == 1 ? u"One thing to set up first."_s : u"%1 things to set up first."_s.arg(unmet);
}

double ChainTexts::shareOf(Stage stage, const StageState& state)
{
    const bool isOver = state.kind != StageState::Kind::waiting && state.kind != StageState::Kind::running;
    return (indexOf(stage) + (isOver ? 1.0 : 0.0)) / stageCount;
}

double ChainTexts::shareOf(const RunProgress& progress)
{
    return (indexOf(progress.stage) + progress.fraction()) / stageCount;
}

} // namespace orvane
