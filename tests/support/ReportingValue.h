#pragma once

#include <QVariant>

#include <functional>
#include <memory>
#include <utility>

namespace support {

/// A value that says so when the last copy of it goes, as one of the host's may.
inline QVariant reportingValue(std::function<void()> report)
{
    return QVariant::fromValue(
        std::shared_ptr<void>(nullptr, [report = std::move(report)](void *) { report(); }));
}

} // namespace support
