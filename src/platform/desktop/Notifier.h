#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
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

    bool operator==(const Notification&) const = default;
};

/// Desktop notifications over D-Bus (org.freedesktop.Notifications). Each new one replaces the one before; of those
/// shown while the service has not answered yet only the last goes out. Texts are shown as they stand, without markup.
/// Where no service answers nothing is shown, and nothing fails.
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
    void askForMarkup();
    void sendNext();
    void send(const Notification& notification);

    QDBusConnection bus_;
    /// Whether the service reads texts as markup; absent until it has been asked.
    std::optional<bool> readsMarkup_;
    bool underWay_ = false;
    std::optional<Notification> next_;
    uint last_ = 0;
    std::optional<QString> folder_;
};

} // namespace orvane
