#pragma once

#include <common/JsonPoster.h>

#include <QObject>
#include <QUrl>

class AskedFor;

/**
 * Tells an inspector of messages what the register asked the plug-in for, and when: it posts
 * {"type":"UpdateDocument","monotonicMs":…} to `<inspector>/asked`.
 *
 * Owner: main. Thread: the main thread; it never waits for the inspector.
 * Errors: what cannot be delivered is dropped.
 * Shut-down: as of the poster.
 */
class InspectorLink : public QObject
{
    Q_OBJECT

public:
    /// `inspector` is its address with or without a path.
    InspectorLink(const AskedFor &askedFor, const QUrl &inspector);

private:
    JsonPoster m_poster;
};
