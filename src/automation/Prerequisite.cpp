#include "automation/Prerequisite.h"

#include "main/App/L10n.h"
#include "main/App/Session.h"

#include <QDir>
#include <QFileInfo>

#include <utility>

namespace orvane {

using namespace Qt::Literals::StringLiterals;

namespace Prerequisites {

QString sessionDetail(const QString& token)
{
    return token.isEmpty() ? u"no session yet"_s : u"session captured"_s;
}

bool canSaveIn(const QString& folder)
{
    if (folder.isEmpty() || !QDir().mkpath(folder))
        return false;
    const QFileInfo made(folder);
    return made.isDir() && made.isWritable() && made.isExecutable();
}

QString folderDetail(const QString& folder)
{
    return QFileInfo(QDir::cleanPath(folder)).fileName();
}

QString assetDetail(const AssetSet& assets)
{
    if (assets.isEmpty())
        return u"nothing ticked"_s;
    QStringList names;
    for (const Asset asset : assets)
        names.append(rawValue(asset));
    names.sort();
    return names.join(u", "_s);
}

} // namespace Prerequisites

using namespace Prerequisites;

QList<Prerequisite> makePrerequisites(const Session& session, std::function<std::optional<PipelineConfig>()> config,
                                      int downloaderPane)
{
    const auto folder = [&session] { return session.destination().toLocalFile(); };
    const auto assets = [config = std::move(config)] { return config().value_or(PipelineConfig()).assets; };
    return {{.title = L10n::t(L10n::Key::readySignedIn),
             .fix = u"Sign in on the left"_s,
             .tab = {},
             .isMet = [&session] { return !session.token().isEmpty(); },
             .detail = [&session] { return sessionDetail(session.token()); },
             .onlyWhenDownloading = true},
            {.title = L10n::t(L10n::Key::readySomewhere),
             .fix = u"Choose a folder"_s,
             .tab = downloaderPane,
             .isMet = [folder] { return canSaveIn(folder()); },
             .detail = [folder] { return folderDetail(folder()); },
             .onlyWhenDownloading = false},
            {.title = L10n::t(L10n::Key::readySomething),
             .fix = u"Pick assets"_s,
             .tab = downloaderPane,
             .isMet = [assets] { return !assets().isEmpty(); },
             .detail = [assets] { return assetDetail(assets()); },
             .onlyWhenDownloading = true}};
}

QList<Prerequisite> livePrerequisites(const QList<Prerequisite>& whole, RunSource source)
{
    QList<Prerequisite> live = whole;
    if (source != RunSource::download)
        live.removeIf([](const Prerequisite& prerequisite) { return prerequisite.onlyWhenDownloading; });
    return live;
}

} // namespace orvane
