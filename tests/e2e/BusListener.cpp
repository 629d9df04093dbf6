#include "tests/e2e/BusListener.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QFile>
#include <QTest>

#include <stdexcept>

namespace orvane::test {

using namespace Qt::Literals::StringLiterals;

BusListener::BusListener(const QString& path)
    : path_(path)
{
    monitor_.setStandardOutputFile(path_);
    monitor_.start(u"dbus-monitor"_s, {u"--session"_s, u"--binary"_s});
    if (!monitor_.waitForStarted() || !caughtUp())
        throw std::runtime_error("nobody can listen to the bus");
}

BusListener::~BusListener()
{
    monitor_.kill();
    monitor_.waitForFinished();
}

QByteArray BusListener::heard() const
{
    QFile file(path_);
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
}

bool BusListener::caughtUp()
{
    constexpr int patienceMs = 60'000;
    const QString mark = u"mark.number%1x"_s.arg(++marks_);
    // Said again and again, because what was said before the listener was there is not heard.
    return QTest::qWaitFor(
        [this, &mark] {
            QDBusConnection::sessionBus().send(QDBusMessage::createSignal(u"/"_s, u"orvane.test"_s + mark, u"mark"_s));
            return heard().contains(mark.toLatin1());
        },
        patienceMs);
}

} // namespace orvane::test
