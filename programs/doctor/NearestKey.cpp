#include <doctor/NearestKey.h>

#include <doctor/EditDistance.h>

#include <algorithm>
#include <tuple>

namespace doctor {

namespace {

/// A key is like another with at most one mistake in three characters.
constexpr qsizetype charactersPerMistake = 3;
/// Beyond this a key is none; and the time for a comparison grows with its length.
constexpr qsizetype maxKeyLength = 200;

QStringView nameOf(const QString &key)
{
    return QStringView(key).mid(key.indexOf(u':') + 1);
}

} // namespace

QString nearestKey(const QString &unknown, const QStringList &rightKeys)
{
    if (unknown.size() > maxKeyLength)
        return {};
    QString nearest;
    auto best = std::tuple(true, 0); // whether the name differs; mistakes
    for (const auto &key : rightKeys) {
        const bool otherName = nameOf(unknown).compare(nameOf(key), Qt::CaseInsensitive) != 0;
        const int mistakes = editDistance(unknown, key);
        if (otherName && (mistakes * charactersPerMistake > key.size() ||
                          editDistance(nameOf(unknown), nameOf(key)) * charactersPerMistake >
                              std::max<qsizetype>(nameOf(key).size(), charactersPerMistake)))
            continue;
        const auto rank = std::tuple(otherName, mistakes);
        if (nearest.isEmpty() || rank < best) {
            nearest = key;
            best = rank;
        }
    }
    return nearest;
}

} // namespace doctor
