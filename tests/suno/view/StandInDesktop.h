#pragma once

#include <QDBusConnection>
#include <QDBusVirtualObject>
#include <QList>
#include <QProcess>
#include <QString>

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

    /// Notifications in order.
    QList<Shown> shown;
    /// Reasons why the machine is kept awake, those that were let go of left out.
    QList<QString> awakeFor;

private:
    QVariantList answer(const QDBusMessage& message);

    QProcess daemon_;
    QList<uint> cookies_;
    uint lastCookie_ = 0;
};

} // namespace orvane::test
