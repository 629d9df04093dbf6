#pragma once

#include "automation/PipelineConfig.h"
#include "automation/RunChoices.h"

#include <QList>
#include <QString>

#include <functional>
#include <optional>

namespace orvane {

class Session;

/// One line of the list of what must be true before a run may start.
struct Prerequisite
{
    QString title;
    /// Text of the button that leads to the remedy.
    QString fix;
    /// The pane that the button selects; absent means no button.
    std::optional<int> tab;
    /// Both are asked anew on every look at the list.
    std::function<bool()> isMet;
    std::function<QString()> detail;
    /// Means nothing to a run over files that are there already.
    bool onlyWhenDownloading = false;
};

/// The whole list, in the order in which it is shown and tested. `downloaderPane` is the index of the Downloader's
/// pane. The session outlives the list.
QList<Prerequisite> makePrerequisites(const Session& session, std::function<std::optional<PipelineConfig>()> config,
                                      int downloaderPane);

/// Those of the list that count for a run over `source`.
QList<Prerequisite> livePrerequisites(const QList<Prerequisite>& whole, RunSource source);

namespace Prerequisites {

/// "session captured", or that there is none.
QString sessionDetail(const QString& token);

/// Whether files can be written in `folder`, an absolute path, which is made where it is missing.
bool canSaveIn(const QString& folder);

/// The folder's name.
QString folderDetail(const QString& folder);

/// The assets' own names in the order of the alphabet, or that none is ticked.
QString assetDetail(const AssetSet& assets);

} // namespace Prerequisites

} // namespace orvane
