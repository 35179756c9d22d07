#pragma once

#include <plugin/ViewConnector.h>

#include <QObject>

/// A plug-in whose members the tests may look at.
class ProbedConnector : public ViewConnector
{
public:
    using ViewConnector::adTimetable;
    using ViewConnector::awaitingImages;
    using ViewConnector::client;
    using ViewConnector::clientThread;
    using ViewConnector::currentAd;
    using ViewConnector::dialogTypes;
    using ViewConnector::ignoredProps;
    using ViewConnector::logger;
    using ViewConnector::messages;
    using ViewConnector::sentImages;
    using ViewConnector::server;

    using ViewConnector::addAwaitingLoadImage;
    using ViewConnector::asyncGetAdsStream;
    using ViewConnector::getAwaitingLoadImage;
    using ViewConnector::getDocumentIgnoredProps;
    using ViewConnector::getDocumentPayload;
    using ViewConnector::initTriggers;
    using ViewConnector::isAwaitingLoadImage;
    using ViewConnector::onAdsStreamConnectErrorOccurred;
    using ViewConnector::onAdsStreamConnectFinished;
    using ViewConnector::onDocumentModified;
    using ViewConnector::processAdResult;
    using ViewConnector::processGetImageRequest;
    using ViewConnector::processRequest;
    using ViewConnector::processResult;
    using ViewConnector::readAdTimetable;
    using ViewConnector::readConfigurationPayload;
    using ViewConnector::sendAdvertising;
    using ViewConnector::sendImage;

    using QObject::receivers;
};

/// A plug-in that remembers every message that is queued, in its order, and queues it.
class RecordingConnector : public ProbedConnector
{
public:
    void addMessage(const view::Message &message) override
    {
        sent.append(message);
        ProbedConnector::addMessage(message);
    }

    /// The messages since the last time.
    QList<view::Message> takeSent() { return std::exchange(sent, {}); }

    QList<view::Message> sent;
};

/// How many connections a signal of any object has; `signal` by SIGNAL().
inline int receiversOf(const QObject *object, const char *signal)
{
    return (object->*(&ProbedConnector::receivers))(signal);
}
