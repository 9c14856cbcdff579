// What the user and the other plugins see of the service: the information dialog, message boxes
// with the card word, the radio commands and events, power events and the detach commands.
#include "ServiceTestSupport.h"

#include "Change.h"
#include "CommonUtils.h"
#include "HostFixture.h"
#include "HostServiceObjects.h"

#include <QtCore/QTimer>
#include <QtWidgets/QApplication>
#include <QtWidgets/QDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMainWindow>

using svc::bc;

namespace {

QList<QDialog*> infoDialogs()
{
    QList<QDialog*> out;
    const auto tops = QApplication::topLevelWidgets();
    for (QWidget* w : tops)
        if (w->objectName() == QLatin1String("DeviceMgrUI_dialogInfoDlg"))
            out << qobject_cast<QDialog*>(w);
    return out;
}

QString labelOf(QDialog* dialog)
{
    auto* label = dialog ? dialog->findChild<QLabel*>(QStringLiteral("DeviceMgrUI_labelInfoLabel")) : nullptr;
    return label ? label->text() : QStringLiteral("<no label>");
}

void flushDeletes()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

zelk::sim::Device activeDevice()
{
    zelk::sim::Device d;
    zelk::sim::findDevice(zelk::sim::activeDeviceId(), &d);
    return d;
}

} // namespace

class tst_ServiceUi : public QObject
{
    Q_OBJECT

private:
    HostFixture m_host;
    CDeviceMgrService* m_service = nullptr;

    void start(bool frameShown = true)
    {
        m_service = CDeviceMgrService::instance();
        QVERIFY(m_service->Init());
        if (frameShown) {
            // The frame comes up before the card has reported in: the first-frame work finds none.
            zelk::sim::forceResult("ZELK_DevSrv_GetDevStatus", 2, ZELK_ERROR_FAILURE);
            m_service->Notify(NTF_FRAME_SHOWN, 0, 0);
        }
        zelk::sim::clearCalls();
        HostFramework::clearNotificationRecords();
        HostFramework::mainMenuService()->resetCounts();
    }

private slots:
    void initTestCase() { m_host.init(); }
    void init()
    {
        m_host.beginTest();
        zelk::sim::reset();
        svc::resetHandled();
        m_service = nullptr;
    }
    void cleanup()
    {
        svc::stopService();
        m_service = nullptr;
        Change::LoadLanguage(QStringLiteral("none"));
        QVERIFY2(m_host.endTest(), qPrintable(m_host.lastError()));
    }
    void cleanupTestCase() { m_host.shutdown(); }

    // ---- information dialog ----------------------------------------------------------------------

    void infoDialogShowsTextForItsTime()
    {
        start();
        m_service->showInfoDlg(QStringLiteral("Data card found"), 10000);
        const auto dialogs = infoDialogs();
        QCOMPARE(dialogs.size(), 1);
        QDialog* dialog = dialogs.first();
        QVERIFY(dialog->isVisible());
        QVERIFY(!dialog->isModal());
        QCOMPARE(dialog->size(), QSize(310, 120));
        QCOMPARE(dialog->parentWidget(), static_cast<QWidget*>(m_host.mainWindow()));
        QCOMPARE(labelOf(dialog), QStringLiteral("Data card found"));
        QVERIFY(dialog->findChild<QLabel*>(QStringLiteral("DeviceMgrUI_labelInfoLabel"))->wordWrap());
        QVERIFY(m_service->infoTimer()->isActive());
        QCOMPARE(m_service->infoTimer()->interval(), 10000);
    }

    void secondNoticeReplacesTextAndTime()
    {
        start();
        m_service->showInfoDlg(Change::tr(QStringLiteral("IDS_DETECTE_DEVICE")), 10000);
        m_service->showInfoDlg(Change::tr(QStringLiteral("IDS_INIT_DEV_UNDERWAY")), 3000);
        const auto dialogs = infoDialogs();
        QCOMPARE(dialogs.size(), 1);
        QCOMPARE(labelOf(dialogs.first()), Change::tr(QStringLiteral("IDS_INIT_DEV_UNDERWAY")));
        QCOMPARE(m_service->infoTimer()->interval(), 3000);
        // One time-out closes it, whatever the number of notices.
        m_service->onTimerOut();
        flushDeletes();
        QCOMPARE(infoDialogs().size(), 0);
        QVERIFY(!m_service->infoTimer()->isActive());
        // The time-out's connections went with it: the timer no longer reaches the service.
        svc::startLogCapture();
        QVERIFY(QMetaObject::invokeMethod(m_service->infoTimer(), "timeout"));
        qInstallMessageHandler(nullptr);
        QCOMPARE(svc::logCount(QStringLiteral("Time Out hideInfo")), 0);
    }

    void infoDialogClosesOnItsOwnTimer()
    {
        start();
        m_service->showInfoDlg(QStringLiteral("short"), 30);
        QCOMPARE(infoDialogs().size(), 1);
        QTRY_COMPARE_WITH_TIMEOUT(infoDialogs().size(), 0, 5000);
    }

    void hidingEndsTheInitPhase()
    {
        start();
        svc::inject(ZELK_EVENT_DEV_INIT_START);
        QVERIFY(svc::settle(1));
        QVERIFY(m_service->isDevInitStarted());
        m_service->showInfoDlg(QStringLiteral("x"), 3000);
        m_service->onTimerOut();
        flushDeletes();
        QVERIFY(!m_service->isDevInitStarted());
        // Without a dialog on screen, hiding again changes nothing.
        m_service->hideInfoDlg();
        QCOMPARE(infoDialogs().size(), 0);
    }

    void deviceEventsShowNoticesForTheirTimes_data()
    {
        QTest::addColumn<int>("event");
        QTest::addColumn<QString>("key");
        QTest::addColumn<int>("msec");
        QTest::newRow("detected") << int(ZELK_EVENT_DEV_ACTIVE) << "IDS_DETECTE_DEVICE" << 10000;
        QTest::newRow("rejected") << int(ZELK_EVENT_DEV_REJECT) << "IDS_DEVICE_INVALID" << 3000;
    }
    void deviceEventsShowNoticesForTheirTimes()
    {
        QFETCH(int, event);
        QFETCH(QString, key);
        QFETCH(int, msec);
        QVERIFY(Change::LoadLanguage(QStringLiteral("en")));
        start();
        if (event == ZELK_EVENT_DEV_REJECT)
            svc::injectList(event, 0);
        else
            svc::inject(event);
        QVERIFY(svc::settle(1));
        const auto dialogs = infoDialogs();
        QCOMPARE(dialogs.size(), 1);
        QVERIFY(dialogs.first()->isVisible());
        QCOMPARE(labelOf(dialogs.first()), Change::tr(key));
        QVERIFY(labelOf(dialogs.first()) != key);
        QCOMPARE(m_service->infoTimer()->interval(), msec);
    }

    void simulatedPlugInShowsNoticeAndNotifies()
    {
        start();
        QVERIFY(zelk::sim::removeDevice(zelk::sim::activeDeviceId()));
        QVERIFY(zelk::sim::waitForIdle(5000));
        QTRY_COMPARE(svc::g_handledEvents,
                     (QList<int>{ZELK_EVENT_DEV_DEVICE_REMOVED, ZELK_EVENT_DEV_LIST_CHANGED}));
        HostFramework::clearNotificationRecords();
        zelk::sim::Device modem = zelk::sim::defaultDevice();
        modem.id = "plugged";
        modem.name = "Plugged Modem";
        std::string error;
        QVERIFY2(zelk::sim::attachDevice(modem, &error), error.c_str());
        QVERIFY(zelk::sim::waitForIdle(5000));
        QTRY_COMPARE(svc::g_handledEvents.mid(2),
                     (QList<int>{ZELK_EVENT_DEV_DETECTED, ZELK_EVENT_DEV_ACTIVE, ZELK_EVENT_DEV_INIT_START,
                                 ZELK_EVENT_DEV_INIT_SUCCESS, ZELK_EVENT_DEV_DEVICE_NO_PIN,
                                 ZELK_EVENT_DEV_DEVICE_INIT_FINISH}));
        const auto dialogs = infoDialogs();
        QCOMPARE(dialogs.size(), 1);
        QCOMPARE(labelOf(dialogs.first()), Change::tr(QStringLiteral("IDS_DETECTE_DEVICE")));
        QCOMPARE(svc::sent(), (QStringList{bc(581), svc::to(DIALUP_PLUGIN_CLSID, 512)}));
        QVERIFY(m_service->isDeviceAvailableFlag());
        QVERIFY(m_service->isSimReady());
    }

    void messageCarriesTheCardWord_data()
    {
        QTest::addColumn<int>("productType");
        QTest::addColumn<QString>("simtype");
        QTest::addColumn<QString>("uimtype");
        QTest::addColumn<QString>("word");
        QTest::newRow("GSM default") << 2 << ""
                                     << ""
                                     << "SIM/USIM";
        QTest::newRow("GSM configured") << 2 << "Nano SIM"
                                        << "R-UIM"
                                        << "Nano SIM";
        QTest::newRow("CDMA default") << 1 << "Nano SIM"
                                      << ""
                                      << "UIM";
        QTest::newRow("CDMA configured") << 1 << "Nano SIM"
                                         << "R-UIM"
                                         << "R-UIM";
    }
    void messageCarriesTheCardWord()
    {
        QFETCH(int, productType);
        QFETCH(QString, simtype);
        QFETCH(QString, uimtype);
        QFETCH(QString, word);
        zelk::sim::Device d = activeDevice();
        d.productType = productType;
        QVERIFY(zelk::sim::updateDevice(d));
        m_host.setSetting(QStringLiteral("customize"), QStringLiteral("simtype"), simtype);
        m_host.setSetting(QStringLiteral("customize"), QStringLiteral("uimtype"), uimtype);
        QVERIFY(Change::LoadLanguage(QStringLiteral("en")));
        start();
        m_service->showInfoDlg(QStringLiteral("up"), 3000);
        m_service->showMessage(QStringLiteral("IDS_SIM_INVALID"));
        flushDeletes();
        QCOMPARE(infoDialogs().size(), 0);
        const auto boxes = HostFramework::messageRecords();
        QCOMPARE(boxes.size(), 1);
        QCOMPARE(
            boxes.first().text,
            QStringLiteral("The %1 card is missing or invalid. Please insert a valid %1 card.").arg(word));
        QCOMPARE(boxes.first().title, Change::tr(QStringLiteral("IDS_MAINFRM_PROMPT")));
        QCOMPARE(boxes.first().parentName, QStringLiteral("TestMainWindow"));
        QCOMPARE(HostFramework::mainMenuService()->simRefreshCount(), 1);
    }

    // ---- radio --------------------------------------------------------------------------------

    void radioEventSequences_data()
    {
        QTest::addColumn<QList<QPoint>>("events"); // x: hardware state, y: software state
        QTest::addColumn<QList<uint>>("codes");
        QTest::newRow("first (1, 0): extra 580") << QList<QPoint>{{1, 0}} << QList<uint>{576, 580, 580};
        QTest::newRow("(1, 1) then (1, 0): no extra 580")
            << QList<QPoint>{{1, 1}, {1, 0}} << QList<uint>{577, 576, 580};
        QTest::newRow("(1, 0) twice: extra 580 each time")
            << QList<QPoint>{{1, 0}, {1, 0}} << QList<uint>{576, 580, 580, 576, 580, 580};
        QTest::newRow("hardware off first") << QList<QPoint>{{0, 1}} << QList<uint>{576, 580};
        QTest::newRow("both off first") << QList<QPoint>{{0, 0}} << QList<uint>{576, 580};
        QTest::newRow("on, then software off")
            << QList<QPoint>{{1, 1}, {1, 1}, {1, 0}} << QList<uint>{577, 577, 576, 580};
    }
    void radioEventSequences()
    {
        QFETCH(QList<QPoint>, events);
        QFETCH(QList<uint>, codes);
        start();
        for (const QPoint& e : qAsConst(events)) {
            // The SDK's data words: software state first, hardware state second.
            svc::inject(ZELK_EVENT_DEV_RF_SWITCH, {uint32_t(e.y()), uint32_t(e.x())});
        }
        QVERIFY(svc::settle(events.size()));
        QTRY_COMPARE(HostFramework::mainMenuService()->radioRefreshCount(), events.size());
        QStringList expected;
        for (uint code : codes)
            expected << bc(code);
        QCOMPARE(svc::sent(), expected);
        QCOMPARE(m_service->lastSwRFState(), events.last().y());
    }

    void radioEventWithoutDataSendsNothing()
    {
        start();
        svc::inject(ZELK_EVENT_DEV_RF_SWITCH);
        QVERIFY(svc::settle(1));
        QCOMPARE(svc::sent(), QStringList());
        QCOMPARE(m_service->lastSwRFState(), -1);
    }

    void radioCommands_data()
    {
        QTest::addColumn<bool>("enable");
        QTest::addColumn<bool>("radioOn");
        QTest::addColumn<bool>("switchable");
        QTest::addColumn<bool>("sdkFails");
        QTest::addColumn<int>("result");
        QTest::addColumn<QStringList>("notifications");
        QTest::addColumn<int>("menuRefreshes");
        QTest::newRow("on") << true << false << true << false << 0 << QStringList{bc(577)} << 1;
        QTest::newRow("off") << false << true << true << false << 0 << QStringList{bc(576)} << 1;
        QTest::newRow("on, no radio switch") << true << false << false << false << 15 << QStringList() << 0;
        QTest::newRow("off, SDK error") << false << true << true << true << 1 << QStringList() << 0;
    }
    void radioCommands()
    {
        QFETCH(bool, enable);
        QFETCH(bool, radioOn);
        QFETCH(bool, switchable);
        QFETCH(bool, sdkFails);
        QFETCH(int, result);
        QFETCH(QStringList, notifications);
        QFETCH(int, menuRefreshes);
        zelk::sim::Device d = activeDevice();
        d.radio.softwareOn = radioOn;
        d.radio.switchable = switchable;
        QVERIFY(zelk::sim::updateDevice(d));
        start(false);
        if (sdkFails)
            zelk::sim::failNext("ZELK_DevSrv_SetRFSwitch");
        QCOMPARE(enable ? m_service->EnableRF() : m_service->DisableRF(), result);
        QCOMPARE(svc::sent(), notifications);
        QCOMPARE(HostFramework::mainMenuService()->radioRefreshCount(), menuRefreshes);
    }

    void radioCommandsWithoutLogicLayer()
    {
        m_service = CDeviceMgrService::instance();
        QCOMPARE(m_service->EnableRF(), 13);
        QCOMPARE(m_service->DisableRF(), 13);
        QCOMPARE(svc::sent(), QStringList());
        QCOMPARE(svc::callCount("ZELK_DevSrv_SetRFSwitch"), 0);
    }

    void powerEventsAreBroadcast_data()
    {
        QTest::addColumn<uint>("state");
        QTest::newRow("resume") << 0u;
        QTest::newRow("suspend") << 1u;
    }
    void powerEventsAreBroadcast()
    {
        QFETCH(uint, state);
        start();
        svc::inject(ZELK_EVENT_DEV_POWER, {state});
        QVERIFY(svc::settle(1));
        QTRY_COMPARE(svc::sent(), QStringList{bc(854, state)});
    }

    void detachCommands_data()
    {
        QTest::addColumn<bool>("gprs");
        QTest::addColumn<QString>("setting");
        QTest::addColumn<int>("calls");
        QTest::newRow("packet detach, yes") << true << "yes" << 1;
        QTest::newRow("packet detach, Y") << true << "Y" << 1;
        QTest::newRow("packet detach, no") << true << "no" << 0;
        QTest::newRow("packet detach, empty") << true << "" << 0;
        QTest::newRow("offline, yes") << false << "yes" << 1;
        QTest::newRow("offline, true") << false << "true" << 0;
    }
    void detachCommands()
    {
        QFETCH(bool, gprs);
        QFETCH(QString, setting);
        QFETCH(int, calls);
        m_host.setSetting(QStringLiteral("customize"),
                          gprs ? QStringLiteral("gprs_detach") : QStringLiteral("imsi_detach"), setting);
        start(false);
        if (gprs)
            m_service->DetatchGPRS();
        else
            m_service->SetOffline();
        const char* function = gprs ? "ZELK_NetSrv_SetPSState" : "ZELK_DevSrv_SetOffline";
        QCOMPARE(svc::callCount(function), calls);
        if (gprs && calls)
            QCOMPARE(zelk::sim::calls(function).front().args.front(), std::string("0"));
    }

    void detachCommandsWithoutLogicLayer()
    {
        m_host.setSetting(QStringLiteral("customize"), QStringLiteral("gprs_detach"), QStringLiteral("yes"));
        m_host.setSetting(QStringLiteral("customize"), QStringLiteral("imsi_detach"), QStringLiteral("yes"));
        m_service = CDeviceMgrService::instance();
        m_service->DetatchGPRS();
        m_service->SetOffline();
        QCOMPARE(svc::callCount("ZELK_NetSrv_SetPSState"), 0);
        QCOMPARE(svc::callCount("ZELK_DevSrv_SetOffline"), 0);
    }

    void lteSupportFollowsTheBands_data()
    {
        QTest::addColumn<bool>("lte");
        QTest::addColumn<bool>("fails");
        QTest::addColumn<bool>("result");
        QTest::newRow("LTE bands") << true << false << true;
        QTest::newRow("no LTE bands") << false << false << false;
        QTest::newRow("query fails") << true << true << false;
    }
    void lteSupportFollowsTheBands()
    {
        QFETCH(bool, lte);
        QFETCH(bool, fails);
        QFETCH(bool, result);
        zelk::sim::Device d = activeDevice();
        d.radio.lte = lte;
        QVERIFY(zelk::sim::updateDevice(d));
        start(false);
        if (fails)
            zelk::sim::failNext("ZELK_NetSrv_GetBandListAndOrderEx");
        QCOMPARE(m_service->DevIsSupportLTE(), result);
    }

    void chooserIsCreatedOnFirstUse()
    {
        start(false);
        svc::startLogCapture();
        m_service->ShowChooseDevice();
        qInstallMessageHandler(nullptr);
        QCOMPARE(svc::logCount(QStringLiteral("m_pDlgChooseDev is NULL")), 1);
        QCOMPARE(HostFixture::visibleTopLevels().size(), 1);
    }
};

QTEST_MAIN(tst_ServiceUi)
#include "tst_serviceui.moc"
