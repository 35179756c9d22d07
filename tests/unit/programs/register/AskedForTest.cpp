#include <register/AskedFor.h>

#include <common/MonotonicClock.h>

#include <support/PrintQt.h>

#include <gtest/gtest.h>

namespace {

class AskingPlugin : public QObject
{
    Q_OBJECT

Q_SIGNALS:
    void hasMessage();
};

class AskedForTest : public testing::Test
{
protected:
    AskedForTest() { askedFor.follow(&plugin); }

    qsizetype countOf(const QString &type) const { return askedFor.times().value(type).size(); }

    AskingPlugin plugin;
    AskedFor askedFor;
};

} // namespace

TEST_F(AskedForTest, Counts_a_message_as_of_the_type_that_is_being_done)
{
    {
        const AskedFor::Scope scope(askedFor, "Content");
        Q_EMIT plugin.hasMessage();
        Q_EMIT plugin.hasMessage();
    }
    {
        const AskedFor::Scope scope(askedFor, "Configure");
        Q_EMIT plugin.hasMessage();
    }
    EXPECT_EQ(askedFor.times().keys(), (QStringList{"Configure", "Content"}));
    EXPECT_EQ(countOf("Content"), 2);
    EXPECT_EQ(countOf("Configure"), 1);
}

TEST_F(AskedForTest, Tells_the_time_of_each_on_the_monotonic_clock)
{
    const AskedFor::Scope scope(askedFor, "Content");
    const double before = monotonicMs();
    Q_EMIT plugin.hasMessage();
    const double between = monotonicMs();
    Q_EMIT plugin.hasMessage();
    const auto times = askedFor.times().value("Content");
    ASSERT_EQ(times.size(), 2);
    EXPECT_GE(times[0], before);
    EXPECT_LE(times[0], between);
    EXPECT_GE(times[1], between);
    EXPECT_LE(times[1], monotonicMs());
}

TEST_F(AskedForTest, Says_at_once_what_it_has_counted_and_when)
{
    QList<std::pair<QString, double>> told;
    QObject::connect(&askedFor, &AskedFor::asked, [&](const QString &type, double monotonicMs) {
        told.append({type, monotonicMs});
    });
    Q_EMIT plugin.hasMessage(); // not counted
    {
        using Scope = AskedFor::Scope;
        const Scope scope(askedFor, "Configure", Scope::Counts::First);
        Q_EMIT plugin.hasMessage();
        Q_EMIT plugin.hasMessage();
    }
    const AskedFor::Scope scope(askedFor, "Content");
    Q_EMIT plugin.hasMessage();
    ASSERT_EQ(told.size(), 2);
    EXPECT_EQ(told[0].first, "Configure");
    EXPECT_EQ(told[0].second, askedFor.times().value("Configure").value(0));
    EXPECT_EQ(told[1].first, "Content");
    EXPECT_EQ(told[1].second, askedFor.times().value("Content").value(0));
}

TEST_F(AskedForTest, Goes_back_to_the_outer_type_when_an_inner_one_is_done)
{
    const AskedFor::Scope outer(askedFor, "UpdateDocument");
    {
        const AskedFor::Scope inner(askedFor, "QrPayment");
        Q_EMIT plugin.hasMessage();
        EXPECT_TRUE(inner.wasAsked());
    }
    EXPECT_FALSE(outer.wasAsked());
    Q_EMIT plugin.hasMessage();
    EXPECT_TRUE(outer.wasAsked());
    EXPECT_EQ(countOf("UpdateDocument"), 1);
    EXPECT_EQ(countOf("QrPayment"), 1);
}

TEST_F(AskedForTest, Says_of_a_scope_only_what_was_asked_in_it)
{
    {
        const AskedFor::Scope earlier(askedFor, "Content");
        EXPECT_FALSE(earlier.wasAsked());
        Q_EMIT plugin.hasMessage();
        EXPECT_TRUE(earlier.wasAsked());
    }
    const AskedFor::Scope scope(askedFor, "Content");
    EXPECT_FALSE(scope.wasAsked());
}

TEST_F(AskedForTest, Does_not_count_what_the_register_did_not_ask_for)
{
    Q_EMIT plugin.hasMessage();
    const AskedFor::Scope unknown(askedFor, QString());
    Q_EMIT plugin.hasMessage();
    EXPECT_FALSE(unknown.wasAsked());
    EXPECT_TRUE(askedFor.times().isEmpty());
}

TEST_F(AskedForTest, Counts_only_the_first_message_of_a_scope_if_told_so)
{
    {
        const AskedFor::Scope outer(askedFor, "Content");
        {
            using Scope = AskedFor::Scope;
            const Scope first(askedFor, "Configure", Scope::Counts::First);
            EXPECT_FALSE(first.wasAsked());
            Q_EMIT plugin.hasMessage();
            Q_EMIT plugin.hasMessage();
            EXPECT_TRUE(first.wasAsked());
        }
        Q_EMIT plugin.hasMessage();
        Q_EMIT plugin.hasMessage();
    }
    EXPECT_EQ(countOf("Configure"), 1);
    EXPECT_EQ(countOf("Content"), 2);
}

TEST_F(AskedForTest, Does_not_count_a_plugin_without_the_signal)
{
    AskedFor other;
    const QObject silent;
    other.follow(&silent);
    const AskedFor::Scope scope(other, "Content");
    Q_EMIT plugin.hasMessage();
    EXPECT_TRUE(other.times().isEmpty());
}

#include "AskedForTest.moc"
