// The fingerprint lock's worker thread: no initialisation event may reach the service while the
// device waits for the user's finger (a PIN dialog must not cover the fingerprint prompt), and none
// may be lost either.
#include "DevCheckFPThread.h"

#include "CommonUtils.h"
#include "DeviceMgrLog.h"
#include "DeviceMgrService.h"
#include "ZelkSdk.h"

#include <QtCore/QCoreApplication>

namespace {

constexpr unsigned long kPollMs = 100;
// Replayed events are paced so that each stage of the start-up settles before the next arrives.
constexpr int kReplayGapMs = 1000;
constexpr unsigned long kFlushGapMs = 500;

} // namespace

// The event comes first in these log texts; `function` names the operation the line stands for.
#define FP_LOG_EVENT(fmt, event, function)                                                                   \
    do {                                                                                                     \
        if (devmgr_log::enabled(QtDebugMsg))                                                                 \
            qDebug(fmt, event, devmgr_log::now().constData(), DM_SOURCE_PATH, function);                     \
    } while (0)

DevCheckFPThread::DevCheckFPThread(CDeviceMgrService* service)
    : QThread(nullptr)
    , m_pService(service)
{
    m_bStopThread.store(false);
    m_bFPLocked.store(false);
    // The first lock event creates this object on an SDK thread, which has no event loop; the GUI
    // thread stops and deletes it.
    if (QCoreApplication* app = QCoreApplication::instance()) {
        moveToThread(app->thread());
        // Direct: the slot only raises a flag, and a queued call could arrive after a later run has
        // started and end that run too.
        connect(app, SIGNAL(aboutToQuit()), this, SLOT(appQuitStop()), Qt::DirectConnection);
    }
    connect(this, SIGNAL(ThreadFinished()), this, SLOT(appQuitStop()), Qt::DirectConnection);
}

DevCheckFPThread::~DevCheckFPThread()
{
    // Deleting a running QThread aborts the process; every wait in run() looks at the flag.
    if (isRunning()) {
        m_bStopThread.store(true);
        wait();
    }
}

void DevCheckFPThread::FPLock()
{
    DM_LOG("%s: %s: %s: Entered");
    m_bFPLocked.store(true);
    DM_LOG("%s: %s: %s: Exit");
}

void DevCheckFPThread::FPUnLock()
{
    DM_LOG("%s: %s: %s: Entered");
    m_bFPLocked.store(false);
    DM_LOG("%s: %s: %s: Exit");
}

void DevCheckFPThread::appendLocked(int event)
{
    m_vecNotifyList.append(event);
}

void DevCheckFPThread::Push(int event)
{
    FP_LOG_EVENT("%d %s: %s: %s: Entered", event, __FUNCTION__);
    QMutexLocker lock(&m_mutex);
    appendLocked(event);
}

bool DevCheckFPThread::pushIfHolding(int event)
{
    QMutexLocker lock(&m_mutex);
    if (!m_bHolding)
        return false;
    appendLocked(event);
    lock.unlock();
    // The SDK thread's Push, made only while a run will still replay the event.
    FP_LOG_EVENT("%d %s: %s: %s: Entered", event, "Push");
    return true;
}

void DevCheckFPThread::Pop(int event)
{
    FP_LOG_EVENT("%d %s: %s: %s: Entered", event, __FUNCTION__);
    QMutexLocker lock(&m_mutex);
    const int at = m_vecNotifyList.indexOf(event);
    if (at >= 0)
        m_vecNotifyList.remove(at);
}

void DevCheckFPThread::ClearNotifyList()
{
    QMutexLocker lock(&m_mutex);
    m_vecNotifyList.clear();
}

QVector<int> DevCheckFPThread::notifyList() const
{
    QMutexLocker lock(&m_mutex);
    return m_vecNotifyList;
}

void DevCheckFPThread::startHolding()
{
    {
        QMutexLocker lock(&m_mutex);
        if (m_bHolding)
            return;
    }
    // A run that found nothing more to do may still be on its way out; it ends without waiting.
    wait();
    ClearNotifyList();
    {
        QMutexLocker lock(&m_mutex);
        m_bHolding = true;
    }
    start(QThread::InheritPriority);
}

bool DevCheckFPThread::quitting() const
{
    return m_pService->isAppQuit() || QCoreApplication::closingDown() || CommonUtils::IsShuttingDown();
}

void DevCheckFPThread::pause(int ms)
{
    for (int slept = 0; slept < ms && !m_bStopThread.load() && !quitting();
         slept += static_cast<int>(kPollMs))
        QThread::msleep(kPollMs);
}

void DevCheckFPThread::run()
{
    DM_LOG("%s : %s : %s : Start Device Check FP Thread...");
    const QString who = QString::fromLatin1(DM_SOURCE_PATH) + QLatin1Char(' ') + QLatin1String(__FUNCTION__);
    CommonUtils::ThreadCountInc(who);
    m_bStopThread.store(false);

    bool shuttingDown = false;
    while (!m_bStopThread.load()) {
        // The host's flags are looked at here too, not only the service's: a shut-down that began
        // during a pause must not see one more event go out.
        if (quitting()) {
            shuttingDown = true;
            break;
        }
        int event = 0;
        {
            QMutexLocker lock(&m_mutex);
            if (m_vecNotifyList.isEmpty()) {
                if (!m_bFPLocked.load()) {
                    // Decided under the mutex: from here on the SDK thread delivers by itself.
                    m_bHolding = false;
                    lock.unlock();
                    DM_LOG("%s : %s : %s : No Event to report, going to exit Check FP Thread...");
                    break;
                }
                lock.unlock();
                QThread::msleep(kPollMs);
                continue;
            }
            event = m_vecNotifyList.takeFirst();
        }
        DM_LOG("%s : %s : %s : called event = %d", event);
        m_pService->OnMyDeviceMgrInitEventHandler(event);

        if (event == ZELK_EVENT_DEV_FP_LOCK && !m_bStopThread.load()) {
            // Everything queued behind the lock event waits for the finger. Stop() ends the wait
            // as well, so that tearing the service down never waits for a finger that never comes.
            while (m_bFPLocked.load() && !m_bStopThread.load() && !quitting())
                QThread::msleep(kPollMs);
        }
        if (quitting()) {
            shuttingDown = true;
            break;
        }
        pause(kReplayGapMs);
    }
    // The quit may also have come as a stop request (aboutToQuit reaches appQuitStop too).
    shuttingDown = shuttingDown || quitting();

    {
        QMutexLocker lock(&m_mutex);
        m_bHolding = false;
        // Held events are dropped at shut-down: no handler may act on them any more.
        if (shuttingDown)
            m_vecNotifyList.clear();
    }
    if (shuttingDown)
        DM_LOG("%s : %s : %s : Events ignored: App Shutting down ");
    CommonUtils::ThreadCountDec(who);
    DM_LOG("%s : %s : %s : Exit Device Check FP Thread");
    emit ThreadFinished();
}

void DevCheckFPThread::SendAllNotifies()
{
    QMutexLocker lock(&m_mutex);
    while (!m_vecNotifyList.isEmpty() && !m_pService->isAppQuit()) {
        if (QCoreApplication::closingDown() || CommonUtils::IsShuttingDown())
            break;
        const int event = m_vecNotifyList.takeFirst();
        DM_LOG("%s : %s : %s : called event = %d", event);
        m_pService->OnMyDeviceMgrInitEventHandler(event);
        QThread::msleep(kFlushGapMs);
    }
    if (m_pService->isAppQuit())
        DM_LOG("%s : %s : %s : Events ignored: App Shutting down ");
}

void DevCheckFPThread::Stop()
{
    DM_LOG("%s: %s: %s: DevCheckFPThread::Stop() Entered");
    m_bStopThread.store(true);
    QThread::msleep(kPollMs);
    CommonUtils::WaitForThreadToStop(this, 5);
    DM_LOG("%s: %s: %s: DevCheckFPThread::Stop() Exit");
}

void DevCheckFPThread::appQuitStop()
{
    DM_LOG("%s: %s: %s: Entered");
    m_bStopThread.store(true);
    DM_LOG("%s: %s: %s: Exit");
}
