#pragma once

#include <QDBusConnection>
#include <QDBusVirtualObject>
#include <QList>
#include <QProcess>
#include <QString>

namespace orvane {
class Notifier;
}

namespace orvane::test {

/// A desktop of its own for a test: a private message bus on which notifications and the screen saver's inhibitor
/// answer and write down what they were asked.
class StandInDesktop : public QDBusVirtualObject
{
    Q_OBJECT

public:
    struct Shown
    {
        QString title;
        QString text;
        QStringList actions;

        bool operator==(const Shown&) const = default;
    };

    StandInDesktop();
    ~StandInDesktop() override;

    /// For the program that is tested.
    QDBusConnection bus() const;

    QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

    /// The user chooses an action of the notification of that number, counted from 1.
    void chooseAction(uint notification, const QString& action);

    /// Waits until all that was asked so far has come: what is asked for goes out asynchronously, and a later question
    /// that is answered means that all before it were. False after half a minute.
    bool settle() const;
    /// Waits until `notifier` knows what the desktop can do, so that what it is to show goes out at once, and forgets
    /// what was shown. False after half a minute.
    bool acquaint(Notifier& notifier);
    /// The texts shown so far, among them all that `notifier` was to show before; a text "last" ends them.
    QStringList textsUntilNow(Notifier& notifier);

    /// Notifications in order.
    QList<Shown> shown;
    /// Reasons why the machine is kept awake, those that were let go of left out.
    QList<QString> awakeFor;

private:
    bool tell(Notifier& notifier, const QString& text);
    QVariantList answer(const QDBusMessage& message);

    QProcess daemon_;
    QList<uint> cookies_;
    uint lastCookie_ = 0;
};

} // namespace orvane::test
