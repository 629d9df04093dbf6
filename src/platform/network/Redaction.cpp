#include "platform/network/Redaction.h"

#include <QStringView>

#include <algorithm>

namespace orvane {

using namespace Qt::Literals::StringLiterals;

namespace {

bool endsAddress(QChar character)
{
    return character.isSpace() || character == u'"' || character == u'<' || character == u'>' || character == u'`' ||
           character.unicode() < 0x20;
}

bool endsSecret(QChar character)
{
    return endsAddress(character) || character == u';' || character == u',';
}

bool isWordCharacter(QChar character)
{
    return (character.unicode() < 0x80 && character.isLetterOrNumber()) || character == u'_' || character == u'-';
}

bool isTokenCharacter(QChar character)
{
    return isWordCharacter(character) || character == u'.' || character == u'=';
}

bool endsWithBearer(QStringView text)
{
    return text.endsWith(u"bearer", Qt::CaseInsensitive);
}

/// One walk over the text; each rule looks ahead from the current place and moves it on.
class Redactor
{
public:
    explicit Redactor(QStringView text)
        : text_(text)
    {
    }

    QString run()
    {
        result_.reserve(text_.size());
        while (place_ < text_.size()) {
            if (!takeAddressStart() && !takeAddressTail() && !takeBearerSecret() && !takeCookie() && !takeWebToken())
                takeCharacter();
        }
        return result_;
    }

private:
    template <typename Predicate>
    qsizetype endOf(qsizetype from, Predicate belongs) const
    {
        return std::find_if_not(text_.begin() + from, text_.end(), belongs) - text_.begin();
    }

    bool startsWith(QStringView word) const { return text_.sliced(place_).startsWith(word, Qt::CaseInsensitive); }

    void copyTo(qsizetype end)
    {
        result_ += text_.sliced(place_, end - place_);
        place_ = end;
    }

    /// What is left out must not take the word with it by which the secret behind it is known.
    void skipTo(qsizetype end)
    {
        while (endsWithBearer(text_.sliced(place_, end - place_))) {
            const qsizetype secret = endOf(end, &endsAddress);
            const qsizetype secretEnd = endOf(secret, [](QChar character) { return !endsSecret(character); });
            if (secret == end || secretEnd == secret)
                break;
            result_ += text_.sliced(end, secret - end);
            result_ += u"[removed]";
            place_ = secret;
            end = secretEnd;
            inAddress_ = false;
        }
        place_ = end;
    }

    void removeTo(qsizetype end)
    {
        result_ += u"[removed]";
        skipTo(end);
    }

    void takeCharacter()
    {
        if (endsAddress(text_[place_]))
            inAddress_ = false;
        copyTo(place_ + 1);
    }

    /// Goes over "://" and leaves out what stands before an "@" in the authority.
    bool takeAddressStart()
    {
        constexpr QStringView mark = u"://";
        if (!startsWith(mark))
            return false;
        copyTo(place_ + mark.size());
        inAddress_ = true;
        const qsizetype end = endOf(place_, [](QChar character) {
            return !endsAddress(character) && character != u'/' && character != u'?' && character != u'#';
        });
        const qsizetype at = text_.sliced(place_, end - place_).lastIndexOf(u'@');
        place_ += at + 1;
        return true;
    }

    /// Leaves out query and fragment.
    bool takeAddressTail()
    {
        if (!inAddress_ || (text_[place_] != u'?' && text_[place_] != u'#'))
            return false;
        skipTo(endOf(place_, [](QChar character) { return !endsAddress(character); }));
        return true;
    }

    /// The word is looked for in what has been written, since leaving out an address's tail can bring it to the front.
    bool takeBearerSecret()
    {
        if (endsSecret(text_[place_]) || result_.isEmpty() || !endsAddress(result_.back()))
            return false;
        const auto wordEnd = std::find_if_not(result_.crbegin(), result_.crend(), &endsAddress);
        if (!endsWithBearer(QStringView(result_).chopped(wordEnd - result_.crbegin())))
            return false;
        removeTo(endOf(place_, [](QChar character) { return !endsSecret(character); }));
        return true;
    }

    /// The session cookies, also those with a suffix to their name.
    bool takeCookie()
    {
        if (!startsWith(u"__session") && !startsWith(u"__client"))
            return false;
        const qsizetype nameEnd = endOf(place_, &isWordCharacter);
        copyTo(nameEnd);
        if (nameEnd == text_.size() || text_[nameEnd] != u'=')
            return true;
        copyTo(nameEnd + 1);
        const auto ends = inAddress_ ? &endsAddress : &endsSecret;
        const qsizetype end = endOf(place_, [ends](QChar character) { return !ends(character); });
        if (end > place_)
            removeTo(end);
        return true;
    }

    /// A JSON web token: its first part is an encoded object, and points stand between the parts.
    bool takeWebToken()
    {
        if (!text_.sliced(place_).startsWith(u"eyJ"))
            return false;
        const qsizetype end = endOf(place_, &isTokenCharacter);
        const bool parted = text_.sliced(place_, end - place_).contains(u'.');
        if (parted)
            removeTo(end);
        else
            copyTo(end);
        return true;
    }

    QStringView text_;
    qsizetype place_ = 0;
    bool inAddress_ = false;
    QString result_;
};

} // namespace

QString redacted(const QString& text)
{
    return Redactor(text).run();
}

} // namespace orvane
