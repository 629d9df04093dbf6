#pragma once

#include "dj/Analysis.h"
#include "dj/MixSettings.h"
#include "dj/arithmetic/Splice.h"

#include <QString>

#include <cstdint>
#include <vector>

namespace orvane::DJ {

/// The frames, at least one, that the mix of `set` will have about: nobody knows before it is made.
std::int64_t expectedFrames(const Set& set, const MixSettings& settings);

/// The voice tag of a mix, and where it is heard.
class MixTag
{
public:
    /// Reads and places the tag of the mix called `name`, which decides where scattered hits land. There is none where
    /// the settings ask for none or the tag's file cannot be read.
    static MixTag prepared(const Set& set, const MixSettings& settings, const QString& name);

    /// Lays over the piece what of the tag falls there.
    void stamp(const Piece& piece) const;

private:
    Channels tag_;
    std::vector<std::int64_t> hits_;
};

} // namespace orvane::DJ
