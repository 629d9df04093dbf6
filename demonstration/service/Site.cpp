#include "demonstration/service/Site.h"

#include "demonstration/service/Library.h"

#include <QFile>

#include <algorithm>
#include <mutex>

static void openResources()
{
    Q_INIT_RESOURCE(site);
}

namespace orvane::demo::Site {

using namespace Qt::Literals::StringLiterals;

namespace {

QByteArray escaped(const QString& text)
{
    // Lone surrogates have no UTF-8, and control characters no place in a page.
    QString shown = text;
    std::replace_if(
        shown.begin(), shown.end(), [](QChar unit) { return unit.unicode() < 0x20; }, u' ');
    return shown.toHtmlEscaped().toUtf8();
}

QByteArray document(const QByteArray& title, const QByteArray& body)
{
    return R"(<!doctype html><html lang="en"><head><meta charset="utf-8">)"
           R"(<meta name="viewport" content="width=device-width, initial-scale=1">)"
           R"(<link rel="icon" href="/mark.svg"><link rel="stylesheet" href="/style.css">)"
           R"(<script src="/script.js" defer></script><title>)" +
           title + "</title></head><body>" + body + "</body></html>";
}

QByteArray header(const QByteArray& button)
{
    return R"(<header><a href="/"><img src="/mark.svg" alt=""><b>Suno <span>(stand-in)</span></b></a>)" + button +
           "</header>";
}

QByteArray thumbnail(const Track& track)
{
    return "/thumbnail/" + track.id.toLatin1() + ".jpg";
}

QByteArray wall(const Library& library)
{
    constexpr int covers = 9;
    QByteArray images;
    for (int position = 0; position < std::min(library.size(), covers); ++position)
        images += R"(<img alt="" src=")" + thumbnail(library.at(position)) + R"(">)";
    return R"(<div class="wall" aria-hidden="true">)" + images + "</div>";
}

QByteArray lengthOf(double seconds)
{
    const int whole = static_cast<int>(seconds);
    return QByteArray::number(whole / 60) + ':' + QByteArray::number(whole % 60).rightJustified(2, '0');
}

QByteArray card(const Track& track)
{
    const QByteArray title = track.isUntitled ? QByteArray("Untitled") : escaped(track.title);
    const QByteArray facts =
        lengthOf(track.song.seconds) + " · " + QByteArray::number(track.song.bpm) + " bpm · " + track.key.toUtf8();
    return R"(<article class="card" data-audio="/)" + track.id.toLatin1() +
           R"(.mp3"><button class="cover" aria-label="Play )" + title + R"("><img loading="lazy" alt="" src=")" +
           thumbnail(track) + R"("><span></span></button><h3><bdi>)" + title + "</bdi></h3><p>" + escaped(track.tags) +
           "</p><p>" + facts + "</p></article>";
}

QByteArray chip(const QByteArray& address, const QByteArray& text, bool isCurrent)
{
    const QByteArray mark = isCurrent ? R"( aria-current="page")" : "";
    return R"(<li><a class="chip" href=")" + address + '"' + mark + '>' + text + "</a></li>";
}

QByteArray chips(const Library& library, const QString& projectId)
{
    QByteArray items = chip("/", "Everything", projectId.isEmpty());
    for (int project = 0; project < library.options().projects; ++project) {
        const QString id = library.projectId(project);
        items += chip("/project/" + id.toLatin1(), escaped(library.projectName(project)), id == projectId);
    }
    return R"(<ul class="chips">)" + items + "</ul>";
}

QByteArray counted(qsizetype tracks)
{
    return QByteArray::number(tracks) + (tracks == 1 ? " track" : " tracks");
}

QByteArray player()
{
    return R"(<section id="player" class="player" hidden aria-label="Player"><img alt=""><div><strong></strong>)"
           R"(<progress max="1" value="0"></progress></div><time>0:00</time></section>)";
}

QByteArray grid(const Library& library, const QString& projectId)
{
    const QByteArray first = cards(library, projectId, 1);
    if (first.isEmpty())
        return R"(<p class="empty">Nothing here yet.</p>)";
    const QByteArray next = nextCards(library, projectId, 1);
    const QByteArray more = next.isEmpty() ? QByteArray()
                                           : R"(<p class="more"><button id="more" class="quiet" data-next=")" +
                                                 QByteArray(next).replace('&', "&amp;") + R"(">Show more</button></p>)";
    return R"(<div class="grid">)" + first + "</div>" + more;
}

} // namespace

QByteArray welcome(const Library& library)
{
    return document("Suno (stand-in)", header({}) + R"(<main class="welcome"><section>
      <h1>Made-up music, <em>made on your machine.</em></h1>
      <p class="lead">This page stands in for the service. It runs on this computer alone: the tracks are composed, the
      covers painted and the words written as you ask for them.</p>
      <div class="actions"><button id="sign-in" class="primary">Sign in</button>
      <button id="popup-sign-in" class="quiet">Sign in in another window</button></div>
      <p class="note">There is no password. Nothing leaves this computer.</p></section>)" +
                                           wall(library) + "</main>");
}

QByteArray libraryPage(const Library& library, const QString& projectId)
{
    const std::optional<int> project = library.projectOf(projectId);
    const QByteArray heading = project ? escaped(library.projectName(*project)) : QByteArray("Your library");
    return document("Suno (stand-in)", header(R"(<button id="sign-out" class="quiet">Sign out</button>)") +
                                           R"(<main><div class="title"><h1>)" + heading + "</h1><p>" +
                                           counted(library.positionsOf(projectId).size()) + "</p></div>" +
                                           chips(library, projectId) + grid(library, projectId) + "</main>" + player());
}

QByteArray cards(const Library& library, const QString& projectId, int page)
{
    QByteArray html;
    for (const int position : library.positionsOf(projectId).mid((page - 1) * cardsPerPage, cardsPerPage))
        html += card(library.at(position));
    return html;
}

QByteArray nextCards(const Library& library, const QString& projectId, int page)
{
    if (library.positionsOf(projectId).size() <= page * cardsPerPage)
        return {};
    return "/cards?page=" + QByteArray::number(page + 1) + "&project_id=" + projectId.toLatin1();
}

QByteArray popup()
{
    return document("Sign in", R"(<main class="small"><img src="/mark.svg" alt=""><h1>Sign in</h1>
      <p>This window closes itself.</p><button id="popup-go" class="primary">Continue</button></main>)");
}

QByteArray file(const QString& path)
{
    static std::once_flag opened;
    std::call_once(opened, openResources);
    QFile source(u":/stand-in"_s + path);
    return source.open(QIODevice::ReadOnly) ? source.readAll() : QByteArray();
}

} // namespace orvane::demo::Site
