#include <adservice/Fault.h>

#include <algorithm>
#include <array>
#include <utility>

namespace {

constexpr std::array names{
    std::pair{Fault::Refuse, "refuse"},
    std::pair{Fault::Status, "status"},
    std::pair{Fault::Empty, "empty"},
    std::pair{Fault::ShortTag, "short-tag"},
    std::pair{Fault::Iv12, "iv-12"},
    std::pair{Fault::Iv20, "iv-20"},
    std::pair{Fault::ForeignCurve, "foreign-curve"},
    std::pair{Fault::ExplicitCurve, "explicit-curve"},
    std::pair{Fault::BadKey, "bad-key"},
    std::pair{Fault::Tampered, "tampered"},
    std::pair{Fault::NotJson, "not-json"},
    std::pair{Fault::NotObject, "not-object"},
    std::pair{Fault::MissingFields, "missing-fields"},
    std::pair{Fault::StreamAsText, "stream-as-text"},
    std::pair{Fault::WrongKey, "wrong-key"},
    std::pair{Fault::Endless, "endless"},
    std::pair{Fault::NoAnswer, "no-answer"},
};

} // namespace

std::optional<Fault> faultOfName(const QString &name)
{
    const auto *found = std::find_if(names.begin(), names.end(), [&](const auto &entry) {
        return name == QLatin1String(entry.second);
    });
    return found == names.end() ? std::nullopt : std::optional(found->first);
}

QString nameOf(Fault fault)
{
    const auto *found = std::find_if(names.begin(), names.end(),
                                     [&](const auto &entry) { return entry.first == fault; });
    return found == names.end() ? QString() : QString::fromLatin1(found->second);
}

QStringList faultNames()
{
    QStringList list;
    for (const auto &entry : names)
        list += QString::fromLatin1(entry.second);
    return list;
}
