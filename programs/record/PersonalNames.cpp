#include <record/PersonalNames.h>

#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <array>

namespace {

/// A word of a property's name that begins so makes it personal.
constexpr std::array personalStems{
    // who it is
    "client",
    "customer",
    "buyer",
    "person",
    "passport",
    "snils",
    // how to reach him
    "phone",
    "telephone",
    "mobile",
    "mail",
    "email",
    "contact",
    // what recognises him in the shop: cards of a bank, and of a loyalty programme
    "card",
    "holder",
    "loyal",
    "bonus",
    // what opens something
    "password",
    "token",
    "secret",
    "login",
    "auth",
    "credential",
};

/// Short words are only meant when they stand alone: "inn" is no "inner".
constexpr std::array personalWords{
    "inn", // number of a taxpayer
    "fio", // family name, first name, patronymic
    "pan", // number of a bank card
    "cvv", // and its check digits
    "rrn", // reference of a payment at the bank
    "pin", "key",
};

/// "clientINNNumber" and "client_inn-number" have the same words.
QStringList wordsOf(const QString &name)
{
    static const QRegularExpression word(
        QStringLiteral("\\p{Lu}+(?!\\p{Ll})|\\p{Lu}?\\p{Ll}+|\\p{Lo}+"));
    QStringList words;
    for (auto match = word.globalMatch(name); match.hasNext();)
        words.append(match.next().captured().toLower());
    return words;
}

bool isPersonalWord(const QString &word)
{
    return std::any_of(personalStems.begin(), personalStems.end(),
                       [&](const char *stem) { return word.startsWith(QLatin1String(stem)); }) ||
           std::any_of(personalWords.begin(), personalWords.end(),
                       [&](const char *each) { return word == QLatin1String(each); });
}

} // namespace

bool isPersonalName(const QString &name)
{
    const auto words = wordsOf(name);
    return std::any_of(words.begin(), words.end(), isPersonalWord);
}
