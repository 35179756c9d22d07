#pragma once

#include <array>

/// A published example of AES-256-GCM with a vector of 16 bytes and no additional data; texts in
/// hexadecimal.
struct GcmVector
{
    const char *source;
    const char *key;
    const char *iv;
    const char *plaintext;
    const char *ciphertext;
    const char *tag;
};

/// The first five are NIST's: "The Galois/Counter Mode of Operation (GCM)" by McGrew and Viega,
/// appendix B, as submitted to NIST, and gcmEncryptExtIV256.rsp of the CAVP's gcmtestvectors.zip.
/// NIST gives them with vectors of 12 bytes; each `iv` here is the one of 16 bytes from which NIST
/// SP 800-38D, 7.1, step 2, makes the same counter block, so that key, texts and tag are as
/// published. The others are those of C2SP/wycheproof, testvectors/aes_gcm_test.json, that have
/// keys and vectors of these sizes.
inline constexpr std::array gcmVectors{
    GcmVector{"GCM submission, test case 13",
              "0000000000000000000000000000000000000000000000000000000000000000",
              "c92ea71084e1f566ab4d18d2394378ea", "", "", "530f8afbc74536b9a963b4f1c4cb738b"},
    GcmVector{"GCM submission, test case 14",
              "0000000000000000000000000000000000000000000000000000000000000000",
              "c92ea71084e1f566ab4d18d2394378ea", "00000000000000000000000000000000",
              "cea7403d4d606b6e074ec5d3baf39d18", "d0d1c8a799996bf0265b98b5d48ab919"},
    GcmVector{"GCM submission, test case 15",
              "feffe9928665731c6d6a8f9467308308feffe9928665731c6d6a8f9467308308",
              "ce7adf46055d86c4659d0bfe56c5c563",
              "d9313225f88406e5a55909c5aff5269a86a7a9531534f7da2e4c303d8a318a72"
              "1c3c0c95956809532fcf0e2449a6b525b16aedf5aa0de657ba637b391aafd255",
              "522dc1f099567d07f47f37a32a84427d643a8cdcbfe5c0c97598a2bd2555d1aa"
              "8cb08e48590dbb3da7b08b1056828838c5f61e6393ba7a0abcc9f662898015ad",
              "b094dac5d93471bdec1a502270e3cc6c"},
    GcmVector{"gcmEncryptExtIV256, PTlen 128, Count 0",
              "31bdadd96698c204aa9ce1448ea94ae1fb4a9a0b3c9d773b51bb1822666b8f22",
              "f18da731cebc1e8129b5d552feaa06a9", "2db5168e932556f8089a0622981d017d",
              "fa4362189661d163fcd6a56d8bf0405a", "d636ac1bbedd5cc3ee727dc2ab4a9489"},
    GcmVector{"gcmEncryptExtIV256, PTlen 0, Count 0",
              "b52c505a37d78eda5dd34f20c22540ea1b58963cf8e5bf8ffa85f9f2492505b4",
              "eb570552b37ed97cbe1569b43fde1d24", "", "", "bdc1ac884d332457a1d2664f168c76f0"},
    GcmVector{"Wycheproof, tcId 186",
              "00112233445566778899aabbccddeeff102132435465768798a9bacbdcedfe0f",
              "5c2ea9b695fcf6e264b96074d6bfa572",
              "0000000000000000000000000000000000000000000000000000000000000000"
              "0000000000000000",
              "28e1c5232f4ee8161dbe4c036309e0b3254e9212bef0a93431ce5e5604c8f6a7"
              "3c18a3183018b770",
              "d5808a1bd11a01129bf3c6919aff2339"},
    GcmVector{"Wycheproof, tcId 187",
              "00112233445566778899aabbccddeeff102132435465768798a9bacbdcedfe0f",
              "57b3a81f2c36b6b06577ca0fbab8fa8e",
              "0000000000000000000000000000000000000000000000000000000000000000"
              "0000000000000000",
              "cceebeb4fe4cd90c514e52d2327a2ecd75393661006cf2476d8620149aef3d1c"
              "dce491fff3e7a7a3",
              "8132e865b69d64ef37db261f80cbbe24"},
    GcmVector{"Wycheproof, tcId 188",
              "00112233445566778899aabbccddeeff102132435465768798a9bacbdcedfe0f",
              "ce20a7e870696a5e68533c465bad2ba1",
              "0000000000000000000000000000000000000000000000000000000000000000"
              "0000000000000000",
              "4f4350565d91d9aa8c5f4048550492ad6d6fdabf66da5d1e2af7bfe1a8aadaa0"
              "baa3de38a41d9713",
              "155da6441ec071ef2d8e6cffbacc1c7c"},
    GcmVector{"Wycheproof, tcId 189",
              "00112233445566778899aabbccddeeff102132435465768798a9bacbdcedfe0f",
              "918e3c19dbdfee2db18156c5b93f3d75",
              "0000000000000000000000000000000000000000000000000000000000000000"
              "0000000000000000",
              "8316a53167b6de1a7575700693ffef274f4350565d91d9aa8c5f4048550492ad"
              "6d6fdabf66da5d1e",
              "6c574aa6a2490cc3b2f2f8f0ffbc56c4"},
    GcmVector{"Wycheproof, tcId 190",
              "00112233445566778899aabbccddeeff102132435465768798a9bacbdcedfe0f",
              "717d900b270462b9dbf7e9419e890609",
              "0000000000000000000000000000000000000000000000000000000000000000"
              "0000000000000000",
              "5175927513e751eb309f45bc2ef225f28316a53167b6de1a7575700693ffef27"
              "4f4350565d91d9aa",
              "8082a761e1d755344bf29622144e7d39"},
    GcmVector{"Wycheproof, tcId 191",
              "00112233445566778899aabbccddeeff102132435465768798a9bacbdcedfe0f",
              "ecd52120af240e9b4bf3b9d1eeb49434",
              "0000000000000000000000000000000000000000000000000000000000000000"
              "0000000000000000",
              "36b3fbecd09178d04527fb37544f5579d20d60a41266f685c48098e1a52804ca"
              "387d90709d3268dd",
              "033e0ef2953ebfd8425737c7d393f89a"},
    GcmVector{"Wycheproof, tcId 192",
              "00112233445566778899aabbccddeeff102132435465768798a9bacbdcedfe0f",
              "b37bbad104928ae89221d3520c2682e0",
              "0000000000000000000000000000000000000000000000000000000000000000"
              "0000000000000000",
              "16929b773051f12b0adac95f65e21a7f36b3fbecd09178d04527fb37544f5579"
              "d20d60a41266f685",
              "ca448bb7e52e897eca234ef343d057d0"},
    GcmVector{"Wycheproof, tcId 193",
              "00112233445566778899aabbccddeeff102132435465768798a9bacbdcedfe0f",
              "538816c3f849067cf8576cd62b90b99c",
              "0000000000000000000000000000000000000000000000000000000000000000"
              "0000000000000000",
              "6d3faefaf691d58163846f8d4b9ffd5916929b773051f12b0adac95f65e21a7f"
              "36b3fbecd09178d0",
              "84f49740e6757f63dd0df7cb7656d0ef"},
    GcmVector{"Wycheproof, tcId 194",
              "00112233445566778899aabbccddeeff102132435465768798a9bacbdcedfe0f",
              "d10e631943cd3bdababab2bbd13951c0",
              "0000000000000000000000000000000000000000000000000000000000000000"
              "0000000000000000",
              "d60196c2d14fcf30c0991d2721ddc52d385f407a16691dade82c9023c855fd8e"
              "2e8fbb562102f018",
              "877e15d9889e69a99fcc6d727465c391"},
    GcmVector{"Wycheproof, tcId 195",
              "00112233445566778899aabbccddeeff102132435465768798a9bacbdcedfe0f",
              "8ea0f8e8e87bbfa96368d83833ab4714",
              "0000000000000000000000000000000000000000000000000000000000000000"
              "0000000000000000",
              "948fbceca12a6e4fabb79b6d965e336fd60196c2d14fcf30c0991d2721ddc52d"
              "385f407a16691dad",
              "cd5757626945976ba9f0264bd6bee894"},
    GcmVector{"Wycheproof, tcId 196",
              "00112233445566778899aabbccddeeff102132435465768798a9bacbdcedfe0f",
              "7b2df4fbed1de2727eb24898e5deabb9",
              "0000000000000000000000000000000000000000000000000000000000000000"
              "0000000000000000",
              "a1a0120660ff52e6b1700b12c54d2d33b94b00cd7882d8857d84e6e183a1dea6"
              "ee85a7da84fbc35d",
              "b015d72da62c81cb4d267253b20db9e5"},
    GcmVector{"Wycheproof, tcId 197",
              "00112233445566778899aabbccddeeff102132435465768798a9bacbdcedfe0f",
              "24836f0a46ab6601a760221b074cbd6d",
              "0000000000000000000000000000000000000000000000000000000000000000"
              "0000000000000000",
              "5e3434b45edbf0d1f6e02d1144dbf867a1a0120660ff52e6b1700b12c54d2d33"
              "b94b00cd7882d885",
              "ee74ccb30d649ebf6916d05a7dbe5696"},
    GcmVector{"Wycheproof, tcId 198",
              "00112233445566778899aabbccddeeff102132435465768798a9bacbdcedfe0f",
              "00000000000000000000000000000000", "8d74f1c97243d362577ff376c393d2dc",
              "265c42e2b96ea1de9c24f7182e337390", "00000000000000000000000000000000"},
    GcmVector{"Wycheproof, tcId 199",
              "00112233445566778899aabbccddeeff102132435465768798a9bacbdcedfe0f",
              "ffffffffffffffffffffffffffffffff", "884df0e76f3ce227bf9595d103825a46",
              "988f47668ea650cbaa6714711abe268d", "ffffffffffffffffffffffffffffffff"},
    GcmVector{"Wycheproof, tcId 200",
              "b4cd11db0b3e0b9b34eafd9fe027746976379155e76116afde1b96d21298e34f",
              "00c49f4ebb07393f07ebc3825f7b0830", "", "", "306fe8c9645cc849823e333a685b90b2"},
    GcmVector{"Wycheproof, tcId 201",
              "b7797eb0c1a6089ad5452d81fdb14828c040ddc4589c32b565aad8cb4de3e4a0",
              "0ad570d8863918fe89124e09d125a271", "ed", "3f", "fd8f593b83314e33c5a72efbeb7095e8"},
    GcmVector{"Wycheproof, tcId 202",
              "4c010d9561c7234c308c01cea3040c925a9f324dc958ff904ae39b37e60e1e03",
              "2a55caa137c5b0b66cf3809eb8f730c4", "2a093c9ed72b8ff4994201e9f9e010",
              "041341078f0439e50b43c991635117", "5b8a2f2da20ef657c903da88ef5f57bb"},
    GcmVector{"Wycheproof, tcId 203",
              "e7f7a48df99edd92b81f508618aa96526b279debd9ddb292d385ddbae80b2259",
              "7ee376910f08f497aa6c3aa7113697fd", "5e51dbbb861b5ec60751c0996e00527f",
              "469478d448f7e97d755541aa09ad95b0", "254ada5cf662d90c5e11b2bd9c4db4c4"},
    GcmVector{"Wycheproof, tcId 204",
              "4f84782bfbb64a973c3de3dcfa3430367fd68bc0b4c3b31e5d7c8141ba3e6a67",
              "5d1bde6fa0994b33efd8f23f531248a7",
              "78cb6650a1908a842101ea85804fed00cc56fbdafafba0ef4d1ca607dcae57b6",
              "cb960201fa5ad41d41d1c2c8037c71d52b72e76b16b589d71b976627c9734c9d",
              "8dfce16467c3a6ebb3e7242c9a551962"},
};
