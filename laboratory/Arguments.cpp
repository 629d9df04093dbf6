#include "laboratory/Arguments.h"

#include "laboratory/Verb.h"

#include <QFileInfo>

namespace orvane::lab {

using namespace Qt::Literals::StringLiterals;

Arguments::Arguments(const QStringList& arguments, const QStringList& known, const QStringList& flags)
{
    for (qsizetype index = 0; index < arguments.size(); ++index) {
        const QString& argument = arguments[index];
        if (!argument.startsWith(u"--")) {
            alone_ << argument;
            continue;
        }
        const QString name = argument.sliced(2);
        if (flags.contains(name)) {
            options_.insert(name, {});
            continue;
        }
        if (!known.contains(name))
            throw UsageError(u"There is no option --%1."_s.arg(name));
        if (++index == arguments.size())
            throw UsageError(u"--%1 needs a value."_s.arg(name));
        options_.insert(name, arguments[index]);
    }
}

const QStringList& Arguments::alone(qsizetype least, qsizetype most) const
{
    if (alone_.size() < least || alone_.size() > most)
        throw UsageError(u"There are %1 arguments too %2."_s.arg(
            QString::number(alone_.size() < least ? least - alone_.size() : alone_.size() - most),
            alone_.size() < least ? u"few"_s : u"many"_s));
    return alone_;
}

std::optional<QString> Arguments::text(const QString& option) const
{
    const auto found = options_.find(option);
    return found == options_.end() ? std::optional<QString>() : *found;
}

std::optional<double> Arguments::number(const QString& option) const
{
    const std::optional<QString> value = text(option);
    if (!value)
        return {};
    bool isNumber = false;
    const double number = value->toDouble(&isNumber);
    if (!isNumber || !qIsFinite(number))
        throw UsageError(u"--%1 takes a number, not %2."_s.arg(option, *value));
    return number;
}

std::optional<int> Arguments::integer(const QString& option) const
{
    const std::optional<QString> value = text(option);
    if (!value)
        return {};
    bool isInteger = false;
    const int number = value->toInt(&isInteger);
    if (!isInteger)
        throw UsageError(u"--%1 takes a whole number, not %2."_s.arg(option, *value));
    return number;
}

double Arguments::requiredNumber(const QString& option) const
{
    if (const auto value = number(option))
        return *value;
    throw UsageError(u"--%1 is missing."_s.arg(option));
}

QString Arguments::requiredText(const QString& option) const
{
    if (const auto value = text(option))
        return *value;
    throw UsageError(u"--%1 is missing."_s.arg(option));
}

QString absolute(const QString& path)
{
    return QFileInfo(path).absoluteFilePath();
}

} // namespace orvane::lab
