#pragma once

#include <HostExport.h>
#include <PrivateKey.h>
#include <PublicKey.h>

#include <array>
#include <utility>

/// The key agreement between a register and an ad service: elliptic-curve Diffie-Hellman on P-256.
namespace ssl {

/// The x-coordinate of the common point, as it stands.
using SharedKey = std::array<unsigned char, 32>;

/// A new key pair. Throws std::runtime_error if the system has no randomness or memory left.
HOST_EXPORT std::pair<PrivateKey, PublicKey> generateKeyPairEC();

/// The key that the holders of both key pairs agree on. Both keys must be valid; throws
/// std::runtime_error otherwise.
HOST_EXPORT SharedKey deriveKey(const PrivateKey &own, const PublicKey &peer);

} // namespace ssl
