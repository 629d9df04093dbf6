#pragma once

#include <QByteArray>
#include <QString>

namespace orvane::demo {

class Library;

/// The pages of the stand-in site. Titles are shown as text, whatever they hold.
namespace Site {

/// Tracks on a page of cards.
inline constexpr int cardsPerPage = 24;

/// The home page before the sign-in.
QByteArray welcome(const Library& library);

/// The library's newest tracks, or a project's where `projectId` is not empty.
QByteArray libraryPage(const Library& library, const QString& projectId);

/// A page of cards alone, counted from 1.
QByteArray cards(const Library& library, const QString& projectId, int page);

/// Address of the cards that follow a page; empty behind the last.
QByteArray nextCards(const Library& library, const QString& projectId, int page);

/// The small window that signs in and closes itself.
QByteArray popup();

/// A file of the site by its path, such as "/style.css"; empty where there is none.
QByteArray file(const QString& path);

} // namespace Site
} // namespace orvane::demo
