#pragma once

#include "Peer.h"

#include <support/DescriptorLimit.h>

#include <vector>

namespace inbound {

/**
 * Many clients at once that are no use to anybody: some say nothing, some half a header or half a
 * body, some add a byte now and then, some never take their answers.
 *
 * Owner: the test. Thread: any one at a time. Shut-down: the destructor leaves without a word.
 */
class Crowd
{
public:
    /// As many of each kind. They do not come back once the server has closed their connections.
    Crowd(int port, int count);

    /// The slow writers' next bytes.
    void drip() const;
    int size() const { return static_cast<int>(m_peers.size()); }

private:
    const support::DescriptorLimit m_limit = support::DescriptorLimit::highest();
    std::vector<Peer> m_peers;
};

} // namespace inbound
