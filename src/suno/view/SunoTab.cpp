#include "suno/view/SunoTab.h"

#include "main/App/Endpoints.h"
#include "main/App/L10n.h"
#include "main/App/Preferences.h"
#include "main/App/Session.h"
#include "main/Chrome/Dialogs.h"
#include "platform/web/WebPage.h"
#include "platform/web/WebPane.h"
#include "platform/web/WebProfile.h"
#include "suno/view/ZoomSteps.h"

#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace orvane {

const QString SunoTab::zoomKey = u"sunoZoom"_s;

SunoTab::SunoTab(WebProfile& profile, Session& session, Preferences& preferences, const Endpoints& endpoints,
                 QWidget* parent, const SunoTiming& timing)
    : QWidget(parent)
    , profile_(profile)
    , session_(session)
    , preferences_(preferences)
    , endpoints_(endpoints)
    , timing_(timing)
    , web_(new WebPane(profile, {.reload = L10n::t(L10n::Key::menuReload)}, this))
{
    auto* fill = new QVBoxLayout(this);
    fill->setContentsMargins(0, 0, 0, 0);
    fill->addWidget(web_);
    setFocusProxy(web_);
    connectPage();
    applyStoredZoom();
    goHome();
    connect(&timer_, &QTimer::timeout, this, &SunoTab::captureToken);
    timer_.start(timing_.captureInterval);
}

SunoTab::~SunoTab()
{
    // The page's end answers a call that is still out, so that the scope's wait is short.
    timer_.stop();
    delete std::exchange(web_, nullptr);
}

void SunoTab::connectPage()
{
    connect(web_, &WebPane::leaveRequested, this, &SunoTab::leaveRequested);
    connect(&page(), &WebPage::committed, this, &SunoTab::noteAddress);
    connect(&page(), &WebPage::finished, this, [this] {
        noteAddress();
        reportFirstLoad();
        QTimer::singleShot(timing_.settling, this, &SunoTab::captureToken);
    });
    connect(&page(), &WebPage::failed, this, &SunoTab::reportFirstLoad);
}

WebPage& SunoTab::page()
{
    return web_->page();
}

void SunoTab::noteAddress()
{
    session_.openSunoURL = page().url();
}

void SunoTab::reportFirstLoad()
{
    if (std::exchange(reportedFirstLoad_, true))
        return;
    if (const std::function<void()> report = std::exchange(onFirstLoad, nullptr))
        report();
}

void SunoTab::goHome()
{
    page().load(endpoints_.sunoHome, timing_.homeTimeout);
}

void SunoTab::captureToken()
{
    if (!web_ || capturing_ || signingOut_ || !SessionCapture::mayAsk(page().url(), endpoints_.sunoSiteDomain))
        return;
    tasks_.add(capture());
}

QCoro::Task<> SunoTab::capture()
{
    capturing_ = true;
    const ScriptOutcome outcome =
        co_await page().callAsync(SessionCapture::script, QJsonObject(), timing_.captureTimeout);
    capturing_ = false;
    takeToken(outcome.text());
    Q_EMIT captureEnded();
}

void SunoTab::takeToken(const std::optional<QString>& answer)
{
    // What a page says that the user has just signed out of comes too late.
    if (signingOut_)
        return;
    if (const std::optional<QString> token = capture_.take(answer, session_.token()))
        session_.setToken(*token);
}

void SunoTab::applyStoredZoom()
{
    page().setZoom(preferences_.number(zoomKey).value_or(ZoomSteps::usual));
}

double SunoTab::zoom() const
{
    return web_->page().zoom();
}

void SunoTab::setZoom(double zoom)
{
    page().setZoom(zoom);
    preferences_.set(zoomKey, zoom);
}

void SunoTab::nudgeZoom(int delta)
{
    setZoom(ZoomSteps::nudged(zoom(), delta));
}

bool SunoTab::belongsToSite(const QString& host) const
{
    return host.contains(u"suno", Qt::CaseInsensitive) || isOnDomain(host, endpoints_.sunoSiteDomain);
}

void SunoTab::askToSignOut(Dialogs& dialogs)
{
    const Question question{
        .text = L10n::t(L10n::Key::signOutAsk),
        .informativeText = u"This clears the captured token and Suno's cookies, so the left-hand pane returns to the "
                           "sign-in page. Downloaded files are not touched."_s,
        .firstButton = u"Sign Out"_s,
        .secondButton = L10n::t(L10n::Key::cancel)};
    if (dialogs.ask(this, question))
        signOut();
}

void SunoTab::signOut()
{
    if (std::exchange(signingOut_, true))
        return;
    session_.setToken({});
    tasks_.add(forgetSite());
}

QCoro::Task<> SunoTab::forgetSite()
{
    const SiteData::HostTest belongs = [this](const QString& host) { return belongsToSite(host); };
    co_await profile_.deleteSiteData(belongs);
    signingOut_ = false;
    if (web_)
        goHome();
}

} // namespace orvane
