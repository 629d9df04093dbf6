#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QList>
#include <QObject>
#include <QString>

namespace orvane::test {

/// A service on the test's own bus, behind a connection of its own. It writes down the arguments of every call, and can
/// refuse calls or keep their answers back.
class FakeService : public QObject, protected QDBusContext
{
    Q_OBJECT

public:
    FakeService(const QString& service, const QString& path);
    ~FakeService() override;

    struct Call
    {
        QString method;
        QVariantList arguments;
    };

    /// All calls in their order.
    QList<Call> calls;
    /// Every call is answered with an error.
    bool refuses = false;
    /// No call is answered until `answerKept`.
    bool keepsAnswers = false;

    /// Calls of that method so far.
    int count(const QString& method) const;
    /// The arguments of the latest call of that method.
    QVariantList last(const QString& method) const;
    /// Sends the answers that were kept back.
    void answerKept();

protected:
    /// Writes the call down. Where answers are kept or calls refused, what the slot returns is not sent.
    void noteCall(const QVariantList& arguments, const QVariantList& answer);

private:
    struct Kept
    {
        QDBusMessage call;
        QVariantList answer;
    };

    QString service_;
    QString path_;
    QDBusConnection bus_;
    QList<Kept> kept_;
};

/// A bus that cannot be reached.
QDBusConnection unreachableBus();

/// The test program's session bus.
QDBusConnection testBus();

/// Answers that somebody in this program still waits for.
int answersUnderWay();

/// Comes back once everything that was sent on the bus before has been delivered and answered.
void settle();

} // namespace orvane::test
