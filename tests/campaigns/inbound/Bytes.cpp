#include "Bytes.h"

#include <array>

namespace inbound {

namespace {

QByteArray anyInsertion(Random &random)
{
    static const std::array<QByteArray, 22> tokens{QByteArray(1, '\0'),
                                                   "\r",
                                                   "\n",
                                                   "\r\n",
                                                   "\r\n\r\n",
                                                   " ",
                                                   "\t",
                                                   ":",
                                                   ",",
                                                   ";",
                                                   "\"",
                                                   "%",
                                                   "\x7f",
                                                   "\x80",
                                                   "\xff",
                                                   "\v",
                                                   "0",
                                                   "-1",
                                                   "99999999999999999999",
                                                   "ffffffffffffffff",
                                                   "HTTP/1.1",
                                                   "GET / HTTP/1.1\r\nHost: a\r\n\r\n"};
    return random.oneIn(4) ? QByteArray(random.between(1, 40), random.byte()) : random.of(tokens);
}

void mutateOnce(Random &random, QByteArray &bytes)
{
    const auto size = bytes.size();
    const int at = random.below(size + 1);
    const int length = random.oneIn(2) ? 1 : random.below(size - at + 1);
    switch (random.below(7)) {
    case 0:
        if (at < size)
            bytes[at] = static_cast<char>(bytes[at] ^ (1 << random.below(8)));
        break;
    case 1:
        if (at < size)
            bytes[at] = random.byte();
        break;
    case 2:
        bytes.insert(at, anyInsertion(random));
        break;
    case 3:
        bytes.remove(at, length);
        break;
    case 4:
        bytes.insert(random.below(size + 1), bytes.mid(at, length));
        break;
    case 5: {
        const auto moved = bytes.mid(at, length);
        bytes.remove(at, length);
        bytes.insert(random.below(bytes.size() + 1), moved);
        break;
    }
    default:
        bytes.truncate(at);
    }
}

} // namespace

QByteArray mutated(Random &random, QByteArray bytes)
{
    for (int left = random.between(1, 3); left > 0; --left)
        mutateOnce(random, bytes);
    return bytes;
}

} // namespace inbound
