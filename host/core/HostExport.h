#pragma once

#include <QtGlobal>

#define HOST_EXPORT Q_DECL_EXPORT
