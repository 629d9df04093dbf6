#pragma once

#include <string>

namespace orvane::test {

/// The page that tells how right the analysis is: listens to everything and writes it down.
std::string accuracyPage();

} // namespace orvane::test
