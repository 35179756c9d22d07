#include <doctor/EditDistance.h>

#include <QString>

#include <algorithm>
#include <numeric>
#include <vector>

namespace doctor {

int editDistance(QStringView a, QStringView b)
{
    const QString from = a.toString().toCaseFolded();
    const QString to = b.toString().toCaseFolded();
    const auto width = static_cast<std::size_t>(to.size()) + 1;
    std::vector<int> twoBefore(width); // the rows of the table of all distances of the beginnings
    std::vector<int> before(width);
    std::vector<int> row(width);
    std::iota(row.begin(), row.end(), 0);

    for (qsizetype i = 0; i < from.size(); ++i) {
        twoBefore.swap(before);
        before.swap(row);
        row[0] = static_cast<int>(i) + 1;
        for (qsizetype j = 0; j < to.size(); ++j) {
            const auto at = static_cast<std::size_t>(j);
            const int replaced = before[at] + (from[i] == to[j] ? 0 : 1);
            row[at + 1] = std::min({replaced, before[at + 1] + 1, row[at] + 1});
            if (i > 0 && j > 0 && from[i] == to[j - 1] && from[i - 1] == to[j])
                row[at + 1] = std::min(row[at + 1], twoBefore[at - 1] + 1);
        }
    }
    return row.back();
}

} // namespace doctor
