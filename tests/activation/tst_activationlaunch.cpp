// The service opens the activation wizard by itself for a CDMA card that is not activated: later
// while the information dialog shows, once per attached device, from settings read once per run.
// Built twice: TESSARO_NO_ACTIVE_XML starts the run without active.xml.
#include "ActivationTestSupport.h"

class tst_ActivationLaunch : public QObject
{
    Q_OBJECT
    HostFixture m_host;
    QTemporaryDir m_root;
    CDeviceMgrService* m_service = nullptr;

    bool wizardShown() { return acttest::dlg(); }
    // The active device goes away (its removal event) and the launch is tried for the next one.
    void relaunch()
    {
        svc::inject(ZELK_EVENT_DEV_DEVICE_REMOVED);
        QVERIFY(svc::settle(svc::g_handled.load() + 1));
        m_service->AutolaunchActivation();
    }

private slots:
    void initTestCase()
    {
        m_host.init();
        m_host.beginTest();
        QVERIFY(acttest::cdmaNotActivated(true));
#ifdef TESSARO_NO_ACTIVE_XML
        QVERIFY(acttest::installActiveXml(m_root, QByteArray()));
#else
        QVERIFY(acttest::installActiveXml(m_root, acttest::activeXml("<activetype>2</activetype>")));
#endif
        svc::resetHandled();
        svc::startLogCapture();
        m_service = simtest::startService();
        QVERIFY(m_service);
        // The card is detected (its notice stays ten seconds) and ends its start-up: the launch waits.
        svc::inject(ZELK_EVENT_DEV_ACTIVE);
        svc::inject(ZELK_EVENT_DEV_DEVICE_INIT_FINISH);
        QVERIFY(svc::settle(2));
    }
    void cleanupTestCase()
    {
        svc::stopService();
        QVERIFY2(m_host.endTest(), qPrintable(m_host.lastError()));
        m_host.shutdown();
    }

#ifndef TESSARO_NO_ACTIVE_XML
    void retriedWhileInformationShowsThenOncePerDevice()
    {
        QTimer* retry = m_service->activationRetryTimer();
        QVERIFY(retry && retry->isActive());
        QCOMPARE(retry->interval(), 10000);
        QVERIFY(!wizardShown());
        m_service->showInfoDlg(QStringLiteral("IDS_INIT_DEV_UNDERWAY"), 60000);
        retry->start(0); // the ten seconds are up, the notice is still there: ten more
        QTRY_COMPARE(retry->interval(), 10000);
        QVERIFY(!wizardShown());
        m_service->hideInfoDlg();
        retry->start(0);
        QTRY_VERIFY(wizardShown());
        QCOMPARE(svc::callCount("ZELK_DevSrv_GetOTAActStatus"), 1);
        m_service->AutolaunchActivation();
        QCOMPARE(svc::callCount("ZELK_DevSrv_GetOTAActStatus"), 1);
        // The settings are not read again: a file that now forbids the launch changes nothing.
        QVERIFY(acttest::installActiveXml(m_root, acttest::activeXml("<activetype>9</activetype>")));
        relaunch();
        QCOMPARE(svc::callCount("ZELK_DevSrv_GetOTAActStatus"), 2);
        QVERIFY(wizardShown());
    }
#else
    void failedFirstReadNeverRetried()
    {
        m_service->hideInfoDlg();
        m_service->AutolaunchActivation();
        QVERIFY(acttest::installActiveXml(m_root, acttest::activeXml("<activetype>2</activetype>")));
        relaunch();
        QVERIFY(!wizardShown());
        QCOMPARE(svc::logCount(QStringLiteral(" : Failed to read Config data")), 2);
        QCOMPARE(svc::callCount("ZELK_DevSrv_GetOTAActStatus"), 0);
        // The user still gets the wizard on request, with the file read now.
        m_service->ActivateDevice();
        QVERIFY(wizardShown());
    }
#endif
};

QTEST_MAIN(tst_ActivationLaunch)
#include "tst_activationlaunch.moc"
