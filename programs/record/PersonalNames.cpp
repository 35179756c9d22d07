#include <record/PersonalNames.h>

#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <array>

namespace {

/// A word of a property's name that begins so makes it personal.
constexpr std::array personalStems{
    // who it is
    u"client", u"customer", u"buyer", u"person", u"passport", u"snils", u"user", u"surname",
    u"firstname", u"lastname", u"patronymic", u"fullname", u"birth", u"recipient", u"payer",
    u"cashier", u"покупател", u"клиент",
    // how to reach him
    u"phone", u"telephone", u"mobile", u"mail", u"email", u"contact", u"msisdn", u"address",
    u"телефон", u"почт", u"адрес",
    // what recognises him in the shop: cards of a bank, and of a loyalty programme
    u"card", u"bankcard", u"creditcard", u"holder", u"loyal", u"bonus", u"account", u"iban",
    u"expiry", u"track", u"approval", u"карта", u"карты",
    // what opens something
    u"password", u"passwd", u"passphrase", u"passcode", u"token", u"secret", u"login", u"auth",
    u"credential", u"session", u"jwt", u"bearer", u"apikey", u"accesskey", u"пароль"};

/// Short words are only meant when they stand alone: "inn" is no "inner".
constexpr std::array personalWords{u"inn",         // number of a taxpayer
                                   u"fio", u"фио", // family name, first name, patronymic
                                   u"pan",         // number of a bank card
                                   u"cvv", u"cvc", // and its check digits
                                   u"rrn",         // reference of a payment at the bank
                                   u"tel", u"cell", u"sms", u"otp",
                                   u"pin", u"key",  u"pwd", u"pass"};

/// So long a stem also counts within a word: nothing divides "mytoken".
constexpr int leastJoinedStem = 5;

/// Letters of another width or style count as the common ones.
QString plain(const QString &name)
{
    return name.normalized(QString::NormalizationForm_KC);
}

/// "clientINNNumber" and "client_inn-number" have the same words. Not all of them if the name is
/// no valid text.
QStringList wordsOf(const QString &name, bool &isText)
{
    static const QRegularExpression word(
        QStringLiteral("\\p{Lu}+(?!\\p{Ll})|\\p{Lu}?\\p{Ll}+|\\p{Lo}+"));
    QStringList words;
    auto match = word.globalMatch(name);
    while (match.hasNext())
        words.append(match.next().captured().toLower());
    isText = match.isValid();
    return words;
}

bool isPersonalWord(const QString &word)
{
    return std::any_of(personalStems.begin(), personalStems.end(),
                       [&](QStringView stem) { return word.startsWith(stem); }) ||
           std::any_of(personalWords.begin(), personalWords.end(),
                       [&](QStringView each) { return word == each; });
}

/// The words of "first_name" are harmless, together they are not.
bool isPersonalTogether(const QString &joined)
{
    return isPersonalWord(joined) ||
           std::any_of(personalStems.begin(), personalStems.end(), [&](QStringView stem) {
               return stem.size() >= leastJoinedStem && joined.contains(stem);
           });
}

} // namespace

bool isPersonalName(const QString &name)
{
    bool isText = true;
    const auto words = wordsOf(plain(name), isText);
    return !isText || std::any_of(words.begin(), words.end(), isPersonalWord) ||
           isPersonalTogether(words.join(QString()));
}

bool isPaymentCodeName(const QString &name)
{
    const auto has = [lower = plain(name).toLower()](QStringView part) {
        return lower.contains(part);
    };
    return has(u"qr") || has(u"deeplink") || has(u"deep_link") || has(u"sbp") || has(u"сбп") ||
           (has(u"pay") && (has(u"link") || has(u"url")));
}
