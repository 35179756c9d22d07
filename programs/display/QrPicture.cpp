#include <display/QrPicture.h>

#include <qrencode.h>

#include <memory>

namespace {

constexpr int quietZone = 4; // modules on each side, as ISO/IEC 18004 wants
constexpr int smallestVersionThatFits = 0;

struct FreeCode
{
    void operator()(QRcode *code) const { QRcode_free(code); }
};
using CodePtr = std::unique_ptr<QRcode, FreeCode>;

CodePtr encode(const QByteArray &bytes, QRecLevel level)
{
    return CodePtr(QRcode_encodeData(static_cast<int>(bytes.size()),
                                     reinterpret_cast<const unsigned char *>(bytes.constData()),
                                     smallestVersionThatFits, level));
}

/// A path of one square for each dark module.
QByteArray darkModules(const QRcode &code)
{
    QByteArray path;
    for (int y = 0; y < code.width; ++y) {
        for (int x = 0; x < code.width; ++x) {
            if ((code.data[y * code.width + x] & 1) != 0)
                path += 'M' + QByteArray::number(x + quietZone) + ' ' +
                        QByteArray::number(y + quietZone) + "h1v1h-1z";
        }
    }
    return path;
}

} // namespace

QByteArray qrPicture(const QString &text)
{
    const auto bytes = text.toUtf8();
    auto code = encode(bytes, QR_ECLEVEL_M);
    if (!code)
        code = encode(bytes, QR_ECLEVEL_L); // holds most
    if (!code)
        return {};
    const auto side = QByteArray::number(code->width + 2 * quietZone);
    return R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 )" + side + ' ' + side +
           R"(" shape-rendering="crispEdges"><path fill="#fff" d="M0 0h)" + side + 'v' + side +
           R"(H0z"/><path d=")" + darkModules(*code) + R"("/></svg>)";
}
