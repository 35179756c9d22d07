#include <Wrapper.h>

#include <utility>

namespace events {

Wrapper::Wrapper(Event event) : m_event(std::move(event)) {}

QVariant Wrapper::argument(const QString &name) const
{
    return m_event.value(name, QVariant());
}

} // namespace events
