#pragma once

#include <display/MessageReader.h>

#include <QString>

#include <memory>

class HeldRequest;

/// A message that is still to be answered. A value type.
struct Arrival
{
    int number;
    double ms; ///< when, on the system's monotonic clock
    QString method;
    QString path;
    qint64 bytes;
    bool isReplay;
    ReceivedMessage message;
    std::shared_ptr<HeldRequest> request;
};
