#pragma once

#include <QProcess>
#include <QString>

namespace orvane::test {

/// Writes down every message on the session bus from now on, byte for byte, in a file at `path`.
class BusListener
{
public:
    /// Throws where nobody can listen.
    explicit BusListener(const QString& path);
    ~BusListener();
    BusListener(const BusListener&) = delete;
    BusListener& operator=(const BusListener&) = delete;

    /// What has been said so far; a message that was sent before is in it once this has been `caughtUp`.
    QByteArray heard() const;
    /// Lets the listener come to everything that was sent before; false after a minute.
    bool caughtUp();

private:
    QString path_;
    QProcess monitor_;
    int marks_ = 0;
};

} // namespace orvane::test
