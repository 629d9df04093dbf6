#include "demo/service/Site.h"

#include "demo/service/Library.h"

namespace orvane::demo::Site {

using namespace Qt::Literals::StringLiterals;

namespace {

const QByteArray style = R"(
<style>
  :root { color-scheme: dark; }
  * { box-sizing: border-box; }
  body { margin: 0; background: #101216; color: #f3f4f6; font: 17px/1.5 "Noto Sans", sans-serif; }
  header { display: flex; flex-wrap: wrap; gap: 12px; align-items: center; justify-content: space-between;
           padding: 20px 32px; border-bottom: 1px solid #22262f; }
  header b { font-size: 20px; }
  header small { color: #9ca3af; font-weight: 400; }
  main { padding: 32px; max-width: 1400px; margin: 0 auto; }
  .welcome { max-width: 520px; margin: 12vh auto; text-align: center; }
  .welcome p { color: #9ca3af; }
  button, .button { font: inherit; font-weight: 600; color: #101216; background: #e8e3d8; border: 0; border-radius: 999px;
           padding: 12px 28px; cursor: pointer; text-decoration: none; display: inline-block; }
  button.quiet { background: none; color: #d1d5db; border: 1px solid #374151; padding: 8px 18px; }
  a { color: #cbb994; }
  .grid { display: grid; grid-template-columns: repeat(auto-fill, minmax(170px, 1fr)); gap: 24px; }
  .card img { width: 100%; aspect-ratio: 1; border-radius: 12px; display: block; background: #22262f; }
  .card div { margin-top: 8px; overflow: hidden; text-overflow: ellipsis; white-space: nowrap; unicode-bidi: isolate; }
  .card small { color: #9ca3af; display: block; overflow: hidden; text-overflow: ellipsis; white-space: nowrap; }
</style>
)";

const QByteArray clerk = R"(
<script>
  window.Clerk = {
    session: {
      getToken: async () => {
        const answer = await fetch('/token', { credentials: 'same-origin' });
        return answer.ok ? await answer.text() : '';
      }
    }
  };
  const post = async (address) => {
    await fetch(address, { method: 'POST', credentials: 'same-origin' });
    location.href = '/';
  };
  document.addEventListener('click', (event) => {
    if (event.target.id === 'sign-in') post('/sign-in');
    if (event.target.id === 'sign-out') post('/sign-out');
    if (event.target.id === 'popup-sign-in') window.open('/popup-sign-in', 'sign-in', 'width=420,height=360');
  });
</script>
)";

QByteArray document(const QByteArray& title, const QByteArray& body)
{
    return "<!doctype html><html lang=\"en\"><head><meta charset=\"utf-8\"><meta name=\"viewport\" "
           "content=\"width=device-width\"><title>" +
           title + "</title>" + style + clerk + "</head><body>" + body + "</body></html>";
}

QByteArray welcome()
{
    return R"(<main><div class="welcome"><h1>Suno (stand-in)</h1>
      <p>This page stands in for the service. It runs on your own machine, and the music, the words and the pictures
      behind it are made up.</p>
      <p><button id="sign-in">Sign in</button></p>
      <p><button id="popup-sign-in" class="quiet">Sign in in another window</button></p></div></main>)";
}

QByteArray card(const Track& track)
{
    const QString title = track.isUntitled ? u"Untitled"_s : track.title;
    return "<div class=\"card\"><img loading=\"lazy\" alt=\"\" src=\"/image/" + track.id.toLatin1() + '.' +
           track.artworkExtension.toLatin1() + "\"><div>" + title.toHtmlEscaped().toUtf8() + "</div><small>" +
           track.tags.toHtmlEscaped().toUtf8() + "</small></div>";
}

QByteArray tracks(const Library& library, const QString& projectId)
{
    constexpr int mostCards = 24;
    QByteArray cards;
    for (int position = 0; position < std::min(library.size(), mostCards); ++position)
        cards += card(library.at(position));
    QByteArray link;
    if (projectId.isEmpty() && library.options().projects > 0)
        link = "<p><a id=\"project\" href=\"/project/" + library.projectId(0).toLatin1() + "\">Open a project</a></p>";
    return R"(<header><b>Suno <small>(stand-in)</small></b><button id="sign-out" class="quiet">Sign out</button></header>)"
           "<main><h2>" +
           QByteArray::number(library.size()) + " tracks</h2>" + link + "<div class=\"grid\">" + cards +
           "</div></main>";
}

} // namespace

QByteArray page(const Library& library, bool signedIn, const QString& projectId)
{
    return document("Suno (stand-in)", signedIn ? tracks(library, projectId) : welcome());
}

QByteArray popup()
{
    return document("Sign in", R"(<main><div class="welcome" style="margin: 6vh auto"><h2>Sign in</h2>
      <p><button id="popup-go">Continue</button></p></div></main>
      <script>
        document.getElementById('popup-go').addEventListener('click', async () => {
          await fetch('/sign-in', { method: 'POST', credentials: 'same-origin' });
          if (window.opener) window.opener.location.href = '/';
          window.close();
        });
      </script>)");
}

} // namespace orvane::demo::Site
