#include "RunningPlugin.h"

#include <QDir>
#include <QFile>
#include <QThread>

#include <unistd.h>

using namespace std::chrono_literals;
using Type = view::Message::Type;

namespace {

/// How often a thread of this process has left the processor so far.
struct Switches
{
    qint64 toWait = 0; // which it did before each time that it woke
    qint64 toMakeWay = 0;
};

Switches switchesOf(pid_t thread)
{
    QFile file(QStringLiteral("/proc/self/task/%1/status").arg(thread));
    if (!file.open(QIODevice::ReadOnly)) // the thread has ended
        return {};
    const auto status = file.readAll();
    const auto number = [&](const QByteArray &field) {
        const auto start = status.indexOf('\n' + field + ':') + field.size() + 2;
        return status.mid(start, status.indexOf('\n', start) - start).trimmed().toLongLong();
    };
    return {number("voluntary_ctxt_switches"), number("nonvoluntary_ctxt_switches")};
}

/// Those of the plug-in, and of the display, which is quiet as long as nothing comes.
QList<pid_t> threadsBesideThisOne()
{
    QList<pid_t> threads;
    const auto names = QDir(QStringLiteral("/proc/self/task")).entryList({"[0-9]*"}, QDir::Dirs);
    for (const auto &name : names) {
        if (name.toInt() != ::gettid())
            threads.append(name.toInt());
    }
    return threads;
}

qint64 allSwitches()
{
    qint64 sum = 0;
    for (const auto thread : threadsBesideThisOne()) {
        const auto [toWait, toMakeWay] = switchesOf(thread);
        sum += toWait + toMakeWay;
    }
    return sum;
}

class Idle : public RunningPlugin
{
protected:
    void deliver(int number)
    {
        const auto before = display.requestCount();
        plugin->addMessage(numbered(Type::Content, number));
        ASSERT_TRUE(waitForRequests(before + 1));
        settle();
    }

    /// Lets the pause after a message pass, and whatever a burdened machine still has to do.
    static void settle()
    {
        qint64 before = 0;
        EXPECT_TRUE(support::waitFor([&] {
            before = allSwitches();
            support::letPass(2 * interval);
            return allSwitches() == before;
        }));
    }

    pid_t deliveryThread() const
    {
        pid_t id = 0;
        QObject there;
        there.moveToThread(plugin->findChild<QThread *>());
        QMetaObject::invokeMethod(
            &there, [&] { id = ::gettid(); }, Qt::BlockingQueuedConnection);
        return id;
    }
};

} // namespace

TEST_F(Idle, No_thread_of_the_plug_in_wakes_while_nothing_happens)
{
    ASSERT_TRUE(waitForRequests(1)); // the configuration
    settle();
    deliver(1);
    ASSERT_EQ(display.connectionCount(), 1); // which is still open

    const auto before = allSwitches();
    support::letPass(1500ms);
    EXPECT_EQ(allSwitches(), before);

    deliver(2); // something happens, which is seen
    EXPECT_GT(allSwitches(), before);
}

TEST_F(Idle, A_change_wakes_the_delivery_thread_only_a_few_times)
{
    ASSERT_TRUE(waitForRequests(1)); // the configuration
    settle();
    const auto thread = deliveryThread();
    deliver(0);

    constexpr int changes = 10;
    const auto before = switchesOf(thread);
    for (int i = 1; i <= changes; ++i)
        deliver(i);
    const auto wakeUps = static_cast<double>(switchesOf(thread).toWait - before.toWait) / changes;
    RecordProperty("wakeUpsForEachChange", std::to_string(wakeUps));
    EXPECT_GE(wakeUps, 1);
    EXPECT_LE(wakeUps, 5); // for the change, the answer and the end of the pause; seldom for a lock
}
