#include <AbstractDocument.h>

#include <BasicDocument.h>

#include <QPointer>
#include <QSharedPointer>

#include <gtest/gtest.h>

TEST(AbstractDocument, Is_destroyed_completely_through_the_pointer_that_the_host_shares)
{
    QSharedPointer<AbstractDocument> document(new BasicDocument);
    const QPointer<BasicDocument> watch = qobject_cast<BasicDocument *>(document.data());
    ASSERT_FALSE(watch.isNull());
    document.reset();
    EXPECT_TRUE(watch.isNull());
}

TEST(AbstractDocument, Belongs_to_its_parent_if_it_has_one)
{
    QObject parent;
    const auto *document = new AbstractDocument(&parent);
    EXPECT_EQ(document->parent(), &parent);
}
