#include "fuzz/Law.h"
#include "suno/Workspace.h"

using orvane::fuzz::mustHold;

/// An identifier has at least 32 characters, stands in the address and comes from no other host than the site's.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString site = QStringLiteral("music.example");
    const QUrl url(QString::fromUtf8(orvane::fuzz::bytes(data, size)));
    const auto identifier = orvane::workspaceID(url, site);
    if (!identifier)
        return 0;
    mustHold(identifier->size() >= 32);
    mustHold(url.host().contains(site));
    QUrl elsewhere = url;
    elsewhere.setHost(QStringLiteral("elsewhere.example"));
    mustHold(!orvane::workspaceID(elsewhere, site));
    return 0;
}
