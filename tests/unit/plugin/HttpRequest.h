#pragma once

#include <gtest/gtest.h>

#include <support/Wait.h>

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QScopedPointer>

struct HttpAnswer
{
    int status = 0;
    QString reason;
    QString contentType;
    QByteArray body;
};

/// Posts to this machine and runs the events of this thread until the answer is there; a status of
/// 0 stands for none.
inline HttpAnswer post(int port, const QByteArray &content)
{
    QNetworkAccessManager network;
    network.setTransferTimeout(10'000);
    QNetworkRequest request(QUrl(QString("http://127.0.0.1:%1/").arg(port)));
    request.setHeader(QNetworkRequest::ContentTypeHeader, "application/json");
    const QScopedPointer<QNetworkReply> reply(network.post(request, content));
    EXPECT_TRUE(support::waitFor([&] { return reply->isFinished(); }));
    return {reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt(),
            reply->attribute(QNetworkRequest::HttpReasonPhraseAttribute).toString(),
            reply->header(QNetworkRequest::ContentTypeHeader).toString(), reply->readAll()};
}
