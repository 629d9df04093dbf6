#pragma once

#include "tests/e2e/World.h"
#include "tests/support/TestFolder.h"

#include <gtest/gtest.h>
#include <memory>

namespace orvane::test {

/// A test of the whole program, in a folder of its own.
class WorldTest : public testing::Test
{
protected:
    World& open(demo::LibraryOptions library = shortLibrary(6))
    {
        // The web profile is kept in memory: an engine that writes for a moment longer keeps no folder of the test.
        const ProgramFolders folders{.preferences = folder.path(QStringLiteral("preferences.json")), .webProfile = {}};
        world = std::make_unique<World>(folders, libraryFolder(), std::move(library));
        return *world;
    }

    QString libraryFolder() const { return folder.path(QStringLiteral("library")); }

    TestFolder folder;
    std::unique_ptr<World> world;
};

} // namespace orvane::test
