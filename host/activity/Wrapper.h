#pragma once

#include <Event.h>
#include <HostExport.h>

namespace events {

/// Base of the views that give an event's arguments names and types. A value type.
class HOST_EXPORT Wrapper
{
public:
    explicit Wrapper(Event event);

protected:
    QVariant argument(const QString &name) const;

private:
    Event m_event;
};

} // namespace events
