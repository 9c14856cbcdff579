// Device SDK tests: callbacks that record what the SDK delivers, and small helpers.
#pragma once

#include "ZelkSdk.h"
#include "sim/SimControl.h"

#include <QtCore/QList>
#include <QtCore/QPair>
#include <QtCore/QThread>

#include <cstring>
#include <mutex>
#include <thread>
#include <vector>

namespace sdktest {

struct Seen
{
    zelk::Registry registry;
    int event;
    std::vector<uint32_t> words;
    std::thread::id thread;
};

// One recorder per process: SDK callbacks are plain functions.
class Recorder
{
public:
    static Recorder& instance()
    {
        static Recorder r;
        return r;
    }

    void add(zelk::Registry registry, int event, const void* data)
    {
        Seen s{registry, event, {}, std::this_thread::get_id()};
        if (data) {
            // Every event the card sends with data carries at least one word; device lists are big.
            const std::size_t words = (event == ZELK_EVENT_DEV_LIST_CHANGED ||
                                       event == ZELK_EVENT_DEV_REJECT || event == ZELK_EVENT_DEV_DETECTED)
                                          ? 1
                                          : (event == ZELK_EVENT_DEV_RF_SWITCH ? 2 : 1);
            s.words.resize(words);
            std::memcpy(s.words.data(), data, words * sizeof(uint32_t));
        }
        std::lock_guard<std::mutex> lock(m_mutex);
        m_seen.push_back(s);
    }

    std::vector<Seen> seen()
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        return m_seen;
    }

    QList<int> events()
    {
        QList<int> result;
        for (const Seen& s : seen()) {
            result << s.event;
        }
        return result;
    }

    void clear()
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        m_seen.clear();
    }

private:
    std::mutex m_mutex;
    std::vector<Seen> m_seen;
};

inline int onInit(int event, void* data)
{
    Recorder::instance().add(zelk::Registry::DevInit, event, data);
    return 1;
}
inline int onDevMgr(int event, void* data)
{
    Recorder::instance().add(zelk::Registry::DevMgr, event, data);
    return 1;
}
inline int onMulti(int event, void* data)
{
    Recorder::instance().add(zelk::Registry::MultiDevice, event, data);
    return 1;
}
inline int onCall(int event, void* data)
{
    Recorder::instance().add(zelk::Registry::Call, event, data);
    return 1;
}

inline void registerAll()
{
    ZELK_DevSrv_RegisterDevInitEventCallback(onInit);
    ZELK_DevSrv_RegisterDevMgrCallback(onDevMgr);
    ZELK_DevSrv_RegisterMultiDeviceEventCallback(onMulti);
    ZELK_CallSrv_RegisterCallEventHandler(onCall);
}

inline void unregisterAll()
{
    ZELK_DevSrv_UnRegisterDevInitEventCallback(onInit);
    ZELK_DevSrv_UnRegisterDevMgrCallback(onDevMgr);
    ZELK_DevSrv_UnRegisterMultiDeviceEventCallback(onMulti);
    ZELK_CallSrv_UnRegisterCallEventHandler(onCall);
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
    for (const zelk::sim::Device& d : devices) {
        zelk::sim::attachDevice(d);
    }
    zelk::sim::waitForIdle();
    if (!active.empty()) {
        zelk::sim::selectDevice(active);
    }
    zelk::sim::waitForIdle();
    Recorder::instance().clear();
    zelk::sim::clearCalls();
}

} // namespace sdktest
