#pragma once

#include "demonstration/service/StandInService.h"
#include "main/App/Preferences.h"
#include "main/App/Session.h"
#include "main/Chrome/LogView.h"
#include "main/Chrome/PopUpButton.h"
#include "platform/desktop/Notifier.h"
#include "platform/desktop/SleepInhibitor.h"
#include "platform/network/HttpClient.h"
#include "suno/view/DownloaderTab.h"
#include "tests/support/RecordingDialogs.h"
#include "tests/support/TestClock.h"

#include <QDBusConnection>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <functional>
#include <gmock/gmock.h>
#include <memory>
#include <ostream>

namespace orvane::test {

/// A line of the log as it stands in the window.
struct ShownLine
{
    QString text;
    QColor colour;

    bool operator==(const ShownLine&) const = default;
};

inline void PrintTo(const ShownLine& line, std::ostream* out)
{
    *out << line.text.toStdString() << " in " << line.colour.name().toStdString();
}

/// The next `times` requests whose target holds `where` are answered with `status`.
inline demo::Fault answering(int status, const QString& where, int times = 1)
{
    demo::Fault fault;
    fault.where = where;
    fault.times = times;
    fault.status = status;
    return fault;
}

/// The next `times` requests whose target holds `where` are accepted and never answered.
inline demo::Fault silent(const QString& where, int times = 1)
{
    demo::Fault fault;
    fault.kind = demo::Fault::Kind::silence;
    fault.where = where;
    fault.times = times;
    return fault;
}

/// A Downloader tab on a stand-in library of seven tracks, five on a page.
class DownloaderFixture : public testing::Test
{
protected:
    DownloaderFixture();

    /// With the desktop's services behind `bus`; without one nothing answers.
    void makeTab(const QDBusConnection& bus = QDBusConnection(QStringLiteral("none")));
    void signIn();
    /// Signs in and waits until the projects are listed.
    void signInAndList();
    /// Runs the event loop until `condition` holds; false after half a minute.
    bool waitUntil(const std::function<bool()>& condition) const;
    bool waitForIdle() const;
    /// Starts an export that waits for its first page until it is stopped.
    void startAndHold();
    /// Starts an export and waits for its end.
    void runToTheEnd();

    template <typename Widget>
    Widget* part(const QString& name) const
    {
        auto* found = tab->findChild<Widget*>(name);
        if (!found)
            throw std::logic_error(name.toStdString());
        return found;
    }

    QList<ShownLine> lines() const;
    QStringList rows() const;
    /// Selects the row of that text as a person does.
    void pick(const QString& row);
    /// Requests whose target starts with `path`.
    int requests(const QString& path) const;

    QString folder() const { return home.filePath(QStringLiteral("Export")); }

    demo::StandInService service;
    QTemporaryDir home;
    Preferences preferences{home.filePath(QStringLiteral("preferences.json"))};
    Session session{preferences};
    HttpClient client;
    TestClock clock;
    RecordingDialogs dialogs;
    std::unique_ptr<Notifier> notifier;
    std::unique_ptr<SleepInhibitor> sleep;
    std::unique_ptr<DownloaderTab> tab;
};

} // namespace orvane::test
