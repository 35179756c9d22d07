// Clients that leave at any byte.

#include "Inbound.h"
#include "Peer.h"

#include <campaigns/support/ProcessState.h>

namespace {

using namespace inbound;
using campaign::ProcessState;

class Disconnects : public Inbound
{
protected:
    Disconnects()
    {
        for (const auto *key : {"HttpServer:idleTimeout", "HttpServer:headerTimeout",
                                "HttpServer:bodyTimeout", "HttpServer:answerTimeout"})
            set(key, 1);
        start();
        EXPECT_EQ(answerOfGoodClient(), 200);
        EXPECT_TRUE(support::waitFor([&] { return display.requestCount() == 1; }));
        delivered = 0;
        before = ProcessState::now();
    }

    static constexpr auto lost = 30s;
    const bool endings[2] = {false, true}; // with a good-bye; roughly
    ProcessState before;
};

} // namespace

TEST_F(Disconnects, Within_a_request_deliver_nothing_and_leave_nothing_behind)
{
    const auto request = GoodClient::request();
    const int repetitions = campaign::scaled(20, 1);
    int cuts = 0;
    const int asked = runBesideGoodClient([&] {
        for (int i = 0; i < repetitions; ++i) {
            for (const bool isRough : endings) {
                for (qsizetype size = 0; size < request.size(); ++size, ++cuts) {
                    const Peer peer;
                    EXPECT_TRUE(peer.connect(port()));
                    EXPECT_TRUE(peer.sendAll(request.left(size), lost));
                    if (isRough)
                        peer.beRough();
                }
            }
        }
    });
    campaign::report("requests cut", cuts);
    EXPECT_EQ(delivered, asked);
    EXPECT_EQ(goodPictures(), 1 + asked);
    EXPECT_TRUE(support::waitFor(
        [&] { return ProcessState::now().descriptors <= before.descriptors; }, 60s));
}

TEST_F(Disconnects, Within_an_answer_lose_nobody_elses_and_leave_nothing_behind)
{
    const auto request = GoodClient::request();
    const int repetitions = campaign::scaled(20, 1);
    int cuts = 0;
    const int asked = runBesideGoodClient([&] {
        Peer whole;
        whole.connect(port());
        whole.sendAll(request, lost);
        EXPECT_TRUE(whole.waitForArrival(lost));
        QByteArray answer;
        whole.receive(answer);
        EXPECT_TRUE(answer.endsWith("\r\n\r\n"));
        for (int i = 0; i < repetitions; ++i) {
            for (const bool isRough : endings) {
                for (qsizetype size = 0; size <= answer.size(); ++size, ++cuts) {
                    const Peer peer;
                    EXPECT_TRUE(peer.connect(port()));
                    EXPECT_TRUE(peer.sendAll(request, lost));
                    QByteArray begin;
                    EXPECT_TRUE(peer.receiveExactly(begin, size, lost));
                    if (isRough)
                        peer.beRough();
                }
            }
        }
    });
    campaign::report("answers cut", cuts);
    const int others = delivered - asked;
    EXPECT_LE(others, cuts + 1);
    EXPECT_GE(others, cuts - 2 * repetitions); // who left at once may have taken its request along
    EXPECT_TRUE(support::waitFor(
        [&] { return ProcessState::now().descriptors <= before.descriptors; }, 60s));
}
