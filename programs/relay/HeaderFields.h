#pragma once

#include <BasicHeader.h>

#include <QList>

/// The fields of a header that are meant for the far end: without those of one connection, the ones
/// that "Connection" names among them, and without those that each sender makes anew ("Host",
/// "Content-Length", "Date").
QList<BasicHeader::Field> endToEndFields(const BasicHeader &header);
