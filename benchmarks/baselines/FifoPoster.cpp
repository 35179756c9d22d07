#include <baselines/FifoPoster.h>

#include <QJsonDocument>

#include <exception>

namespace bench {

FifoPoster::FifoPoster(const std::string &url, std::chrono::milliseconds interval)
    : m_post(url), m_interval(interval), m_thread([this] { deliver(); })
{
}

FifoPoster::~FifoPoster()
{
    {
        const std::lock_guard guard(m_mutex);
        m_ending = true;
    }
    m_changed.notify_all();
    m_thread.join();
}

void FifoPoster::add(const QVariantMap &message)
{
    {
        const std::lock_guard guard(m_mutex);
        m_waiting.push_back(message);
    }
    m_changed.notify_all();
}

void FifoPoster::waitUntilEmpty()
{
    std::unique_lock guard(m_mutex);
    m_changed.wait(guard, [this] { return m_waiting.empty(); });
}

void FifoPoster::deliver()
{
    std::unique_lock guard(m_mutex);
    for (;;) {
        m_changed.wait(guard, [this] { return m_ending || !m_waiting.empty(); });
        if (m_ending)
            return;
        const auto message = m_waiting.front();
        guard.unlock();
        bool isPosted = true;
        try {
            m_post(QJsonDocument::fromVariant(message).toJson(QJsonDocument::Compact));
        } catch (const std::exception &) {
            isPosted = false;
        }
        guard.lock();
        if (isPosted) {
            m_waiting.pop_front();
            m_changed.notify_all();
        }
        m_changed.wait_for(guard, m_interval, [this] { return m_ending; });
    }
}

} // namespace bench
