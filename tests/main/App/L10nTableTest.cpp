#include "main/App/L10n.h"
#include "main/App/L10nTables.h"

#include <QRegularExpression>
#include <QSet>

#include <gmock/gmock.h>

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;
using L10n::Key;

QStringList placeholdersOf(const QString& text)
{
    static const QRegularExpression placeholder(u"%(?:@|d|\\.\\d+f|%)"_s);
    QStringList found;
    for (auto matches = placeholder.globalMatch(text); matches.hasNext();)
        found.append(matches.next().captured());
    return found;
}

/// A list that is in the program: English always, another one once it is translated.
class L10nList : public testing::TestWithParam<QString>
{
};

TEST_P(L10nList, isCompleteOrAbsent)
{
    const std::span<const L10n::Entry> list = L10n::listOf(GetParam());
    const std::span<const Key> keys = L10n::allKeys();
    if (list.empty() && GetParam() != u"en")
        return;
    ASSERT_EQ(list.size(), keys.size());
    for (std::size_t index = 0; index < keys.size(); ++index) {
        EXPECT_EQ(list[index].key, keys[index]) << qPrintable(L10n::rawValue(keys[index]));
        EXPECT_FALSE(QString::fromUtf16(list[index].text).isEmpty()) << qPrintable(L10n::rawValue(keys[index]));
    }
}

TEST_P(L10nList, holdsThePlaceholdersOfTheEnglishTextInTheirOrder)
{
    for (const L10n::Entry& entry : L10n::listOf(GetParam())) {
        const QString english = L10n::text(u"en"_s, entry.key).value_or(QString());
        EXPECT_EQ(placeholdersOf(QString::fromUtf16(entry.text)), placeholdersOf(english))
            << qPrintable(L10n::rawValue(entry.key));
    }
}

INSTANTIATE_TEST_SUITE_P(Languages, L10nList, testing::ValuesIn([] {
                             QStringList codes;
                             for (const L10n::Language& language : L10n::languages())
                                 codes.append(language.code);
                             return codes;
                         }()),
                         [](const auto& language) { return language.param.toStdString(); });

TEST(L10nKeys, areTheProgramsThreeHundredAndFortyTwo)
{
    EXPECT_EQ(L10n::allKeys().size(), 342u);
    QSet<QString> names;
    for (const Key key : L10n::allKeys())
        names.insert(L10n::rawValue(key));
    EXPECT_EQ(names.size(), 342);
}

TEST(L10nKeys, areCalledByTheirOwnNames)
{
    EXPECT_EQ(L10n::rawValue(Key::tabDownloader), u"tabDownloader"_s);
    EXPECT_EQ(L10n::rawValue(Key::log51), u"log51"_s);
    EXPECT_EQ(L10n::rawValue(Key::updateTookTooLong), u"updateTookTooLong"_s);
    EXPECT_EQ(L10n::allKeys().front(), Key::tabDownloader);
    EXPECT_EQ(L10n::allKeys().back(), Key::updateTookTooLong);
}

TEST(L10nKeys, numberTheLinesOfTheLogsWithTheirGap)
{
    QList<int> numbers;
    static const QRegularExpression line(u"^log(\\d+)$"_s);
    for (const Key key : L10n::allKeys()) {
        if (const auto match = line.match(L10n::rawValue(key)); match.hasMatch())
            numbers.append(match.captured(1).toInt());
    }
    std::sort(numbers.begin(), numbers.end());
    QList<int> expected;
    for (int number = 1; number <= 51; ++number) {
        if (number <= 34 || number >= 41)
            expected.append(number);
    }
    EXPECT_EQ(numbers, expected);
}

TEST(L10nEnglish, keepsTheTwoLogsApartThoughTheyReadAlike)
{
    const std::pair<Key, Key> twins[] = {{Key::log1, Key::log41}, {Key::log5, Key::log43}, {Key::log6, Key::log46}};
    for (const auto& [run, download] : twins) {
        EXPECT_NE(run, download);
        EXPECT_EQ(L10n::text(u"en"_s, run), L10n::text(u"en"_s, download)) << qPrintable(L10n::rawValue(run));
    }
}

TEST(L10nEnglish, namesTheProductDomainOfTheBuild)
{
    const QString domain = QString::fromUtf16(DOMAIN_OF_THIS_BUILD);
    for (const Key key :
         {Key::menuSite, Key::menuOpenSite, Key::updateNoAnswerBody, Key::instGettingBody, Key::instNotOurs})
        EXPECT_TRUE(L10n::text(u"en"_s, key)->contains(domain)) << qPrintable(L10n::rawValue(key));
}

TEST(L10nTable, hasNothingForALanguageThatIsNotInTheProgram)
{
    EXPECT_EQ(L10n::text(u"xx"_s, Key::stop), std::nullopt);
    EXPECT_TRUE(L10n::listOf(u"xx").empty());
}

} // namespace
} // namespace orvane::test
