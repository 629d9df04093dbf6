#pragma once

#include <QTemporaryDir>

namespace orvane::test {

/// A home of its own for a test program: no test reads or writes the user's folders. Made before the application.
class Sandbox
{
public:
    Sandbox();

private:
    QTemporaryDir home_;
};

/// The seed of this run's random tests: from --seed=N, else a fresh one. It is printed once.
unsigned seed();

/// How often or how far a test goes that takes as long as one lets it: from --rounds=N, else `usual`.
int rounds(int usual);

/// Takes --seed=N and --rounds=N out of the arguments.
void readSeed(int& argc, char** argv);

} // namespace orvane::test
