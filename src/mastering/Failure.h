#pragma once

#include <QString>

#include <exception>
#include <stdexcept>

namespace orvane::Master {

/// A failure of mastering itself, in the domain "Orvane": a code to branch on and a sentence to show.
class Failure : public std::runtime_error
{
public:
    enum Code
    {
        CouldNotRead = 1,
        NotAFormat = 2,
        CouldNotPrepare = 3,
        Mp3NoAudio = 4,
        Mp3NoEncoder = 5,
        Mp3BadSettings = 6,
        Mp3Failed = 7,
    };

    Failure(Code code, const QString& sentence);

    /// The name of the domain that the codes belong to.
    static QString domain();

    Code code() const { return code_; }

    QString sentence() const { return QString::fromUtf8(what()); }

private:
    Code code_;
};

/// What to show of anything that mastering throws: its own sentences, those of the files and of the decoding library,
/// and for what is left the exception's own words.
QString sentenceOf(const std::exception& error);

} // namespace orvane::Master
