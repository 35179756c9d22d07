#include <QObjectHelper.h>

#include <BasicDocument.h>
#include <Receipt.h>

#include <support/PrintQt.h>

#include <gtest/gtest.h>

TEST(QObjectHelper, Gives_declared_and_dynamic_properties)
{
    BasicDocument document;
    document.setObjectName(QStringLiteral("receipt"));
    document.setProperty("total", 100);
    document.setProperty("покупатель", QStringLiteral("Иванов"));
    const QVariantMap expected{
        {QStringLiteral("objectName"), QStringLiteral("receipt")},
        {QStringLiteral("modelRevision"), 0},
        {QStringLiteral("total"), 100},
        {QStringLiteral("покупатель"), QStringLiteral("Иванов")},
    };
    EXPECT_EQ(QObjectHelper::qobject2qvariant(&document, {}), expected);
}

TEST(QObjectHelper, Leaves_names_out_whether_declared_or_dynamic)
{
    BasicDocument document;
    document.setProperty("total", 100);
    document.setProperty("secret", 1);
    const QVariantMap expected{{QStringLiteral("total"), 100}};
    EXPECT_EQ(QObjectHelper::qobject2qvariant(&document, BasicDocument::getIgnoredProperties() +
                                                             QStringList(QStringLiteral("secret"))),
              expected);
}

TEST(QObjectHelper, Takes_names_to_leave_out_with_their_case)
{
    QObject object;
    object.setProperty("total", 100);
    EXPECT_TRUE(QObjectHelper::qobject2qvariant(&object, {QStringLiteral("Total")})
                    .contains(QStringLiteral("total")));
}

TEST(QObjectHelper, Gives_the_properties_of_all_base_classes)
{
    const Receipt receipt(42);
    const auto properties =
        QObjectHelper::qobject2qvariant(&receipt, BasicDocument::getIgnoredProperties());
    EXPECT_EQ(properties.keys(), QStringList({
                                     QStringLiteral("change"),
                                     QStringLiteral("discountSum"),
                                     QStringLiteral("number"),
                                     QStringLiteral("payments"),
                                     QStringLiteral("positions"),
                                     QStringLiteral("state"),
                                     QStringLiteral("sum"),
                                     QStringLiteral("total"),
                                 }));
    EXPECT_EQ(properties.value(QStringLiteral("number")), QVariant(42));
}

TEST(QObjectHelper, Gives_an_empty_map_for_null)
{
    EXPECT_EQ(QObjectHelper::qobject2qvariant(nullptr, {}), QVariantMap());
}
