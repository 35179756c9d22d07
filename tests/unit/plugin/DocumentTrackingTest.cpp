// The receipt that the display shows.

#include "PluginFixture.h"

#include <BasicDocument.h>
#include <Receipt.h>

namespace {

using view::Message;

const QStringList ownIgnored{
    "addingAllowed",   "basePaymentName", "countersSourceCardNumber",
    "countersChanged", "wasDeferred",     "virtualCheck",
    "waybillNumber",
};

class DocumentTracking : public PluginFixture
{
protected:
    /// A document with one property.
    static QSharedPointer<BasicDocument> document(const char *name, const QVariant &value)
    {
        auto document = QSharedPointer<BasicDocument>::create();
        document->setProperty(name, value);
        return document;
    }
};

TEST_F(DocumentTracking, Seven_names_are_ignored_and_then_those_of_the_host)
{
    const QStringList all = ownIgnored + BasicDocument::getIgnoredProperties();
    EXPECT_EQ(ProbedConnector::getDocumentIgnoredProps(), all);
    EXPECT_EQ(connector->ignoredProps, all);
    EXPECT_EQ(connector->ignoredProps.mid(7), (QStringList{"objectName", "modelRevision"}));
}

TEST_F(DocumentTracking, A_new_document_is_sent_at_once)
{
    connector->setDocument(document("sum", 5));
    EXPECT_EQ(connector->sent, QList{Message(Type::UpdateDocument, {{"sum", 5}})});
    EXPECT_EQ(takeWaiting(), connector->sent);
}

TEST_F(DocumentTracking, The_same_document_is_sent_again_even_if_nothing_changed)
{
    const auto same = document("sum", 5);
    connector->setDocument(same);
    connector->takeSent();
    connector->setDocument(same);
    EXPECT_EQ(connector->takeSent(), QList{Message(Type::UpdateDocument, {{"sum", 5}})});
}

TEST_F(DocumentTracking, The_host_may_set_it_through_the_base)
{
    DocumentWatcher &watcher = *connector;
    watcher.setDocument(document("sum", 5));
    EXPECT_EQ(connector->sent, QList{Message(Type::UpdateDocument, {{"sum", 5}})});
}

TEST_F(DocumentTracking, The_document_is_shared_with_the_host_until_the_next_one)
{
    auto first = document("sum", 1);
    const QWeakPointer<BasicDocument> watched = first;
    connector->setDocument(first);
    EXPECT_EQ(connector->document(), first);
    first.reset();
    EXPECT_FALSE(watched.isNull());
    connector->setDocument(document("sum", 2));
    EXPECT_TRUE(watched.isNull());
}

TEST_F(DocumentTracking,
       A_document_that_the_host_drops_is_still_sent_at_a_change_until_the_next_one)
{
    connector->initTriggers();
    const auto triggers = connector->triggers();
    for (int sum = 1; sum <= 3; ++sum) {
        connector->setDocument(document("sum", sum)); // the host keeps nothing of it
        connector->takeSent();
        triggers.constFirst().run({});
        EXPECT_EQ(connector->takeSent(), QList{Message(Type::UpdateDocument, {{"sum", sum}})});
    }
}

TEST_F(DocumentTracking, Without_a_document_an_empty_map_is_sent)
{
    connector->setDocument(document("sum", 5));
    connector->takeSent();
    connector->setDocument({});
    EXPECT_EQ(connector->takeSent(), QList{Message(Type::UpdateDocument, {})});
    EXPECT_EQ(connector->document(), nullptr);
}

TEST_F(DocumentTracking, The_images_sent_for_the_document_before_are_forgotten_first)
{
    class Watching : public ProbedConnector
    {
    public:
        void addMessage(const Message &) override { imagesAtMessage = sentImages.size(); }
        qsizetype imagesAtMessage = -1;
    };
    Watching watching;
    watching.sentImages = {ImageId(ImageId::GoodsCode, "100"), ImageId(ImageId::Barcode, "46")};
    watching.setDocument(document("sum", 5));
    EXPECT_EQ(watching.imagesAtMessage, 0);
    EXPECT_TRUE(watching.sentImages.isEmpty());
}

TEST_F(DocumentTracking, A_mere_change_forgets_no_images)
{
    connector->sentImages = {ImageId(ImageId::GoodsCode, "100")};
    connector->onDocumentModified(control::Action());
    EXPECT_EQ(connector->sentImages.size(), 1);
}

TEST_F(DocumentTracking, Open_dialogs_are_left_alone)
{
    connector->dialogTypes = {{7, Type::QrPayment}};
    connector->setDocument(document("sum", 5));
    EXPECT_EQ(connector->dialogTypes, (QMap<int, Type>{{7, Type::QrPayment}}));
}

TEST_F(DocumentTracking, Ignored_properties_do_not_reach_the_display)
{
    for (const QString &name : connector->ignoredProps) {
        const auto secret = document("sum", 5);
        secret->setProperty(name.toUtf8().constData(), "set");
        connector->setDocument(secret);
        EXPECT_EQ(connector->takeSent(), QList{Message(Type::UpdateDocument, {{"sum", 5}})})
            << name.toStdString();
    }
}

TEST_F(DocumentTracking, Names_are_ignored_only_as_a_whole)
{
    connector->setDocument(document("waybillNumber2", 5));
    EXPECT_EQ(connector->takeSent(), QList{Message(Type::UpdateDocument, {{"waybillNumber2", 5}})});
}

TEST_F(DocumentTracking, Declared_properties_are_sent_with_the_dynamic_ones)
{
    const auto receipt = QSharedPointer<Receipt>::create(12);
    receipt->setProperty("cashier", "Анна");
    receipt->setProperty("virtualCheck", true);
    connector->setDocument(receipt);
    const auto data = connector->sent.constFirst().data;
    EXPECT_EQ(data.value("number"), 12);
    EXPECT_EQ(data.value("state"), "open");
    EXPECT_EQ(data.value("cashier"), "Анна");
    EXPECT_EQ(data.keys(), (QStringList{"cashier", "change", "discountSum", "number", "payments",
                                        "positions", "state", "sum", "total"}));
}

TEST_F(DocumentTracking, Ten_changes_leave_one_message_with_the_last_state)
{
    const auto changing = document("sum", 0);
    connector->setDocument(changing);
    connector->initTriggers();
    for (int sum = 1; sum <= 10; ++sum) {
        changing->setProperty("sum", sum);
        connector->triggers().constFirst().run(control::Action());
    }
    EXPECT_EQ(connector->sent.size(), 11);
    EXPECT_EQ(takeWaiting(), QList{Message(Type::UpdateDocument, {{"sum", 10}})});
}

TEST_F(DocumentTracking, A_message_holds_the_state_at_the_change)
{
    const auto changing = document("sum", 1);
    connector->setDocument(changing);
    changing->setProperty("sum", 2);
    EXPECT_EQ(takeWaiting(), QList{Message(Type::UpdateDocument, {{"sum", 1}})});
}

TEST_F(DocumentTracking, Nothing_is_logged)
{
    connector->setDocument(document("sum", 5));
    connector->setDocument({});
    EXPECT_TRUE(log.lines().isEmpty());
}

} // namespace
