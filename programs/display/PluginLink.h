#pragma once

#include <common/JsonPoster.h>

class Journal;

/**
 * The display's requests to the plug-in, each noted in the journal once its outcome is known.
 *
 * Owner: the display. Thread: the main thread; nothing blocks. Errors and shut-down: as JsonPoster.
 */
class PluginLink
{
public:
    /// `journal` must live longer.
    PluginLink(const QUrl &pluginUrl, Journal &journal);

    void send(const QJsonObject &request, const JsonPoster::Outcome &outcome);

private:
    Journal &m_journal;
    JsonPoster m_poster;
};
