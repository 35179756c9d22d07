#include <MockFactoryDefinition.h>

#include <RestClient.h>

#include <gtest/gtest.h>

namespace {

struct Service
{
    int value = 7;
};

struct FakeRestClient : RestClient
{
    int requestTimeout() const override { return 4711; }
};

class MockFactories : public testing::Test
{
protected:
    ~MockFactories() override
    {
        MockFactory<Service>::inject(nullptr);
        MockFactory<RestClient>::inject(nullptr);
    }
};

} // namespace

TEST_F(MockFactories, Create_a_new_object_each_time)
{
    const auto first = MockFactory<Service>::create();
    const auto second = MockFactory<Service>::create();
    ASSERT_TRUE(first);
    ASSERT_TRUE(second);
    EXPECT_NE(first, second);
    EXPECT_EQ(first->value, 7);
}

TEST_F(MockFactories, Hand_out_the_injected_instance_while_there_is_one)
{
    const auto injected = QSharedPointer<Service>::create();
    MockFactory<Service>::inject(injected);
    EXPECT_EQ(MockFactory<Service>::create(), injected);
    EXPECT_EQ(MockFactory<Service>::create(), injected);
}

TEST_F(MockFactories, Go_back_to_new_objects_when_null_is_injected)
{
    const auto injected = QSharedPointer<Service>::create();
    MockFactory<Service>::inject(injected);
    MockFactory<Service>::inject(nullptr);
    const auto created = MockFactory<Service>::create();
    ASSERT_TRUE(created);
    EXPECT_NE(created, injected);
}

TEST_F(MockFactories, Keep_the_injected_instance_alive_and_let_go_of_it)
{
    auto injected = QSharedPointer<Service>::create();
    const QWeakPointer<Service> watch = injected;
    MockFactory<Service>::inject(injected);
    injected.reset();
    EXPECT_FALSE(watch.isNull());
    MockFactory<Service>::inject(nullptr);
    EXPECT_TRUE(watch.isNull());
}

TEST_F(MockFactories, Replace_the_REST_client_that_the_host_library_instantiates)
{
    MockFactory<RestClient>::inject(QSharedPointer<FakeRestClient>::create());
    EXPECT_EQ(MockFactory<RestClient>::create()->requestTimeout(), 4711);
    MockFactory<RestClient>::inject(nullptr);
    EXPECT_NE(MockFactory<RestClient>::create()->requestTimeout(), 4711);
}
