// Device SDK tests: callbacks that record what the SDK delivers, and small helpers.
#pragma once

#include "ZelkSdk.h"
#include "sim/SimControl.h"

#include <QtCore/QList>

#include <mutex>
#include <thread>
#include <vector>

namespace sdktest {

struct Seen
{
    zelk::Registry registry;
    int event;
    std::thread::id thread;
};

// What the callbacks saw, in order: one record per process, as SDK callbacks are plain functions.
inline std::mutex g_seenMutex;
inline std::vector<Seen> g_seen;

inline std::vector<Seen> seen()
{
    std::lock_guard<std::mutex> lock(g_seenMutex);
    return g_seen;
}

inline QList<int> events()
{
    QList<int> result;
    for (const Seen& s : seen())
        result << s.event;
    return result;
}

inline void clearSeen()
{
    std::lock_guard<std::mutex> lock(g_seenMutex);
    g_seen.clear();
}

// The recording callback for one registry.
template<zelk::Registry R>
int on(int event, void*)
{
    std::lock_guard<std::mutex> lock(g_seenMutex);
    g_seen.push_back(Seen{R, event, std::this_thread::get_id()});
    return 1;
}

inline void registerAll()
{
    ZELK_DevSrv_RegisterDevInitEventCallback(on<zelk::Registry::DevInit>);
    ZELK_DevSrv_RegisterDevMgrCallback(on<zelk::Registry::DevMgr>);
    ZELK_DevSrv_RegisterMultiDeviceEventCallback(on<zelk::Registry::MultiDevice>);
    ZELK_CallSrv_RegisterCallEventHandler(on<zelk::Registry::Call>);
}

inline void unregisterAll()
{
    ZELK_DevSrv_UnRegisterDevInitEventCallback(on<zelk::Registry::DevInit>);
    ZELK_DevSrv_UnRegisterDevMgrCallback(on<zelk::Registry::DevMgr>);
    ZELK_DevSrv_UnRegisterMultiDeviceEventCallback(on<zelk::Registry::MultiDevice>);
    ZELK_CallSrv_UnRegisterCallEventHandler(on<zelk::Registry::Call>);
}

// A device with its id set, starting from the card's default.
inline zelk::sim::Device device(const std::string& id, const std::string& name, int port)
{
    zelk::sim::Device d = zelk::sim::defaultDevice();
    d.id = id;
    d.name = name;
    d.port = port;
    return d;
}

// Replaces the card's devices with `devices` (no events) and makes `active` the active one.
inline void setDevices(const std::vector<zelk::sim::Device>& devices, const std::string& active)
{
    zelk::sim::reset();
    zelk::sim::removeDevice(zelk::sim::defaultDevice().id);
    zelk::sim::waitForIdle();
    for (const zelk::sim::Device& d : devices)
        zelk::sim::attachDevice(d);
    zelk::sim::waitForIdle();
    if (!active.empty())
        zelk::sim::selectDevice(active);
    zelk::sim::waitForIdle();
    clearSeen();
    zelk::sim::clearCalls();
}

} // namespace sdktest
