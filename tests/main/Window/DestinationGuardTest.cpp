#include "main/Window/DestinationGuard.h"

#include "main/App/Preferences.h"
#include "main/App/Session.h"
#include "tests/support/RecordingDialogs.h"

#include <QDir>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

class DestinationGuard : public testing::Test
{
protected:
    QUrl folder(const QString& name) const
    {
        QDir(home.path()).mkpath(name);
        return QUrl::fromLocalFile(home.filePath(name));
    }

    orvane::DestinationGuard guard() { return {session, dialogs, {home.path(), home.filePath(u"Music"_s)}}; }

    bool wasNothingAsked() const { return dialogs.questions.isEmpty() && dialogs.told.isEmpty(); }

    QTemporaryDir home;
    Preferences preferences{home.filePath(u"preferences.json"_s)};
    Session session{preferences};
    RecordingDialogs dialogs;
    QSignalSpy moves{&session, &Session::destinationChanged};
};

TEST_F(DestinationGuard, aFolderOfItsOwnBecomesTheDestinationWithoutAQuestion)
{
    const QUrl own = folder(u"Orvane"_s);
    guard().adopt(own);
    EXPECT_EQ(session.destination(), own);
    EXPECT_EQ(moves.count(), 1);
    EXPECT_TRUE(wasNothingAsked());
}

TEST_F(DestinationGuard, theSameFolderDoesNothingNotEvenDuringADownload)
{
    session.setDestination(folder(u"Music"_s));
    moves.clear();
    session.downloadInProgress = true;
    guard().adopt(folder(u"Music"_s));
    EXPECT_EQ(moves.count(), 0);
    EXPECT_TRUE(wasNothingAsked());
}

TEST_F(DestinationGuard, aRunningDownloadKeepsTheDestinationAndSaysSo)
{
    const QUrl before = session.destination();
    session.downloadInProgress = true;
    guard().adopt(folder(u"Orvane"_s));
    EXPECT_EQ(session.destination(), before);
    EXPECT_TRUE(dialogs.questions.isEmpty());
    ASSERT_EQ(dialogs.told.size(), 1);
    EXPECT_EQ(dialogs.told.first(),
              (Told{u"A run is in progress."_s,
                    u"Stop it before changing where the app works, or the rest of the batch will land somewhere "
                    "different from the part already written."_s}));
}

TEST_F(DestinationGuard, aRunningDownloadIsToldOfBeforeAPersonalFolderIsAskedAbout)
{
    session.downloadInProgress = true;
    guard().adopt(folder(u"Music"_s));
    EXPECT_TRUE(dialogs.questions.isEmpty());
    EXPECT_EQ(dialogs.told.size(), 1);
}

TEST_F(DestinationGuard, aRunningAutomationDoesNotStandInTheWay)
{
    session.automationInProgress = true;
    guard().adopt(folder(u"Orvane"_s));
    EXPECT_EQ(session.destination(), folder(u"Orvane"_s));
    EXPECT_TRUE(wasNothingAsked());
}

TEST_F(DestinationGuard, aPersonalFolderIsAskedAboutByItsName)
{
    guard().adopt(folder(u"Music"_s));
    ASSERT_EQ(dialogs.questions.size(), 1);
    const Question& question = dialogs.questions.first();
    EXPECT_EQ(question.text, u"Download into “Music”?"_s);
    EXPECT_EQ(question.informativeText,
              u"This is a folder you keep other things in. A library run can write hundreds of files here, mixed in "
              "with what is already there."_s);
    EXPECT_EQ(question.firstButton, u"Use it anyway"_s);
    EXPECT_EQ(question.secondButton, u"Cancel"_s);
}

TEST_F(DestinationGuard, aPersonalFolderIsTakenOnlyAfterTheFirstButton)
{
    const QUrl before = session.destination();
    dialogs.answer = false;
    guard().adopt(folder(u"Music"_s));
    EXPECT_EQ(session.destination(), before);
    EXPECT_EQ(moves.count(), 0);
    dialogs.answer = true;
    guard().adopt(folder(u"Music"_s));
    EXPECT_EQ(session.destination(), folder(u"Music"_s));
    EXPECT_EQ(moves.count(), 1);
}

TEST_F(DestinationGuard, aClosingSlashDoesNotHideAPersonalFolder)
{
    folder(u"Music"_s);
    guard().adopt(QUrl::fromLocalFile(home.filePath(u"Music/"_s)));
    ASSERT_EQ(dialogs.questions.size(), 1);
    EXPECT_EQ(dialogs.questions.first().text, u"Download into “Music”?"_s);
}

TEST_F(DestinationGuard, aFolderInsideAPersonalOneIsNotAskedAbout)
{
    guard().adopt(folder(u"Music/Orvane"_s));
    EXPECT_EQ(session.destination(), folder(u"Music/Orvane"_s));
    EXPECT_TRUE(wasNothingAsked());
}

TEST_F(DestinationGuard, theHomeFolderIsAskedAboutByItsName)
{
    guard().adopt(QUrl::fromLocalFile(home.path()));
    ASSERT_EQ(dialogs.questions.size(), 1);
    EXPECT_EQ(dialogs.questions.first().text, u"Download into “%1”?"_s.arg(QDir(home.path()).dirName()));
}

TEST(DestinationGuardFolders, areTheHomeAndTheUsersFiveFoldersInOrder)
{
    const auto first = [](QStandardPaths::StandardLocation location) {
        return QStandardPaths::standardLocations(location).value(0);
    };
    EXPECT_EQ(orvane::DestinationGuard::usersFolders(),
              (QStringList{QDir::homePath(), first(QStandardPaths::DesktopLocation),
                           first(QStandardPaths::DocumentsLocation), first(QStandardPaths::DownloadLocation),
                           first(QStandardPaths::MoviesLocation), first(QStandardPaths::MusicLocation)}));
}

} // namespace
} // namespace orvane::test
