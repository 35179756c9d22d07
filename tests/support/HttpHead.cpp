#include <support/HttpHead.h>

namespace support {

qsizetype contentLength(const QByteArray &head)
{
    static const QByteArray name = "\r\ncontent-length:";
    const auto begin = head.toLower().indexOf(name);
    if (begin < 0)
        return 0;
    const auto value = begin + name.size();
    return head.mid(value, head.indexOf('\r', value) - value).trimmed().toLongLong();
}

} // namespace support
