#pragma once

#include <QJsonObject>

inline constexpr int maxSlowMs = 600'000; // ten minutes

/// What the display plays at being, for those who want to see how the register copes. A value type.
struct Switches
{
    bool down = false;  ///< close the connection without an answer
    bool error = false; ///< answer 500
    int slowMs = 0;     ///< answer this much later

    QJsonObject toJson() const
    {
        return {{QStringLiteral("down"), down},
                {QStringLiteral("error"), error},
                {QStringLiteral("slowMs"), slowMs}};
    }
};
