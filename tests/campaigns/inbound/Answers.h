#pragma once

#include <QByteArray>

#include <optional>

namespace inbound {

/// The answers on one connection, taken one by one off the bytes that have arrived. A refusal that
/// closes the connection lasts to its end, whatever length it says: of a request with a false
/// length libmicrohttpd sends it with its head twice, and to HEAD without its body. A value type.
class Answers
{
public:
    /// What has arrived goes here.
    QByteArray &arrived() { return m_arrived; }
    /// The status of the next whole answer, interim ones left out; none if there is no whole one.
    std::optional<int> next();
    /// Whether all that has arrived were whole answers.
    bool isWhole() const;

private:
    std::optional<int> takeAny();

    QByteArray m_arrived;
    bool m_isGarbled = false;
    bool m_isLast = false;
};

} // namespace inbound
