#include <BasicDocument.h>

BasicDocument::BasicDocument(QObject *parent) : AbstractDocument(parent) {}

BasicDocument::~BasicDocument() = default;

QStringList BasicDocument::getIgnoredProperties()
{
    return {QStringLiteral("objectName"), QStringLiteral("modelRevision")};
}
