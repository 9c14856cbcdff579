// The worker thread that waits for the platform's mobile-broadband (WWAN) service before the SIM
// PIN may be checked.
#pragma once

#include <QtCore/QThread>

#include <atomic>

// Polls the SDK once a second until the WWAN service is ready or known to be absent, then emits
// deviceInitFinished(). One instance per process, created on the GUI thread.
class DeviceMgrWin7Thread : public QThread
{
    Q_OBJECT

public:
    static DeviceMgrWin7Thread* Instance();
    ~DeviceMgrWin7Thread() override;

    // Asks a running poll to end and waits for it within the host's bound.
    void Stop();

    // Set once the WWAN service was found ready or absent; never cleared afterwards.
    bool isWWanReady() const { return m_bWWanReady.load(); }

    // The flags are written by the GUI thread and read by run(); each only ever goes from false to
    // true while a run can see it (m_bStopThread is reset by run() itself).
    std::atomic<bool> m_bWWanReady{false};
    std::atomic<bool> m_bStopThread{false};
    std::atomic<bool> m_bAppQuit{false};

signals:
    void deviceInitFinished();

public slots:
    void appQuitStop();

protected:
    void run() override;

private:
    DeviceMgrWin7Thread();
    Q_DISABLE_COPY(DeviceMgrWin7Thread)

    static DeviceMgrWin7Thread* m_pThreadInstance;
};
