#pragma once

#include <doctor/Finding.h>
#include <doctor/HttpExchange.h>

#include <PrivateKey.h>

#include <QJsonObject>

namespace doctor {

/// The stream that an ad service assigns. Its key is a secret.
struct AdStream
{
    QString listen;
    int number = 0;
    QString key;
};

/// The finding of one step of a subscription.
Finding adStepDone(const QString &step, const Text &message);
Finding adStepFailed(const QString &step, const Text &message, const Text &remedy);

/// Judges the answer to a subscription step by step, from the service's key to the stream's
/// address, up to the first step that fails. `stream` is set if none does.
Findings judgeAdAnswer(const HttpAnswer &reply, const ssl::PrivateKey &ownKey, AdStream &stream);

} // namespace doctor
