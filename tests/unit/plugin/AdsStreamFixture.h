#pragma once

#include "PluginFixture.h"

#include <support/AdAnswer.h>
#include <support/ScriptedServer.h>

/// A plug-in beside an ad service, which answers as the test says.
class AdsStreamFixture : public PluginFixture
{
protected:
    AdsStreamFixture() { answer({}); }

    void answer(const support::AdAnswer &answer)
    {
        service.answerBy([answer](const support::ScriptedRequest &request) {
            return toScript(answer, request);
        });
    }

    /// Subscribes and returns what was logged when the outcome was there.
    QStringList subscribe(qsizetype lines = 1)
    {
        const auto before = log.textsOf("viewconnector").size();
        connector->asyncGetAdsStream(service.url());
        EXPECT_TRUE(support::waitFor(
            [&] { return log.textsOf("viewconnector").size() >= before + lines; }));
        support::letPass(std::chrono::milliseconds(1)); // for what is not expected
        return log.textsOf("viewconnector").mid(before);
    }

    support::ScriptedServer service;
};
