#include "Outage.h"

#include <campaigns/support/Campaign.h>
#include <support/PrintQt.h>
#include <support/Wait.h>

#include <map>

namespace {

using namespace std::chrono_literals;
using support::ScriptedAnswer;
using Type = view::Message::Type;

/// What the contract says of the messages that wait, by their numbers.
class Model
{
public:
    void queue(Type type, int number)
    {
        auto &ofType = m_waiting[type];
        if (type != Type::ImageData)
            ofType.clear();
        ofType.append(number);
    }

    bool isEmpty() const { return m_waiting.empty(); }

    /// What must be posted next.
    void begin()
    {
        m_postedType = m_waiting.begin()->first;
        m_posted = m_waiting.begin()->second.constFirst();
    }
    int posted() const { return m_posted; }

    /// The display has accepted what is posted: of its type only pictures stay.
    void accept()
    {
        auto &ofType = m_waiting[m_postedType];
        if (const int gone = ofType.takeFirst(); gone != m_posted)
            m_lost.append(gone);
        if (ofType.isEmpty())
            m_waiting.erase(m_postedType);
        m_delivered.append(m_posted);
    }

    QList<int> delivered() const { return m_delivered; }
    QList<int> lost() const { return m_lost; }

private:
    std::map<Type, QList<int>> m_waiting; // no list is empty
    Type m_postedType = Type::Configure;
    int m_posted = 0;
    QList<int> m_delivered;
    QList<int> m_lost;
};

class AcceptedLoss : public Outage
{
protected:
    AcceptedLoss() { posts->hold(); }

    /// Lets messages come during posts that succeed or fail, until none waits any more.
    void play(int rounds)
    {
        model = {};
        pictures.clear();
        for (int round = 0; round < rounds || !model.isEmpty(); ++round) {
            if (model.isEmpty()) {
                ASSERT_TRUE(waitUntilAllIsSent()); // else it might go with the last one
                queueOne();
            }
            ASSERT_NO_FATAL_FAILURE(post(round, round < rounds ? 3 : 0));
        }
        ASSERT_TRUE(waitUntilAllIsSent());
        EXPECT_EQ(posts->delivered(), model.delivered());
        EXPECT_EQ(deliveredPictures(), pictures);
    }

    Model model;

private:
    int upTo(int most) { return std::uniform_int_distribution(0, most)(random); }

    void queueOne()
    {
        const auto type = static_cast<Type>(upTo(static_cast<int>(Type::PaymentDraft)));
        const int number = queue(type);
        model.queue(type, number);
        if (type == Type::ImageData)
            pictures.append(number);
    }

    /// Queues some messages while a post waits to begin, then lets it succeed or fail.
    void post(int before, int atMost)
    {
        ASSERT_TRUE(support::waitFor([&] { return posts->begunCount() == before + 1; }, 60s));
        model.begin();
        for (int count = upTo(atMost); count > 0; --count)
            queueOne();
        const bool accepts = upTo(3) > 0;
        display.answer(accepts ? ScriptedAnswer::ok() : ScriptedAnswer::status(500));
        posts->release();
        ASSERT_TRUE(support::waitFor([&] { return posts->endedCount() == before + 1; }, 60s));
        ASSERT_EQ(posts->ended().constLast().number, model.posted());
        if (accepts)
            model.accept();
    }

    QList<int> deliveredPictures() const
    {
        QList<int> numbers;
        for (const auto &post : posts->ended()) {
            if (post.result == 0 && post.path == QLatin1String("/image"))
                numbers.append(post.number);
        }
        return numbers;
    }

    QList<int> pictures; // that were queued
};

} // namespace

TEST_F(AcceptedLoss, Is_only_that_of_a_newer_message_of_the_type_that_is_being_posted)
{
    qsizetype delivered = 0;
    qsizetype lost = 0;
    for (int run = 0; run < campaign::scaled(100, 1) && !HasFailure(); ++run) {
        SCOPED_TRACE(run);
        play(200);
        delivered += model.delivered().size();
        lost += model.lost().size();
        tidyUp();
    }
    campaign::report("delivered", static_cast<double>(delivered));
    campaign::report("gone with an older one that was being posted", static_cast<double>(lost));
    EXPECT_GT(lost, 0);
}
