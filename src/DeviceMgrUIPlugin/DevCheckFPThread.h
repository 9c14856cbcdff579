// The worker thread that holds the device's initialisation events back while its fingerprint lock is
// on, and replays them in arrival order once the finger is verified.
#pragma once

#include <QtCore/QMutex>
#include <QtCore/QThread>
#include <QtCore/QVector>

#include <atomic>

class CDeviceMgrService;

// Created on the SDK thread by the first lock event (6018); lives on the GUI thread, which stops and
// deletes it. The list is shared by the SDK thread (Push, ClearNotifyList, SendAllNotifies), the
// worker (run) and the GUI thread (Pop): every access holds m_mutex.
class DevCheckFPThread : public QThread
{
    Q_OBJECT

public:
    explicit DevCheckFPThread(CDeviceMgrService* service);
    ~DevCheckFPThread() override;

    void FPLock();
    void FPUnLock();
    bool isFPLocked() const { return m_bFPLocked.load(); }

    void Push(int event);
    // Removes the first held `event`, if any.
    void Pop(int event);
    void ClearNotifyList();
    // Replays what is still held, on the caller's thread, half a second apart.
    void SendAllNotifies();
    void Stop();

    // The SDK thread's way in: starts a replay run unless one is under way (a run that has already
    // decided to end is waited for first, so a new lock is never left without a thread).
    void startHolding();
    // Appends `event` when a run is under way that will still replay it; false otherwise, and the
    // caller delivers the event itself. Deciding under the list's mutex closes the gap between a
    // run finding the list empty and the thread reporting that it is no longer running.
    bool pushIfHolding(int event);
    // The held events, oldest first.
    QVector<int> notifyList() const;

    std::atomic<bool> m_bStopThread{false};

signals:
    void ThreadFinished();

public slots:
    void appQuitStop();

protected:
    void run() override;

private:
    // True when the application is going away: nothing more may be delivered.
    bool quitting() const;
    // Sleeps `ms` in 100 ms slices, less when the thread is to stop or the application quits.
    void pause(int ms);
    void appendLocked(int event);

    CDeviceMgrService* m_pService;
    QVector<int> m_vecNotifyList;
    mutable QMutex m_mutex;
    std::atomic<bool> m_bFPLocked{false};
    // Guarded by m_mutex: a run is under way and has not yet decided to end.
    bool m_bHolding = false;

    Q_DISABLE_COPY(DevCheckFPThread)
};
