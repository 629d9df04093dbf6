#include "prompt/Prompt.h"
#include "prompt/Sentences.h"

#include <algorithm>

namespace orvane::Prompt {
namespace {

std::int64_t combinations(const Scene& scene)
{
    const std::int64_t details = scene.details.size();
    const std::int64_t tempos = scene.bpm.last - scene.bpm.first + 1;
    return scene.genres.size() * scene.voices.size() * scene.motions.size() * scene.keys.size() *
           scene.subjects.size() * scene.moods.size() * std::max<std::int64_t>(details * (details - 1), 1) *
           std::max<std::int64_t>(tempos, 1);
}

} // namespace

std::int64_t combinations(const Crate& crate)
{
    std::int64_t sum = 0;
    for (const Scene& scene : crate.scenes())
        sum += combinations(scene);
    return sum * styleForms * ideaForms;
}

std::int64_t combinations()
{
    return combinations(crate());
}

} // namespace orvane::Prompt
