#pragma once

#include <QJsonValue>
#include <QStringList>

#include <span>
#include <stdexcept>

namespace orvane::lab {

/// What a verb was not given, or given wrongly; its words are a sentence.
class UsageError : public std::runtime_error
{
public:
    explicit UsageError(const QString& sentence)
        : std::runtime_error(sentence.toStdString())
    {
    }
};

/// One thing that the laboratory does: from arguments to an object or an array. It throws what its work throws.
struct Verb
{
    const char* name;
    /// What follows the name on a command line.
    const char* arguments;
    QJsonValue (*run)(const QStringList& arguments);
    /// It paints, and so needs fonts.
    bool paints = false;
};

/// All verbs, in alphabetical order.
std::span<const Verb> verbs();

QJsonValue analyse(const QStringList& arguments);
QJsonValue combinations(const QStringList& arguments);
QJsonValue crate(const QStringList& arguments);
QJsonValue decode(const QStringList& arguments);
QJsonValue frame(const QStringList& arguments);
QJsonValue master(const QStringList& arguments);
QJsonValue measure(const QStringList& arguments);
QJsonValue mix(const QStringList& arguments);
QJsonValue name(const QStringList& arguments);
QJsonValue order(const QStringList& arguments);
QJsonValue pitch(const QStringList& arguments);
QJsonValue platforms(const QStringList& arguments);
QJsonValue prompt(const QStringList& arguments);
QJsonValue render(const QStringList& arguments);
QJsonValue scan(const QStringList& arguments);
QJsonValue spectrum(const QStringList& arguments);
QJsonValue stretch(const QStringList& arguments);
QJsonValue tag(const QStringList& arguments);

} // namespace orvane::lab
