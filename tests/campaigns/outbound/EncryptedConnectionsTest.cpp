// Posts to a display of https, whose certificate is trusted.

#include "OwnAuthority.h"

#include <RestClient.h>

#include <support/FaultProxy.h>
#include <support/ScriptedServer.h>

#include <gtest/gtest.h>

namespace {

class EncryptedConnections : public testing::Test
{
protected:
    EncryptedConnections() { proxy.present(support::TlsIdentity::good(ownAuthority())); }

    int post()
    {
        return client.post(QUrl(QStringLiteral("https://127.0.0.1:%1/content").arg(proxy.port())),
                           "{}", {});
    }

    support::ScriptedServer display;
    support::FaultProxy proxy{display.port()};
    RestClient client;
};

} // namespace

/// What comes on one of them unasked cannot be seen before it is taken for an answer.
TEST_F(EncryptedConnections, Are_not_kept_for_another_post)
{
    for (int message = 1; message <= 3; ++message) {
        EXPECT_EQ(post(), 0);
        EXPECT_EQ(display.requestCount(), message);
        EXPECT_EQ(proxy.connectionCount(), message);
    }
}
