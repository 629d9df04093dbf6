#include "laboratory/Verb.h"
#include "laboratory/VideoArguments.h"
#include "main/App/AppInfo.h"
#include "video/VideoEngine.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>

namespace orvane::lab {

using namespace Qt::Literals::StringLiterals;

QJsonValue render(const QStringList& arguments)
{
    const Arguments given(arguments, lookOptions(), lookFlags());
    const QStringList words = given.alone(2, 2);
    const QString output = absolute(words[1]);
    const QString artwork = artworkOf(given);
    VideoEngine engine(AppInfo::siteName());
    QJsonArray progress;
    engine.onProgress = [&](double part) { progress.append(part); };
    QElapsedTimer timer;
    timer.start();
    engine.render(QUrl::fromLocalFile(absolute(words[0])), artwork.isEmpty() ? QUrl() : QUrl::fromLocalFile(artwork),
                  given.text(u"title"_s).value_or(QString()), given.text(u"artist"_s).value_or(QString()),
                  lookOf(given), QUrl::fromLocalFile(output));
    return QJsonObject{{u"path"_s, output},
                       {u"bytes"_s, QFileInfo(output).size()},
                       {u"seconds"_s, double(timer.nsecsElapsed()) / 1e9},
                       {u"progress"_s, progress}};
}

} // namespace orvane::lab
