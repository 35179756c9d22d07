#include <register/AskedFor.h>

#include <common/MonotonicClock.h>

#include <QMetaObject>

AskedFor::Scope::Scope(AskedFor &askedFor, const QString &type)
    : m_askedFor(askedFor)
    , m_outerType(askedFor.m_type)
    , m_before(askedFor.m_times.value(type).size())
{
    m_askedFor.m_type = type;
}

AskedFor::Scope::~Scope()
{
    m_askedFor.m_type = m_outerType;
}

bool AskedFor::Scope::wasAsked() const
{
    return m_askedFor.m_times.value(m_askedFor.m_type).size() > m_before;
}

void AskedFor::follow(const QObject *plugin)
{
    if (plugin->metaObject()->indexOfSignal("hasMessage()") >= 0)
        connect(plugin, SIGNAL(hasMessage()), this, SLOT(countMessage()), Qt::DirectConnection);
}

void AskedFor::countMessage()
{
    m_times[m_type].append(monotonicMs());
}
