#include "suno/Workspace.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <gmock/gmock.h>

namespace orvane {
namespace {

using namespace Qt::Literals::StringLiterals;

const QString site = u"music.example"_s;

QString identifier(QChar letter = u'a', int length = 32)
{
    return QString(length, letter);
}

QJsonObject project(const QString& name = u"Album"_s, QChar letter = u'a')
{
    return {{u"id"_s, identifier(letter)}, {u"name"_s, name}};
}

QJsonObject with(QJsonObject object, const QString& key, const QJsonValue& value)
{
    object.insert(key, value);
    return object;
}

QJsonObject wrapped(const QString& key, const QJsonValue& value)
{
    return {{key, value}};
}

QStringList names(const QJsonValue& json)
{
    QStringList found;
    for (const Workspace& workspace : workspaces(json, 0))
        found.append(workspace.name);
    return found;
}

std::optional<QString> lifted(const QString& address)
{
    return workspaceID(QUrl(address), site);
}

TEST(WorkspaceRecord, isReadFromIdAndName)
{
    EXPECT_EQ(Workspace::fromJson(project()), (Workspace{.id = identifier(), .name = u"Album"_s}));
}

TEST(WorkspaceRecord, aProjectWithAnIdOf31CharactersIsDropped)
{
    const QJsonObject tooShort{{u"id"_s, identifier(u'a', 31)}, {u"name"_s, u"Album"_s}};
    EXPECT_EQ(Workspace::fromJson(tooShort), std::nullopt);
    EXPECT_EQ(Workspace::fromJson({{u"id"_s, 1}, {u"name"_s, u"Album"_s}}), std::nullopt);
    EXPECT_EQ(Workspace::fromJson({{u"name"_s, u"Album"_s}}), std::nullopt);
}

TEST(WorkspaceRecord, theFirstNameKeyThatHoldsANonEmptyTextCounts)
{
    QJsonObject json = with(project(QString()), u"display_name"_s, u"Shown"_s);
    EXPECT_EQ(Workspace::fromJson(json)->name, u"Shown"_s);
    json = {{u"id"_s, identifier()}, {u"project_name"_s, u"Last"_s}, {u"name"_s, 3}};
    EXPECT_EQ(Workspace::fromJson(json)->name, u"Last"_s);
    json.insert(u"title"_s, u"Third"_s);
    EXPECT_EQ(Workspace::fromJson(json)->name, u"Third"_s);
    json.insert(u"display_name"_s, u"Second"_s);
    EXPECT_EQ(Workspace::fromJson(json)->name, u"Second"_s);
    json.insert(u"name"_s, u"First"_s);
    EXPECT_EQ(Workspace::fromJson(json)->name, u"First"_s);
    EXPECT_EQ(Workspace::fromJson({{u"id"_s, identifier()}, {u"title"_s, QString()}}), std::nullopt);
}

TEST(WorkspaceRecord, anObjectThatHasIdNameAndAudioAddressIsNoProject)
{
    EXPECT_EQ(Workspace::fromJson(with(project(), u"audio_url"_s, u"https://a"_s)), std::nullopt);
    EXPECT_EQ(Workspace::fromJson(with(project(), u"audio_url"_s, QJsonValue::Null)), std::nullopt);
}

TEST(WorkspaceRecord, anObjectWithAKeyClipIsNoProject)
{
    EXPECT_EQ(Workspace::fromJson(with(project(), u"clip"_s, QJsonValue::Null)), std::nullopt);
}

TEST(Workspaces, aListGivesItsProjectsInOrder)
{
    const QJsonArray list{project(u"A"_s), QJsonObject{{u"id"_s, u"short"_s}}, project(u"B"_s, u'b')};
    EXPECT_EQ(names(list), (QStringList{u"A"_s, u"B"_s}));
}

TEST(Workspaces, aListOfNonDictionariesFallsThroughToAnEmptyResult)
{
    EXPECT_EQ(names(QJsonArray{1, u"x"_s}), QStringList());
    EXPECT_EQ(names(QJsonArray{project(), 1}), QStringList());
    EXPECT_EQ(names(QJsonArray{}), QStringList());
    EXPECT_EQ(names(QJsonArray{QJsonArray{project()}}), QStringList());
}

TEST(Workspaces, anythingElseIsEmpty)
{
    EXPECT_EQ(names(QJsonValue::Null), QStringList());
    EXPECT_EQ(names(u"projects"_s), QStringList());
    EXPECT_EQ(names(4), QStringList());
}

TEST(Workspaces, everyWrappingKeyIsEntered)
{
    for (const QString& key : {u"projects"_s, u"project"_s, u"data"_s, u"results"_s, u"items"_s})
        EXPECT_EQ(names(wrapped(key, QJsonArray{project()})), QStringList{u"Album"_s}) << qPrintable(key);
}

TEST(Workspaces, theFirstKeyThatGivesAnythingWins)
{
    const QStringList keys{u"items"_s, u"results"_s, u"data"_s, u"project"_s, u"projects"_s};
    QJsonObject json;
    for (const QString& key : keys) {
        json.insert(key, QJsonArray{project(key)});
        EXPECT_EQ(names(json), QStringList{key});
    }
    json.insert(u"projects"_s, QJsonArray{});
    EXPECT_EQ(names(json), QStringList{u"project"_s});
}

TEST(Workspaces, oneProjectAloneIsAListOfOne)
{
    EXPECT_EQ(names(project()), QStringList{u"Album"_s});
    EXPECT_EQ(names(with(project(), u"items"_s, QJsonArray{})), QStringList{u"Album"_s});
    EXPECT_EQ(names(with(project(), u"items"_s, QJsonArray{project(u"Inner"_s)})), QStringList{u"Inner"_s});
}

TEST(Workspaces, fourLevelsUnderDataAreEnteredAndFiveAreNot)
{
    QJsonObject json = project();
    for (int level = 2; level <= 4; ++level)
        json = wrapped(u"data"_s, json);
    EXPECT_EQ(names(json), QStringList{u"Album"_s});
    EXPECT_EQ(names(wrapped(u"data"_s, json)), QStringList());
    EXPECT_EQ(workspaces(project(), 3).size(), 1);
    EXPECT_EQ(workspaces(project(), 4).size(), 0);
}

TEST(WorkspaceID, isAbsentWithoutAnAddressOrOnAnotherHost)
{
    const QString path = u"/project/"_s + identifier();
    EXPECT_EQ(workspaceID(std::nullopt, site), std::nullopt);
    EXPECT_EQ(lifted(path), std::nullopt);
    EXPECT_EQ(lifted(u"https://elsewhere.example"_s + path), std::nullopt);
    EXPECT_EQ(workspaceID(QUrl(u"https://music.example"_s + path), QString()), std::nullopt);
}

TEST(WorkspaceID, theHostNeedOnlyContainTheDomain)
{
    const QString path = u"/project/"_s + identifier();
    for (const QString& host : {u"music.example"_s, u"www.music.example"_s, u"WWW.Music.Example:8080"_s})
        EXPECT_EQ(lifted(u"https://"_s + host + path), identifier()) << qPrintable(host);
}

TEST(WorkspaceID, theComponentBehindAMarkerIsTheIdentifier)
{
    for (const QString& marker : {u"project"_s, u"projects"_s, u"workspace"_s, u"workspaces"_s})
        EXPECT_EQ(lifted(u"https://music.example/me/"_s + marker + u'/' + identifier() + u"/edit"_s), identifier());
    EXPECT_EQ(lifted(u"https://music.example/Project/"_s + identifier()), std::nullopt);
    EXPECT_EQ(lifted(u"https://music.example/project"_s), std::nullopt);
    EXPECT_EQ(lifted(u"https://music.example/song/"_s + identifier()), std::nullopt);
}

TEST(WorkspaceID, aShortComponentBehindOneMarkerLeavesTheNextItsChance)
{
    EXPECT_EQ(lifted(u"https://music.example/project/short/workspace/"_s + identifier()), identifier());
    EXPECT_EQ(lifted(u"https://music.example/project/"_s + identifier(u'b', 31)), std::nullopt);
}

TEST(WorkspaceID, aProjectSegmentOf20CharactersLeavesItToTheQuery)
{
    const QString address = u"https://music.example/project/"_s + identifier(u'p', 20) + u"?project_id="_s;
    EXPECT_EQ(lifted(address + identifier(u'q', 36)), identifier(u'q', 36));
}

TEST(WorkspaceID, theQuerysNamesAreTriedInOrderAndAShortValueMovesOn)
{
    const QString home = u"https://music.example/?"_s;
    EXPECT_EQ(lifted(home + u"projectId="_s + identifier(u'c')), identifier(u'c'));
    EXPECT_EQ(lifted(home + u"projectId="_s + identifier(u'c') + u"&workspace_id="_s + identifier(u'b')),
              identifier(u'b'));
    EXPECT_EQ(lifted(home + u"workspace_id="_s + identifier(u'b') + u"&project_id=short"_s), identifier(u'b'));
    EXPECT_EQ(lifted(home + u"project_id=short&project_id="_s + identifier()), std::nullopt);
    EXPECT_EQ(lifted(home + u"project_id"_s), std::nullopt);
}

} // namespace
} // namespace orvane
