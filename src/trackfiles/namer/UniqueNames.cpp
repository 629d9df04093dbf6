#include "trackfiles/namer/UniqueNames.h"

namespace orvane::TrackNamer {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int firstNumber = 2;

} // namespace

QString UniqueNames::take(const QString& wanted)
{
    const QString key = wanted.toLower();
    const auto known = nextNumbers_.constFind(key);
    if (known == nextNumbers_.constEnd()) {
        nextNumbers_.insert(key, firstNumber);
        return wanted;
    }
    QString name;
    int number = *known;
    do
        name = wanted + u" (%1)"_s.arg(number++);
    while (nextNumbers_.contains(name.toLower()));
    nextNumbers_.insert(key, number);
    nextNumbers_.insert(name.toLower(), firstNumber);
    return name;
}

} // namespace orvane::TrackNamer
