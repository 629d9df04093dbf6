#include "suno/FeedPage.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>

namespace orvane {

namespace {

bool isListOfObjects(const QJsonValue& json)
{
    const QJsonArray list = json.toArray();
    return json.isArray() &&
           std::all_of(list.begin(), list.end(), [](const QJsonValue& item) { return item.isObject(); });
}

QJsonArray rawRecords(const QJsonDocument& document)
{
    const QJsonValue wrapped = document.object().value(u"clips");
    if (isListOfObjects(wrapped))
        return wrapped.toArray();
    const QJsonArray root = document.array();
    return isListOfObjects(root) ? root : QJsonArray();
}

} // namespace

FeedPage readFeedPage(const QByteArray& body)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(body, &error);
    FeedPage page;
    if (error.error != QJsonParseError::NoError) {
        page.error = error.errorString();
        return page;
    }
    const QJsonArray records = rawRecords(document);
    page.records = records.size();
    for (const QJsonValue& record : records)
        if (auto clip = Clip::fromJson(record.toObject()))
            page.clips.append(std::move(*clip));
    return page;
}

} // namespace orvane
