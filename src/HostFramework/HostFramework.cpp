// The framework's control surface: set-up, recorders, the message answer queue and the host's life cycle.
#include "HostFramework.h"

#include "HostServiceObjects.h"
#include "HostState.h"
#include "PluginContainer.h"

#include "CommonUtils.h"
#include "HostIds.h"
#include "Startup.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDebug>
#include <QtCore/QDir>
#include <QtCore/QQueue>
#include <QtCore/QStandardPaths>
#include <QtCore/QThread>
#include <mutex>

#include <atomic>

namespace HostFramework {

namespace {

// Everything here may be read from worker threads (settings, recorders, the answer queue), so one
// mutex guards the plain values; the service pointers are atomics because Startup is lock-free.
struct State
{
    std::mutex mutex;
    QString settingsFile;
    QString languageDir;
    QString pluginLibraryPath;
    int frameStyle = FRAME_STYLE_MAIN;
    bool nonInteractive = false;
    QQueue<int> answers;
    QList<MessageRecord> messages;
    QList<NotificationRecord> notifications;
};

State& state()
{
    static State s;
    return s;
}

struct Host
{
    PluginContainer* container = nullptr;
    NotifyService* notify = nullptr;
    MainFrameService* mainFrame = nullptr;
    MainMenuService* mainMenu = nullptr;
    DialupService* dialup = nullptr;
    MiniFrameService* miniFrame = nullptr;
};

Host g_host; // touched only on the GUI thread (createHost / destroyHost)
std::atomic<PluginContainer*> g_container{nullptr};

QString defaultSettingsFile()
{
    QString base = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    if (base.isEmpty())
        base = QDir::homePath() + QStringLiteral("/.config");
    return base + QStringLiteral("/Tessaro/tessaro.ini");
}

} // namespace

// --- Monitor ------------------------------------------------------------------------------------

Monitor* Monitor::instance()
{
    static Monitor* monitor = [] {
        qRegisterMetaType<HostFramework::MessageRecord>("HostFramework::MessageRecord");
        qRegisterMetaType<HostFramework::NotificationRecord>("HostFramework::NotificationRecord");
        auto* m = new Monitor;
        // Created by whichever thread records first; it belongs with the application's objects.
        if (QCoreApplication* app = QCoreApplication::instance())
            m->moveToThread(app->thread());
        return m;
    }();
    return monitor;
}

// --- set-up -------------------------------------------------------------------------------------

void setSettingsFile(const QString& path)
{
    std::unique_lock<std::mutex> lock(state().mutex);
    state().settingsFile = path;
}

QString settingsFile()
{
    return detail::settingsFilePath();
}

void setPluginLibraryPath(const QString& path)
{
    std::unique_lock<std::mutex> lock(state().mutex);
    state().pluginLibraryPath = path;
}

void setLanguageDir(const QString& path)
{
    std::unique_lock<std::mutex> lock(state().mutex);
    state().languageDir = path;
}

void setFrameStyle(int style)
{
    std::unique_lock<std::mutex> lock(state().mutex);
    state().frameStyle = style;
}

PluginContainer* createHost(QWidget* mainWindow, QMenuBar* menuBar)
{
    if (g_host.container)
        return g_host.container;
    auto* container = new PluginContainer;
    container->setObjectName(QStringLiteral("HostPluginContainer"));
    g_host.container = container;
    g_host.notify = new NotifyService(container);
    g_host.mainFrame = new MainFrameService(mainWindow);
    g_host.mainMenu = new MainMenuService(menuBar);
    g_host.dialup = new DialupService;
    g_host.miniFrame = new MiniFrameService;

    container->registerService(QStringLiteral(NOTIFY_PLUGIN_CLSID), NOTIFY_PLUGIN_ID, g_host.notify);
    container->registerService(QStringLiteral(DIALUP_PLUGIN_CLSID), DIALUP_PLUGIN_ID, g_host.dialup);
    container->registerService(QStringLiteral(MAINFRAME_PLUGIN_CLSID), MAINFRAME_PLUGIN_ID, g_host.mainFrame);
    container->registerService(QStringLiteral(MAINMENU_PLUGIN_CLSID), MAINMENU_PLUGIN_ID, g_host.mainMenu);
    container->registerService(QStringLiteral(MINIFRAME_PLUGIN_CLSID), MINIFRAME_PLUGIN_ID, g_host.miniFrame);
    g_container.store(container);
    return container;
}

void destroyHost()
{
    if (!g_host.container)
        return;
    // Plugins go first: their OnDestroy may still reach the host's services.
    g_host.container->unloadAll();
    g_container.store(nullptr);
    delete g_host.container;
    delete g_host.notify;
    delete g_host.mainFrame;
    delete g_host.mainMenu;
    delete g_host.dialup;
    delete g_host.miniFrame;
    g_host = Host();
}

PluginContainer* container()
{
    return g_host.container;
}

NotifyService* notifyService()
{
    return g_host.notify;
}

DialupService* dialupService()
{
    return g_host.dialup;
}

MainMenuService* mainMenuService()
{
    return g_host.mainMenu;
}

MainFrameService* mainFrameService()
{
    return g_host.mainFrame;
}

MiniFrameService* miniFrameService()
{
    return g_host.miniFrame;
}

// --- message boxes ------------------------------------------------------------------------------

void pushNextAnswer(int answer)
{
    std::unique_lock<std::mutex> lock(state().mutex);
    state().answers.enqueue(answer);
}

void clearNextAnswers()
{
    std::unique_lock<std::mutex> lock(state().mutex);
    state().answers.clear();
}

int pendingAnswers()
{
    std::unique_lock<std::mutex> lock(state().mutex);
    return state().answers.size();
}

void setNonInteractive(bool on)
{
    std::unique_lock<std::mutex> lock(state().mutex);
    state().nonInteractive = on;
}

QList<MessageRecord> messageRecords()
{
    std::unique_lock<std::mutex> lock(state().mutex);
    return state().messages;
}

void clearMessageRecords()
{
    std::unique_lock<std::mutex> lock(state().mutex);
    state().messages.clear();
}

// --- notifications ------------------------------------------------------------------------------

QList<NotificationRecord> notificationRecords()
{
    std::unique_lock<std::mutex> lock(state().mutex);
    return state().notifications;
}

void clearNotificationRecords()
{
    std::unique_lock<std::mutex> lock(state().mutex);
    state().notifications.clear();
}

// --- state for tests ----------------------------------------------------------------------------

void resetState()
{
    detail::resetCommonUtils();
}

// --- internal -----------------------------------------------------------------------------------

namespace detail {

QString settingsFilePath()
{
    std::unique_lock<std::mutex> lock(state().mutex);
    if (state().settingsFile.isEmpty())
        state().settingsFile = defaultSettingsFile();
    return state().settingsFile;
}

QString languageDir()
{
    std::unique_lock<std::mutex> lock(state().mutex);
    return state().languageDir;
}

QString pluginLibraryPath()
{
    std::unique_lock<std::mutex> lock(state().mutex);
    if (!state().pluginLibraryPath.isEmpty())
        return state().pluginLibraryPath;
    lock.unlock();
    // The installation keeps programs in bin/ and plugins in plugins/, side by side.
    return QDir::cleanPath(QCoreApplication::applicationDirPath() + QStringLiteral("/.."));
}

int frameStyle()
{
    std::unique_lock<std::mutex> lock(state().mutex);
    return state().frameStyle;
}

bool nonInteractive()
{
    std::unique_lock<std::mutex> lock(state().mutex);
    return state().nonInteractive;
}

QString own(const QString& text)
{
    if (text.isNull())
        return QString();
    return QString(text.unicode(), text.size());
}

QStringList own(const QStringList& list)
{
    QStringList out;
    out.reserve(list.size());
    for (const QString& s : list)
        out << own(s);
    return out;
}

bool takeNextAnswer(int* answer)
{
    std::unique_lock<std::mutex> lock(state().mutex);
    if (state().answers.isEmpty())
        return false;
    *answer = state().answers.dequeue();
    return true;
}

void recordMessage(const MessageRecord& record)
{
    {
        std::unique_lock<std::mutex> lock(state().mutex);
        state().messages.append(record);
    }
    emit Monitor::instance()->messageRecorded(record);
}

void recordNotification(const NotificationRecord& record)
{
    {
        std::unique_lock<std::mutex> lock(state().mutex);
        state().notifications.append(record);
    }
    emit Monitor::instance()->notificationRecorded(record);
}

void log(const QString& line)
{
    qDebug().noquote() << line;
    emit Monitor::instance()->logLine(line);
}

void warn(const QString& line)
{
    qWarning().noquote() << line;
    emit Monitor::instance()->logLine(line);
}

} // namespace detail
} // namespace HostFramework

IPluginContainer* Startup::GetPluginContainer()
{
    return HostFramework::g_container.load();
}
