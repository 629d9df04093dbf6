#include "tests/prompt/MadeCrate.h"

#include <algorithm>
#include <memory>

using namespace Qt::StringLiterals;

namespace orvane::test {

Prompt::Scene scene(const QString& id, const QString& family)
{
    return {.id = id,
            .family = family,
            .place = u"Old Street, a cellar"_s,
            .year = u"1986"_s,
            .genres = {id + u" genre"_s, id + u" other"_s},
            .bpm = {.first = 100, .last = 110},
            .keys = {u"D minor"_s, u"E minor"_s},
            .moods = {u"raw"_s, u"cold"_s},
            .voices = {u"a woman close to the mic"_s, u"a man far from it"_s},
            .details = {u"one drum"_s, u"two horns"_s, u"old tape"_s},
            .motions = {u"a long fade"_s, u"a sudden end"_s},
            .subjects = {u"a bus"_s, u"a train"_s}};
}

Prompt::Chance written(QList<double> fractions)
{
    const auto next = std::make_shared<qsizetype>(0);
    return {.fraction =
                [fractions, next] {
                    const double fraction = fractions[std::min(*next, fractions.size() - 1)];
                    ++*next;
                    return fraction;
                },
            .integer = [](int least, int) { return least; }};
}

} // namespace orvane::test
