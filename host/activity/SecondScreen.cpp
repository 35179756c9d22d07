#include <SecondScreen.h>

namespace events {

QVariant SecondScreen::data() const
{
    return argument(QStringLiteral("data"));
}

int SecondScreen::contentType() const
{
    return argument(QStringLiteral("type")).toInt();
}

QString SecondScreen::contentTypeStr() const
{
    return argument(QStringLiteral("typeName")).toString();
}

} // namespace events
