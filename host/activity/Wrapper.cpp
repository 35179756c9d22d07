#include <Wrapper.h>

namespace events {

Wrapper::Wrapper(const Event &event) : m_event(event) {}

QVariant Wrapper::argument(const QString &name) const
{
    return m_event.value(name, QVariant());
}

} // namespace events
