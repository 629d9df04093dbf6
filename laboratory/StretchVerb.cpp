#include "laboratory/Arguments.h"
#include "laboratory/Verb.h"
#include "mastering/Master.h"
#include "mastering/arithmetic/InParallel.h"

#include <QFileInfo>
#include <QJsonObject>

#include <algorithm>
#include <functional>
#include <utility>

namespace orvane::lab {

using namespace Qt::Literals::StringLiterals;

namespace {

double numberOf(const QString& text)
{
    bool isNumber = false;
    const double number = text.toDouble(&isNumber);
    if (!isNumber || !qIsFinite(number))
        throw UsageError(u"%1 is not a number."_s.arg(text));
    return number;
}

/// The format that the file's name asks for; WAV where it asks for none.
Master::Format formatOf(const QString& path)
{
    const QString suffix = QFileInfo(path).suffix().toLower();
    const auto found = std::find_if(Master::allFormats.begin(), Master::allFormats.end(),
                                    [&](Master::Format format) { return Master::extension(format) == suffix; });
    return found == Master::allFormats.end() ? Master::Format::wav : *found;
}

using Change = std::function<std::vector<double>(std::vector<double>, double)>;

/// Reads a file, changes each of its channels by the number given, and writes it.
QJsonObject changed(const QStringList& arguments, const Change& change)
{
    const QStringList words = Arguments(arguments, {}).alone(3, 3);
    const QString output = absolute(words[1]);
    const double number = numberOf(words[2]);
    Master::Sound sound = Master::read(absolute(words[0]));
    const auto before = qint64(sound.channels.front().size());
    inParallel(sound.channels.size(), processorCount(), [&](std::size_t channel) {
        sound.channels[channel] = change(std::move(sound.channels[channel]), number);
    });
    const auto after = qint64(sound.channels.front().size());
    Master::write(sound.channels, sound.sampleRate, {.format = formatOf(output)}, output);
    return {{u"before"_s, before}, {u"after"_s, after}, {u"sampleRate"_s, sound.sampleRate}};
}

} // namespace

QJsonValue pitch(const QStringList& arguments)
{
    return changed(arguments, Master::pitchShift);
}

QJsonValue stretch(const QStringList& arguments)
{
    return changed(arguments, Master::stretch);
}

} // namespace orvane::lab
