// Framework-internal state shared by the CommonUtils, Change and container implementations.
#pragma once

#include "HostFramework.h"

#include <QtCore/QString>

namespace HostFramework {
namespace detail {

QString settingsFilePath();
QString languageDir(); // empty when the host never chose one
QString pluginLibraryPath();
int frameStyle();
bool nonInteractive();

// A copy of `text` with storage of its own. Strings from a plugin may point into the plugin's
// read-only data (QStringLiteral); whatever the host keeps must survive that plugin's unloading.
QString own(const QString& text);
QStringList own(const QStringList& list);

// Pops the next queued message answer; false when the queue is empty.
bool takeNextAnswer(int* answer);
void recordMessage(const MessageRecord& record);
void recordNotification(const NotificationRecord& record);

// Clears the shut-down flag, the LTE mode and the thread count.
void resetCommonUtils();

// The framework's own log line: to the debug channel and to Monitor::logLine.
void log(const QString& line);
void warn(const QString& line);

} // namespace detail
} // namespace HostFramework
