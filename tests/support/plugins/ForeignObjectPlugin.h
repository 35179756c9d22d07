#pragma once

#include <QObject>

/// Claims the interface of this host's plug-ins without being one.
class ForeignObjectPlugin : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "su.tavro.AbstractPlugin")
};
