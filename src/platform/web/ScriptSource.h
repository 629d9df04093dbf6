#pragma once

#include "platform/web/ScriptOutcome.h"

#include <QJsonObject>
#include <QString>
#include <QUrl>
#include <QVariant>

#include <optional>

namespace orvane {

/// The texts that carry an asynchronous call into a page and its answer out again.
///
/// The engine's own call of a script does not wait for a promise. So a first script starts the work and leaves a record
/// under a name that nobody can foresee, and a second one, run again and again, reads the record. The page is given no
/// door into the program: all that it can do is to spoil the answer to its own call. Both scripts lean on syntax and on
/// what a page cannot redefine (`window`, `location`, `typeof`, the length of a text); for anything but a text the
/// page's own `JSON` is asked, and what comes is read as outside data.
namespace ScriptSource {

/// An answer longer than this, in UTF-16 units, counts as failed and never leaves the page's process.
inline constexpr qsizetype longestAnswer = qsizetype(4) * 1024 * 1024;

/// A name of 128 random bits.
QString freshName();

/// A script that runs `body` as the body of an asynchronous function whose constants are `arguments` (each key an
/// identifier), and gives true; or false, with nothing run, where the document is not of the origin of `address`.
QString start(const QString& name, const QUrl& address, const QString& body, const QJsonObject& arguments);

/// A script that gives the record's answer: empty while there is none.
QString poll(const QString& name);

/// What the answer to `poll` means; absent while there is none.
std::optional<ScriptOutcome> read(const QVariant& answer);

} // namespace ScriptSource
} // namespace orvane
