#pragma once

#include <array>

/// A published example of key agreement on P-256; numbers in hexadecimal.
struct EcdhVector
{
    const char *source;
    const char *own;   ///< private key
    const char *peerX; ///< public key
    const char *peerY;
    const char *shared;
};

/// From KAS_ECC_CDH_PrimitiveTest.txt, [P-256], of the NIST CAVP's ecccdhtestvectors.zip.
inline constexpr std::array ecdhVectors{
    EcdhVector{"COUNT 0", "7d7dc5f71eb29ddaf80d6214632eeae03d9058af1fb6d22ed80badb62bc1a534",
               "700c48f77f56584c5cc632ca65640db91b6bacce3a4df6b42ce7cc838833d287",
               "db71e509e3fd9b060ddb20ba5c51dcc5948d46fbf640dfe0441782cab85fa4ac",
               "46fc62106420ff012e54a434fbdd2d25ccc5852060561e68040dd7778997bd7b"},
    EcdhVector{"COUNT 1", "38f65d6dce47676044d58ce5139582d568f64bb16098d179dbab07741dd5caf5",
               "809f04289c64348c01515eb03d5ce7ac1a8cb9498f5caa50197e58d43a86a7ae",
               "b29d84e811197f25eba8f5194092cb6ff440e26d4421011372461f579271cda3",
               "057d636096cb80b67a8c038c890e887d1adfa4195e9b3ce241c8a778c59cda67"},
    EcdhVector{"COUNT 2", "1accfaf1b97712b85a6f54b148985a1bdc4c9bec0bd258cad4b3d603f49f32c8",
               "a2339c12d4a03c33546de533268b4ad667debf458b464d77443636440ee7fec3",
               "ef48a3ab26e20220bcda2c1851076839dae88eae962869a497bf73cb66faf536",
               "2d457b78b4614132477618a5b077965ec90730a8c81a1c75d6d4ec68005d67ec"},
    EcdhVector{"COUNT 3", "207c43a79bfee03db6f4b944f53d2fb76cc49ef1c9c4d34d51b6c65c4db6932d",
               "df3989b9fa55495719b3cf46dccd28b5153f7808191dd518eff0c3cff2b705ed",
               "422294ff46003429d739a33206c8752552c8ba54a270defc06e221e0feaf6ac4",
               "96441259534b80f6aee3d287a6bb17b5094dd4277d9e294f8fe73e48bf2a0024"},
    EcdhVector{"COUNT 24", "85a268f9d7772f990c36b42b0a331adc92b5941de0b862d5d89a347cbf8faab0",
               "356c5a444c049a52fee0adeb7e5d82ae5aa83030bfff31bbf8ce2096cf161c4b",
               "57d128de8b2a57a094d1a001e572173f96e8866ae352bf29cddaf92fc85b2f92",
               "1e51373bd2c6044c129c436e742a55be2a668a85ae08441b6756445df5493857"},
};
