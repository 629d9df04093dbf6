#pragma once

#include "main/App/TrackRef.h"

#include <QObject>
#include <QString>
#include <QUrl>

#include <optional>

namespace orvane {

class Preferences;

/// What is true for the whole program at this moment. Lives on the main thread; its signals are delivered directly.
class Session : public QObject
{
    Q_OBJECT

public:
    /// Takes the stored folder where it can be made, else the default one, which is not made yet.
    explicit Session(Preferences& preferences, QObject* parent = nullptr);

    bool downloadInProgress = false;
    bool automationInProgress = false;

    /// The address that the Suno pane shows.
    std::optional<QUrl> openSunoURL;

    const QString& token() const { return token_; }

    /// Announces the token, also when it is the same.
    void setToken(const QString& token);

    /// The folder that all work goes to; a local file address.
    const QUrl& destination() const { return destination_; }

    /// Stores and announces the folder, also when it is the same.
    void setDestination(const QUrl& destination);

    const std::optional<TrackRef>& selection() const { return selection_; }

    void setSelection(const std::optional<TrackRef>& selection);

    /// "Videos" and "Mastered" in the destination.
    QUrl videosFolder() const;
    QUrl masteredFolder() const;

    /// "Orvane" in the user's download folder. A system without one is a fatal condition.
    static QUrl defaultDestination();

Q_SIGNALS:
    void tokenChanged();
    void selectionChanged();
    void destinationChanged();
    /// For whoever changes the files of the destination to emit.
    void filesChanged();

private:
    Preferences& preferences_;
    QString token_;
    QUrl destination_;
    std::optional<TrackRef> selection_;
};

} // namespace orvane
