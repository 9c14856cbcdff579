// The host framework's own control surface: creating the host's services, and the recorders and
// answer queue that the host application, the scripted demo and the tests use to observe plugins.
#pragma once

#include "HostExport.h"

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVariant>

class QWidget;
class QMenuBar;
class PluginContainer;
class NotifyService;
class DialupService;
class MainMenuService;
class MainFrameService;
class MiniFrameService;

namespace HostFramework {

// One message box request, as the plugin asked for it.
struct MessageRecord
{
    QString function;         // "ShowMessage" or "ShowMessageCustomize"
    int icon = 0;             // QMessageBox::Icon value
    QPointer<QWidget> parent; // may have died since
    QString parentName;       // parent's objectName() at the time of the request
    QString title;            // as passed (a translated text)
    QString text;
    QStringList buttons; // the IDS keys as passed
    int answer = 0;      // what ShowMessage returned
};

// One notification that passed through the notification service.
struct NotificationRecord
{
    QString kind;  // "send", "raise", "broadcast", "subscribe" or "unsubscribe"
    QString clsid; // target (send), sender (raise, subscribe); empty for broadcast
    unsigned int code = 0;
    unsigned int wparam = 0;
    unsigned int lparam = 0;
    int delivered = 0; // receivers reached
};

// Observes the framework; the host application shows these, tests may wait on them.
class HOSTFW_EXPORT Monitor : public QObject
{
    Q_OBJECT
public:
    static Monitor* instance();
signals:
    void messageRecorded(const HostFramework::MessageRecord& record);
    void notificationRecorded(const HostFramework::NotificationRecord& record);
    void logLine(const QString& line);
};

// --- set-up -------------------------------------------------------------------------------------

// Settings file (INI). Default: <user config folder>/Tessaro/tessaro.ini.
HOSTFW_EXPORT void setSettingsFile(const QString& path);
HOSTFW_EXPORT QString settingsFile();
// Root of the installation (GetPluginLibraryPath); default: the application folder's parent.
HOSTFW_EXPORT void setPluginLibraryPath(const QString& path);
// Folder with the compiled language files (tessaro_<lang>.qm).
HOSTFW_EXPORT void setLanguageDir(const QString& path);
HOSTFW_EXPORT void setFrameStyle(int style);

// Creates the container and registers the host's services under their class identifiers.
// `mainWindow` is what the main frame service returns (may be null). Idempotent.
HOSTFW_EXPORT PluginContainer* createHost(QWidget* mainWindow = nullptr, QMenuBar* menuBar = nullptr);
// Unloads every plugin and deletes the container and services; Startup::GetPluginContainer()
// returns null afterwards.
HOSTFW_EXPORT void destroyHost();
HOSTFW_EXPORT PluginContainer* container();
HOSTFW_EXPORT NotifyService* notifyService();
HOSTFW_EXPORT DialupService* dialupService();
HOSTFW_EXPORT MainMenuService* mainMenuService();
HOSTFW_EXPORT MainFrameService* mainFrameService();
HOSTFW_EXPORT MiniFrameService* miniFrameService();

// --- message boxes ------------------------------------------------------------------------------

// Queue the answer of the next message box: it is recorded and answered without being shown.
HOSTFW_EXPORT void pushNextAnswer(int answer);
HOSTFW_EXPORT void clearNextAnswers();
HOSTFW_EXPORT int pendingAnswers();
// With no queued answer a non-interactive host answers 0 at once (and warns) instead of showing
// a modal box; tests and the offscreen demo run non-interactive.
HOSTFW_EXPORT void setNonInteractive(bool on);
HOSTFW_EXPORT QList<MessageRecord> messageRecords();
HOSTFW_EXPORT void clearMessageRecords();

// --- notifications ------------------------------------------------------------------------------

HOSTFW_EXPORT QList<NotificationRecord> notificationRecords();
HOSTFW_EXPORT void clearNotificationRecords();

// --- state for tests ----------------------------------------------------------------------------

// Clears the shut-down flag, the LTE mode and the thread count between tests.
HOSTFW_EXPORT void resetState();

} // namespace HostFramework

Q_DECLARE_METATYPE(HostFramework::MessageRecord)
Q_DECLARE_METATYPE(HostFramework::NotificationRecord)
