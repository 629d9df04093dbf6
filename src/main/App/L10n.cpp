#include "main/App/L10n.h"

#include "main/App/L10nTables.h"
#include "main/App/Preferences.h"

#include <QLocale>

#include <algorithm>
#include <atomic>

namespace orvane::L10n {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr Key keys[] = {
#define ORVANE_L10N_LISTED(name) Key::name,
    ORVANE_L10N_KEYS(ORVANE_L10N_LISTED)
#undef ORVANE_L10N_LISTED
};

constexpr const char16_t* keyNames[] = {
#define ORVANE_L10N_NAME(name) u## #name,
    ORVANE_L10N_KEYS(ORVANE_L10N_NAME)
#undef ORVANE_L10N_NAME
};

std::atomic<Preferences*> store = nullptr;

const QString languageKey = u"appLanguage"_s;
const QString directionKeys[] = {u"AppleTextDirection"_s, u"NSForceRightToLeftWritingDirection"_s};

const Language* languageOf(const QString& code)
{
    const std::span<const Language> all = languages();
    const auto found = std::find_if(all.begin(), all.end(), [&](const Language& one) { return one.code == code; });
    return found == all.end() ? nullptr : &*found;
}

} // namespace

std::span<const Language> languages()
{
    static const Language all[] = {
        {u"en"_s, u"English"_s},  {u"es"_s, u"Español"_s},    {u"de"_s, u"Deutsch"_s},
        {u"fr"_s, u"Français"_s}, {u"it"_s, u"Italiano"_s},   {u"pt"_s, u"Português"_s},
        {u"zh"_s, u"中文"_s},     {u"ja"_s, u"日本語"_s},     {u"ko"_s, u"한국어"_s},
        {u"ru"_s, u"Русский"_s},  {u"ar"_s, u"العربية"_s},    {u"hi"_s, u"हिन्दी"_s},
        {u"tr"_s, u"Türkçe"_s},   {u"vi"_s, u"Tiếng Việt"_s}, {u"id"_s, u"Bahasa Indonesia"_s},
    };
    return all;
}

std::span<const Key> allKeys()
{
    return keys;
}

QString rawValue(Key key)
{
    return QString::fromUtf16(keyNames[static_cast<std::size_t>(key)]);
}

void setPreferences(Preferences* preferences)
{
    store = preferences;
}

QString code()
{
    const Preferences* preferences = store;
    const std::optional<QString> stored = preferences ? preferences->text(languageKey) : std::nullopt;
    if (stored && languageOf(*stored))
        return *stored;
    return code(std::nullopt, QLocale::system().uiLanguages());
}

void setCode(const QString& code)
{
    if (Preferences* preferences = store)
        preferences->set(languageKey, code);
}

QString code(const std::optional<QString>& stored, const QStringList& preferred)
{
    if (stored && languageOf(*stored))
        return *stored;
    const QString wanted = preferred.isEmpty() ? QString() : preferred.first().left(2).toLower();
    return languageOf(wanted) ? wanted : u"en"_s;
}

QString name()
{
    const Language* present = languageOf(code());
    return present ? present->name : u"English"_s;
}

bool isRightToLeft()
{
    return code() == u"ar";
}

void applyLayoutDirection()
{
    Preferences* preferences = store;
    if (!preferences)
        return;
    const bool rightToLeft = isRightToLeft();
    for (const QString& key : directionKeys) {
        if (rightToLeft)
            preferences->set(key, true);
        else
            preferences->remove(key);
    }
}

QString t(Key key)
{
    return textOf(key, code(), u"en"_s);
}

QString t(Key key, const QVariantList& arguments)
{
    return filled(t(key), arguments);
}

} // namespace orvane::L10n
