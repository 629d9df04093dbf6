#include "laboratory/Verb.h"
#include "mastering/Failure.h"

#include <QGuiApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLoggingCategory>

#include <algorithm>
#include <cstdio>
#include <memory>

namespace {

using namespace orvane;
using namespace Qt::Literals::StringLiterals;

QString usage()
{
    QString text;
    for (const lab::Verb& verb : lab::verbs())
        text += u"\n  orvane-lab %1 %2"_s.arg(QLatin1StringView(verb.name), QLatin1StringView(verb.arguments));
    return text;
}

const lab::Verb& verbNamed(const QString& name)
{
    const auto verbs = lab::verbs();
    const auto found = std::find_if(verbs.begin(), verbs.end(),
                                    [&](const lab::Verb& verb) { return name == QLatin1StringView(verb.name); });
    if (found == verbs.end())
        throw lab::UsageError(u"What to do? One of:"_s + usage());
    return *found;
}

QByteArray toBytes(const QJsonValue& value)
{
    const QJsonDocument document = value.isArray() ? QJsonDocument(value.toArray()) : QJsonDocument(value.toObject());
    return document.toJson(QJsonDocument::Indented);
}

bool print(const QByteArray& bytes)
{
    return std::fwrite(bytes.constData(), 1, std::size_t(bytes.size()), stdout) == std::size_t(bytes.size()) &&
           std::fflush(stdout) == 0;
}

/// What a verb needs around it. One that paints needs no window system for it.
std::unique_ptr<QCoreApplication> applicationFor(const QString& name, int& argc, char** argv)
{
    const auto verbs = lab::verbs();
    const bool paints = std::any_of(verbs.begin(), verbs.end(), [&](const lab::Verb& verb) {
        return verb.paints && name == QLatin1StringView(verb.name);
    });
    if (!paints)
        return std::make_unique<QCoreApplication>(argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // Standard error is for one sentence.
    QLoggingCategory::setFilterRules(u"*.warning=false"_s);
    return std::make_unique<QGuiApplication>(argc, argv);
}

} // namespace

int main(int argc, char** argv)
{
    const auto application = applicationFor(QString::fromLocal8Bit(argc > 1 ? argv[1] : ""), argc, argv);
    try {
        const QStringList arguments = QCoreApplication::arguments().mid(1);
        const lab::Verb& verb = verbNamed(arguments.value(0));
        return print(toBytes(verb.run(arguments.mid(1)))) ? 0 : 1;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", qUtf8Printable(Master::sentenceOf(error)));
        return 1;
    }
}
