// A program of its own, in which no name resolves within the life of a request.

#include <RestClient.h>

#include <QElapsedTimer>

#include <gtest/gtest.h>

#include <chrono>
#include <netdb.h>
#include <thread>

namespace {

using namespace std::chrono_literals;

constexpr auto resolverTime = 4s;

} // namespace

/// Takes the place of the system's for the libraries of this program, too.
extern "C" __attribute__((visibility("default"))) int getaddrinfo(const char *, const char *,
                                                                  const addrinfo *, addrinfo **)
{
    std::this_thread::sleep_for(resolverTime);
    return EAI_AGAIN;
}

TEST(SlowResolver, Does_not_keep_a_post_beyond_its_deadline)
{
    QElapsedTimer timer;
    timer.start();
    {
        RestClient client;
        client.setRequestTimeout(1);
        EXPECT_NE(client.post(QUrl(QStringLiteral("http://display.example/")), "{}", {}), 0);
    }
    EXPECT_LT(std::chrono::milliseconds(timer.elapsed()), resolverTime - 1s);
}
