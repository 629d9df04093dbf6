#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>

#include <functional>
#include <optional>

namespace orvane {

/// A desktop notification: its texts, and the folder that its action "Open folder" shows, if any.
struct Notification
{
    QString title;
    QString text;
    std::optional<QString> folder;
};

/// Desktop notifications over D-Bus (org.freedesktop.Notifications). Each new one replaces the one before. Where no
/// service answers nothing is shown, and nothing fails.
class Notifier : public QObject
{
    Q_OBJECT

public:
    explicit Notifier(QDBusConnection bus, QObject* parent = nullptr);

    /// Returns at once; the call goes out asynchronously.
    void show(const Notification& notification);

    /// Opens the folder of the action; set by the program.
    std::function<void(const QString& folder)> onOpenFolder;

private Q_SLOTS:
    void actionInvoked(uint id, const QString& action);

private:
    QDBusConnection bus_;
    uint last_ = 0;
    QString folder_;
};

} // namespace orvane
