#pragma once

#include "Random.h"

namespace inbound {

/// The same bytes but for some that are changed, inserted, left out, repeated, exchanged or cut
/// off.
QByteArray mutated(Random &random, QByteArray bytes);

} // namespace inbound
