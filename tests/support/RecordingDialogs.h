#pragma once

#include "main/Chrome/Dialogs.h"

#include <QList>

#include <functional>

namespace orvane::test {

/// What an alert with one button said.
struct Told
{
    QString text;
    QString informativeText;

    bool operator==(const Told&) const = default;
};

/// Answers every alert and panel at once, as the test says, and writes down what was asked.
class RecordingDialogs final : public Dialogs
{
public:
    bool ask(QWidget*, const Question& question) override
    {
        questions.append(question);
        if (whileAsking)
            whileAsking();
        return answer;
    }

    void tell(QWidget*, const QString& text, const QString& informativeText) override
    {
        told.append({text, informativeText});
    }

    std::optional<QUrl> chooseFolder(QWidget*, const QUrl& startingAt) override
    {
        startingPoints.append(startingAt);
        return folder;
    }

    std::optional<QUrl> chooseFile(QWidget*, const QUrl& startingAt, const QStringList& extensions) override
    {
        startingPoints.append(startingAt);
        offeredExtensions = extensions;
        return file;
    }

    /// The answer to every question: true for the first button.
    bool answer = false;
    /// The answer of every panel for folders, and of every one for files.
    std::optional<QUrl> folder;
    std::optional<QUrl> file;
    /// Runs while a question is open.
    std::function<void()> whileAsking;

    QList<Question> questions;
    QList<Told> told;
    QList<QUrl> startingPoints;
    /// Of the latest panel for files.
    QStringList offeredExtensions;
};

} // namespace orvane::test
