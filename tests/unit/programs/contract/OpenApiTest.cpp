// The OpenAPI documents of the contract.

#include <common/MessageTypes.h>

#include <support/Json.h>
#include <support/PrintQt.h>

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>

#include <gtest/gtest.h>

namespace {

QJsonObject document(const QString &name)
{
    QFile file(QStringLiteral(PROTOCOL "/") + name + QStringLiteral(".openapi.json"));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(file.fileName());
    return support::json(file.readAll());
}

/// The files that a document refers to; a reference that begins with '#' is to itself.
QStringList filesIn(const QJsonValue &value)
{
    QStringList files;
    const auto object = value.toObject();
    for (auto entry = object.begin(); entry != object.end(); ++entry) {
        const bool isReference = entry.key() == u"$ref" || entry.key() == u"externalValue";
        if (!isReference)
            files += filesIn(*entry);
        else if (!entry->toString().startsWith('#'))
            files.append(entry->toString());
    }
    const auto array = value.toArray();
    for (const auto &item : array)
        files += filesIn(item);
    return files;
}

} // namespace

TEST(OpenApi, Of_the_display_has_every_message_and_no_other)
{
    const auto paths = document("display").value("paths").toObject();
    EXPECT_EQ(paths.size(), qsizetype(messageTypes.size()));
    for (const auto &type : messageTypes) {
        SCOPED_TRACE(type.name);
        const auto name = QString::fromLatin1(type.name);
        const auto post = paths.value(QLatin1String(type.path))["post"];
        EXPECT_EQ(post["operationId"].toString(), name);
        const auto content = post["requestBody"]["content"]["application/json"];
        EXPECT_EQ(content["schema"]["$ref"].toString(), "schemas/" + name + ".json");
        EXPECT_TRUE(content["examples"].toObject().contains(name));
    }
}

TEST(OpenApi, Of_the_display_says_of_every_message_what_an_answer_does)
{
    const auto display = document("display");
    const auto answers = display["components"]["responses"];
    EXPECT_EQ(answers.toObject().keys(), (QStringList{"Accepted", "NotAccepted"}));
    const auto paths = display["paths"].toObject();
    for (const QJsonValue path : paths) {
        const auto responses = path["post"]["responses"];
        EXPECT_EQ(responses["2XX"]["$ref"].toString(), "#/components/responses/Accepted");
        EXPECT_EQ(responses["default"]["$ref"].toString(), "#/components/responses/NotAccepted");
    }
}

TEST(OpenApi, Documents_refer_to_files_that_are_there)
{
    for (const auto *name : {"display", "plug-in", "ad-service"}) {
        const auto files = filesIn(document(name));
        EXPECT_FALSE(files.isEmpty()) << name;
        for (const auto &file : files)
            EXPECT_TRUE(QFileInfo(QStringLiteral(PROTOCOL "/") + file).isFile())
                << file.toStdString();
    }
}
