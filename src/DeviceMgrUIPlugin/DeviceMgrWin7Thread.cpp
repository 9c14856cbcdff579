// The WWAN readiness thread: one poll a second until the platform's mobile-broadband service is
// ready, then the deferred PIN check may run.
#include "DeviceMgrWin7Thread.h"

#include "CommonUtils.h"
#include "DeviceMgrLog.h"
#include "ZelkSdk.h"

#include <QtCore/QCoreApplication>

DeviceMgrWin7Thread* DeviceMgrWin7Thread::m_pThreadInstance = nullptr;

DeviceMgrWin7Thread* DeviceMgrWin7Thread::Instance()
{
    DM_LOG("%s: %s: %s: Entered");
    if (!m_pThreadInstance)
        m_pThreadInstance = new DeviceMgrWin7Thread;
    return m_pThreadInstance;
}

DeviceMgrWin7Thread::DeviceMgrWin7Thread()
    : QThread(nullptr)
{
    if (QCoreApplication* app = QCoreApplication::instance())
        connect(app, SIGNAL(aboutToQuit()), this, SLOT(appQuitStop()));
}

DeviceMgrWin7Thread::~DeviceMgrWin7Thread()
{
    // The owner stops the thread before deleting it; should it not have, the wait stays within
    // the host's bound: a poll that never returns must not hang the shut-down.
    if (isRunning()) {
        m_bStopThread.store(true);
        CommonUtils::WaitForThreadToStop(this, 5);
    }
    if (m_pThreadInstance == this)
        m_pThreadInstance = nullptr;
}

void DeviceMgrWin7Thread::run()
{
    const QString who = QString::fromLatin1(DM_SOURCE_PATH);
    CommonUtils::ThreadCountInc(who);
    DM_LOG("%s: %s: %s: DeviceMgrWin7Thread::run() Entered");
    // A Stop() that came before this run started is forgotten on purpose: each start is a new
    // request to wait for the service.
    m_bStopThread.store(false);

    if (ZELK_DevSrv_IsWin7() != ZELK_ERROR_SUCCESS) {
        // No WWAN service to wait for on this platform.
        emit deviceInitFinished();
    } else {
        while (!m_bWWanReady.load()) {
            if (ZELK_DevSrv_IsWWanReady() == ZELK_ERROR_SUCCESS) {
                DM_LOG("%s: %s: %s: ZELK_DevSrv_IsWWanReady ()");
                m_bWWanReady.store(true);
                break;
            }
            if (ZELK_DevSrv_IsWWanServiceActive() == -1) {
                // IsWWanServiceActive answers -1 when the platform has no such service at all:
                // nothing will ever become ready, so there is nothing to wait for.
                DM_LOG("%s: %s: %s: ZELK_DevSrv_IsWWanServiceActive");
                m_bWWanReady.store(true);
                break;
            }
            if (m_bAppQuit.load() || m_bStopThread.load() || QCoreApplication::closingDown()) {
                DM_LOG("%s: %s: %s: m_bStopThread || QApplication::closingDown ()");
                break;
            }
            QThread::msleep(1000);
        }
    }

    if (!m_bAppQuit.load() && m_bWWanReady.load()) {
        DM_LOG("%s: %s: %s: emit deviceInitFinished ()");
        emit deviceInitFinished();
    }
    DM_LOG("%s: %s: %s: Before Dec");
    CommonUtils::ThreadCountDec(who);
    DM_LOG("%s: %s: %s: DeviceMgrWin7Thread::run() Exit");
}

void DeviceMgrWin7Thread::Stop()
{
    DM_LOG("%s: %s: %s: DeviceMgrWin7Thread::Stop() Entered");
    m_bStopThread.store(true);
    CommonUtils::WaitForThreadToStop(this, 5);
    DM_LOG("%s: %s: %s: DeviceMgrWin7Thread::Stop() Exit");
}

void DeviceMgrWin7Thread::appQuitStop()
{
    DM_LOG("%s: %s: %s: Entered");
    m_bAppQuit.store(true);
    DM_LOG("%s: %s: %s: Exit");
}
