#include "AdAnswerInput.h"

#include "Fuzz.h"

#include <unit/host/ssl/Der.h>

#include <Gcm.h>
#include <KeyAgreement.h>

#include <algorithm>

namespace {

const QByteArray ownNumber(32, '\x11');
const QByteArray usualIv("sixteen bytes iv");
const QByteArray usualPlaintext(R"({"listen":"host","stream":3,"master":"K"})");

enum class Line { Unused, Field, Flips, Bytes };

QByteArray flipped(QByteArray bytes, const QByteArray &bits)
{
    const auto size = std::min(bytes.size(), bits.size());
    std::transform(bits.begin(), bits.begin() + size, bytes.begin(), bytes.begin(),
                   [](char bit, char byte) { return static_cast<char>(bit ^ byte); });
    return bytes;
}

QByteArray fieldOf(Line kind, const QByteArray &line, const QByteArray &right)
{
    switch (kind) {
    case Line::Unused:
        break;
    case Line::Field:
        return line;
    case Line::Flips:
        return flipped(right, line).toBase64();
    case Line::Bytes:
        return line.toBase64();
    }
    return right.toBase64();
}

QByteArray bodyOf(const QByteArray &plaintext, const QByteArray &iv)
{
    static const auto key = ssl::deriveKey(ssl::PrivateKey::fromDer(AdAnswerInput::ownKey()),
                                           ssl::PublicKey::fromDer(der::testPublicKey));
    std::array<unsigned char, ssl::gcmIvSize> vector{};
    std::copy_n(iv.begin(), vector.size(), vector.begin());
    const auto data = ssl::encryptWithGcm(key, vector, plaintext);
    return data.ciphertext +
           QByteArray(reinterpret_cast<const char *>(data.tag.data()), std::ssize(data.tag));
}

} // namespace

QByteArray AdAnswerInput::ownKey()
{
    static const auto key = ssl::PrivateKey::fromDer(der::privateKey(ownNumber)).der();
    return key;
}

AdAnswerInput::AdAnswerInput(const QByteArray &input)
{
    const int choices = input.isEmpty() ? 0 : input.front();
    const auto choice = [choices](int shift) { return static_cast<Line>(choices >> shift & 3); };
    const auto lines = fuzz::fields(input.mid(1), 3);
    keyField = fieldOf(choice(0), lines[0], der::testPublicKey);
    ivField = fieldOf(choice(2), lines[1], usualIv);

    const auto kind = choice(4);
    const auto sentIv = QByteArray::fromBase64(ivField);
    const bool isWholeIv = sentIv.size() >= usualIv.size();
    plaintext = kind == Line::Unused ? lines[2] : usualPlaintext;
    const auto right = bodyOf(plaintext, isWholeIv ? sentIv : usualIv);
    switch (kind) {
    case Line::Unused:
        body = right;
        break;
    case Line::Field:
        body = lines[2];
        break;
    case Line::Flips:
        body = flipped(bodyOf(plaintext, usualIv), lines[2]);
        break;
    case Line::Bytes:
        body = right + lines[2];
    }
    isAuthentic =
        QByteArray::fromBase64(keyField) == der::testPublicKey && isWholeIv && body == right;
}
