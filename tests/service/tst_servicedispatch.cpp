// The service's start-up, its two event tables driven through the simulated card's callbacks, the
// host notifications it answers, the first-frame work and the shut-down.
#include "ServiceTestSupport.h"

#include "Change.h"
#include "CommonUtils.h"
#include "HostFixture.h"
#include "HostServiceObjects.h"

#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMainWindow>

using svc::bc;
using svc::to;

namespace {

// The information dialog's text, or "" when none is on screen.
QString infoText()
{
    const auto tops = QApplication::topLevelWidgets();
    for (QWidget* w : tops) {
        if (w->objectName() == QLatin1String("DeviceMgrUI_dialogInfoDlg") && w->isVisible()) {
            auto* label = w->findChild<QLabel*>(QStringLiteral("DeviceMgrUI_labelInfoLabel"));
            return label ? label->text() : QStringLiteral("<no label>");
        }
    }
    return QString();
}

zelk::sim::Device activeDevice()
{
    zelk::sim::Device d;
    zelk::sim::findDevice(zelk::sim::activeDeviceId(), &d);
    return d;
}

QString menuCounts()
{
    MainMenuService* menu = HostFramework::mainMenuService();
    return QStringLiteral("%1/%2/%3")
        .arg(menu->simRefreshCount())
        .arg(menu->radioRefreshCount())
        .arg(menu->deviceRefreshCount());
}

} // namespace

class tst_ServiceDispatch : public QObject
{
    Q_OBJECT

public:
    tst_ServiceDispatch() { qRegisterMetaType<HostFramework::NotificationRecord>(); }

private:
    HostFixture m_host;
    CDeviceMgrService* m_service = nullptr;

    // Flags of the service that the tables assert, in one line.
    QString flags() const
    {
        return QStringLiteral("init=%1 validSim=%2 avail=%3 simReady=%4 fp=%5")
            .arg(m_service->isDevInitStarted())
            .arg(m_service->isValidSimFlag())
            .arg(m_service->isDeviceAvailableFlag())
            .arg(m_service->isSimReady())
            .arg(m_service->isFPLockPending());
    }

    void start()
    {
        m_service = CDeviceMgrService::instance();
        QVERIFY(m_service->Init());
    }

    // The frame comes up before the card has reported in: the first-frame work finds no device.
    void showFrame()
    {
        zelk::sim::forceResult("ZELK_DevSrv_GetDevStatus", 2, ZELK_ERROR_FAILURE);
        m_service->Notify(NTF_FRAME_SHOWN, 0, 0);
        HostFramework::mainMenuService()->resetCounts();
        HostFramework::clearNotificationRecords();
    }

    void clearRecords()
    {
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
        HostFramework::mainMenuService()->resetCounts();
        m_service = nullptr;
    }
    void cleanup()
    {
        svc::stopService();
        m_service = nullptr;
        qInstallMessageHandler(nullptr);
        Change::LoadLanguage(QStringLiteral("none"));
        QVERIFY2(m_host.endTest(), qPrintable(m_host.lastError()));
    }
    void cleanupTestCase() { m_host.shutdown(); }

    void initRegistersInOrder_data()
    {
        QTest::addColumn<QString>("failing");
        QTest::addColumn<bool>("result");
        QTest::addColumn<int>("initCallbacks");
        QTest::addColumn<int>("devMgrCallbacks");
        QTest::addColumn<int>("multiCallbacks");
        QTest::addColumn<bool>("connected");
        QTest::newRow("all registered") << QString() << true << 1 << 1 << 1 << true;
        QTest::newRow("init events refused: stops at once")
            << "ZELK_DevSrv_RegisterDevInitEventCallback" << false << 0 << 0 << 0 << false;
        QTest::newRow("device events refused: goes on")
            << "ZELK_DevSrv_RegisterDevMgrCallback" << false << 1 << 0 << 1 << true;
        QTest::newRow("multi-device events refused: goes on")
            << "ZELK_DevSrv_RegisterMultiDeviceEventCallback" << false << 1 << 1 << 0 << true;
    }
    void initRegistersInOrder()
    {
        QFETCH(QString, failing);
        QFETCH(bool, result);
        QFETCH(int, initCallbacks);
        QFETCH(int, devMgrCallbacks);
        QFETCH(int, multiCallbacks);
        QFETCH(bool, connected);
        if (!failing.isEmpty())
            zelk::sim::failNext(failing.toStdString());
        m_service = CDeviceMgrService::instance();
        QCOMPARE(m_service->Init(), result);
        QCOMPARE(zelk::sim::callbackCount(zelk::Registry::DevInit), initCallbacks);
        QCOMPARE(zelk::sim::callbackCount(zelk::Registry::DevMgr), devMgrCallbacks);
        QCOMPARE(zelk::sim::callbackCount(zelk::Registry::MultiDevice), multiCallbacks);
        // The init-event signal reaches its handler only when the connections were made.
        m_service->OnMyDeviceMgrInitEventHandler(ZELK_EVENT_DEV_INIT_START);
        QCoreApplication::sendPostedEvents();
        QCOMPARE(svc::g_handled.load(), connected ? 1 : 0);
        QCOMPARE(m_service->isDevInitStarted(), connected);
        const auto order = zelk::sim::calls();
        QStringList registrations;
        for (const auto& c : order)
            if (c.function.find("Register") != std::string::npos)
                registrations << QString::fromStdString(c.function);
        const QStringList all = {QStringLiteral("ZELK_DevSrv_RegisterDevInitEventCallback"),
                                 QStringLiteral("ZELK_DevSrv_RegisterDevMgrCallback"),
                                 QStringLiteral("ZELK_DevSrv_RegisterMultiDeviceEventCallback")};
        QCOMPARE(registrations, initCallbacks ? all : QStringList(all.mid(0, 1)));
    }

    void initEventTable_data()
    {
        QTest::addColumn<int>("event");
        QTest::addColumn<bool>("frameShown");
        QTest::addColumn<QStringList>("notifications");
        QTest::addColumn<QString>("menus");
        QTest::addColumn<QString>("state");
        QTest::addColumn<int>("imsiReads");
        QTest::addColumn<int>("simFrameSignals");
        QTest::addColumn<int>("fpFrameSignals");

        const QString idle = QStringLiteral("init=0 validSim=1 avail=0 simReady=0 fp=0");
        QTest::newRow("6000 start") << 6000 << false << QStringList() << "0/0/0"
                                    << "init=1 validSim=1 avail=0 simReady=0 fp=0" << 0 << 0 << 0;
        QTest::newRow("6002 before frame") << 6002 << false << QStringList() << "0/0/0"
                                           << "init=0 validSim=0 avail=0 simReady=0 fp=0" << 0 << 0 << 0;
        QTest::newRow("6002 frame shown") << 6002 << true << QStringList() << "0/0/0"
                                          << "init=0 validSim=0 avail=0 simReady=0 fp=0" << 0 << 1 << 0;
        QTest::newRow("6008 before frame: no plugin selection")
            << 6008 << false << QStringList{bc(581)} << "1/0/0"
            << "init=0 validSim=1 avail=1 simReady=0 fp=0" << 0 << 0 << 0;
        QTest::newRow("6008 frame shown: IMSI read")
            << 6008 << true << QStringList{bc(581)} << "1/0/0"
            << "init=0 validSim=1 avail=1 simReady=0 fp=0" << 1 << 0 << 0;
        QTest::newRow("6014 device available")
            << 6014 << false << QStringList{to(DIALUP_PLUGIN_CLSID, 512)} << "0/0/0"
            << "init=0 validSim=1 avail=1 simReady=1 fp=0" << 0 << 0 << 0;
        QTest::newRow("6016 before frame") << 6016 << false << QStringList{to(MINIFRAME_PLUGIN_CLSID, 582)}
                                           << "0/0/0" << idle << 0 << 0 << 0;
        QTest::newRow("6016 frame shown")
            << 6016 << true << QStringList{to(MINIFRAME_PLUGIN_CLSID, 582)} << "1/1/1" << idle << 0 << 0 << 0;
        QTest::newRow("6018 before frame") << 6018 << false << QStringList() << "0/0/0"
                                           << "init=0 validSim=1 avail=0 simReady=0 fp=1" << 0 << 0 << 0;
        QTest::newRow("6018 frame shown") << 6018 << true << QStringList() << "0/0/0"
                                          << "init=0 validSim=1 avail=0 simReady=0 fp=1" << 0 << 0 << 1;
        QTest::newRow("6001 not in the table")
            << 6001 << true << QStringList() << "0/0/0" << idle << 0 << 0 << 0;
        QTest::newRow("5999 below the range")
            << 5999 << true << QStringList() << "0/0/0" << idle << 0 << 0 << 0;
        QTest::newRow("6019 above the range")
            << 6019 << true << QStringList() << "0/0/0" << idle << 0 << 0 << 0;
    }
    void initEventTable()
    {
        QFETCH(int, event);
        QFETCH(bool, frameShown);
        QFETCH(QStringList, notifications);
        QFETCH(QString, menus);
        QFETCH(QString, state);
        QFETCH(int, imsiReads);
        QFETCH(int, simFrameSignals);
        QFETCH(int, fpFrameSignals);
        start();
        if (frameShown)
            showFrame();
        clearRecords();
        QSignalSpy simSpy(m_service, SIGNAL(signalSIMframelaunched()));
        QSignalSpy fpSpy(m_service, SIGNAL(signalFplockOnmainframelaunched()));
        // Events outside the init range still reach the handler when a caller injects them there.
        zelk::sim::injectEvent(zelk::Registry::DevInit, event, nullptr, 0);
        QVERIFY(svc::settle(1));
        QCOMPARE(svc::g_handledEvents, QList<int>{event});
        QCOMPARE(svc::sent(), notifications);
        QCOMPARE(menuCounts(), menus);
        QCOMPARE(flags(), state);
        QCOMPARE(svc::callCount("ZELK_DevSrv_GetImsiInfo"), imsiReads);
        QCOMPARE(simSpy.count(), simFrameSignals);
        QCOMPARE(fpSpy.count(), fpFrameSignals);
        QCOMPARE(infoText(), QString());
    }

    void simInvalidDuringFingerprintLockStaysQuiet()
    {
        start();
        showFrame();
        QSignalSpy simSpy(m_service, SIGNAL(signalSIMframelaunched()));
        svc::inject(ZELK_EVENT_DEV_FP_LOCK);
        QVERIFY(svc::settle(1));
        // The lock holds the SDK's later init events back; other code's injection still gets through.
        m_service->OnMyDeviceMgrInitEventHandler(ZELK_EVENT_DEV_SIM_INVALID);
        QVERIFY(svc::settle(2));
        QVERIFY(!m_service->isValidSimFlag());
        QCOMPARE(simSpy.count(), 0);
    }

    void noPinEventReadsPinAndCardState_data()
    {
        QTest::addColumn<bool>("pinRequired");
        QTest::addColumn<int>("cardLock");
        QTest::addColumn<QString>("failing");
        QTest::addColumn<int>("pinState");
        QTest::addColumn<int>("cardState");
        QTest::newRow("ready, card usable") << false << 2 << QString() << 0 << 2;
        QTest::newRow("PIN required, card locked") << true << 1 << QString() << 1 << 1;
        QTest::newRow("PIN query fails: state kept") << true << 2 << "ZELK_DevSrv_GetPinStatus" << 8 << 2;
        QTest::newRow("card query fails: 4") << false << 2 << "ZELK_DevSrv_GetCardLockStatus" << 0 << 4;
    }
    void noPinEventReadsPinAndCardState()
    {
        QFETCH(bool, pinRequired);
        QFETCH(int, cardLock);
        QFETCH(QString, failing);
        QFETCH(int, pinState);
        QFETCH(int, cardState);
        zelk::sim::Device d = activeDevice();
        d.sim.pinEnabled = pinRequired;
        d.sim.pinVerified = false;
        d.cardLock.state = cardLock;
        QVERIFY(zelk::sim::updateDevice(d));
        start();
        if (!failing.isEmpty())
            zelk::sim::failNext(failing.toStdString());
        svc::inject(ZELK_EVENT_DEV_DEVICE_NO_PIN);
        QVERIFY(svc::settle(1));
        QCOMPARE(m_service->pinState(), pinState);
        QCOMPARE(m_service->cardState(), cardState);
    }

    void initFinishNeedsAvailableDevice_data()
    {
        QTest::addColumn<int>("status");
        QTest::addColumn<bool>("lte");
        QTest::addColumn<QStringList>("notifications");
        QTest::addColumn<bool>("simReady");
        QTest::addColumn<int>("lteMode");
        QTest::newRow("available, LTE")
            << 3 << true << QStringList{to(DIALUP_PLUGIN_CLSID, 512)} << true << 1;
        QTest::newRow("available, no LTE")
            << 3 << false << QStringList{to(DIALUP_PLUGIN_CLSID, 512)} << true << 0;
        // The SDK thread already set the LTE mode when the event arrived.
        QTest::newRow("status 1: nothing sent") << 1 << true << QStringList() << false << 1;
    }
    void initFinishNeedsAvailableDevice()
    {
        QFETCH(int, status);
        QFETCH(bool, lte);
        QFETCH(QStringList, notifications);
        QFETCH(bool, simReady);
        QFETCH(int, lteMode);
        zelk::sim::Device d = activeDevice();
        d.status = status;
        d.radio.lte = lte;
        QVERIFY(zelk::sim::updateDevice(d));
        start();
        clearRecords();
        const int dialupNotified = HostFramework::dialupService()->notifyCount();
        svc::inject(ZELK_EVENT_DEV_DEVICE_INIT_FINISH);
        QVERIFY(svc::settle(1));
        QCOMPARE(svc::sent(), notifications);
        QCOMPARE(m_service->isSimReady(), simReady);
        QCOMPARE(CommonUtils::GetLteMode(), lteMode);
        // The dial-up plugin itself got the code.
        QCOMPARE(HostFramework::dialupService()->notifyCount() - dialupNotified, notifications.size());
    }

    void deviceEventTable_data()
    {
        QTest::addColumn<int>("event");
        QTest::addColumn<QVariantList>("words");
        QTest::addColumn<int>("listCount"); // >= 0: the event carries a device list of that many
        QTest::addColumn<int>("cardLock");
        QTest::addColumn<bool>("frameShown");
        QTest::addColumn<QStringList>("notifications");
        QTest::addColumn<QString>("menus");
        QTest::addColumn<QString>("state");
        QTest::addColumn<QString>("dialog");

        const QVariantList none;
        const QString fresh = QStringLiteral("init=0 validSim=1 avail=0 simReady=0 fp=0");
        const QString avail = QStringLiteral("init=0 validSim=1 avail=1 simReady=0 fp=0");
        QTest::newRow("6500 about to change")
            << 6500 << none << -1 << 2 << false << QStringList{bc(583)} << "0/0/0" << fresh << "";
        QTest::newRow("6501 changed")
            << 6501 << none << -1 << 2 << false << QStringList{bc(584)} << "0/0/0" << avail << "";
        QTest::newRow("6600 active before frame")
            << 6600 << none << -1 << 2 << false << QStringList() << "0/0/0" << avail << "";
        QTest::newRow("6600 active, frame shown")
            << 6600 << none << -1 << 2 << true << QStringList() << "0/1/0" << avail << "IDS_DETECTE_DEVICE";
        QTest::newRow("6601 reject before frame")
            << 6601 << none << 0 << 2 << false << QStringList{bc(579)} << "0/0/0" << fresh << "";
        QTest::newRow("6601 reject, frame shown") << 6601 << none << 0 << 2 << true << QStringList{bc(579)}
                                                  << "1/1/1" << fresh << "IDS_DEVICE_INVALID";
        QTest::newRow("6604 switch, frame shown")
            << 6604 << none << -1 << 2 << true << QStringList{bc(579)} << "1/1/1" << fresh << "";
        QTest::newRow("6606 detected, two devices")
            << 6606 << none << 2 << 2 << true << QStringList() << "0/0/0" << fresh << "";
        QTest::newRow("6010 list changed")
            << 6010 << none << 1 << 2 << true << QStringList() << "0/0/0" << fresh << "";
        QTest::newRow("6619 SIM 1, card usable")
            << 6619 << QVariantList{1} << -1 << 2 << false << QStringList{bc(578)} << "1/0/0"
            << "init=0 validSim=1 avail=0 simReady=1 fp=0"
            << "";
        QTest::newRow("6619 SIM 254, card usable")
            << 6619 << QVariantList{254} << -1 << 2 << false << QStringList{bc(578)} << "1/0/0"
            << "init=0 validSim=1 avail=0 simReady=1 fp=0"
            << "";
        QTest::newRow("6619 SIM 1, card locked")
            << 6619 << QVariantList{1} << -1 << 1 << false << QStringList{bc(579)} << "1/0/0"
            << "init=0 validSim=1 avail=0 simReady=1 fp=0"
            << "";
        QTest::newRow("6619 SIM 0") << 6619 << QVariantList{0} << -1 << 2 << false << QStringList{bc(579)}
                                    << "1/0/0" << fresh << "";
        QTest::newRow("6619 SIM 255 like 0") << 6619 << QVariantList{255} << -1 << 2 << false
                                             << QStringList{bc(579)} << "1/0/0" << fresh << "";
        QTest::newRow("6616 power") << 6616 << QVariantList{1} << -1 << 2 << false << QStringList{bc(854, 1)}
                                    << "0/0/0" << fresh << "";
        QTest::newRow("7000 unknown")
            << 7000 << none << -1 << 2 << true << QStringList() << "0/0/0" << fresh << "";
    }
    void deviceEventTable()
    {
        QFETCH(int, event);
        QFETCH(QVariantList, words);
        QFETCH(int, listCount);
        QFETCH(int, cardLock);
        QFETCH(bool, frameShown);
        QFETCH(QStringList, notifications);
        QFETCH(QString, menus);
        QFETCH(QString, state);
        QFETCH(QString, dialog);
        zelk::sim::Device d = activeDevice();
        d.cardLock.state = cardLock;
        QVERIFY(zelk::sim::updateDevice(d));
        start();
        if (frameShown)
            showFrame();
        clearRecords();
        if (listCount >= 0) {
            svc::injectList(event, listCount);
        } else {
            std::vector<uint32_t> data;
            for (const QVariant& w : qAsConst(words))
                data.push_back(w.toUInt());
            svc::inject(event, data);
        }
        QVERIFY(svc::settle(1));
        QCOMPARE(svc::sent(), notifications);
        QCOMPARE(menuCounts(), menus);
        QCOMPARE(flags(), state);
        QCOMPARE(infoText(), dialog.isEmpty() ? QString() : Change::tr(dialog));
        if (listCount >= 0) {
            // The list was taken over on the SDK thread before the handler ran.
            QCOMPARE(DeviceMgrUILogic::GetInstance()->GetLocalDeviceInfo().nDevNum, listCount);
        }
        if (event == ZELK_EVENT_DEV_REJECT)
            QCOMPARE(CommonUtils::GetLteMode(), 0);
        if (event == ZELK_EVENT_DEV_ACTIVE || event == ZELK_EVENT_DEV_CHANGED)
            QCOMPARE(CommonUtils::GetSettings(QStringLiteral("Device"), QStringLiteral("ProductType")),
                     QStringLiteral("2"));
    }

    void beforeChangeRemembersDevice()
    {
        start();
        m_service->InitOnMainFrameShow();
        QCOMPARE(m_service->currentDeviceName(), QStringLiteral("USB Modem"));
        QCOMPARE(m_service->currentProductType(), 2);
        svc::inject(ZELK_EVENT_DEV_BEFORE_CHANGE);
        QVERIFY(svc::settle(1));
        QCOMPARE(m_service->lastDeviceName(), QStringLiteral("USB Modem"));
        QCOMPARE(m_service->lastProductType(), 2);
    }

    void eventDataWordsReachHandlers()
    {
        start();
        svc::inject(ZELK_EVENT_DEV_FP_VERIFY, {5});
        QVERIFY(svc::settle(1));
        QCOMPARE(m_service->verifyIndState(), 5);
        // Without data nothing is read, but the handler still runs.
        svc::inject(ZELK_EVENT_DEV_SIM_STATE_CHANGE, {7});
        svc::inject(ZELK_EVENT_DEV_SIM_STATE_CHANGE);
        QVERIFY(svc::settle(3));
        QCOMPARE(m_service->simState(), 7u);
        QCOMPARE(svc::g_handledEvents, (QList<int>{6620, 6619, 6619}));
    }

    void notifyCodes_data()
    {
        QTest::addColumn<QList<uint>>("codes");
        QTest::addColumn<bool>("external");
        QTest::addColumn<bool>("frameShown");
        QTest::newRow("784") << QList<uint>{784} << true << false;
        QTest::newRow("785") << QList<uint>{785} << true << false;
        QTest::newRow("786") << QList<uint>{786} << true << false;
        QTest::newRow("786 then 787") << QList<uint>{786, 787} << false << false;
        QTest::newRow("786 then 788 changes nothing") << QList<uint>{786, 788} << true << false;
        QTest::newRow("320 language") << QList<uint>{320} << false << false;
        QTest::newRow("258 frame shown") << QList<uint>{258} << false << true;
    }
    void notifyCodes()
    {
        QFETCH(QList<uint>, codes);
        QFETCH(bool, external);
        QFETCH(bool, frameShown);
        start();
        zelk::sim::forceResult("ZELK_DevSrv_GetDevStatus", 2, ZELK_ERROR_FAILURE); // no card yet at 258
        for (uint code : codes)
            QCOMPARE(m_service->Notify(code, 1, 2), 0);
        QCOMPARE(m_service->isExternalDlgShown(), external);
        QCOMPARE(m_service->isFrameShown(), frameShown);
        QCOMPARE(m_service->parentWidget(),
                 frameShown ? static_cast<QWidget*>(m_host.mainWindow()) : nullptr);
        QCOMPARE(svc::sent(), QStringList());
    }

    void firstFrameWork_data()
    {
        QTest::addColumn<bool>("simInvalid");
        QTest::addColumn<unsigned int>("simStatus");
        QTest::addColumn<QStringList>("notifications");
        QTest::addColumn<int>("messages");
        QTest::addColumn<int>("pinState");
        // The PIN check at the end of the first-frame work reads the state (the PIN request is off).
        QTest::newRow("valid SIM") << false << 1u << QStringList() << 0 << 0;
        QTest::newRow("SIM invalid: 579 and the message") << true << 1u << QStringList{bc(579)} << 1 << 0;
        QTest::newRow("SIM without PIN (240)") << false << 240u << QStringList() << 0 << 0;
    }
    void firstFrameWork()
    {
        QFETCH(bool, simInvalid);
        QFETCH(unsigned int, simStatus);
        QFETCH(QStringList, notifications);
        QFETCH(int, messages);
        QFETCH(int, pinState);
        zelk::sim::Device d = activeDevice();
        d.sim.status = simStatus;
        QVERIFY(zelk::sim::updateDevice(d));
        start();
        if (simInvalid) {
            svc::inject(ZELK_EVENT_DEV_SIM_INVALID);
            QVERIFY(svc::settle(1));
        }
        clearRecords();
        QVERIFY(Change::LoadLanguage(QStringLiteral("en")));
        m_service->InitOnMainFrameShow();
        QCOMPARE(svc::sent(), notifications);
        const auto boxes = HostFramework::messageRecords();
        QCOMPARE(boxes.size(), messages);
        if (messages) {
            QCOMPARE(boxes.first().text,
                     QStringLiteral("The SIM card is missing or invalid. Please insert a valid SIM card."));
            QCOMPARE(boxes.first().title, Change::tr(QStringLiteral("IDS_MAINFRM_PROMPT")));
        }
        QCOMPARE(m_service->pinState(), pinState);
        QCOMPARE(m_service->currentDeviceName(), QStringLiteral("USB Modem"));
        QCOMPARE(CommonUtils::GetSettings(QStringLiteral("Device"), QStringLiteral("ProductType")),
                 QStringLiteral("2"));
        // The call service's dialog notifications are asked for, 784 to 787.
        QList<uint> subscribed;
        const auto records = HostFramework::notificationRecords();
        for (const auto& r : records)
            if (r.kind == QLatin1String("subscribe") && r.clsid == QLatin1String(CALLSRV_PLUGIN_CLSID))
                subscribed << r.code;
        QCOMPARE(subscribed, (QList<uint>{784, 785, 786, 787}));
    }

    void firstFrameWithoutLogicStops()
    {
        // A service whose start-up never ran has no logic layer.
        m_service = CDeviceMgrService::instance();
        svc::startLogCapture();
        m_service->InitOnMainFrameShow();
        QCOMPARE(svc::logCount(QStringLiteral("Arg is NULL:")), 1);
        QCOMPARE(svc::logCount(QStringLiteral(" 6557")), 1);
        QCOMPARE(m_service->currentDeviceName(), QString());
    }

    void startDetectDevice_data()
    {
        QTest::addColumn<bool>("fails");
        QTest::newRow("accepted") << false;
        QTest::newRow("refused") << true;
    }
    void startDetectDevice()
    {
        QFETCH(bool, fails);
        start();
        zelk::sim::clearCalls();
        if (fails)
            zelk::sim::failNext("ZELK_DevSrv_DetectDevice");
        svc::startLogCapture();
        m_service->StartDetectDevice();
        QCOMPARE(svc::callCount("ZELK_DevSrv_DetectDevice"), 1);
        QCOMPARE(svc::logCount(QStringLiteral("ZELK_DevSrv_DetectDevice failed")), fails ? 1 : 0);
        // The success line follows in both cases.
        QCOMPARE(svc::logCount(QStringLiteral("ZELK_DevSrv_DetectDevice success")), 1);
    }

    void unregisterWithdrawsAllThree()
    {
        start();
        zelk::sim::clearCalls();
        m_service->unSDKRegisterEvent();
        QCOMPARE(zelk::sim::callbackCount(zelk::Registry::DevInit), 0);
        QCOMPARE(zelk::sim::callbackCount(zelk::Registry::DevMgr), 0);
        QCOMPARE(zelk::sim::callbackCount(zelk::Registry::MultiDevice), 0);
        QStringList order;
        for (const auto& c : zelk::sim::calls())
            order << QString::fromStdString(c.function);
        QCOMPARE(order, (QStringList{QStringLiteral("ZELK_DevSrv_UnRegisterDevInitEventCallback"),
                                     QStringLiteral("ZELK_DevSrv_UnRegisterDevMgrCallback"),
                                     QStringLiteral("ZELK_DevSrv_UnRegisterMultiDeviceEventCallback")}));
    }

    void afterQuitDeviceEventsAreDroppedAndInitEventsIgnored()
    {
        start();
        showFrame();
        svc::startLogCapture();
        m_service->appQuitStop();
        QVERIFY(CommonUtils::IsShuttingDown());
        svc::inject(ZELK_EVENT_DEV_ACTIVE);
        svc::inject(ZELK_EVENT_DEV_INIT_START);
        // Only the init event is emitted; its handler drops it.
        QVERIFY(svc::settle(1));
        QCOMPARE(svc::g_handledEvents, QList<int>{ZELK_EVENT_DEV_INIT_START});
        QVERIFY(!m_service->isDevInitStarted());
        QVERIFY(!m_service->isDeviceAvailableFlag());
        QCOMPARE(svc::logCount(QStringLiteral("Events ignored: App Shutting down ")), 1);
        QCOMPARE(svc::logCount(QStringLiteral("signals ignored: App Shutting down ")), 1);
        QCOMPARE(infoText(), QString());
    }

    void queuedEventsAfterQuitShowNothing()
    {
        start();
        showFrame();
        svc::inject(ZELK_EVENT_DEV_ACTIVE);
        svc::inject(ZELK_EVENT_DEV_SIM_STATE_CHANGE, {1});
        // Both signals are queued to this thread but not delivered yet.
        QVERIFY(zelk::sim::waitForIdle(5000));
        QCOMPARE(svc::g_handled.load(), 0);
        m_service->appQuitStop();
        QVERIFY(svc::settle(2));
        QCOMPARE(svc::sent(), QStringList());
        QCOMPARE(infoText(), QString());
        QVERIFY(!m_service->isDeviceAvailableFlag());
    }

    void destroyWithEventsInFlight()
    {
        start();
        showFrame();
        for (int i = 0; i < 20; ++i)
            svc::inject(ZELK_EVENT_DEV_ACTIVE);
        QVERIFY(zelk::sim::waitForIdle(5000));
        m_service->unSDKRegisterEvent();
        CDeviceMgrService::Destroy();
        m_service = nullptr;
        // The queued events died with their receiver.
        QCoreApplication::sendPostedEvents();
        QCOMPARE(svc::g_handled.load(), 0);
        // A second tear-down is harmless.
        CDeviceMgrService::Destroy();
        QCOMPARE(infoText(), QString());
    }

    void releaseDataTwiceIsHarmless()
    {
        start();
        m_service->releaseData();
        m_service->releaseData();
        // Every connection is gone: nothing reaches the handler any more.
        m_service->OnMyDeviceMgrInitEventHandler(ZELK_EVENT_DEV_INIT_START);
        QCoreApplication::sendPostedEvents();
        QCOMPARE(svc::g_handled.load(), 0);
    }
};

QTEST_MAIN(tst_ServiceDispatch)
#include "tst_servicedispatch.moc"
