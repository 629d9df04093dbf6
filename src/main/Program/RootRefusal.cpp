#include "main/Program/RootRefusal.h"

namespace orvane {

using namespace Qt::Literals::StringLiterals;

std::optional<QString> refusalFor(uid_t user)
{
    if (user != 0)
        return std::nullopt;
    return u"Orvane does not run as root, because the sandbox that web pages are kept in cannot protect root; start it "
           u"as "
           u"an ordinary user."_s;
}

} // namespace orvane
