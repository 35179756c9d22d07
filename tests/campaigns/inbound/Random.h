#pragma once

#include <QByteArray>

#include <iterator>
#include <random>

namespace inbound {

/// The random choices for the request with a number: the same ones with the same seed.
class Random
{
public:
    Random(quint32 seed, int number) : m_engine(quint64{seed} << 32 | static_cast<quint32>(number))
    {
    }

    /// From 0 to `bound` - 1.
    int below(qsizetype bound)
    {
        return static_cast<int>(m_engine() % static_cast<quint64>(bound));
    }
    int between(int first, int last) { return first + below(last - first + 1); }
    bool oneIn(int chances) { return below(chances) == 0; }
    char byte() { return static_cast<char>(below(256)); }

    template <class Choices>
    const auto &of(const Choices &choices)
    {
        return *std::next(std::begin(choices), below(static_cast<qsizetype>(std::size(choices))));
    }

private:
    std::mt19937_64 m_engine;
};

} // namespace inbound
