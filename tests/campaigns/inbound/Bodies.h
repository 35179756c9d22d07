#pragma once

#include "Random.h"

namespace inbound {

/// A body for the display's requests made from a good one: the good one itself, JSON of every
/// shape, or what is no JSON.
QByteArray anyBody(Random &random, const QByteArray &good);

} // namespace inbound
