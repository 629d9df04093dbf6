#pragma once

#include <QByteArray>
#include <QLocalServer>
#include <QLockFile>
#include <QObject>
#include <QString>

#include <chrono>

class QLocalSocket;

namespace orvane {

/// At most one process for each folder of things that two would spoil for each other.
///
/// A lock file beside the folder says which start was first; what a process that was killed leaves of it counts for
/// nothing. The first also listens on a local socket that only its user can reach: there a later start asks it to come
/// forward. Used on the main thread, whose event loop answers.
class SoleInstance : public QObject
{
    Q_OBJECT

public:
    enum class Standing
    {
        /// Nobody else uses the folder, for as long as this object lives. Also where no lock can be written at all and
        /// nobody answers: a full disk keeps no program from starting.
        First,
        /// Another process does, and it has been asked to come forward.
        Second,
        /// Another process does, and it has not answered.
        Unanswered
    };

    /// `folder` is an absolute path; it need not exist.
    explicit SoleInstance(const QString& folder, QObject* parent = nullptr);

    /// Finds out where this start stands. Blocks for at most `patience` while another process neither answers nor ends,
    /// as one does that is about to do either. `activation` is the token by which the desktop lets a window come
    /// forward, and may be empty.
    Standing take(const QByteArray& activation, std::chrono::milliseconds patience);

    /// Where the first listens.
    QString socketPath() const { return socketPath_; }

Q_SIGNALS:
    /// A later start asks for the window, with its activation token.
    void called(const QByteArray& activation);

private:
    void listen();
    void answer();
    void hear(QLocalSocket& caller);

    QString socketPath_;
    QLockFile lock_;
    QLocalServer server_;
};

} // namespace orvane
