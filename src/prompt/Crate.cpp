#include "prompt/Crate.h"

#include "prompt/CrateFile.h"
#include "prompt/Traits.h"

#include <utility>

namespace orvane::Prompt {

Crate::Crate(QList<Scene> scenes)
    : scenes_(std::move(scenes))
{
    for (const Scene& scene : std::as_const(scenes_)) {
        QStringList kinds;
        for (const QString& voice : scene.voices)
            kinds.append(kind(voice));
        kinds_.append(kinds);
        decades_.append(Prompt::decade(scene.year));
        for (const QString& genre : scene.genres) {
            if (!families_.contains(genre))
                families_.insert(genre, scene.family);
        }
    }
}

std::optional<QString> Crate::family(const QString& genre) const
{
    const auto found = families_.constFind(genre);
    return found == families_.constEnd() ? std::nullopt : std::optional(*found);
}

const Crate& crate()
{
    static const Crate table(compiledScenes());
    return table;
}

} // namespace orvane::Prompt
