#pragma once

#include <QByteArray>
#include <QNetworkAccessManager>
#include <QNetworkRequest>
#include <QString>
#include <QVariantMap>

namespace bench {

/// What an application without a plug-in would do: build the JSON and post it from its main thread,
/// where its event loop does the rest. Thread: one with an event loop.
class NaiveQt
{
public:
    explicit NaiveQt(const QString &url);

    /// Starts the post of `data` and returns.
    void post(const QVariantMap &data);
    /// Runs the event loop until every answer has come.
    void waitForAnswers();

private:
    QNetworkAccessManager m_network;
    QNetworkRequest m_request;
    int m_pending = 0;
};

} // namespace bench
