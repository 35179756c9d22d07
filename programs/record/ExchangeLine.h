#pragma once

#include <relay/Exchange.h>

#include <QByteArray>

/// Where an exchange stands in a recording.
struct LinePlace
{
    int number = 0;          ///< 1 for the first line
    double sinceStartMs = 0; ///< from the start of the recording to that of the exchange
    bool isToDisplay = true; ///< otherwise the display asks the plug-in
};

/// The line of a recording that tells an exchange; docs/recorder.md describes its keys. Unless
/// `redacts` is false, what could identify somebody is replaced: of a body that is no JSON the
/// shape of its text is left, and of one that is no text its size.
QByteArray exchangeLine(const LinePlace &place, const Exchange &exchange, bool redacts);
