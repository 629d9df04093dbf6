#include "automation/Stage.h"

#include <algorithm>

namespace orvane {

using namespace Qt::Literals::StringLiterals;

QString nameOf(Stage stage)
{
    static const std::array names{u"Read the library"_s, u"Download assets"_s, u"Rename to your scheme"_s,
                                  u"Write tags"_s,       u"Master audio"_s,    u"Render videos"_s};
    return names.at(static_cast<std::size_t>(stage));
}

bool isOptional(Stage stage)
{
    return stage != Stage::read && stage != Stage::download;
}

QString captionOf(Stage stage, const StageState& state)
{
    QString note = state.note;
    if (state.kind == StageState::Kind::running)
        note = u"running…"_s;
    else if (state.kind == StageState::Kind::waiting)
        note = u"waiting"_s;
    return nameOf(stage) + u" — "_s + note;
}

double stepsProgress(Stage stage, const StageState& state)
{
    const int reached = state.kind == StageState::Kind::waiting ? indexOf(stage) : indexOf(stage) + 1;
    return std::min(reached, stageCount) / static_cast<double>(stageCount);
}

} // namespace orvane
