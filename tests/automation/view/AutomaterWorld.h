#pragma once

#include "automation/view/AutomaterTab.h"
#include "main/App/Preferences.h"
#include "main/App/Session.h"
#include "platform/desktop/Notifier.h"
#include "platform/desktop/SleepInhibitor.h"
#include "platform/network/HttpClient.h"
#include "tests/support/ManualTicker.h"
#include "tests/support/RecordingDialogs.h"
#include "tests/support/TestClock.h"

#include <QDBusConnection>
#include <QTemporaryDir>

#include <memory>
#include <stdexcept>

namespace orvane::test {

/// An Automater tab with everything around it, wired as the window does it; the Downloader's part is played by
/// `assets` and `workspace`.
struct AutomaterWorld
{
    explicit AutomaterWorld(const Endpoints& addresses);

    /// Makes the tab anew, as at a launch of the program.
    void launch();

    /// Makes the track of that name in the folder the selected one.
    void select(const QString& name);

    template <typename Widget>
    Widget* part(const QString& name = {}) const
    {
        auto* found = tab->findChild<Widget*>(name);
        if (!found)
            throw std::logic_error("no part " + name.toStdString());
        return found;
    }

    QString folder() const { return home.filePath(QStringLiteral("Export")); }

    Endpoints endpoints;
    QTemporaryDir home;
    Preferences preferences{home.filePath(QStringLiteral("preferences.json"))};
    Session session{preferences};
    HttpClient client;
    TestClock clock;
    ManualTicker ticker;
    RecordingDialogs dialogs;
    Notifier notifier{QDBusConnection(QStringLiteral("none"))};
    SleepInhibitor sleep{QDBusConnection(QStringLiteral("none")), QDBusConnection(QStringLiteral("none"))};
    AssetSet assets{Asset::audio, Asset::lyrics, Asset::lrc, Asset::artwork};
    QString workspace;
    std::unique_ptr<AutomaterTab> tab;

    /// The panes that the tab led to.
    QList<int> panes;
    QList<QUrl> openedFolders;
    QList<std::optional<double>> shares;
};

} // namespace orvane::test
