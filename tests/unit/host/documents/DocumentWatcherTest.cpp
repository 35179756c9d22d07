#include <DocumentWatcher.h>

#include <BasicDocument.h>

#include <gtest/gtest.h>

TEST(DocumentWatcher, Has_no_document_at_first)
{
    EXPECT_EQ(DocumentWatcher().document(), nullptr);
}

TEST(DocumentWatcher, Shares_the_document_it_was_given)
{
    DocumentWatcher watcher;
    QSharedPointer<AbstractDocument> document(new BasicDocument);
    const auto watch = document.toWeakRef();
    watcher.setDocument(document);
    EXPECT_EQ(watcher.document(), document);
    document.reset();
    EXPECT_FALSE(watch.isNull());
}

TEST(DocumentWatcher, Lets_go_of_the_document_for_another_and_for_null)
{
    DocumentWatcher watcher;
    QSharedPointer<AbstractDocument> document(new BasicDocument);
    const auto old = document.toWeakRef();
    watcher.setDocument(document);
    document.reset();

    const QSharedPointer<AbstractDocument> next(new BasicDocument);
    watcher.setDocument(next);
    EXPECT_TRUE(old.isNull());
    EXPECT_EQ(watcher.document(), next);

    watcher.setDocument(nullptr);
    EXPECT_EQ(watcher.document(), nullptr);
}
