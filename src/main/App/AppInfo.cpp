#include "main/App/AppInfo.h"

#include "main/App/ProductDomain.h"
#include "main/App/Release.h"

namespace orvane::AppInfo {

using namespace Qt::Literals::StringLiterals;

const QString& version()
{
    static const QString present = version(QString::fromUtf16(ORVANE_RELEASE));
    return present;
}

QString version(const QString& release)
{
    return release.isEmpty() ? u"dev"_s : u'v' + release;
}

const QString& siteName()
{
    static const QString name = QString::fromUtf16(ORVANE_PRODUCT_DOMAIN);
    return name;
}

} // namespace orvane::AppInfo
