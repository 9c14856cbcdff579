// The wait for the platform's mobile-broadband (WWAN) service in front of the start-up PIN check: the
// worker thread polls the simulated platform, and the PIN dialog opens once the service is ready.
#include "SimTestSupport.h"

#include "CommonUtils.h"
#include "DeviceMgrWin7Thread.h"
#include "HostFixture.h"

#include <QtCore/QElapsedTimer>

using namespace simtest;

namespace {

// The platform asks for the wait (IsWin7 answers 0) with the given WWAN answers.
void waitingPlatform(bool ready, int readyAfterPolls = 0, int service = 1)
{
    zelk::sim::Platform p = zelk::sim::platform();
    p.isWin7 = ZELK_ERROR_SUCCESS;
    p.wwanReady = ready;
    p.wwanReadyAfterPolls = readyAfterPolls;
    p.wwanService = service;
    zelk::sim::setPlatform(p);
}

} // namespace

class tst_SimWwanThread : public QObject
{
    Q_OBJECT

public slots:
    void onReport() { ++m_reports; }

private:
    HostFixture m_host;
    CDeviceMgrService* m_service = nullptr;

    void start(bool frameShown = true)
    {
        m_service = startService(frameShown);
        QVERIFY(m_service);
    }

private slots:
    void initTestCase() { m_host.init(); }
    void init()
    {
        m_host.beginTest();
        zelk::sim::reset();
        svc::resetHandled();
        m_service = nullptr;
        pinRequired();
    }
    void cleanup()
    {
        svc::stopService();
        m_service = nullptr;
        // The service stopped and deleted its thread; no worker is left counting.
        QCOMPARE(CommonUtils::ThreadCount(), 0);
        QVERIFY2(m_host.endTest(), qPrintable(m_host.lastError()));
    }
    void cleanupTestCase() { m_host.shutdown(); }

    // No WWAN service to wait for, or a blocked SIM: no thread, no poll, the check runs at once.
    void noWait_data()
    {
        QTest::addColumn<bool>("blocked");
        QTest::addColumn<QStringList>("dialogs");
        QTest::addColumn<QStringList>("shown");
        QTest::newRow("no WWAN service") << false << QStringList{kVerifyDlg} << QStringList();
        QTest::newRow("blocked SIM") << true << QStringList()
                                     << QStringList{
                                            info(QStringLiteral("IDS_PIN_SIM_LOCKED"), "TestMainWindow")};
    }
    void noWait()
    {
        QFETCH(bool, blocked);
        if (blocked) {
            pinRequired(0, 0);
            waitingPlatform(false);
        }
        start();
        m_service->checkPINWithWin7();
        QVERIFY(!m_service->win7Thread());
        QTEST(openDialogs(), "dialogs");
        QTEST(messages(), "shown");
        QCOMPARE(svc::callCount("ZELK_DevSrv_IsWWanReady"), 0);
    }

    void readyAtOnce_data()
    {
        QTest::addColumn<bool>("ready");
        QTest::addColumn<int>("service");
        QTest::addColumn<int>("readyPolls");
        QTest::newRow("service ready") << true << 0 << 1;
        QTest::newRow("no service at all counts as ready") << false << -1 << 1;
    }
    void readyAtOnce()
    {
        QFETCH(bool, ready);
        QFETCH(int, service);
        QFETCH(int, readyPolls);
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
        QCOMPARE(svc::callCount("ZELK_DevSrv_IsWWanReady"), readyPolls);

        // Ready stays ready: the next check runs at once, without another poll.
        closeSimDlg();
        m_service->checkPINWithWin7();
        QCOMPARE(openDialogs(), QStringList{kVerifyDlg});
        QVERIFY(!thread->isRunning());
        QCOMPARE(svc::callCount("ZELK_DevSrv_IsWWanReady"), readyPolls);
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
            svc::inject(ZELK_EVENT_DEV_SWITCH);
            QVERIFY(svc::settle(svc::g_handled.load() + 1));
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
    }

    // A stopped wait starts again with the next check, and then reports as usual.
    void stoppedWaitRestarts()
    {
        waitingPlatform(false);
        start();
        m_service->checkPINWithWin7();
        DeviceMgrWin7Thread* thread = m_service->win7Thread();
        // A Stop() before the run began would be forgotten by the run: stop a poll under way.
        QTRY_VERIFY(svc::callCount("ZELK_DevSrv_IsWWanReady") >= 1);
        thread->Stop();
        QVERIFY(!thread->isRunning());
        waitingPlatform(true);
        m_service->checkPINWithWin7();
        QCOMPARE(m_service->win7Thread(), thread);
        deliverReport(thread);
        QCOMPARE(openDialogs(), QStringList{kVerifyDlg});
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

    void closeSimDlg()
    {
        if (SimDlg* dlg = dialog(kVerifyDlg)) {
            dlg->m_bAskOnClose = false;
            dlg->close();
        }
        QCOMPARE(openDialogs(), QStringList());
    }
};

QTEST_MAIN(tst_SimWwanThread)
#include "tst_simwwanthread.moc"
