#pragma once

#include "Random.h"
#include "Request.h"

namespace inbound {

/// What is sent as the request with a number, and what is due for it. A value type.
struct Mutant
{
    enum class Due {
        Acknowledgement, ///< 200, and the connection goes on
        LastOne,         ///< 200, and the server ends the connection
        AnswerOrEnd,     ///< any answers, or none; the connection does not outlast its client
    };

    QByteArray bytes;
    Due due;
};

/// Requests of a display changed at random: half of them within what is well-formed, the others
/// beyond it. Thread: any, for it does not change.
class Mutants
{
public:
    explicit Mutants(quint32 seed) : m_seed(seed) {}

    quint32 seed() const { return m_seed; }
    /// The same one for the same seed and number.
    Mutant at(int number) const;
    /// One that may be no request.
    Mutant malformedAt(int number) const;

private:
    Request wellFormed(Random &random) const;

    quint32 m_seed;
    QList<Request> m_corpus = Request::corpus();
};

} // namespace inbound
