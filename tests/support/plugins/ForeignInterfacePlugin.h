#pragma once

#include <QObject>

/// A plug-in made for another host.
class ForeignInterfacePlugin : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.example.OtherPlugin")
};
