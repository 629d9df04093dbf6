#pragma once

#include <QObject>
#include <QString>

class QWebEngineProfile;

namespace orvane {

/// A browser profile: cookies and stored data of the web panes, kept on disk between launches. Made after the
/// application object and outlives every page on it.
class WebProfile : public QObject
{
    Q_OBJECT

public:
    /// Keeps its data in `storagePath`; an empty path keeps them in memory only.
    explicit WebProfile(const QString& storagePath, QObject* parent = nullptr);
    ~WebProfile() override;

    QWebEngineProfile& engineProfile() { return *profile_; }

private:
    QWebEngineProfile* profile_;
};

} // namespace orvane
