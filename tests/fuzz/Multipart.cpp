// A stream of pictures: its content type on the first line, the body behind it, in pieces of two
// sizes.

#include "support/Fuzz.h"

#include <display/MultipartReader.h>

namespace {

QList<QByteArray> read(const QList<QByteArray> &fields, qsizetype pieceSize)
{
    MultipartReader reader(fields[0]);
    QList<QByteArray> parts;
    for (qsizetype at = 0; at < fields[1].size(); at += pieceSize)
        parts += reader.feed(fields[1].mid(at, pieceSize));
    return parts;
}

} // namespace

void fuzzOne(const QByteArray &input)
{
    const auto fields = fuzz::fields(input, 2);
    const auto whole = read(fields, qsizetype{1} << 30);
    fuzz::require(read(fields, 7) == whole, "the parts do not depend on how they arrive");
}
