#include "suno/WorkspaceChoice.h"

#include <gtest/gtest.h>

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;
using Kind = WorkspaceChoice::Kind;

const Workspace night{.id = u"11111111-1111-1111-1111-111111111111"_s, .name = u"Night drive"_s};
const Workspace day{.id = u"22222222-2222-2222-2222-222222222222"_s, .name = u"Day shift"_s};
const WorkspaceChoice wholeLibrary{.kind = Kind::wholeLibrary, .workspace = {}};
const WorkspaceChoice useOpenTab{.kind = Kind::useOpenTab, .workspace = {}};
const WorkspaceChoice manual{.kind = Kind::manual, .workspace = {}};

WorkspaceChoice project(const Workspace& workspace)
{
    return {.kind = Kind::workspace, .workspace = workspace};
}

QStringList rowsOf(const QList<WorkspaceChoice>& choices)
{
    QStringList rows;
    for (qsizetype row = 0; row < choices.size(); ++row) {
        if (startsSection(choices, row))
            rows.append(u"--"_s);
        rows.append(title(choices.at(row)));
    }
    return rows;
}

TEST(WorkspaceChoices, withoutProjectsTheOneOpenInSunoIsOffered)
{
    EXPECT_EQ(rowsOf(workspaceChoices({})),
              (QStringList{u"All tracks — your whole library"_s, u"Use the workspace open in Suno"_s, u"--"_s,
                           u"Enter an ID manually…"_s}));
}

TEST(WorkspaceChoices, theProjectsStandByNameBetweenTwoSeparators)
{
    EXPECT_EQ(rowsOf(workspaceChoices({night, day})),
              (QStringList{u"All tracks — your whole library"_s, u"--"_s, u"Night drive"_s, u"Day shift"_s, u"--"_s,
                           u"Enter an ID manually…"_s}));
}

WorkspaceSources openAt(const QString& address)
{
    return {.openSunoURL = QUrl(address), .sunoSiteDomain = u"suno.com"_s, .typed = {}};
}

WorkspaceSources typed(const QString& text)
{
    return {.openSunoURL = std::nullopt, .sunoSiteDomain = u"suno.com"_s, .typed = text};
}

TEST(WorkspaceChoice, theWholeLibraryHasNoIdentifier)
{
    WorkspaceSources everything = openAt(u"https://suno.com/?project_id="_s + night.id);
    everything.typed = day.id;
    EXPECT_EQ(workspaceID(wholeLibrary, everything), std::nullopt);
}

TEST(WorkspaceChoice, aProjectHasItsOwnIdentifier)
{
    EXPECT_EQ(workspaceID(project(night), typed(day.id)), night.id);
}

TEST(WorkspaceChoice, theOpenProjectIsTakenFromTheAddressInSuno)
{
    EXPECT_EQ(workspaceID(useOpenTab, openAt(u"https://suno.com/create?project_id="_s + night.id)), night.id);
}

TEST(WorkspaceChoice, anOpenPageWithoutAProjectStandsForTheWholeLibrary)
{
    EXPECT_EQ(workspaceID(useOpenTab, openAt(u"https://suno.com/create"_s)), std::nullopt);
    EXPECT_EQ(workspaceID(useOpenTab, typed(night.id)), std::nullopt);
}

TEST(WorkspaceChoice, aTypedIdentifierIsTrimmed)
{
    EXPECT_EQ(workspaceID(manual, typed(u" \t abc "_s)), u"abc"_s);
}

TEST(WorkspaceChoice, aTypedIdentifierOfBlanksCountsAsNone)
{
    EXPECT_EQ(workspaceID(manual, typed(u"  \t "_s)), std::nullopt);
    EXPECT_EQ(workspaceID(manual, typed({})), std::nullopt);
}

TEST(RowToSelect, theProjectIsFoundAgainWhereverItStandsNow)
{
    const auto choices = workspaceChoices({day, night});
    EXPECT_EQ(rowToSelect(choices, project(night), night.id), 2);
}

TEST(RowToSelect, aProjectThatIsGoneGivesTheWholeLibrary)
{
    EXPECT_EQ(rowToSelect(workspaceChoices({day}), project(night), night.id), 0);
}

TEST(RowToSelect, theProjectOpenInSunoIsSelectedByItsNameOnceItIsListed)
{
    const auto choices = workspaceChoices({day, night});
    EXPECT_EQ(rowToSelect(choices, useOpenTab, night.id), 2);
    EXPECT_EQ(rowToSelect(choices, useOpenTab, std::nullopt), 0);
}

TEST(RowToSelect, aTypedIdentifierKeepsItsRow)
{
    const auto choices = workspaceChoices({day, night});
    EXPECT_EQ(rowToSelect(choices, manual, u"another"_s), 3);
    EXPECT_EQ(rowToSelect(choices, manual, std::nullopt), 3);
}

TEST(RowToSelect, aTypedIdentifierThatIsListedIsSelectedByItsName)
{
    EXPECT_EQ(rowToSelect(workspaceChoices({day, night}), manual, day.id), 1);
}

TEST(RowToSelect, theWholeLibraryStaysSelected)
{
    EXPECT_EQ(rowToSelect(workspaceChoices({day, night}), wholeLibrary, std::nullopt), 0);
}

} // namespace
} // namespace orvane::test
