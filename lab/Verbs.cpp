#include "lab/Verb.h"

#include <array>

namespace orvane::lab {

std::span<const Verb> verbs()
{
    static constexpr std::array table{
        Verb{"decode", "FILE OUT.f32", decode},
        Verb{"master",
             "IN OUT --target LUFS --ceiling DBTP --format wav|flac|alac|aac|mp3 [--rate 128|192|256|320] "
             "[--tag FILE --level DB --placement N]",
             master},
        Verb{"measure", "FILE", measure},
        Verb{"platforms", "[FILE]", platforms},
    };
    return table;
}

} // namespace orvane::lab
