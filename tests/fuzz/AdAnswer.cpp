// The answer of an ad service, from the reply's fields to the message that shows its stream.

#include "support/AdAnswerInput.h"
#include "support/Fuzz.h"

#include <unit/plugin/ProbedConnector.h>

#include <support/FinishedReply.h>
#include <support/FreshSingletons.h>

#include <QCoreApplication>
#include <QEvent>
#include <QJsonDocument>

namespace {

bool isJson(const QByteArray &text)
{
    QJsonParseError error{};
    QJsonDocument::fromJson(text, &error);
    return error.error == QJsonParseError::NoError;
}

} // namespace

void fuzzOne(const QByteArray &input)
{
    static const support::FreshSingletons host;
    static RecordingConnector connector;

    const AdAnswerInput answer(input);
    auto *const reply = new support::FinishedReply( // which the handler deletes
        {{"X-PK", answer.keyField}, {"X-IV", answer.ivField}}, answer.body);
    reply->setProperty("ads_private", AdAnswerInput::ownKey());
    QObject::connect(reply, &QNetworkReply::finished, &connector,
                     &RecordingConnector::onAdsStreamConnectFinished);
    Q_EMIT reply->finished();
    QCoreApplication::sendPostedEvents(reply, QEvent::DeferredDelete);

    const auto shown = connector.takeSent().size();
    fuzz::require(shown == (answer.isAuthentic && isJson(answer.plaintext) ? 1 : 0),
                  "a stream is shown if, and only if, its answer is authentic");
}
