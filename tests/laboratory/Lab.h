#pragma once

#include <QJsonDocument>
#include <QString>
#include <QStringList>

namespace orvane::test {

struct LabAnswer
{
    int exitCode = 0;
    QJsonDocument json;
    QString said;
};

/// Runs the laboratory tool to its end.
LabAnswer lab(const QStringList& arguments);

/// Fails where the tool does not exit 1 with nothing on standard output and `sentence` on standard error.
void expectRefused(const QStringList& arguments, const QString& sentence);

} // namespace orvane::test
