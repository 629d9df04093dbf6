#pragma once

#include <QString>
#include <QUrl>

#include <optional>

namespace orvane {

/// What the answers of the Suno page mean for the session's token.
class SessionCapture
{
public:
    /// The script that asks the page for its token; it answers an empty text where the page has none.
    static const QString script;

    /// Whether the page at `address` may be asked: it has a host, which is the site's domain or lies below it.
    static bool mayAsk(const QUrl& address, const QString& siteDomain);

    /// Takes what the page answered, absent where the call failed or gave no text, and gives the token to store and
    /// announce in place of `token`; absent where nothing changes.
    ///
    /// One empty answer is borne, since the page's session may be between two states; two in a row mean that the user
    /// has signed out in the page.
    std::optional<QString> take(const std::optional<QString>& answer, const QString& token);

    /// Empty answers in a row.
    int emptyCaptures() const { return emptyCaptures_; }

private:
    std::optional<QString> takeEmpty(const QString& token);

    int emptyCaptures_ = 0;
};

} // namespace orvane
