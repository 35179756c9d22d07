#include <KeyAgreement.h>

#include "ErrorQueue.h"
#include "EvpPkeyContext.h"

#include <openssl/ec.h>
#include <openssl/evp.h>

#include <stdexcept>

std::pair<ssl::PrivateKey, ssl::PublicKey> ssl::generateKeyPairEC()
{
    const ErrorQueue errors;
    EvpPkey pair(EVP_EC_gen("P-256"));
    PrivateKey privateKey;
    PublicKey publicKey;
    if (pair && EVP_PKEY_up_ref(pair.get()) == 1) {
        publicKey = PublicKey(EvpPkey(pair.get()));
        privateKey = PrivateKey(std::move(pair));
    }
    if (!privateKey.isValid())
        throw std::runtime_error("no key pair could be generated");
    return {std::move(privateKey), std::move(publicKey)};
}

ssl::SharedKey ssl::deriveKey(const PrivateKey &own, const PublicKey &peer)
{
    const ErrorQueue errors;
    SharedKey key{};
    auto size = key.size();
    const EvpPkeyContext context(
        own.isValid() && peer.isValid() ? EVP_PKEY_CTX_new(own.handle(), nullptr) : nullptr);
    if (!context || EVP_PKEY_derive_init(context.get()) != 1 ||
        EVP_PKEY_derive_set_peer(context.get(), peer.handle()) != 1 ||
        EVP_PKEY_derive(context.get(), key.data(), &size) != 1 || size != key.size())
        throw std::runtime_error("no key could be agreed on");
    return key;
}
