#include "platform/desktop/TaskbarProgress.h"

#include <QDBusMessage>
#include <QVariantMap>

#include <algorithm>
#include <utility>

namespace orvane {

using namespace Qt::Literals::StringLiterals;

namespace {

std::optional<int> percentOf(std::optional<double> share)
{
    if (!share)
        return std::nullopt;
    return std::clamp(static_cast<int>(*share * 100), 0, 100);
}

} // namespace

TaskbarProgress::TaskbarProgress(QDBusConnection bus, const QString& desktopFile)
    : bus_(std::move(bus))
    , address_(u"application://%1.desktop"_s.arg(desktopFile))
{
}

TaskbarProgress::~TaskbarProgress()
{
    show(std::nullopt);
}

void TaskbarProgress::show(std::optional<double> share)
{
    const std::optional<int> percent = percentOf(share);
    if (percent == shown_ || !bus_.isConnected())
        return;
    shown_ = percent;
    QDBusMessage update = QDBusMessage::createSignal(u"/com/canonical/unity/launcherentry/1"_s,
                                                     u"com.canonical.Unity.LauncherEntry"_s, u"Update"_s);
    update << address_
           << QVariantMap{{u"progress"_s, percent.value_or(0) / 100.0}, {u"progress-visible"_s, percent.has_value()}};
    bus_.send(update);
}

} // namespace orvane
