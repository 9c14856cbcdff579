// Simulated data card: the callback registries and the SDK thread that delivers events.
#include "EventDispatcher.h"

#include <algorithm>
#include <chrono>

namespace zelk::sim {

namespace {
// Enough for any test or demo run; older records are dropped so a long session does not grow.
constexpr std::size_t kMaxDeliveredRecords = 20000;
} // namespace

EventDispatcher::EventDispatcher()
{
    m_thread = std::thread([this] { run(); });
    m_threadId = m_thread.get_id();
}

EventDispatcher::~EventDispatcher()
{
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        m_stop = true;
        m_queue.clear();
    }
    m_wake.notify_all();
    if (m_thread.joinable()) {
        m_thread.join();
    }
}

bool EventDispatcher::registeredLocked(Registry registry, ZELK_EVENT_CALLBACK callback) const
{
    const auto& list = m_callbacks[static_cast<int>(registry)];
    return std::find(list.begin(), list.end(), callback) != list.end();
}

ZELK_RESULT EventDispatcher::add(Registry registry, ZELK_EVENT_CALLBACK callback)
{
    if (!callback) {
        return ZELK_ERROR_BAD_PARAM;
    }
    std::lock_guard<std::mutex> lock(m_mutex);
    if (!registeredLocked(registry, callback)) {
        m_callbacks[static_cast<int>(registry)].push_back(callback);
    }
    return ZELK_ERROR_SUCCESS;
}

ZELK_RESULT EventDispatcher::remove(Registry registry, ZELK_EVENT_CALLBACK callback)
{
    if (!callback) {
        return ZELK_ERROR_BAD_PARAM;
    }
    std::unique_lock<std::mutex> lock(m_mutex);
    auto& list = m_callbacks[static_cast<int>(registry)];
    const auto it = std::find(list.begin(), list.end(), callback);
    if (it == list.end()) {
        return ZELK_ERROR_FAILURE;
    }
    list.erase(it);
    // The caller may unload the code behind the callback next; a call in progress must be over.
    if (std::this_thread::get_id() != m_threadId) {
        m_state.wait(lock, [&] { return m_running != callback; });
    }
    return ZELK_ERROR_SUCCESS;
}

int EventDispatcher::count(Registry registry)
{
    std::lock_guard<std::mutex> lock(m_mutex);
    return static_cast<int>(m_callbacks[static_cast<int>(registry)].size());
}

void EventDispatcher::post(Registry registry, int event, std::vector<unsigned char> data)
{
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        if (m_stop) {
            return;
        }
        m_queue.push_back(Pending{registry, event, std::move(data)});
    }
    m_wake.notify_one();
}

bool EventDispatcher::waitForIdle(int timeoutMs)
{
    if (std::this_thread::get_id() == m_threadId) {
        return false; // the delivery thread would wait for itself
    }
    std::unique_lock<std::mutex> lock(m_mutex);
    return m_state.wait_for(lock, std::chrono::milliseconds(timeoutMs),
                            [this] { return m_queue.empty() && !m_busy; });
}

std::vector<DeliveredEvent> EventDispatcher::delivered()
{
    std::lock_guard<std::mutex> lock(m_mutex);
    return m_delivered;
}

void EventDispatcher::clearDelivered()
{
    std::lock_guard<std::mutex> lock(m_mutex);
    m_delivered.clear();
}

void EventDispatcher::run()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    for (;;) {
        m_wake.wait(lock, [this] { return m_stop || !m_queue.empty(); });
        if (m_stop) {
            break;
        }
        Pending item = std::move(m_queue.front());
        m_queue.pop_front();
        m_busy = true;

        DeliveredEvent record;
        record.registry = item.registry;
        record.event = item.event;
        record.data = item.data;
        record.thread = std::this_thread::get_id();

        // Callbacks may register and unregister (themselves included) while we deliver: walk a
        // copy and check each entry is still registered right before its call starts.
        const std::vector<ZELK_EVENT_CALLBACK> snapshot = m_callbacks[static_cast<int>(item.registry)];
        for (ZELK_EVENT_CALLBACK callback : snapshot) {
            if (m_stop) {
                break;
            }
            if (!registeredLocked(item.registry, callback)) {
                continue;
            }
            m_running = callback;
            // Each callback gets its own copy: one callback writing into the data must not change
            // what the next one reads.
            std::vector<unsigned char> data = item.data;
            lock.unlock();
            callback(item.event, data.empty() ? nullptr : data.data());
            lock.lock();
            m_running = nullptr;
            ++record.callbacks;
            m_state.notify_all();
        }

        if (m_delivered.size() >= kMaxDeliveredRecords) {
            m_delivered.erase(m_delivered.begin(), m_delivered.begin() + kMaxDeliveredRecords / 2);
        }
        m_delivered.push_back(std::move(record));
        m_busy = false;
        m_state.notify_all();
    }
    m_busy = false;
    m_state.notify_all();
}

} // namespace zelk::sim
