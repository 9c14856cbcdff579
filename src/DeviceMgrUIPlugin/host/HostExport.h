// Export macro of the host framework library.
#pragma once

#include <QtCore/qglobal.h>

#if defined(HOSTFRAMEWORK_LIBRARY)
#define HOSTFW_EXPORT Q_DECL_EXPORT
#else
#define HOSTFW_EXPORT Q_DECL_IMPORT
#endif
