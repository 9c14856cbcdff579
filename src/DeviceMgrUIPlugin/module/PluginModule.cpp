// The plugin module: everything lives in the core library linked whole into this file's library;
// this translation unit only names the two exports so the linker keeps them.
#include "DeviceMgrUIPlugin.h"

namespace {
[[maybe_unused]] QObject* (*const keepInstance)() = &qt_plugin_instance;
[[maybe_unused]] const char* (*const keepVerification)() = &qt_plugin_query_verification_data;
} // namespace
