#include "tests/laboratory/Lab.h"

#include <QProcess>

#include <gtest/gtest.h>

namespace orvane::test {

LabAnswer lab(const QStringList& arguments)
{
    QProcess process;
    process.start(QStringLiteral(ORVANE_LAB), arguments);
    EXPECT_TRUE(process.waitForFinished(60'000));
    return {.exitCode = process.exitCode(),
            .json = QJsonDocument::fromJson(process.readAllStandardOutput()),
            .said = QString::fromUtf8(process.readAllStandardError())};
}

void expectRefused(const QStringList& arguments, const QString& sentence)
{
    const LabAnswer answer = lab(arguments);
    EXPECT_EQ(answer.exitCode, 1);
    EXPECT_TRUE(answer.json.isNull());
    EXPECT_EQ(answer.said, sentence + u'\n');
}

} // namespace orvane::test
