#pragma once

#include <QHash>
#include <QString>

namespace orvane::TrackNamer {

/// Gives each name once, whatever its case: a second one has its number in brackets behind it, from 2.
class UniqueNames
{
public:
    /// `wanted`, or the first free name made of it. Ten thousand equal names cost no square.
    QString take(const QString& wanted);

private:
    /// By each used name, in lower case: where the search for a free number goes on.
    QHash<QString, int> nextNumbers_;
};

} // namespace orvane::TrackNamer
