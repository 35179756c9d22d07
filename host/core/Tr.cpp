#include <Tr.h>

#include <Config.h>
#include <Singleton.h>

#include <utility>

namespace tr {

Tr::Tr(QMap<QString, QString> texts) : m_texts(std::move(texts)) {}

QString Tr::ui() const
{
    if (m_texts.isEmpty())
        return {};
    const auto language = Singleton<Config>::instance().stringValue(QStringLiteral("Host:language"),
                                                                    QStringLiteral("ru"));
    return m_texts.value(language, m_texts.first());
}

} // namespace tr
