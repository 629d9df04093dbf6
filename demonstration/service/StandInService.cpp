#include "demonstration/service/StandInService.h"

#include "demonstration/service/Assets.h"
#include "demonstration/service/SignIn.h"
#include "demonstration/service/Site.h"
#include "demonstration/service/Tokens.h"

#include <atomic>
#include <mutex>

namespace orvane::demo {

using namespace Qt::Literals::StringLiterals;

namespace {

Response plain(int status, const QByteArray& text)
{
    return {.status = status, .contentType = "text/plain", .body = text};
}

Response page(const QByteArray& type, const QByteArray& body)
{
    return {.status = body.isEmpty() ? 404 : 200,
            .contentType = type + "; charset=utf-8",
            .body = body,
            .headers = {{"Cache-Control", "no-store"}}};
}

QByteArray typeOf(const QString& path)
{
    if (path.endsWith(u".css"))
        return "text/css";
    return path.endsWith(u".js") ? "text/javascript" : "image/svg+xml";
}

std::pair<QByteArray, QByteArray> cookie(const QByteArray& name, const QByteArray& value)
{
    const QByteArray age = value.isEmpty() ? "0" : "31536000";
    return {"Set-Cookie", name + '=' + value + "; Path=/; HttpOnly; SameSite=Lax; Max-Age=" + age};
}

bool isSignedIn(const Request& request)
{
    return SignIn::isVisitor(request.cookie(SignIn::cookieName));
}

QByteArray addressAt(quint16 port)
{
    return "http://127.0.0.1:" + QByteArray::number(port);
}

QUrl productSiteAt(quint16 port)
{
    return QUrl(u"http://127.0.0.2:"_s + QString::number(port) + u'/');
}

/// The name without folder and extension.
QString stemOf(const QString& path)
{
    const QString name = path.sliced(path.lastIndexOf(u'/') + 1);
    return name.first(std::max<qsizetype>(0, name.lastIndexOf(u'.')));
}

} // namespace

class StandInService::Implementation
{
public:
    explicit Implementation(LibraryOptions options)
        : library(std::move(options))
        , server([this](const Request& request) { return answer(request); })
    {
    }

    QByteArray address() const { return addressAt(server.port()); }

    Library copyOfLibrary() const
    {
        const std::lock_guard guard(lock);
        return library;
    }

    std::optional<Track> track(const QString& id) const
    {
        const std::lock_guard guard(lock);
        const auto position = library.positionOf(id);
        return position ? std::optional(library.at(*position)) : std::nullopt;
    }

    mutable std::mutex lock;
    Library library;
    Tokens tokens;
    Assets assets;
    std::atomic<bool> tokenRequired = true;
    /// Last: its thread uses all of the above.
    HttpServer server;

private:
    Response answer(const Request& request);
    Response answerApi(const Request& request);
    Response answerSite(const Request& request) const;
    Response answerPost(const QString& path) const;
    Response token(const Request& request) const;
    Response cards(const Request& request) const;
    Response audio(const QString& id);
    Response picture(const QString& path);
    bool isAuthorised(const Request& request) const;
};

Response StandInService::Implementation::answer(const Request& request)
{
    const QString path = request.path();
    if (path.startsWith(u"/api/"))
        return answerApi(request);
    if (path.startsWith(u"/image/") || path.startsWith(u"/thumbnail/"))
        return picture(path);
    if (path.endsWith(u".mp3"))
        return audio(stemOf(path));
    return answerSite(request);
}

bool StandInService::Implementation::isAuthorised(const Request& request) const
{
    const QByteArray authorization = request.header("Authorization");
    const QByteArray bearer = authorization.startsWith("Bearer ") ? authorization.sliced(7) : QByteArray();
    return !tokenRequired || tokens.isValid(bearer) || tokens.isValid(request.cookie("__session")) ||
           isSignedIn(request);
}

Response StandInService::Implementation::answerApi(const Request& request)
{
    if (!isAuthorised(request))
        return {.status = 401, .body = R"({"detail": "Unauthorized"})"};
    const QString path = request.path();
    const std::lock_guard guard(lock);
    if (path == u"/api/feed/v2")
        return {.body = library.page(request.query(u"page"_s).toInt(), request.query(u"project_id"_s), address())};
    if (path == u"/api/project/me" || path == u"/api/project/" || path == u"/api/projects")
        return {.body = library.projects()};
    return {.status = 404, .body = R"({"detail": "Not found"})"};
}

Response StandInService::Implementation::answerSite(const Request& request) const
{
    const QString path = request.path();
    if (request.method == "POST")
        return answerPost(path);
    if (path == u"/token")
        return token(request);
    if (path == u"/popup-sign-in")
        return page("text/html", Site::popup());
    const QString projectId = path.startsWith(u"/project/") ? path.sliced(9) : QString();
    if (path != u"/" && path != u"/cards" && projectId.isEmpty())
        return page(typeOf(path), Site::file(path));
    if (!isSignedIn(request))
        return page("text/html", Site::welcome(copyOfLibrary()));
    return path == u"/cards" ? cards(request) : page("text/html", Site::libraryPage(copyOfLibrary(), projectId));
}

Response StandInService::Implementation::answerPost(const QString& path) const
{
    if (path == u"/sign-in")
        return {.status = 204,
                .headers = {cookie(SignIn::cookieName, SignIn::freshVisitor()), cookie("__session", tokens.current())}};
    if (path == u"/sign-out")
        return {.status = 204, .headers = {cookie(SignIn::cookieName, {}), cookie("__session", {})}};
    return plain(404, "not found");
}

Response StandInService::Implementation::token(const Request& request) const
{
    if (!isSignedIn(request))
        return plain(200, {});
    Response response = plain(200, tokens.current());
    response.headers = {cookie("__session", response.body), {"Cache-Control", "no-store"}};
    return response;
}

Response StandInService::Implementation::cards(const Request& request) const
{
    const Library present = copyOfLibrary();
    const QString projectId = request.query(u"project_id"_s);
    const int number = std::max(1, request.query(u"page"_s).toInt());
    Response response = page("text/html", Site::cards(present, projectId, number));
    response.headers.append({"X-Next", Site::nextCards(present, projectId, number)});
    return response;
}

Response StandInService::Implementation::audio(const QString& id)
{
    const std::optional<Track> found = track(id);
    if (!found)
        return plain(404, "not found");
    const std::optional<qint64> size = copyOfLibrary().options().assetBytes;
    if (size)
        return {.contentType = "audio/mpeg", .streamed = assets.repeatedAudio(*size)};
    return {.contentType = "audio/mpeg", .made = [this, song = *found] { return assets.audio(song); }};
}

Response StandInService::Implementation::picture(const QString& path)
{
    const std::optional<Track> found = track(stemOf(path));
    if (!found)
        return plain(404, "not found");
    if (path.startsWith(u"/thumbnail/"))
        return {.contentType = "image/jpeg", .made = [this, cover = *found] { return assets.thumbnail(cover); }};
    const QByteArray type = found->artworkExtension == u"jpg" ? "jpeg" : found->artworkExtension.toLatin1();
    return {.contentType = "image/" + type, .made = [this, cover = *found] { return assets.artwork(cover); }};
}

StandInService::StandInService(LibraryOptions options)
    : implementation_(std::make_unique<Implementation>(std::move(options)))
{
}

StandInService::~StandInService() = default;

Endpoints StandInService::endpoints() const
{
    return endpointsAt(implementation_->server.port());
}

Endpoints StandInService::endpointsAt(quint16 port)
{
    const QUrl home = QUrl::fromEncoded(addressAt(port) + '/');
    return {.sunoHome = home,
            .sunoSiteDomain = u"127.0.0.1"_s,
            .feed = home.resolved(QUrl(u"api/feed/v2"_s)),
            .workspaceLists = {home.resolved(QUrl(u"api/project/me"_s)), home.resolved(QUrl(u"api/project/"_s)),
                               home.resolved(QUrl(u"api/projects"_s))},
            .cdn = QUrl::fromEncoded(addressAt(port)),
            .credentialDomains = {{.domain = u"127.0.0.1"_s, .itself = true, .subdomains = false, .unencrypted = true}},
            .productSite = productSiteAt(port),
            .productDomain = u"127.0.0.2"_s};
}

QUrl StandInService::elsewhere() const
{
    return productSiteAt(implementation_->server.port());
}

void StandInService::setTokenLifetime(std::chrono::milliseconds lifetime)
{
    implementation_->tokens.setLifetime(lifetime);
}

QString StandInService::currentToken() const
{
    return QString::fromLatin1(implementation_->tokens.current());
}

void StandInService::expireTokens()
{
    implementation_->tokens.expire();
}

void StandInService::setTokenRequired(bool required)
{
    implementation_->tokenRequired = required;
}

void StandInService::setLibrary(LibraryOptions options)
{
    const std::lock_guard guard(implementation_->lock);
    implementation_->library = Library(std::move(options));
}

void StandInService::addTracks(int count)
{
    const std::lock_guard guard(implementation_->lock);
    implementation_->library.addAtHead(count);
}

void StandInService::script(const Fault& fault)
{
    implementation_->server.faults().add(fault);
}

void StandInService::clearFaults()
{
    implementation_->server.faults().clear();
}

QList<SeenRequest> StandInService::requests() const
{
    return implementation_->server.requests();
}

void StandInService::clearRequests()
{
    implementation_->server.clearRequests();
}

QList<Track> StandInService::tracks() const
{
    const Library library = implementation_->copyOfLibrary();
    QList<Track> tracks;
    for (int position = 0; position < library.size(); ++position)
        tracks.append(library.at(position));
    return tracks;
}

QString StandInService::lyricsOf(int position) const
{
    return implementation_->copyOfLibrary().lyricsAt(position);
}

QString StandInService::projectId(int project) const
{
    return implementation_->copyOfLibrary().projectId(project);
}

QByteArray StandInService::audioOf(const QString& trackId) const
{
    const std::optional<Track> track = implementation_->track(trackId);
    return track ? implementation_->assets.audio(*track) : QByteArray();
}

QByteArray StandInService::artworkOf(const QString& trackId) const
{
    const std::optional<Track> track = implementation_->track(trackId);
    return track ? implementation_->assets.artwork(*track) : QByteArray();
}

} // namespace orvane::demo
