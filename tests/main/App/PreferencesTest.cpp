#include "main/App/Preferences.h"

#include "tests/support/TestFolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>

#include <gmock/gmock.h>
#include <sys/stat.h>

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

struct PreferencesTest : testing::Test
{
    TestFolder folder;
    QString path = folder.path(u"orvane/preferences.json"_s);

    /// What the next start of the program finds.
    Preferences reopened(Preferences& preferences) const
    {
        preferences.flush();
        return Preferences(path);
    }

    static uint rightsOf(const QString& name)
    {
        struct stat found = {};
        ::stat(qPrintable(name), &found);
        return found.st_mode & 07777;
    }
};

TEST_F(PreferencesTest, outliveTheProgramWithTheirTypes)
{
    {
        Preferences preferences(path);
        preferences.set(u"text"_s, u"ünï"_s);
        preferences.set(u"flag"_s, true);
        preferences.set(u"number"_s, -14.5);
        preferences.set(u"integer"_s, 44100);
        preferences.set(u"texts"_s, QJsonArray{u"a"_s, u"b"_s});
    }
    const Preferences next(path);
    EXPECT_EQ(next.text(u"text"_s), u"ünï"_s);
    EXPECT_EQ(next.flag(u"flag"_s), true);
    EXPECT_EQ(next.number(u"number"_s), -14.5);
    EXPECT_EQ(next.integer(u"integer"_s), 44100);
    EXPECT_EQ(next.texts(u"texts"_s), (QStringList{u"a"_s, u"b"_s}));
}

TEST_F(PreferencesTest, areAbsentWhereTheyAreMissing)
{
    const Preferences preferences(path);
    EXPECT_EQ(preferences.text(u"x"_s), std::nullopt);
    EXPECT_EQ(preferences.flag(u"x"_s), std::nullopt);
    EXPECT_EQ(preferences.number(u"x"_s), std::nullopt);
    EXPECT_EQ(preferences.integer(u"x"_s), std::nullopt);
    EXPECT_EQ(preferences.texts(u"x"_s), std::nullopt);
    EXPECT_FALSE(preferences.contains(u"x"_s));
    EXPECT_FALSE(QFileInfo::exists(path)) << "reading writes nothing";
}

TEST_F(PreferencesTest, areAbsentWhereTheyAreOfAnotherKind)
{
    Preferences preferences(path);
    preferences.set(u"text"_s, u"1"_s);
    preferences.set(u"number"_s, 1);
    preferences.set(u"flag"_s, true);
    preferences.set(u"mixed"_s, QJsonArray{u"a"_s, 1});
    preferences.set(u"nothing"_s, QJsonValue(QJsonValue::Null));
    EXPECT_EQ(preferences.number(u"text"_s), std::nullopt);
    EXPECT_EQ(preferences.flag(u"text"_s), std::nullopt);
    EXPECT_EQ(preferences.texts(u"text"_s), std::nullopt);
    EXPECT_EQ(preferences.flag(u"number"_s), std::nullopt);
    EXPECT_EQ(preferences.text(u"number"_s), std::nullopt);
    EXPECT_EQ(preferences.number(u"flag"_s), std::nullopt);
    EXPECT_EQ(preferences.texts(u"mixed"_s), std::nullopt);
    EXPECT_EQ(preferences.text(u"nothing"_s), std::nullopt);
    EXPECT_TRUE(preferences.contains(u"nothing"_s));
}

TEST_F(PreferencesTest, areIntegersOnlyWholeAndInRange)
{
    Preferences preferences(path);
    for (const double value : {0.5, 2147483648.0, -2147483649.0, 1e300}) {
        preferences.set(u"n"_s, value);
        EXPECT_EQ(preferences.integer(u"n"_s), std::nullopt) << value;
    }
    for (const int value : {0, -7, 2147483647, -2147483647 - 1}) {
        preferences.set(u"n"_s, value);
        EXPECT_EQ(reopened(preferences).integer(u"n"_s), value);
    }
}

TEST_F(PreferencesTest, canBeAnEmptyListOfTexts)
{
    Preferences preferences(path);
    preferences.set(u"texts"_s, QJsonArray());
    EXPECT_EQ(reopened(preferences).texts(u"texts"_s), QStringList());
}

TEST_F(PreferencesTest, areGoneOnceRemoved)
{
    Preferences preferences(path);
    preferences.set(u"kept"_s, 1);
    preferences.set(u"removed"_s, 2);
    preferences.remove(u"removed"_s);
    EXPECT_FALSE(preferences.contains(u"removed"_s));
    EXPECT_FALSE(reopened(preferences).contains(u"removed"_s));
    EXPECT_EQ(reopened(preferences).integer(u"kept"_s), 1);
}

TEST_F(PreferencesTest, areForTheUserAlone)
{
    Preferences preferences(path);
    preferences.set(u"x"_s, 1);
    preferences.flush();
    EXPECT_EQ(rightsOf(path), 0600u);
    EXPECT_EQ(rightsOf(QFileInfo(path).path()), 0700u);
    ASSERT_EQ(::chmod(qPrintable(path), 0644), 0);
    preferences.set(u"x"_s, 2);
    preferences.flush();
    EXPECT_EQ(rightsOf(path), 0600u);
}

TEST_F(PreferencesTest, leaveTheRightsOfAFolderThatIsThere)
{
    Preferences preferences(folder.path(u"preferences.json"_s));
    preferences.set(u"x"_s, 1);
    preferences.flush();
    EXPECT_EQ(rightsOf(folder.path()), 0755u);
}

TEST_F(PreferencesTest, setADamagedFileAsideAndStartEmpty)
{
    for (const char* damage : {"{\"half\": ", "[1, 2]", "", "\"text\"", "\x00\xff", "<html>"}) {
        folder.write(u"preferences.json"_s, damage);
        Preferences preferences(folder.path(u"preferences.json"_s));
        EXPECT_FALSE(preferences.contains(u"half"_s)) << damage;
        EXPECT_EQ(folder.names(), QStringList{u"preferences.json.damaged"_s}) << damage;
        EXPECT_EQ(folder.read(u"preferences.json.damaged"_s), damage);
    }
}

TEST_F(PreferencesTest, setAsideAFileThatCannotBeRead)
{
    folder.write(u"preferences.json"_s, "{\"x\": 1}");
    ASSERT_EQ(::chmod(qPrintable(folder.path()), 0777), 0);
    ASSERT_EQ(::chmod(qPrintable(folder.path(u"preferences.json"_s)), 0), 0);
    const int found = inChild([&] {
        becomeUnprivileged();
        Preferences preferences(folder.path(u"preferences.json"_s));
        preferences.set(u"y"_s, 2);
        preferences.flush();
        return preferences.contains(u"x"_s) ? 1 : 0;
    });
    EXPECT_EQ(found, 0);
    ::chmod(qPrintable(folder.path(u"preferences.json.damaged"_s)), 0600);
    EXPECT_EQ(folder.read(u"preferences.json.damaged"_s), "{\"x\": 1}");
    EXPECT_TRUE(folder.read(u"preferences.json"_s).contains("\"y\""));
}

TEST_F(PreferencesTest, holdAValueThatTheDiskRefusesAndSayWhy)
{
    folder.write(u"orvane"_s, "a file where the folder should be");
    Preferences preferences(path);
    preferences.set(u"x"_s, 1);
    EXPECT_EQ(preferences.integer(u"x"_s), 1);
    preferences.flush();
    EXPECT_EQ(preferences.lastError(), u"preferences.json: Not a directory"_s);
    QFile::remove(folder.path(u"orvane"_s));
    preferences.set(u"x"_s, 1);
    preferences.flush();
    EXPECT_TRUE(preferences.lastError().isEmpty()) << "the same value is written again after a failure";
    EXPECT_EQ(reopened(preferences).integer(u"x"_s), 1);
}

TEST_F(PreferencesTest, doNotTouchTheDiskForAValueThatStays)
{
    Preferences preferences(path);
    preferences.set(u"x"_s, 1);
    preferences.flush();
    ASSERT_TRUE(QFile::remove(path));
    preferences.set(u"x"_s, 1);
    preferences.remove(u"missing"_s);
    preferences.flush();
    EXPECT_FALSE(QFileInfo::exists(path));
}

TEST_F(PreferencesTest, countAtOnceAndEndOnTheDiskAsTheLatestValue)
{
    Preferences preferences(path);
    for (int level = 0; level <= 2'000; ++level) {
        preferences.set(u"level"_s, level);
        ASSERT_EQ(preferences.integer(u"level"_s), level);
    }
    EXPECT_EQ(reopened(preferences).integer(u"level"_s), 2'000);
}

TEST_F(PreferencesTest, waitForNothingWhereNothingWasSet)
{
    Preferences preferences(path);
    preferences.flush();
    EXPECT_TRUE(preferences.lastError().isEmpty());
    EXPECT_FALSE(QFileInfo::exists(path));
}

TEST_F(PreferencesTest, lieInTheUsersConfigurationUnderTheProgramsName)
{
    EXPECT_EQ(Preferences::userPath(u"orvane-demo"_s), QDir::homePath() + u"/.config/orvane-demo/preferences.json"_s);
}

} // namespace
} // namespace orvane::test
