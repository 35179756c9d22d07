#include "Mutants.h"

#include "Bodies.h"
#include "Malformed.h"

#include <algorithm>
#include <array>

namespace inbound {

namespace {

constexpr int oneInFew = 4;

QByteArray anyTarget(Random &random)
{
    QByteArray target = "/";
    for (int left = random.below(200); left > 0; --left)
        target += random.oneIn(20) ? static_cast<char>(random.between(0x80, 0xff))
                                   : static_cast<char>(random.between('!', '~'));
    return target;
}

/// Names are the same in any case, and blanks around a value do not belong to it.
void varySpelling(Random &random, Request::Field &field)
{
    static const std::array<QByteArray, 4> blanks{"", " ", "\t", " \t "};
    for (auto &c : field.name) {
        if (random.oneIn(oneInFew) && c >= 'a' && c <= 'z')
            c = static_cast<char>(c - 'a' + 'A');
    }
    field.value = random.of(blanks) + field.value.trimmed() + random.of(blanks);
}

void varyFields(Random &random, Request &request)
{
    static const std::array<Request::Field, 6> others{{{"X-A", "b"},
                                                       {"X-Empty", ""},
                                                       {"Accept", "a, b;q=0.5"},
                                                       {"Expect", "100-continue"},
                                                       {"X-Text", "\xd1\x87\xd0\xb5\xd0\xba"},
                                                       {"Connection", "close"}}};
    const bool isFramedByConnection = request.version == "HTTP/1.0";
    for (int left = random.below(4); left > 0; --left)
        request.fields.insert(random.below(request.fields.size() + 1), random.of(others));
    for (qsizetype at = request.fields.size() - 1; at > 0; --at)
        request.fields.swapItemsAt(at, random.below(at + 1));
    for (auto &field : request.fields)
        varySpelling(random, field);
    if (isFramedByConnection)
        request.fields.removeIf(
            [](const auto &field) { return field.name.toLower() == "connection"; });
}

bool endsConnection(const Request &request)
{
    return request.version == "HTTP/1.0" ||
           std::any_of(request.fields.cbegin(), request.fields.cend(), [](const auto &field) {
               return field.name.toLower() == "connection" && field.value.trimmed() == "close";
           });
}

} // namespace

Request Mutants::wellFormed(Random &random) const
{
    static const std::array<QByteArray, 10> methods{"GET",   "POST",    "PUT",  "DELETE", "HEAD",
                                                    "PATCH", "OPTIONS", "FROB", "post",   "!#$%&'"};
    auto request = random.of(m_corpus);
    if (random.oneIn(oneInFew))
        request.method = random.of(methods);
    if (random.oneIn(oneInFew))
        request.target = anyTarget(random);
    if (random.oneIn(10))
        request.version = "HTTP/1.0";
    if (random.oneIn(2))
        varyFields(random, request);
    if (random.oneIn(oneInFew))
        request.lengthPrefix = QByteArray(random.between(1, 8), '0');
    if (random.oneIn(oneInFew) && request.version != "HTTP/1.0") {
        request.chunkSize = random.oneIn(oneInFew) ? random.between(20, 200) : 100'000;
        request.chunkExtension = random.oneIn(2) ? ";a;b=\"c\"" : "";
        request.trailer = random.oneIn(oneInFew) ? "X-Trailer: a\r\n" : "";
    }
    request.body = anyBody(random, request.body);
    return request;
}

Mutant Mutants::at(int number) const
{
    Random random(m_seed, number);
    if (random.oneIn(2))
        return malformedAt(number);
    const auto request = wellFormed(random);
    return {request.bytes(),
            endsConnection(request) ? Mutant::Due::LastOne : Mutant::Due::Acknowledgement};
}

Mutant Mutants::malformedAt(int number) const
{
    Random random(~m_seed, number);
    return {malformed(random, wellFormed(random)), Mutant::Due::AnswerOrEnd};
}

} // namespace inbound
