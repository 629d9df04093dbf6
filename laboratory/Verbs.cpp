#include "laboratory/Verb.h"

#include <array>

namespace orvane::lab {

std::span<const Verb> verbs()
{
    static constexpr std::array table{
        Verb{"analyse", "FILE...", analyse},
        Verb{"combinations", "", combinations},
        Verb{"crate", "", crate},
        Verb{"decode", "FILE OUT.f32", decode},
        Verb{"frame",
             "AUDIO SECONDS OUT.png [--artwork FILE --title TEXT --artist TEXT --aspect 9:16|1:1|16:9 --fps N --bars N "
             "--no-artwork --no-watermark]",
             frame, true},
        Verb{"master",
             "IN OUT --target LUFS --ceiling DBTP --format wav|flac|alac|aac|mp3 [--rate 128|192|256|320] "
             "[--tag FILE --level DB --placement N]",
             master},
        Verb{"measure", "FILE", measure},
        Verb{"mix",
             "FOLDER FILE... [--name NAME] [--crossfade SECONDS] [--stretch FRACTION] [--nudge SEMITONES] "
             "[--no-match] [--no-level] [--no-sweep] [--no-fade] [--no-preserve-pitch] "
             "[--format wav|flac|alac|aac|mp3] [--rate 128|192|256|320] [--tag FILE --level DB --placement N]",
             mix},
        Verb{"name", "FOLDER [--pattern ID] [--perform]", name},
        Verb{"order", "FILE... [--style energyArc|keyJourney|shuffle|asListed]", order},
        Verb{"pitch", "IN OUT SEMITONES", pitch},
        Verb{"platforms", "[FILE]", platforms},
        Verb{"prompt", "[--count N] [--genre TEXT] [--mood TEXT] [--era TEXT] [--voice TEXT] [--tempo TEXT] [--seed N]",
             prompt},
        Verb{"render",
             "AUDIO OUT.mp4 [--artwork FILE --title TEXT --artist TEXT --aspect 9:16|1:1|16:9 --fps N --bars N "
             "--no-artwork --no-watermark]",
             render, true},
        Verb{"scan", "FOLDER", scan},
        Verb{"spectrum", "AUDIO SECONDS [--fps N --bars N]", spectrum},
        Verb{"stretch", "IN OUT RATIO", stretch},
        Verb{"tag",
             "FILE --title TEXT [--artist TEXT --album TEXT --genre TEXT --track N --total N --lyrics-file FILE "
             "--artwork FILE]",
             tag},
    };
    return table;
}

} // namespace orvane::lab
