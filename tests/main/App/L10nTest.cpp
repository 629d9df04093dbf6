#include "main/App/L10n.h"

#include "main/App/L10nTables.h"
#include "main/App/Preferences.h"
#include "tests/support/TestFolder.h"

#include <atomic>
#include <gmock/gmock.h>
#include <thread>
#include <vector>

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;
using L10n::Key;

const QString direction = u"AppleTextDirection"_s;
const QString forced = u"NSForceRightToLeftWritingDirection"_s;

class L10nTest : public testing::Test
{
protected:
    L10nTest() { L10n::setPreferences(&preferences); }

    ~L10nTest() override { L10n::setPreferences(nullptr); }

    TestFolder folder;
    Preferences preferences{folder.path(u"preferences.json"_s)};
};

QString codeFor(const QStringList& preferred)
{
    return L10n::code(std::nullopt, preferred);
}

TEST_F(L10nTest, listsTheLanguagesInTheOrderOfThePicker)
{
    QStringList shown;
    for (const L10n::Language& language : L10n::languages())
        shown.append(language.code + u' ' + language.name);
    EXPECT_EQ(shown, (QStringList{u"en English"_s, u"es Español"_s, u"de Deutsch"_s, u"fr Français"_s, u"it Italiano"_s,
                                  u"pt Português"_s, u"zh 中文"_s, u"ja 日本語"_s, u"ko 한국어"_s, u"ru Русский"_s,
                                  u"ar العربية"_s, u"hi हिन्दी"_s, u"tr Türkçe"_s, u"vi Tiếng Việt"_s,
                                  u"id Bahasa Indonesia"_s}));
}

TEST_F(L10nTest, followsTheStoredChoice)
{
    EXPECT_EQ(L10n::code(u"ja"_s, {u"de-DE"_s}), u"ja"_s);
}

TEST_F(L10nTest, takesAnUnknownChoiceForNone)
{
    EXPECT_EQ(L10n::code(u"xx"_s, {u"de-DE"_s}), u"de"_s);
    EXPECT_EQ(L10n::code(u"DE"_s, {u"fr-FR"_s}), u"fr"_s);
    EXPECT_EQ(L10n::code(QString(), {u"fr-FR"_s}), u"fr"_s);
}

TEST_F(L10nTest, elseFollowsTheFirstTwoLettersOfThePlatformsFirstLanguage)
{
    EXPECT_EQ(codeFor({u"en-GB"_s}), u"en"_s);
    EXPECT_EQ(codeFor({u"pt-BR"_s}), u"pt"_s);
    EXPECT_EQ(codeFor({u"zh-Hant"_s}), u"zh"_s);
    EXPECT_EQ(codeFor({u"DE"_s}), u"de"_s);
}

TEST_F(L10nTest, elseIsEnglish)
{
    EXPECT_EQ(codeFor({u"sv-SE"_s}), u"en"_s);
    EXPECT_EQ(codeFor({u"sv-SE"_s, u"de-DE"_s}), u"en"_s) << "only the first one counts";
    EXPECT_EQ(codeFor({}), u"en"_s);
    EXPECT_EQ(codeFor({QString()}), u"en"_s);
    EXPECT_EQ(codeFor({u"C"_s}), u"en"_s);
}

TEST_F(L10nTest, storesTheChoiceAndReadsItAnewAtEachCall)
{
    L10n::setCode(u"ko"_s);
    EXPECT_EQ(preferences.text(u"appLanguage"_s), u"ko"_s);
    EXPECT_EQ(L10n::code(), u"ko"_s);
    EXPECT_EQ(L10n::name(), u"한국어"_s);
    preferences.set(u"appLanguage"_s, u"fr"_s);
    EXPECT_EQ(L10n::code(), u"fr"_s);
}

TEST_F(L10nTest, ignoresAStoredValueThatIsNoKnownText)
{
    const QString byPlatform = L10n::code();
    for (const QJsonValue& value : {QJsonValue(u"xx"_s), QJsonValue(7), QJsonValue(true)}) {
        preferences.set(u"appLanguage"_s, value);
        EXPECT_EQ(L10n::code(), byPlatform);
    }
}

TEST_F(L10nTest, worksWithoutAStore)
{
    L10n::setPreferences(nullptr);
    L10n::setCode(u"ar"_s);
    L10n::applyLayoutDirection();
    EXPECT_EQ(L10n::code(), u"en"_s);
    EXPECT_EQ(L10n::name(), u"English"_s);
    EXPECT_EQ(L10n::t(Key::stop), u"Stop"_s);
}

TEST_F(L10nTest, readsFromRightToLeftInArabicAlone)
{
    for (const L10n::Language& language : L10n::languages()) {
        L10n::setCode(language.code);
        EXPECT_EQ(L10n::isRightToLeft(), language.code == u"ar") << qPrintable(language.code);
    }
}

TEST_F(L10nTest, storesBothDirectionKeysInArabicAndRemovesThemInAnyOther)
{
    L10n::setCode(u"ar"_s);
    L10n::applyLayoutDirection();
    EXPECT_EQ(preferences.flag(direction), true);
    EXPECT_EQ(preferences.flag(forced), true);
    L10n::setCode(u"de"_s);
    EXPECT_TRUE(preferences.contains(direction)) << "they change at the next start";
    L10n::applyLayoutDirection();
    EXPECT_FALSE(preferences.contains(direction));
    EXPECT_FALSE(preferences.contains(forced));
}

TEST_F(L10nTest, fallsBackToEnglishAndNeverToNothing)
{
    for (const L10n::Language& language : L10n::languages()) {
        L10n::setCode(language.code);
        for (const Key key : L10n::allKeys())
            ASSERT_FALSE(L10n::t(key).isEmpty()) << qPrintable(language.code);
    }
}

TEST_F(L10nTest, fallsBackToTheNameOfAKeyThatHasNoText)
{
    EXPECT_EQ(L10n::t(Key::stop), u"Stop"_s);
    EXPECT_EQ(L10n::textOf(Key::stop, u"xx"_s, u"yy"_s), u"stop"_s);
    EXPECT_EQ(L10n::textOf(Key::stop, u"xx"_s, u"en"_s), u"Stop"_s);
}

TEST_F(L10nTest, fillsPlaceholders)
{
    L10n::setCode(u"en"_s);
    EXPECT_EQ(L10n::t(Key::log50, {u"12"_s}), u"Done — 12 tracks saved."_s);
    EXPECT_EQ(L10n::t(Key::outVideoSize, {1920, 1080, 99.6}), u"1920 × 1080, about 100 MB for four minutes"_s);
}

TEST_F(L10nTest, answersEveryThreadWhileTheChoiceChanges)
{
    std::atomic<bool> wrong = false;
    std::atomic<int> asked = 0;
    std::vector<std::jthread> threads;
    for (int index = 0; index < 3; ++index) {
        threads.emplace_back([&](const std::stop_token& stop) {
            while (!stop.stop_requested()) {
                if (L10n::t(Key::stop).isEmpty() || L10n::code().size() != 2)
                    wrong = true;
                ++asked;
            }
        });
    }
    for (int change = 0; change < 40 || asked < 1'000; ++change)
        L10n::setCode(L10n::languages()[std::size_t(change) % 15].code);
    threads.clear();
    EXPECT_FALSE(wrong);
}

} // namespace
} // namespace orvane::test
