#include "Complete.h"

#include <doctor/AdServiceCheck.h>

#include <support/AdAnswer.h>
#include <support/ScriptedServer.h>

using namespace doctor;
using namespace std::chrono_literals;
using support::AdAnswer;
using support::ScriptedAnswer;

namespace {

class AdServiceCheck : public testing::Test
{
protected:
    AdServiceCheck() { answer({}); }

    /// The service's answer from now on. Its stream is at the service itself, which says yes.
    void answer(AdAnswer reply)
    {
        reply.plaintext.replace("host", server.url().authority().toUtf8());
        server.answerBy([=, this](const auto &request) {
            return request.method == "POST" ? toScript(reply, request)
                                            : ScriptedAnswer::status(streamStatus);
        });
    }

    Findings check() const
    {
        return complete(checkAdService(server.url("/s").toString()).findings);
    }

    /// The step that fails, after which there is none.
    std::string failedStep() const
    {
        const auto findings = check();
        for (const auto &finding : findings) {
            EXPECT_FALSE(english(finding).contains("KEY-OF-STREAM"));
            EXPECT_EQ(finding.status == Status::Ok, &finding != &findings.back());
        }
        return findings.back().details["step"].toString().toStdString();
    }

    std::string failedStepOf(const AdAnswer &reply)
    {
        answer(reply);
        return failedStep();
    }

    std::string failedStepOf(const QByteArray &plaintext)
    {
        AdAnswer reply;
        reply.plaintext = plaintext;
        return failedStepOf(reply);
    }

    support::ScriptedServer server;
    int streamStatus = 200;
};

} // namespace

TEST_F(AdServiceCheck, Goes_through_all_steps)
{
    const auto findings = check();
    QStringList steps;
    for (const auto &finding : findings) {
        EXPECT_EQ(finding.status, Status::Ok) << english(finding).toStdString();
        EXPECT_EQ(finding.check, "ads");
        steps.append(finding.details["step"].toString());
    }
    EXPECT_EQ(steps, (QStringList{"address", "reach", "status", "key", "vector", "body", "secret",
                                  "decrypt", "json", "stream-address", "stream"}));
    ASSERT_EQ(server.requestCount(), 2);
    const auto requests = server.requests();
    EXPECT_EQ(requests[0].path, "/s");
    EXPECT_EQ(requests[0].field("content-type"), "application/json");
    EXPECT_EQ(requests[1].method, "GET");
    EXPECT_EQ(requests[1].path, "/streams/3?key=K");
}

TEST_F(AdServiceCheck, Is_left_out_without_a_service)
{
    EXPECT_EQ(statuses(complete(checkAdService({}).findings)), QStringList{"skipped"});
    EXPECT_EQ(server.requestCount(), 0);
}

TEST_F(AdServiceCheck, Fails_an_address_that_is_none)
{
    for (const auto *setting : {"127.0.0.1:38083", "ads://127.0.0.1", "http://"}) {
        const auto findings = complete(checkAdService(setting).findings);
        EXPECT_EQ(statuses(findings), QStringList{"failed"}) << setting;
        EXPECT_EQ(findings.front().details["step"].toString(), "address");
    }
}

TEST_F(AdServiceCheck, Fails_a_service_that_cannot_be_reached_or_refuses)
{
    server.answer(ScriptedAnswer::closed());
    EXPECT_EQ(failedStep(), "reach");
    server.answer(ScriptedAnswer::truncated());
    EXPECT_EQ(failedStep(), "reach");
    server.answer(ScriptedAnswer::status(500));
    EXPECT_EQ(failedStep(), "status");
    server.goDown();
    EXPECT_EQ(failedStep(), "reach");
}

TEST_F(AdServiceCheck, Fails_a_service_that_never_ends_its_answer)
{
    server.answer(ScriptedAnswer::dripping(10ms));
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(failedStep(), "reach");
    EXPECT_LT(std::chrono::steady_clock::now() - start, 8s);
}

TEST_F(AdServiceCheck, Fails_at_the_part_of_the_answer_that_is_wrong)
{
    EXPECT_EQ(failedStepOf({.hasKey = false}), "key");
    EXPECT_EQ(failedStepOf({.rawKey = "%%%"}), "key");
    EXPECT_EQ(failedStepOf({.publicKey = "no key"}), "key");
    EXPECT_EQ(failedStepOf({.hasIv = false}), "vector");
    EXPECT_EQ(failedStepOf({.iv = "only 12 bytes"}), "vector");
    EXPECT_EQ(failedStepOf({.spoilBody = [](QByteArray) { return QByteArray(); }}), "body");
    EXPECT_EQ(failedStepOf({.spoilBody = [](QByteArray body) { return body.left(16); }}), "body");
    EXPECT_EQ(failedStepOf({.spoilBody = [](QByteArray body) { return body + "x"; }}), "decrypt");
    EXPECT_EQ(failedStepOf({.spoilBody = [](QByteArray) { return QByteArray(2'000'000, 'x'); }}),
              "body");
}

TEST_F(AdServiceCheck, Fails_at_the_part_of_the_stream_that_is_wrong)
{
    EXPECT_EQ(failedStepOf("no json"), "json");
    EXPECT_EQ(failedStepOf("[1]"), "json");
    EXPECT_EQ(failedStepOf("{}"), "stream-address");
    EXPECT_EQ(failedStepOf(R"({"listen":"host","stream":"1","master":"K"})"), "stream-address");
    EXPECT_EQ(failedStepOf(R"({"listen":"host","stream":1})"), "stream-address");
    streamStatus = 403;
    EXPECT_EQ(failedStepOf(R"({"listen":"host","stream":1,"master":"KEY-OF-STREAM"})"), "stream");
}

TEST_F(AdServiceCheck, Takes_a_longer_vector_as_the_register_does)
{
    answer({.iv = "sixteen bytes iv and more"});
    EXPECT_EQ(check().back().status, Status::Ok);
}
