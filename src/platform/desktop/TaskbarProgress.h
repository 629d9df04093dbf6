#pragma once

#include <QDBusConnection>
#include <QString>

#include <optional>

namespace orvane {

/// How far the program's work is, on its button in the task bar or dock: the signal "Update" of
/// com.canonical.Unity.LauncherEntry, which most Linux desktops follow. Where none does nothing is shown, and nothing
/// fails.
class TaskbarProgress
{
public:
    /// `desktopFile` is the name of the program's desktop file without its ending, by which a desktop knows the button.
    TaskbarProgress(QDBusConnection bus, const QString& desktopFile);
    /// Takes what is shown away.
    ~TaskbarProgress();
    TaskbarProgress(const TaskbarProgress&) = delete;
    TaskbarProgress& operator=(const TaskbarProgress&) = delete;

    /// `share` is from 0 to 1; absent shows none. Told once for each whole per cent.
    void show(std::optional<double> share);

private:
    QDBusConnection bus_;
    QString address_;
    std::optional<int> shown_;
};

} // namespace orvane
