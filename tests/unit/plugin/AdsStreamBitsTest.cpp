// The subscription to an ad service: no bit of its answer can be changed on the way.

#include "PluginFixture.h"

#include <support/FinishedReply.h>

#include <Gcm.h>
#include <KeyAgreement.h>

#include <array>

namespace {

/// The parts of an answer as the plug-in has them: decoded.
struct Parts
{
    QByteArray key;
    QByteArray iv;
    QByteArray body;
};

class AdsStreamBits : public PluginFixture
{
protected:
    /// Whether the plug-in plays the stream of this answer to a request that had `ownKey`.
    bool plays(const Parts &parts)
    {
        auto *const reply = new support::FinishedReply(
            {{"X-PK", parts.key.toBase64()}, {"X-IV", parts.iv.toBase64()}}, parts.body);
        reply->setProperty("ads_private", ownKey.der());
        QObject::connect(reply, &QNetworkReply::finished, connector.get(),
                         &RecordingConnector::onAdsStreamConnectFinished);
        Q_EMIT reply->finished(); // whose handler asks for its deletion
        QCoreApplication::sendPostedEvents(reply, QEvent::DeferredDelete);
        return !connector->takeSent().isEmpty();
    }

    Parts goodAnswer() const
    {
        const auto [serviceKey, servicePublicKey] = ssl::generateKeyPairEC();
        std::array<unsigned char, ssl::gcmIvSize> iv{};
        iv.fill(0x5a);
        const auto data = ssl::encryptWithGcm(ssl::deriveKey(serviceKey, ownPublicKey), iv,
                                              R"({"listen":"host","stream":3,"master":"K"})");
        const auto bytes = [](const auto &array) {
            return QByteArray(reinterpret_cast<const char *>(array.data()), std::ssize(array));
        };
        return {servicePublicKey.der(), bytes(iv), data.ciphertext + bytes(data.tag)};
    }

    /// Plays the answer once for each bit of a part, with that bit flipped.
    void expectNoFlipPlays(Parts answer, QByteArray Parts::*part)
    {
        ASSERT_TRUE(plays(answer));
        QByteArray &bytes = answer.*part;
        for (qsizetype bit = 0; bit < 8 * bytes.size(); ++bit) {
            const auto flip = [&] {
                bytes[bit / 8] = static_cast<char>(bytes[bit / 8] ^ 1 << bit % 8);
            };
            flip();
            EXPECT_FALSE(plays(answer)) << "bit " << bit;
            flip();
        }
        ASSERT_TRUE(plays(answer));
    }

    const std::pair<ssl::PrivateKey, ssl::PublicKey> ownKeys = ssl::generateKeyPairEC();
    const ssl::PrivateKey &ownKey = ownKeys.first;
    const ssl::PublicKey &ownPublicKey = ownKeys.second;
};

} // namespace

TEST_F(AdsStreamBits, An_answer_is_refused_for_any_flipped_bit_of_its_key)
{
    expectNoFlipPlays(goodAnswer(), &Parts::key);
}

TEST_F(AdsStreamBits, An_answer_is_refused_for_any_flipped_bit_of_its_vector)
{
    expectNoFlipPlays(goodAnswer(), &Parts::iv);
}

TEST_F(AdsStreamBits, An_answer_is_refused_for_any_flipped_bit_of_its_ciphertext_and_tag)
{
    expectNoFlipPlays(goodAnswer(), &Parts::body);
}
