#include "main/Program/RootRefusal.h"

#include <gtest/gtest.h>

namespace orvane {

using namespace Qt::Literals::StringLiterals;

TEST(RootRefusal, rootIsToldWhyInOneSentence)
{
    EXPECT_EQ(refusalFor(0), u"Orvane does not run as root, because the sandbox that web pages are kept in cannot "
                             "protect root; start it as an ordinary user."_s);
}

TEST(RootRefusal, anOrdinaryUserIsNotRefused)
{
    EXPECT_EQ(refusalFor(1000), std::nullopt);
    EXPECT_EQ(refusalFor(1), std::nullopt);
}

} // namespace orvane
