// The queue against a model of it that is too simple to be wrong, over random uses.

#include <view/Messages.h>

#include <gtest/gtest.h>

#include <support/PrintQt.h>

#include <algorithm>
#include <cstdint>
#include <iostream>
#include <random>
#include <set>
#include <vector>

namespace {

using view::Message;
using view::Messages;
using Type = Message::Type;

constexpr int sequences = 100'000;
constexpr int longestSequence = 24;
constexpr auto seedVariable = "MESSAGES_SEED"; // repeats a failed run

auto isOf(Type type)
{
    return [type](const Message &message) { return message.type == type; };
}

/// All that waits, in the order of arrival.
class Model
{
public:
    void insert(const Message &message)
    {
        if (message.type != Type::ImageData)
            std::erase_if(m_waiting, isOf(message.type));
        m_waiting.push_back(message);
    }

    void remove(Type type)
    {
        const auto oldest = std::find_if(m_waiting.begin(), m_waiting.end(), isOf(type));
        if (oldest != m_waiting.end())
            m_waiting.erase(oldest);
    }

    std::optional<Message> first() const
    {
        const auto lowest =
            std::min_element(m_waiting.begin(), m_waiting.end(),
                             [](const Message &a, const Message &b) { return a.type < b.type; });
        return lowest == m_waiting.end() ? std::nullopt : std::optional(*lowest);
    }

    bool isEmpty() const { return m_waiting.empty(); }

    qsizetype count() const
    {
        std::set<Type> types;
        for (const auto &message : m_waiting)
            types.insert(message.type);
        return static_cast<qsizetype>(types.size());
    }

    void clear() { m_waiting.clear(); }

private:
    std::vector<Message> m_waiting;
};

using Random = std::mt19937_64;

int upTo(Random &random, int last)
{
    return std::uniform_int_distribution(0, last)(random);
}

void applyRandomChange(Random &random, Messages &queue, Model &model)
{
    const auto type = static_cast<Type>(upTo(random, 7));
    switch (const int choice = upTo(random, 19); choice) {
    case 0:
        queue.clear();
        model.clear();
        break;
    case 1:
    case 2:
    case 3:
    case 4:
    case 5:
        queue.remove(type);
        model.remove(type);
        break;
    case 6:
    case 7:
    case 8: // as the client does it
        if (const auto first = queue.first()) {
            queue.remove(first->type);
            model.remove(first->type);
        }
        break;
    default: // pictures more often, so that several wait
        const auto inserted = choice < 15 ? type : Type::ImageData;
        const Message message(inserted, {{"number", upTo(random, 1000)}});
        queue.insert(message);
        model.insert(message);
    }
}

TEST(Messages, It_behaves_like_a_simple_list_over_random_uses)
{
    bool given = false;
    const auto fromEnvironment = qEnvironmentVariable(seedVariable).toULongLong(&given);
    const std::uint64_t seed = given ? fromEnvironment : std::random_device()();
    std::cout << seedVariable << '=' << seed << std::endl;

    Random random(seed);
    for (int sequence = 0; sequence < sequences; ++sequence) {
        Messages queue;
        Model model;
        const int changes = upTo(random, longestSequence);
        for (int change = 0; change < changes; ++change) {
            applyRandomChange(random, queue, model);
            ASSERT_EQ(queue.first(), model.first()) << sequence << '/' << change;
            ASSERT_EQ(queue.count(), model.count()) << sequence << '/' << change;
            ASSERT_EQ(queue.isEmpty(), model.isEmpty()) << sequence << '/' << change;
        }
    }
}

} // namespace
