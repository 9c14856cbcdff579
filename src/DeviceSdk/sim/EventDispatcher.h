// Simulated data card: the callback registries and the SDK thread that delivers events.
#pragma once

#include "SimControl.h"

#include <condition_variable>
#include <deque>
#include <mutex>

namespace zelk::sim {

// Events are delivered one at a time, in the order they were posted, on one thread of the SDK, so a
// callback never runs on the thread that caused its event and never runs twice at once.
class EventDispatcher
{
public:
    EventDispatcher();
    ~EventDispatcher();
    EventDispatcher(const EventDispatcher&) = delete;
    EventDispatcher& operator=(const EventDispatcher&) = delete;

    ZELK_RESULT add(Registry registry, ZELK_EVENT_CALLBACK callback);
    // Once this returns, no call of `callback` starts any more. From any other thread it also waits
    // for a call already running to end; from inside a callback it cannot, and does not.
    ZELK_RESULT remove(Registry registry, ZELK_EVENT_CALLBACK callback);
    int count(Registry registry);

    void post(Registry registry, int event, std::vector<unsigned char> data);
    bool waitForIdle(int timeoutMs);
    std::vector<DeliveredEvent> delivered();
    void clearDelivered();
    std::thread::id threadId() const { return m_threadId; }

private:
    struct Pending
    {
        Registry registry;
        int event;
        std::vector<unsigned char> data;
    };

    void run();
    bool registeredLocked(Registry registry, ZELK_EVENT_CALLBACK callback) const;

    std::mutex m_mutex;
    std::condition_variable m_wake;  // something was posted, or stop
    std::condition_variable m_state; // a callback returned or the queue ran dry
    std::deque<Pending> m_queue;
    std::vector<ZELK_EVENT_CALLBACK> m_callbacks[kRegistryCount];
    ZELK_EVENT_CALLBACK m_running = nullptr;
    bool m_busy = false;
    bool m_stop = false;
    std::vector<DeliveredEvent> m_delivered;
    std::thread m_thread;
    std::thread::id m_threadId;
};

} // namespace zelk::sim
