#include <display/ConformanceCheck.h>

namespace {

const auto otherPaths = QStringLiteral("other paths");

/// What is wrong with the fields that every message has.
QStringList problemsOf(const RequestHeader &header)
{
    QStringList problems;
    for (const auto &name : {QStringLiteral("Accept"), QStringLiteral("Content-Type")}) {
        if (const auto value = header.value(name); value != u"application/json")
            problems.append(QStringLiteral("the header field %1 is \"%2\" and not "
                                           "\"application/json\"")
                                .arg(name, value));
    }
    return problems;
}

} // namespace

QStringList ConformanceCheck::judge(int number, const RequestHeader &header,
                                    const ReceivedMessage &message)
{
    auto problems = problemsOf(header);
    if (message.refusal.isEmpty())
        problems += m_contract.problemsOf(message.type, message.body);
    else
        problems += message.refusal;

    const auto type = message.type.isEmpty() ? otherPaths : message.type;
    auto &count = m_counts[type];
    ++(problems.isEmpty() ? count.right : count.wrong);
    for (const auto &problem : problems) {
        if (m_problems.size() < maxProblems)
            m_problems.append(QJsonObject{{QStringLiteral("n"), number},
                                          {QStringLiteral("type"), type},
                                          {QStringLiteral("problem"), problem}});
    }
    return problems;
}

ConformanceCheck::Count ConformanceCheck::total() const
{
    Count total;
    for (const auto &count : m_counts) {
        total.right += count.right;
        total.wrong += count.wrong;
    }
    return total;
}

bool ConformanceCheck::hasPassed() const
{
    const auto [right, wrong] = total();
    return right > 0 && wrong == 0;
}

QStringList ConformanceCheck::report() const
{
    const auto [right, wrong] = total();
    if (right + wrong == 0)
        return {QStringLiteral("Check: no message came, so nothing was checked")};
    QStringList lines{
        QStringLiteral("Check: %1 messages keep to the contract, %2 do not").arg(right).arg(wrong)};
    for (auto entry = m_counts.begin(); entry != m_counts.end(); ++entry)
        lines.append(QStringLiteral("  %1 %2 right, %3 wrong")
                         .arg(entry.key(), -14)
                         .arg(entry->right)
                         .arg(entry->wrong));
    for (const auto &entry : m_problems)
        lines.append(QStringLiteral("  message %1, %2: %3")
                         .arg(entry[u"n"].toInt())
                         .arg(entry[u"type"].toString(), entry[u"problem"].toString()));
    return lines;
}

QJsonObject ConformanceCheck::toJson() const
{
    QJsonObject types;
    for (auto entry = m_counts.begin(); entry != m_counts.end(); ++entry)
        types.insert(entry.key(), QJsonObject{{QStringLiteral("right"), entry->right},
                                              {QStringLiteral("wrong"), entry->wrong}});
    const auto [right, wrong] = total();
    return {{QStringLiteral("passed"), hasPassed()},
            {QStringLiteral("messages"), right + wrong},
            {QStringLiteral("types"), types},
            {QStringLiteral("problems"), m_problems}};
}
