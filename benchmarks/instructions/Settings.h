#pragma once

#include <Config.h>

#include <QUrl>

/// For a client whose time-outs no burdened machine reaches, and that posts nothing by itself
/// after its first message.
inline void setUnhurriedClient(Config &config, const QUrl &display)
{
    constexpr int aDayInMs = 86'400'000;
    config.setValue(QStringLiteral("ViewConnector:server"), display.toString());
    config.setValue(QStringLiteral("ViewConnector:timeout"), 120);
    config.setValue(QStringLiteral("ViewConnector:interval"), aDayInMs);
}
