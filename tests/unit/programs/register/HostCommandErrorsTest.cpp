#include "TillFixture.h"

#include <register/HostCommands.h>

#include <QFile>
#include <QTemporaryDir>

namespace {

constexpr auto idError = "\"id\" names no picture: give one like "
                         "{\"type\":\"GoodsCode\",\"value\":\"100\"}, the type being GoodsCode or "
                         "Barcode";
constexpr auto keyError = " is no key: give one like \"View.Logic:showQrCode\"";

const WrongCommand wrongCommands[] = {
    {R"({"do":"event"})", "\"code\" is missing: give a whole number"},
    {R"({"do":"event","code":"117"})", "\"code\" has the wrong type: give a whole number"},
    {R"({"do":"event","code":1.5})", "\"code\" has the wrong type: give a whole number"},
    {R"({"do":"event","code":117,"arguments":[]})",
     "\"arguments\" has the wrong type: give an object"},
    {R"({"do":"event","code":117,"arguments":null})",
     "\"arguments\" has the wrong type: give an object"},
    {R"({"do":"document"})", "\"properties\" is missing: give an object"},
    {R"({"do":"document","properties":[]})", "\"properties\" has the wrong type: give an object"},
    {R"({"do":"document","properties":{"modelRevision":1}})",
     "the property \"modelRevision\" of this document follows from its content: change it with the "
     "cashier's commands"},
    {R"({"do":"change"})", "\"properties\" is missing: give an object"},
    {R"({"do":"change","properties":null})", "\"properties\" has the wrong type: give an object"},
    {R"({"do":"change","properties":{},"context":"1"})",
     "\"context\" has the wrong type: give a whole number"},
    {R"({"do":"change","properties":{},"action":null})",
     "\"action\" has the wrong type: give a whole number"},
    {R"({"do":"action","action":131})", "\"context\" is missing: give a whole number"},
    {R"({"do":"action","context":6})", "\"action\" is missing: give a whole number"},
    {R"({"do":"action","context":true,"action":131})",
     "\"context\" has the wrong type: give a whole number"},
    {R"({"do":"setting","value":1})", "\"key\" is missing: give a text"},
    {R"({"do":"setting","key":5,"value":1})", "\"key\" has the wrong type: give a text"},
    {R"({"do":"setting","key":"showQrCode","value":1})", keyError},
    {R"({"do":"setting","key":"a:b"})",
     "\"value\" is missing: give the setting's value, or null to remove the setting"},
    {R"({"do":"image"})", "\"id\" is missing: give an object"},
    {R"({"do":"image","id":"100"})", "\"id\" has the wrong type: give an object"},
    {R"({"do":"image","id":{}})", idError},
    {R"({"do":"image","id":{"type":"GoodsCode"}})", idError},
    {R"({"do":"image","id":{"type":"GoodsCode","value":""}})", idError},
    {R"({"do":"image","id":{"type":"GoodsCode","value":100}})", idError},
    {R"({"do":"image","id":{"type":"Shelf","value":"100"}})", idError},
    {R"({"do":"image","id":{"type":0,"value":"100"}})", idError},
    {R"({"do":"image","id":{"type":"GoodsCode","value":"100","more":1}})", idError},
    {R"({"do":"image","id":{"type":"GoodsCode","value":"100"},"file":5})",
     "\"file\" has the wrong type: give a text"},
    {R"({"do":"image","id":{"type":"GoodsCode","value":"100"},"file":"none.png"})",
     "the picture \"none.png\" cannot be read: "},
    {R"({"do":"image","id":{"type":"GoodsCode","value":"100"},"file":"."})",
     "the picture \".\" cannot be read: "},
    {R"({"do":"image","id":{"type":"GoodsCode","value":"100"},"file":"empty.png"})",
     "the picture \"empty.png\" is empty"},
};

class WrongHostCommand : public TillFixture, public testing::WithParamInterface<WrongCommand>
{
protected:
    WrongHostCommand()
    {
        QFile empty(pictures.filePath("empty.png"));
        EXPECT_TRUE(empty.open(QIODevice::WriteOnly));
        addHostCommands(commands, till, pictures.path());
        till.init();
        till.setDocument(QSharedPointer<BasicDocument>::create());
        calls();
    }

    QTemporaryDir pictures;
};

} // namespace

TEST_P(WrongHostCommand, Is_answered_with_the_field_and_the_mend_and_changes_nothing)
{
    const auto document = till.document();
    const auto error = run(GetParam().command);
    EXPECT_FALSE(error.isEmpty());
    EXPECT_TRUE(error.contains(QString::fromUtf8(GetParam().error))) << error.toStdString();

    EXPECT_TRUE(calls().isEmpty());
    EXPECT_EQ(till.document(), document);
    EXPECT_EQ(singletons.images().findImage({ImageId::GoodsCode, "100"})->value(), "");
    EXPECT_FALSE(singletons.config().value("a:b").isValid());
}

INSTANTIATE_TEST_SUITE_P(Row, WrongHostCommand, testing::ValuesIn(wrongCommands));
