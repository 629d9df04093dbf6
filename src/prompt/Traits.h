#pragma once

#include <QString>
#include <QStringList>
#include <QStringView>

namespace orvane::Prompt {

/// "under 90 BPM", "90–120 BPM", "120–140 BPM", "over 140 BPM".
const QStringList& tempos();

/// The name of the band that `bpm` lies in; a band holds its lower end and not its upper one.
const QString& tempo(int bpm);

/// "female voice", "male voice", "several voices", "spoken or rapped", "a single voice", "no voice".
const QStringList& voiceKinds();

/// Which of voiceKinds() a voice line tells of, by the words in it; "a single voice" where none says more.
QString kind(QStringView voice);

/// "1986" gives "1980s". A text whose first four characters are no whole number stands as it is.
QString decade(const QString& year);

} // namespace orvane::Prompt
