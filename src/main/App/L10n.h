#pragma once

#include "main/App/L10nKeys.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <optional>
#include <span>

namespace orvane {

class Preferences;

/// Every text that the user reads, in the language of their choice. A change of language shows at the next start.
namespace L10n {

enum class Key
{
#define ORVANE_L10N_ENUMERATOR(name) name,
    ORVANE_L10N_KEYS(ORVANE_L10N_ENUMERATOR)
#undef ORVANE_L10N_ENUMERATOR
};

/// A language's code and its name in that language.
struct Language
{
    QString code;
    QString name;
};

/// The languages in the order in which the user picks from them.
std::span<const Language> languages();

/// All keys in the tables' order.
std::span<const Key> allKeys();

/// The key's own name.
QString rawValue(Key key);

/// Sets where the choice is stored, which must outlive every text that is asked for; called once before the first one.
/// Without it nothing is stored and the platform's language counts.
void setPreferences(Preferences* preferences);

/// The code of the present language, worked out at each call from the stored choice and the platform. Callable from any
/// thread.
QString code();
/// Stores the choice; for the main thread.
void setCode(const QString& code);
/// As `code`, for the given choice and the platform's preferred languages (such as "pt-BR"), most wanted first.
QString code(const std::optional<QString>& stored, const QStringList& preferred);

/// The present language's own name.
QString name();

bool isRightToLeft();

/// Stores the two keys of the text direction for a language that is written from right to left, and removes them for
/// any other; called before any view exists. Whoever has views lays them out by `isRightToLeft`.
void applyLayoutDirection();

/// The text of `key` in the present language, else in English, else the key's name. Callable from any thread.
QString t(Key key);

/// `t` with its placeholders filled in order: %@ takes a text, %d an integer, %.1f and %.0f a real; %% is a per cent
/// sign. A placeholder without an argument stays as it stands.
QString t(Key key, const QVariantList& arguments);

/// Fills the placeholders of `format` as `t` does.
QString filled(const QString& format, const QVariantList& arguments);

} // namespace L10n
} // namespace orvane
