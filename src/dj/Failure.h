#pragma once

#include <QString>

#include <stdexcept>

namespace orvane::DJ {

/// A failure of mixing itself: a code to branch on and a sentence to show, which is English in every language.
class Failure : public std::runtime_error
{
public:
    enum Code
    {
        /// A file that decodes to nothing.
        Unreadable,
        /// A set without a track, or a mix that there is no way to write.
        Empty,
        /// The user stopped.
        Cancelled,
    };

    /// `fileName` is the file's name with its extension, without its folder.
    static Failure unreadable(const QString& fileName);
    static Failure empty();
    static Failure cancelled();

    Code code() const { return code_; }

    QString sentence() const { return QString::fromUtf8(what()); }

private:
    Failure(Code code, const QString& sentence);

    Code code_;
};

} // namespace orvane::DJ
