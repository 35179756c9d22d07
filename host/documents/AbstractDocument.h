#pragma once

#include <HostExport.h>

#include <QObject>

/**
 * A document of the register. What it holds are its properties, declared and dynamic.
 *
 * Owner: shared by QSharedPointer between the host and whoever watches it.
 * Thread: the host's main thread.
 */
class HOST_EXPORT AbstractDocument : public QObject
{
    Q_OBJECT

public:
    explicit AbstractDocument(QObject *parent = nullptr);
    ~AbstractDocument() override;
};
