#include <common/MessageTypes.h>

#include <algorithm>

QString messageTypeOfPath(const QString &path)
{
    const auto *found =
        std::find_if(messageTypes.begin(), messageTypes.end(),
                     [&](const MessageType &type) { return path == QLatin1String(type.path); });
    return found == messageTypes.end() ? QString() : QString::fromLatin1(found->name);
}

bool isMessageType(const QString &name)
{
    return std::any_of(messageTypes.begin(), messageTypes.end(),
                       [&](const MessageType &type) { return name == QLatin1String(type.name); });
}
