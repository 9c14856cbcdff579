// Shared helpers of the service suites: the service started against the simulated card, events
// injected on the SDK's threads, and the notifications as the other plugins see them.
#pragma once

#include "DeviceMgrService.h"
#include "HostFramework.h"
#include "HostIds.h"
#include "SimControl.h"

#include <QtCore/QList>
#include <QtCore/QMutex>
#include <QtCore/QStringList>
#include <QtTest/QtTest>

#include <atomic>
#include <cstdio>
#include <cstring>
#include <vector>

namespace svc {

// How many queued events reached a GUI-thread handler, and which.
inline std::atomic<int> g_handled{0};
inline QList<int> g_handledEvents;

inline void countHandled(int event)
{
    g_handledEvents << event;
    g_handled.fetch_add(1);
}

inline void resetHandled()
{
    g_handled.store(0);
    g_handledEvents.clear();
    CDeviceMgrService::setHandlerProbe(&countHandled);
}

// Log lines from every thread.
inline QMutex g_logMutex;
inline QStringList g_log;

inline void captureLog(QtMsgType, const QMessageLogContext&, const QString& message)
{
    QMutexLocker lock(&g_logMutex);
    g_log << message;
}

inline void startLogCapture()
{
    {
        QMutexLocker lock(&g_logMutex);
        g_log.clear();
    }
    qInstallMessageHandler(&captureLog);
}

inline int logCount(const QString& fragment)
{
    QMutexLocker lock(&g_logMutex);
    int n = 0;
    for (const QString& line : qAsConst(g_log))
        n += line.contains(fragment) ? 1 : 0;
    return n;
}

// The event on the SDK thread of the registry it belongs to, with its data words (none: null data).
inline void inject(int event, const std::vector<uint32_t>& words = {})
{
    if (words.empty())
        zelk::sim::injectEvent(zelk::sim::registryOf(event), event, nullptr, 0);
    else
        zelk::sim::injectEvent(zelk::sim::registryOf(event), event, words);
}

// A device-list record of `count` devices, as the SDK hands it to the callbacks.
inline std::vector<unsigned char> deviceList(int count)
{
    _ZELK_ST_MULTI_DEVICE_INFO list;
    std::memset(&list, 0, sizeof(list));
    list.nDevNum = count;
    for (int i = 0; i < count && i < MAX_DEVICE_COUNT; ++i) {
        list.stDevInfo[i].nPort = 10 + i;
        list.stDevInfo[i].nProtocol = 1;
        std::snprintf(list.stDevInfo[i].szName, sizeof(list.stDevInfo[i].szName), "Modem %d", i + 1);
    }
    const auto* p = reinterpret_cast<const unsigned char*>(&list);
    return std::vector<unsigned char>(p, p + sizeof(list));
}

inline void injectList(int event, int count)
{
    const std::vector<unsigned char> bytes = deviceList(count);
    zelk::sim::injectEvent(zelk::sim::registryOf(event), event, bytes.data(), bytes.size());
}

// Waits until the SDK delivered everything and the GUI handlers saw `handled` events in all.
inline bool settle(int handled)
{
    if (!zelk::sim::waitForIdle(5000))
        return false;
    const bool reached = QTest::qWaitFor([handled] { return g_handled.load() >= handled; }, 5000);
    if (!reached)
        return false;
    // Anything still queued behind the awaited events shows up as a count above `handled`.
    QCoreApplication::sendPostedEvents();
    return g_handled.load() == handled;
}

// Notifications sent or broadcast, as "broadcast 578 0 0" or "send <clsid> 582 0 0".
inline QStringList sent()
{
    QStringList out;
    const auto records = HostFramework::notificationRecords();
    for (const auto& r : records) {
        if (r.kind == QLatin1String("broadcast"))
            out << QStringLiteral("broadcast %1 %2 %3").arg(r.code).arg(r.wparam).arg(r.lparam);
        else if (r.kind == QLatin1String("send"))
            out << QStringLiteral("send %1 %2 %3 %4").arg(r.clsid).arg(r.code).arg(r.wparam).arg(r.lparam);
    }
    return out;
}

inline QString bc(unsigned int code, unsigned int wparam = 0)
{
    return QStringLiteral("broadcast %1 %2 0").arg(code).arg(wparam);
}

inline QString to(const char* clsid, unsigned int code)
{
    return QStringLiteral("send %1 %2 0 0").arg(QLatin1String(clsid)).arg(code);
}

inline int callCount(const char* function)
{
    return static_cast<int>(zelk::sim::calls(function).size());
}

inline zelk::sim::Device activeDevice()
{
    zelk::sim::Device d;
    zelk::sim::findDevice(zelk::sim::activeDeviceId(), &d);
    return d;
}

// Deletes what the service scheduled for deletion, so a replaced dialog is really gone.
inline void flushDeletes()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

// Ends a test: no callback left registered, nothing queued, the singleton gone.
inline void stopService()
{
    if (CDeviceMgrService* service = CDeviceMgrService::instance())
        service->unSDKRegisterEvent();
    zelk::sim::waitForIdle(5000);
    CDeviceMgrService::Destroy();
    CDeviceMgrService::setHandlerProbe(nullptr);
}

} // namespace svc
