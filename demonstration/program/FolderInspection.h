#pragma once

#include "demonstration/service/Library.h"
#include "suno/Clip.h"

#include <QByteArray>
#include <QSet>
#include <QString>
#include <QStringList>

namespace orvane::demo {

/// The bytes of the file; none where it cannot be read.
QByteArray contentsOf(const QString& path);

/// The clip that the service tells of the track.
Clip clipOf(const Track& track, const QString& lyrics);

/// A folder whose entries, hidden ones too, are ticked off one after the other.
class FolderInspection
{
public:
    explicit FolderInspection(const QString& folder);

    /// Ticks the entry off; false and a fault where it is missing.
    bool expect(const QString& name);
    /// Size of the file; -1 and a fault where it does not hold exactly `expected`.
    qint64 expectFile(const QString& name, const QByteArray& expected);
    /// A fault for each entry that nothing has asked for.
    void expectNothingElse();

    void addFault(const QString& sentence) { faults_.append(sentence); }

    QString path(const QString& name) const { return folder_ + u'/' + name; }

    const QStringList& faults() const { return faults_; }

    /// How many entries there were at first.
    int entries() const { return entries_; }

private:
    QString folder_;
    QSet<QString> unseen_;
    QStringList faults_;
    int entries_ = 0;
};

} // namespace orvane::demo
