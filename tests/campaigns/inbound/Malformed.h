#pragma once

#include "Random.h"
#include "Request.h"

namespace inbound {

/// The bytes of a request after something that is not allowed was done to it, though a few happen
/// to be well-formed all the same.
QByteArray malformed(Random &random, Request request);

} // namespace inbound
