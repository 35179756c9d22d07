// The answer of an ad service, as the doctor judges it step by step.

#include "support/AdAnswerInput.h"
#include "support/Fuzz.h"

#include <doctor/AdAnswerSteps.h>

void fuzzOne(const QByteArray &input)
{
    static const auto key = ssl::PrivateKey::fromDer(AdAnswerInput::ownKey());
    const AdAnswerInput answer(input);
    doctor::HttpAnswer reply;
    reply.fields = {{"x-pk", answer.keyField}, {"x-iv", answer.ivField}};
    reply.body = answer.body;

    doctor::AdStream stream;
    const auto findings = doctor::judgeAdAnswer(reply, key, stream);
    fuzz::require(answer.isAuthentic || doctor::hasFailed(findings),
                  "an answer that is not authentic fails a step");
    fuzz::require(doctor::hasFailed(findings) == stream.listen.isEmpty(),
                  "there is a stream unless a step has failed");
}
