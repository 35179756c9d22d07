#include <register/DialogStack.h>

int DialogStack::open(const QString &kind)
{
    m_open.append({++m_lastId, kind});
    return m_lastId;
}

void DialogStack::close(int id)
{
    m_open.removeIf([id](const Dialog &dialog) { return dialog.id == id; });
}
