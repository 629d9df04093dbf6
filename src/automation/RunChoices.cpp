#include "automation/RunChoices.h"

#include "main/App/L10n.h"
#include "trackfiles/namer/NameRules.h"

namespace orvane {

using namespace Qt::Literals::StringLiterals;

namespace {

bool isIndexIn(std::size_t size, int index)
{
    return index >= 0 && static_cast<std::size_t>(index) < size;
}

} // namespace

QString labelOf(RunSource source)
{
    switch (source) {
    case RunSource::download:
        break;
    case RunSource::folder:
        return L10n::t(L10n::Key::srcFolder);
    case RunSource::selection:
        return L10n::t(L10n::Key::srcSelection);
    }
    return L10n::t(L10n::Key::srcDownload);
}

QString noteOf(RunSource source)
{
    switch (source) {
    case RunSource::download:
        break;
    case RunSource::folder:
        return u"Runs the ticked stages over the tracks already in your folder. Nothing is downloaded and nothing is "
               "fetched from Suno."_s;
    case RunSource::selection:
        return u"Runs the ticked stages over the track selected in Files. Nothing is downloaded."_s;
    }
    return u"Reads your Suno library and downloads it first, then runs the ticked stages over everything it saved."_s;
}

QString patternOf(const RunChoices& choices)
{
    const auto patterns = TrackNamer::patterns();
    const auto index = static_cast<std::size_t>(choices.patternIndex);
    return isIndexIn(patterns.size(), choices.patternIndex) ? patterns[index].id : u"clean"_s;
}

MasteringTarget targetOf(const RunChoices& choices)
{
    const auto platforms = Master::platforms();
    const auto platform = isIndexIn(platforms.size(), choices.platformIndex) ? choices.platformIndex : 0;
    const auto format = isIndexIn(Master::allFormats.size(), choices.formatIndex) ? choices.formatIndex : 0;
    return {.platform = platforms[static_cast<std::size_t>(platform)],
            .format = Master::allFormats[static_cast<std::size_t>(format)]};
}

} // namespace orvane
