#include "RawRequest.h"

#include <support/RunningEndpoint.h>

#include <gmock/gmock.h>

#include <set>

namespace {

using support::RawClient;
using Table = std::vector<RawRequest> (*)();

constexpr auto planted = "GET /planted HTTP/1.1\r\nHost: localhost\r\n\r\n";

class RawRequests : public RunningEndpoint
{
protected:
    RawRequests() { start(); }

    static std::vector<RawRequest> malformed()
    {
        std::vector<RawRequest> all;
        for (const Table table :
             {&malformedRequestLines, &malformedFields, &ambiguousFraming, &malformedChunks}) {
            const auto rows = table();
            all.insert(all.end(), rows.begin(), rows.end());
        }
        return all;
    }

    void expectRefusal(const RawRequest &request)
    {
        delivered = 0;
        RawClient client(port());
        client.send(QByteArray::fromStdString(request.bytes) + planted);
        EXPECT_TRUE(client.waitForClose());
        const auto answer = client.answer(std::chrono::milliseconds(0));
        EXPECT_THAT(request.allowed, testing::Contains(answer.status));
        if (answer.status != closed) {
            EXPECT_THAT(answer.header.toLower().toStdString(),
                        testing::HasSubstr("connection: close"));
        }
        EXPECT_EQ(delivered, 0);
        EXPECT_TRUE(servesGoodClient());
        EXPECT_EQ(delivered, 1);
    }

    void expectService(const RawRequest &request)
    {
        delivered = 0;
        RawClient client(port());
        client.send(QByteArray::fromStdString(request.bytes));
        EXPECT_TRUE(isAcknowledgement(client.answer()));
        EXPECT_EQ(delivered, 1);
        EXPECT_EQ(client.received(), QByteArray());
    }
};

} // namespace

TEST_F(RawRequests, That_are_malformed_or_ambiguous_are_refused_with_all_that_follows)
{
    for (const auto &request : malformed()) {
        SCOPED_TRACE(request.name);
        expectRefusal(request);
    }
}

TEST_F(RawRequests, That_are_odd_but_well_formed_are_acknowledged)
{
    for (const auto &request : oddRequests()) {
        SCOPED_TRACE(request.name);
        expectService(request);
    }
}

TEST_F(RawRequests, For_the_head_only_are_acknowledged_without_a_body)
{
    RawClient client(port());
    client.send("HEAD / HTTP/1.1\r\nHost: localhost\r\n\r\n");
    EXPECT_TRUE(isAcknowledgement(client.answer()));
    EXPECT_EQ(delivered, 1);
}

TEST_F(RawRequests, That_ask_before_the_body_may_be_followed_by_another)
{
    RawClient client(port());
    client.send(QByteArray::fromStdString(field("Content-Length: 0\r\nExpect: 100-continue")) +
                planted);
    EXPECT_EQ(client.answer().status, 100);
    EXPECT_TRUE(isAcknowledgement(client.answer()));
    EXPECT_TRUE(isAcknowledgement(client.answer()));
    EXPECT_EQ(delivered, 2);
}

TEST_F(RawRequests, Are_many_in_the_tables_and_each_has_a_name_of_its_own)
{
    std::set<std::string> names;
    for (const auto &request : malformed())
        names.insert(request.name);
    EXPECT_EQ(names.size(), malformed().size());
    EXPECT_GE(names.size(), 140U);
}
