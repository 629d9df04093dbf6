#include "platform/web/ScriptSource.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QRandomGenerator>
#include <QRegularExpression>

#include <array>
#include <cassert>

using namespace Qt::StringLiterals;

namespace orvane {
namespace {

/// The first letter of an answer says what follows.
namespace Mark {

constexpr QChar text = u't';
constexpr QChar json = u'j';
constexpr QChar nothing = u'u';
constexpr QChar thrown = u'e';
constexpr QChar gone = u'g';
constexpr QChar tooLong = u'l';

} // namespace Mark

QString literal(const QJsonValue& value)
{
    const QByteArray list = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(list) + u"[0]"_s;
}

[[maybe_unused]] bool isIdentifier(const QString& name)
{
    static const QRegularExpression pattern(u"^[A-Za-z_][A-Za-z0-9_]*$"_s);
    return pattern.match(name).hasMatch();
}

QString constants(const QJsonObject& arguments)
{
    QString text;
    for (auto argument = arguments.begin(); argument != arguments.end(); ++argument) {
        assert(isIdentifier(argument.key()));
        text += u"const "_s + argument.key() + u" = "_s + literal(argument.value()) + u";\n"_s;
    }
    return text;
}

/// The origin as `location.origin` writes it, which leaves out a scheme's own port.
QString originOf(const QUrl& address)
{
    const bool usualPort = address.port() == (address.scheme() == u"https" ? 443 : 80);
    const QUrl::FormattingOptions kept = QUrl::RemoveUserInfo | QUrl::RemovePath | QUrl::RemoveQuery |
                                         QUrl::RemoveFragment | (usualPort ? QUrl::RemovePort : QUrl::None);
    return QString::fromLatin1(address.toEncoded(kept));
}

QString sameDocumentTest(const QUrl& address)
{
    if (address.scheme() == u"http" || address.scheme() == u"https")
        return u"window.location.origin === "_s + literal(originOf(address));
    return u"window.location.protocol === "_s + literal(QString(address.scheme() + u':'));
}

ScriptOutcome failure(const QString& message)
{
    return {.kind = ScriptOutcome::Kind::failed, .message = message};
}

ScriptOutcome valueOf(const QJsonValue& value)
{
    return {.kind = ScriptOutcome::Kind::value, .value = value};
}

ScriptOutcome parsed(const QString& json)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson("[" + json.toUtf8() + "]", &error);
    if (error.error != QJsonParseError::NoError || document.array().size() != 1)
        return failure(u"The script's answer is not readable."_s);
    return valueOf(document.array().first());
}

} // namespace

QString ScriptSource::freshName()
{
    std::array<quint32, 4> bits;
    QRandomGenerator::system()->fillRange(bits.data(), qsizetype(bits.size()));
    QString name = u"call"_s;
    for (const quint32 part : bits)
        name += u"%1"_s.arg(part, 8, 16, QLatin1Char('0'));
    return name;
}

QString ScriptSource::start(const QString& name, const QUrl& address, const QString& body, const QJsonObject& arguments)
{
    // Every local name begins with the fresh one, so that the body reads the page's globals and not ours. All is filled
    // in at one pass: what is put in is not searched for further places.
    return uR"((() => {
if (!(%2)) return false;
const %1_body = async function () {
%3%4
};
const %1 = { answer: '' };
window.%1 = %1;
(async () => {
try {
const %1_value = await %1_body();
if (typeof %1_value === 'string') { %1.answer = 't' + %1_value; return; }
const %1_json = JSON.stringify(%1_value);
%1.answer = typeof %1_json === 'string' ? 'j' + %1_json : 'u';
} catch (%1_error) {
let %1_message = '';
try { %1_message += %1_error && %1_error.message || %1_error; } catch (%1_again) { }
%1.answer = 'e' + %1_message;
}
})();
return true;
})())"_s.arg(name, sameDocumentTest(address), constants(arguments), body);
}

QString ScriptSource::poll(const QString& name)
{
    return uR"((() => {
const record = window.%1;
if (record === undefined) return 'g';
const answer = record.answer;
if (answer === '') return '';
delete window.%1;
if (typeof answer !== 'string') return 'e';
return answer.length > %2 ? 'l' : answer;
})())"_s.arg(name)
        .arg(longestAnswer);
}

std::optional<ScriptOutcome> ScriptSource::read(const QVariant& answer)
{
    if (answer.metaType().id() != QMetaType::QString)
        return failure(u"The page spoiled the script's answer."_s);
    const QString text = answer.toString();
    if (text.isEmpty())
        return std::nullopt;
    const QString rest = text.sliced(1);
    if (text.front() == Mark::text)
        return valueOf(rest);
    if (text.front() == Mark::json)
        return parsed(rest);
    if (text.front() == Mark::nothing)
        return valueOf(QJsonValue::Undefined);
    if (text.front() == Mark::gone)
        return ScriptOutcome{};
    if (text.front() == Mark::tooLong)
        return failure(u"The script's answer is too long."_s);
    return failure(text.front() == Mark::thrown ? rest : u"The page spoiled the script's answer."_s);
}

} // namespace orvane
