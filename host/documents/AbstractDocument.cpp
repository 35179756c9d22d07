#include <AbstractDocument.h>

AbstractDocument::AbstractDocument(QObject *parent) : QObject(parent) {}

AbstractDocument::~AbstractDocument() = default;
