#include <BasicDocument.h>

#include <support/PrintQt.h>

#include <QVariant>

#include <gtest/gtest.h>

namespace {

struct ChangingDocument : BasicDocument
{
    using BasicDocument::markChanged;
};

} // namespace

TEST(BasicDocument, Counts_its_changes_as_a_property)
{
    ChangingDocument document;
    EXPECT_EQ(document.modelRevision(), 0);
    document.markChanged();
    document.markChanged();
    EXPECT_EQ(document.modelRevision(), 2);
    EXPECT_EQ(document.property("modelRevision"), QVariant(2));
}

TEST(BasicDocument, Ignores_what_belongs_to_the_object)
{
    EXPECT_EQ(BasicDocument::getIgnoredProperties(),
              QStringList({QStringLiteral("objectName"), QStringLiteral("modelRevision")}));
}
