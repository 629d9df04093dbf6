#include "fuzz/Law.h"
#include "suno/Workspace.h"

#include <QJsonArray>
#include <QJsonDocument>

using orvane::fuzz::mustHold;

/// Whatever an answer looks like, what comes out of it are projects with an identifier and a name, and none from below
/// the fourth level.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QJsonDocument document = QJsonDocument::fromJson(orvane::fuzz::bytes(data, size));
    const QJsonValue json = document.isArray() ? QJsonValue(document.array()) : QJsonValue(document.object());
    const QList<orvane::Workspace> found = orvane::workspaces(json, 0);
    for (const orvane::Workspace& workspace : found) {
        mustHold(workspace.id.size() >= 32);
        mustHold(!workspace.name.isEmpty());
    }
    mustHold(orvane::workspaces(json, 4).isEmpty());
    // What is found from deeper down is found from the top: the top may enter more levels, never fewer.
    mustHold(orvane::workspaces(json, 3).isEmpty() || !found.isEmpty());
    mustHold(orvane::workspaces(QJsonArray{json, 1}, 0).isEmpty());
    return 0;
}
