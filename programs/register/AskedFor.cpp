#include <register/AskedFor.h>

#include <common/MonotonicClock.h>

#include <QMetaObject>

AskedFor::Scope::Scope(AskedFor &askedFor, const QString &type, Counts counts)
    : m_askedFor(askedFor)
    , m_type(type)
    , m_outerType(askedFor.m_type)
    , m_outerFirstOnly(askedFor.m_firstOnly)
    , m_before(askedFor.m_times.value(type).size())
{
    m_askedFor.m_type = type;
    m_askedFor.m_firstOnly = counts == Counts::First;
}

AskedFor::Scope::~Scope()
{
    m_askedFor.m_type = m_outerType;
    m_askedFor.m_firstOnly = m_outerFirstOnly;
}

bool AskedFor::Scope::wasAsked() const
{
    return m_askedFor.m_times.value(m_type).size() > m_before;
}

void AskedFor::follow(const QObject *plugin)
{
    if (plugin->metaObject()->indexOfSignal("hasMessage()") >= 0)
        connect(plugin, SIGNAL(hasMessage()), this, SLOT(countMessage()), Qt::DirectConnection);
}

void AskedFor::countMessage()
{
    if (m_type.isEmpty())
        return;
    const QString type = m_type;
    const double now = monotonicMs();
    m_times[type].append(now);
    if (m_firstOnly)
        m_type.clear();
    Q_EMIT asked(type, now);
}
