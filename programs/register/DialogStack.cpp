#include <register/DialogStack.h>

int DialogStack::open()
{
    m_open.append(++m_lastId);
    return m_lastId;
}
