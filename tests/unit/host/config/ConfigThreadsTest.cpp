#include <Config.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <thread>

namespace {

constexpr int rounds = 50'000;
constexpr int groupCount = 50;
const auto key = QStringLiteral("ViewConnector:server");
const auto allGroups = QStringLiteral("View.ADTimetable.*");

/// A text of one letter, made anew each time, so that the one before it is freed.
QString lettersOf(int round)
{
    return QString(200, QChar(u'a' + round % 26));
}

bool isWhole(const QString &text)
{
    return text.size() == 200 && text.count(text.front()) == text.size();
}

} // namespace

TEST(ConfigThreads, Read_whole_values_while_another_thread_writes)
{
    Config config;
    config.setValue(key, lettersOf(0));
    std::atomic<bool> written = false;
    std::thread writer([&] {
        for (int i = 0; i < rounds; ++i) {
            config.setValue(key, lettersOf(i));
            const auto passing = QStringLiteral("ViewConnector:n%1").arg(i % 8);
            config.setValue(passing, i % 16 < 8 ? QVariant(lettersOf(i)) : QVariant());
            config.setValue(QStringLiteral("View.ADTimetable.n%1:index").arg(i % groupCount), i);
        }
        written = true;
    });

    int strange = 0;
    qsizetype mostGroups = 0;
    do {
        for (int i = 0; i < 100; ++i)
            strange += !isWhole(config.stringValue(key));
        strange += !config.groupKeys(QStringLiteral("ViewConnector"), true)
                        .contains(QStringLiteral("server"));
        mostGroups = std::max(mostGroups, config.childGroups(allGroups, true).size());
    } while (!written);
    writer.join();

    EXPECT_EQ(strange, 0);
    EXPECT_LE(mostGroups, groupCount);
    EXPECT_EQ(config.childGroups(allGroups, true).size(), groupCount);
    EXPECT_EQ(config.stringValue(key), lettersOf(rounds - 1));
}
