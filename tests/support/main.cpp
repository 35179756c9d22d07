#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QThread>

#include <gmock/gmock.h>

namespace {

/// A thread that QThread::wait() calls finished may still have its thread-local data to free. The
/// check for leaks, which runs at the exit, would report what OpenSSL keeps for such a thread. A
/// test of a thread that hangs leaves one for good, hence the limit.
void waitForEndedThreads()
{
    const auto isAlone = [] {
        return QDir("/proc/self/task").entryList(QDir::Dirs | QDir::NoDotAndDotDot).size() == 1;
    };
    const QDeadlineTimer limit(std::chrono::seconds(1));
    while (!isAlone() && !limit.hasExpired())
        QThread::msleep(1);
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    testing::InitGoogleMock(&argc, argv);
    const int result = RUN_ALL_TESTS();
    waitForEndedThreads();
    return result;
}
