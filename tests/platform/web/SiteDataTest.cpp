#include "platform/web/SiteData.h"

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace orvane {

TEST(SiteData, anOriginIsSchemeHostAndPort)
{
    EXPECT_EQ(SiteData::originOf(QUrl(u"https://a:b@site.example:8443/x?y#z"_s)), QUrl(u"https://site.example:8443"_s));
    EXPECT_EQ(SiteData::originOf(QUrl(u"about:blank"_s)), std::nullopt);
    EXPECT_EQ(SiteData::originOf(QUrl(u"file:///etc/passwd"_s)), std::nullopt);
}

TEST(SiteData, theHostsOfCookiesAreTakenOverHttps)
{
    EXPECT_EQ(SiteData::originsOfHosts({u"a.example"_s}), (QSet<QUrl>{QUrl(u"https://a.example"_s)}));
}

TEST(SiteData, databasesTellTheirOriginsByTheirFolders)
{
    const QTemporaryDir folder;
    for (const QString& name : {u"https_site.example_0.indexeddb.leveldb"_s, u"http_localhost_8080.indexeddb.leveldb"_s,
                                u"https_site.example_0.indexeddb.blob"_s, u"file__0.indexeddb.leveldb"_s})
        QDir(folder.path()).mkpath(u"IndexedDB/"_s + name);
    EXPECT_EQ(SiteData::originsWithDatabase(folder.path()),
              (QSet<QUrl>{QUrl(u"https://site.example"_s), QUrl(u"http://localhost:8080"_s)}));
    EXPECT_TRUE(SiteData::originsWithDatabase(QString()).isEmpty());
    EXPECT_TRUE(SiteData::originsWithDatabase(folder.filePath(u"absent"_s)).isEmpty());
}

} // namespace orvane
