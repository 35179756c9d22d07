#include <support/FaultProxy.h>
#include <support/ScriptedServer.h>
#include <support/TlsIdentity.h>

#include <QTemporaryDir>

#include <curl/curl.h>
#include <gmock/gmock.h>

#include <array>
#include <string>

namespace {

using support::TlsIdentity;
using testing::HasSubstr;

/// A proxy with TLS, and a client that trusts its authority.
class TlsFaults : public testing::Test
{
protected:
    TlsFaults() { EXPECT_TRUE(authority.write(trusted)); }

    CURLcode post(const char *host = "127.0.0.1")
    {
        const std::unique_ptr<CURL, decltype(&curl_easy_cleanup)> curl(curl_easy_init(),
                                                                       curl_easy_cleanup);
        const auto url = "https://" + std::string(host) + ':' + std::to_string(proxy.port());
        curl_easy_setopt(curl.get(), CURLOPT_URL, url.c_str());
        curl_easy_setopt(curl.get(), CURLOPT_PROXY, "");
        curl_easy_setopt(curl.get(), CURLOPT_CAINFO, trusted.toLocal8Bit().constData());
        curl_easy_setopt(curl.get(), CURLOPT_POSTFIELDS, "{}");
        curl_easy_setopt(curl.get(), CURLOPT_ERRORBUFFER, error.data());
        curl_easy_setopt(
            curl.get(), CURLOPT_WRITEFUNCTION,
            +[](const char *, std::size_t size, std::size_t count, void *) {
                return size * count;
            });
        return curl_easy_perform(curl.get());
    }

    std::string expectRefusal(const TlsIdentity &identity)
    {
        proxy.present(identity);
        EXPECT_EQ(post(), CURLE_PEER_FAILED_VERIFICATION);
        EXPECT_EQ(server.requestCount(), 0);
        EXPECT_EQ(proxy.connectionCount(), 1);

        proxy.present(TlsIdentity::good(authority));
        EXPECT_EQ(post(), CURLE_OK) << error.data();
        EXPECT_EQ(post("localhost"), CURLE_OK) << error.data();
        EXPECT_EQ(server.requestCount(), 2);

        proxy.present(identity);
        EXPECT_EQ(post(), CURLE_PEER_FAILED_VERIFICATION);
        return error.data();
    }

    QTemporaryDir folder;
    const QString trusted = folder.filePath(QStringLiteral("authority.pem"));
    const TlsIdentity authority = TlsIdentity::authority();
    support::ScriptedServer server;
    support::FaultProxy proxy{server.port()};
    std::array<char, CURL_ERROR_SIZE> error{};
};

} // namespace

TEST_F(TlsFaults, Of_an_expired_certificate)
{
    EXPECT_THAT(expectRefusal(TlsIdentity::expired(authority)), HasSubstr("expired"));
}

TEST_F(TlsFaults, Of_the_certificate_of_another_host)
{
    EXPECT_THAT(expectRefusal(TlsIdentity::ofAnotherHost(authority)),
                HasSubstr("no alternative certificate subject name matches"));
}

TEST_F(TlsFaults, Of_a_self_signed_certificate)
{
    EXPECT_THAT(expectRefusal(TlsIdentity::selfSigned()), HasSubstr("self-signed"));
}
