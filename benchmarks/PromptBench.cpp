#include "benchmarks/Report.h"
#include "prompt/Prompt.h"

#include <algorithm>

namespace {

using namespace orvane;
using namespace orvane::bench;
using namespace Qt::Literals::StringLiterals;

constexpr int rolls = 20'000;

double microsecondsForOne(const Prompt::Locks& locks)
{
    const double start = seconds();
    qsizetype characters = 0;
    for (int time = 0; time < rolls; ++time)
        characters += Prompt::make(locks).style.size();
    if (characters == 0)
        qFatal("No prompt was rolled.");
    return (seconds() - start) / rolls * 1e6;
}

/// What five locks would cost if each voice's kind were read at each roll.
double microsecondsForReadingAllKinds()
{
    constexpr int times = 50;
    const double start = seconds();
    qsizetype found = 0;
    for (int time = 0; time < times; ++time) {
        for (const Prompt::Scene& scene : Prompt::crate().scenes()) {
            found += std::ranges::count_if(scene.voices,
                                           [](const QString& voice) { return Prompt::kind(voice) == u"no voice"; });
        }
    }
    if (found == 0)
        qFatal("No voice was read.");
    return (seconds() - start) / times * 1e6;
}

} // namespace

int main()
{
    const double start = seconds();
    const bool full = !Prompt::crate().scenes().isEmpty();
    report("prompt.table.first-use", (seconds() - start) * 1e3, "ms");
    if (!full)
        qFatal("The table of scenes is empty.");
    report("prompt.roll.no-lock", microsecondsForOne({}), "us");
    const Prompt::Locks all{.genre = u"grunge"_s,
                            .mood = u"heavy"_s,
                            .era = u"1990s"_s,
                            .voice = u"male voice"_s,
                            .tempo = u"120–140 BPM"_s};
    report("prompt.roll.five-locks", microsecondsForOne(all), "us", "reading every voice's kind at each roll",
           microsecondsForReadingAllKinds());
    return 0;
}
