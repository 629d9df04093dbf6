#pragma once

#include "prompt/Scene.h"

#include <QHash>
#include <QList>

#include <optional>

namespace orvane::Prompt {

/// A table of scenes, with what is asked of it again and again made once. It never changes.
class Crate
{
public:
    explicit Crate(QList<Scene> scenes);

    const QList<Scene>& scenes() const { return scenes_; }

    /// The kind of each voice of the scene at `index`, in their order.
    const QStringList& kinds(qsizetype index) const { return kinds_[index]; }

    /// The decade of the scene at `index`.
    const QString& decade(qsizetype index) const { return decades_[index]; }

    /// The family of the first scene that has `genre`.
    std::optional<QString> family(const QString& genre) const;

private:
    QList<Scene> scenes_;
    QList<QStringList> kinds_;
    QStringList decades_;
    QHash<QString, QString> families_;
};

/// The program's own table, read on first use. Any thread.
const Crate& crate();

} // namespace orvane::Prompt
