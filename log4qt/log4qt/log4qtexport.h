#pragma once

#include <QtGlobal>

#define LOG4QT_EXPORT Q_DECL_EXPORT
