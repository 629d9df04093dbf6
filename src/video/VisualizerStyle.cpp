#include "video/VisualizerStyle.h"

#include "main/App/Preferences.h"

#include <QJsonDocument>
#include <QStringList>

namespace orvane::Video {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString storedKey = u"visualizerStyle"_s;

struct Field
{
    QString name;
    QString VisualizerStyle::*member;
};

const QList<Field>& fields()
{
    static const QList<Field> all{
        {u"aspect"_s, &VisualizerStyle::aspect},     {u"theme"_s, &VisualizerStyle::theme},
        {u"wave"_s, &VisualizerStyle::wave},         {u"background"_s, &VisualizerStyle::background},
        {u"branding"_s, &VisualizerStyle::branding}, {u"artist"_s, &VisualizerStyle::artist},
    };
    return all;
}

} // namespace

VisualizerStyle VisualizerStyle::fromJson(const QJsonObject& object)
{
    VisualizerStyle style;
    for (const Field& field : fields())
        style.*field.member = object.value(field.name).toString(style.*field.member);
    return style;
}

QJsonObject VisualizerStyle::toJson() const
{
    QJsonObject object;
    for (const Field& field : fields())
        object.insert(field.name, this->*field.member);
    return object;
}

VisualizerStyle VisualizerStyle::remembered(const Preferences& preferences)
{
    const QString stored = preferences.text(storedKey).value_or(QString());
    return fromJson(QJsonDocument::fromJson(stored.toUtf8()).object());
}

void VisualizerStyle::remember(Preferences& preferences) const
{
    const QByteArray json = QJsonDocument(toJson()).toJson(QJsonDocument::Compact);
    preferences.set(storedKey, QString::fromUtf8(json));
}

QString VisualizerStyle::summary() const
{
    return QStringList{aspect, theme, wave, background}.join(u" · "_s);
}

} // namespace orvane::Video
