// The wait for the platform's mobile-broadband (WWAN) service in front of the start-up PIN check: the
// worker thread polls the simulated platform, and the PIN dialog opens once the service is ready.
#include "SimTestSupport.h"

#include "DeviceMgrWin7Thread.h"

#include <QtCore/QElapsedTimer>

using namespace simtest;

class tst_SimWwanThread : public SimSuite
{
    Q_OBJECT

public slots:
    void onReport() { ++m_reports; }

protected slots:
    void init()
    {
        SimSuite::init();
        pinRequired();
    }

private slots:
    // A blocked SIM gets its message at once, even where the platform asks for the wait: no thread,
    // no poll. (With no wait asked for, tst_simdialogs::startupCheck plays the check run at once.)
    void blockedSimDoesNotWait()
    {
        pinRequired(0, 0);
        waitingPlatform(false);
        start();
        m_service->checkPINWithWin7();
        QVERIFY(!m_service->win7Thread());
        QCOMPARE(openDialogs(), QStringList());
        QCOMPARE(messages(), QStringList{info(QStringLiteral("IDS_PIN_SIM_LOCKED"), "TestMainWindow")});
        QCOMPARE(svc::callCount("ZELK_DevSrv_IsWWanReady"), 0);
    }

    void readyAtOnce_data()
    {
        QTest::addColumn<bool>("ready");
        QTest::addColumn<int>("service");
        QTest::newRow("service ready") << true << 0;
        QTest::newRow("no service at all counts as ready") << false << -1;
    }
    void readyAtOnce()
    {
        QFETCH(bool, ready);
        QFETCH(int, service);
        waitingPlatform(ready, 0, service);
        start();
        DeviceMgrWin7Thread* thread = DeviceMgrWin7Thread::Instance();
        const int& finished = countReports(thread);
        m_service->checkPINWithWin7();
        QCOMPARE(m_service->win7Thread(), thread);
        deliverReport(thread);
        QCOMPARE(openDialogs(), QStringList{kVerifyDlg});
        QCOMPARE(finished, 1);
        QVERIFY(thread->isWWanReady());
        QCOMPARE(svc::callCount("ZELK_DevSrv_IsWWanReady"), 1);

        // Ready stays ready: the next check runs at once, without another poll.
        m_service->closePinDlg();
        QCOMPARE(openDialogs(), QStringList());
        m_service->checkPINWithWin7();
        QCOMPARE(openDialogs(), QStringList{kVerifyDlg});
        QVERIFY(!thread->isRunning());
        QCOMPARE(svc::callCount("ZELK_DevSrv_IsWWanReady"), 1);
        QCoreApplication::sendPostedEvents();
        QCOMPARE(finished, 1);
    }

    void neverReadyThenStopped_data()
    {
        QTest::addColumn<QString>("how");
        QTest::newRow("Stop()") << "stop";
        QTest::newRow("device switch") << "switch";
        QTest::newRow("application quits") << "quit";
    }
    void neverReadyThenStopped()
    {
        QFETCH(QString, how);
        waitingPlatform(false);
        start();
        DeviceMgrWin7Thread* thread = DeviceMgrWin7Thread::Instance();
        const int& finished = countReports(thread);
        m_service->checkPINWithWin7();
        QCOMPARE(m_service->win7Thread(), thread);
        QTRY_VERIFY(svc::callCount("ZELK_DevSrv_IsWWanReady") >= 1);
        QVERIFY(thread->isRunning());
        QElapsedTimer clock;
        clock.start();
        if (how == QLatin1String("stop")) {
            thread->Stop();
        } else if (how == QLatin1String("switch")) {
            QVERIFY(handle(ZELK_EVENT_DEV_SWITCH));
        } else {
            thread->appQuitStop();
        }
        QTRY_VERIFY_WITH_TIMEOUT(!thread->isRunning(), 5000);
        // Stopped by its flag within the host's bound (5 s).
        QVERIFY(clock.elapsed() < 5000);
        QCoreApplication::sendPostedEvents();
        QCOMPARE(finished, 0);
        QVERIFY(!thread->isWWanReady());
        QCOMPARE(openDialogs(), QStringList());
        if (how != QLatin1String("stop"))
            return;
        // A stopped wait starts again with the next check, and then reports as usual.
        waitingPlatform(true);
        m_service->checkPINWithWin7();
        QCOMPARE(m_service->win7Thread(), thread);
        deliverReport(thread);
        QCOMPARE(openDialogs(), QStringList{kVerifyDlg});
        QCOMPARE(finished, 1);
    }

    // Shut-down does not wait behind a WWAN poll that never returns.
    void shutdownDoesNotWaitForHangingWwanPoll()
    {
        waitingPlatform(false, 0, 1, 20000);
        start();
        m_service->checkPINWithWin7();
        QPointer<DeviceMgrWin7Thread> thread = m_service->win7Thread();
        QVERIFY(thread);
        // The thread asks the platform first, then polls (and hangs): a Stop() before that is forgotten.
        QTRY_COMPARE(svc::callCount("ZELK_DevSrv_IsWin7"), 2);
        QElapsedTimer clock;
        clock.start();
        svc::stopService();
        // Stop() waits 5 s at most.
        QVERIFY2(clock.elapsed() < 8000, qPrintable(QString::number(clock.elapsed())));
        waitingPlatform(false);
        QTRY_VERIFY_WITH_TIMEOUT(!thread, 10000);
    }

private:
    int m_reports = 0;

    // Reports of the thread as the GUI thread receives them: queued and by name, exactly like the
    // service's own slot, so the event carrying them is only ever read inside Qt.
    const int& countReports(DeviceMgrWin7Thread* thread)
    {
        m_reports = 0;
        connect(thread, SIGNAL(deviceInitFinished()), this, SLOT(onReport()), Qt::QueuedConnection);
        return m_reports;
    }

    // Waits, without running the event loop, until the thread has reported and ended, then delivers
    // its queued report. Qt hands events between threads under locks ThreadSanitizer cannot see;
    // the thread's end is counted with an atomic it can, which orders the report before delivery.
    void deliverReport(DeviceMgrWin7Thread* thread)
    {
        QVERIFY(thread);
        QElapsedTimer clock;
        clock.start();
        while (!(thread->isWWanReady() && CommonUtils::ThreadCount() == 0) && clock.elapsed() < 10000)
            QThread::msleep(10);
        QVERIFY(thread->isWWanReady());
        QCOMPARE(CommonUtils::ThreadCount(), 0);
        QCoreApplication::sendPostedEvents();
    }
};

QTEST_MAIN(tst_SimWwanThread)
#include "tst_simwwanthread.moc"
