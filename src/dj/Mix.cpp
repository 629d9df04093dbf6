#include "dj/Mix.h"

#include "dj/KeyText.h"

namespace orvane::DJ {

using namespace Qt::Literals::StringLiterals;

Move moveBetween(const Analysis& from, const Analysis& to, double atSeconds)
{
    return {.from = from.title,
            .to = to.title,
            .atSeconds = atSeconds,
            .keyMove = camelot(from.key) + u" → "_s + camelot(to.key),
            .tempoChange = to.bpm - from.bpm};
}

} // namespace orvane::DJ
