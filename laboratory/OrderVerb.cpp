#include "dj/Ordering.h"
#include "laboratory/Analysed.h"
#include "laboratory/Arguments.h"
#include "laboratory/Verb.h"

#include <array>

namespace orvane::lab {

using namespace Qt::Literals::StringLiterals;

namespace {

DJ::Ordering orderingNamed(const QString& name)
{
    constexpr std::array names{u"energyArc", u"keyJourney", u"shuffle", u"asListed"};
    for (std::size_t index = 0; index < names.size(); ++index) {
        if (name == QStringView(names[index]))
            return DJ::allOrderings[index];
    }
    throw UsageError(u"There is no style %1."_s.arg(name));
}

} // namespace

QJsonValue order(const QStringList& arguments)
{
    const Arguments options(arguments, {u"style"_s});
    const DJ::Ordering style = orderingNamed(options.text(u"style"_s).value_or(u"energyArc"_s));
    return toJson(DJ::order(analysed(options.alone(1, mostFiles)), style));
}

} // namespace orvane::lab
