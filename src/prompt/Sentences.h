#pragma once

#include <QString>

namespace orvane::Prompt {

/// What one roll has picked of a scene.
struct Picked
{
    QString place;
    QString year;
    QString genre;
    QString mood;
    QString voice;
    QString motion;
    QString key;
    QString detailOne;
    QString detailTwo;
    /// Beats per minute.
    int bpm = 0;
};

inline constexpr int styleForms = 7;
inline constexpr int ideaForms = 4;

/// How many of the forms, from the first on, suit what was picked: the last is too wordy for long lines.
int suitableStyleForms(const Picked& picked);

/// The style in form `form`, from 0 to styleForms - 1.
QString style(int form, const Picked& picked);

/// The idea in form `form`, from 0 to ideaForms - 1. Empty for an empty subject.
QString idea(int form, const QString& subject);

} // namespace orvane::Prompt
