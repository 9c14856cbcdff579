// The service's start-up, its two event tables driven through the simulated card's callbacks, the
// host notifications it answers and the first-frame work (the shut-down is played under several SDK
// threads by tst_servicethreads); and what the user and the other plugins see of it: the information
// dialog, message boxes with the card word, the radio commands and events, and the detach commands.
#include "ServiceTestSupport.h"

#include "Change.h"
#include "CommonUtils.h"
#include "HostFixture.h"
#include "HostServiceObjects.h"

#include <QtCore/QTimer>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMainWindow>

using svc::activeDevice;
using svc::bc;
using svc::to;

namespace {

// The texts of the information dialogs on screen.
QStringList infoTexts()
{
    QStringList texts;
    const auto tops = QApplication::topLevelWidgets();
    for (QWidget* w : tops) {
        auto* label = w->findChild<QLabel*>(QStringLiteral("DeviceMgrUI_labelInfoLabel"));
        if (w->isVisible() && w->objectName() == QLatin1String("DeviceMgrUI_dialogInfoDlg"))
            texts << (label ? label->text() : QStringLiteral("<no label>"));
    }
    return texts;
}

QString menuCounts()
{
    MainMenuService* menu = HostFramework::mainMenuService();
    return QStringLiteral("%1/%2/%3")
        .arg(menu->simRefreshCount())
        .arg(menu->radioRefreshCount())
        .arg(menu->deviceRefreshCount());
}

struct Ev
{
    int event;
    bool init; // injected into the initialisation events' registry
    std::vector<uint32_t> words;
    int listCount; // >= 0: the event carries a device list of that many
    int cardLock;
    bool frameShown;
    QStringList notifications;
    QString menus;
    QString state;
    QString dialog = QString();
    int imsiReads = 0;
    int simSignals = 0;
    int fpSignals = 0;
    int deviceStatus = DEVICE_STATUS_AVAILABLE;
};

} // namespace

Q_DECLARE_METATYPE(Ev)

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

    void startUi(bool frameShown = true)
    {
        start();
        if (frameShown)
            showFrame();
        clearRecords();
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
        // The registration the SDK refuses (Init() then answers false), and the callbacks registered
        // for init events/device events/multi-device events.
        QTest::addColumn<QString>("failing");
        QTest::addColumn<QString>("callbacks");
        const auto row = [](const char* name, const char* failing, const char* callbacks) {
            QTest::newRow(name) << QString::fromLatin1(failing) << QString::fromLatin1(callbacks);
        };
        row("all registered", "", "1/1/1");
        row("init events refused: stops at once", "ZELK_DevSrv_RegisterDevInitEventCallback", "0/0/0");
        row("multi-device events refused: goes on", "ZELK_DevSrv_RegisterMultiDeviceEventCallback", "1/1/0");
        row("device events refused: goes on", "ZELK_DevSrv_RegisterDevMgrCallback", "1/0/1");
    }
    void initRegistersInOrder()
    {
        QFETCH(QString, failing);
        if (!failing.isEmpty())
            zelk::sim::failNext(failing.toStdString());
        m_service = CDeviceMgrService::instance();
        QCOMPARE(m_service->Init(), failing.isEmpty());
        QTEST(QStringLiteral("%1/%2/%3")
                  .arg(zelk::sim::callbackCount(zelk::Registry::DevInit))
                  .arg(zelk::sim::callbackCount(zelk::Registry::DevMgr))
                  .arg(zelk::sim::callbackCount(zelk::Registry::MultiDevice)),
              "callbacks");
        // The init-event signal reaches its handler only when the connections were made, which
        // happens after the init-event registration.
        const bool connected = zelk::sim::callbackCount(zelk::Registry::DevInit) == 1;
        m_service->OnMyDeviceMgrInitEventHandler(ZELK_EVENT_DEV_INIT_START);
        QCoreApplication::sendPostedEvents();
        QCOMPARE(svc::g_handled.load(), connected ? 1 : 0);
        QCOMPARE(m_service->isDevInitStarted(), connected);
        QStringList registrations;
        for (const auto& c : zelk::sim::calls())
            if (c.function.find("Register") != std::string::npos)
                registrations << QString::fromStdString(c.function);
        const QStringList all = {QStringLiteral("ZELK_DevSrv_RegisterDevInitEventCallback"),
                                 QStringLiteral("ZELK_DevSrv_RegisterDevMgrCallback"),
                                 QStringLiteral("ZELK_DevSrv_RegisterMultiDeviceEventCallback")};
        QCOMPARE(registrations, connected ? all : QStringList(all.mid(0, 1)));
    }

    // One event as the SDK delivers it: what the other plugins hear, the host menus refreshed
    // (SIM/radio/device), the service's flags, the notice shown and the SDK reads it makes.
    void eventTable_data()
    {
        QTest::addColumn<Ev>("e");
        const auto row = [](const char* name, const Ev& e) { QTest::newRow(name) << e; };
        const QString idle = QStringLiteral("init=0 validSim=1 avail=0 simReady=0 fp=0");
        const QString avail = QStringLiteral("init=0 validSim=1 avail=1 simReady=0 fp=0");
        const QString ready = QStringLiteral("init=0 validSim=1 avail=1 simReady=1 fp=0");
        const QString simReady = QStringLiteral("init=0 validSim=1 avail=0 simReady=1 fp=0");
        const QString noSim = QStringLiteral("init=0 validSim=0 avail=0 simReady=0 fp=0");
        const QStringList none;
        const QString dialup = to(DIALUP_PLUGIN_CLSID, 512), mini = to(MINIFRAME_PLUGIN_CLSID, 582);
        // Initialisation events; a code the table lacks still reaches the handler when injected there.
        row("6000 start",
            {6000, true, {}, -1, 2, false, none, "0/0/0", "init=1 validSim=1 avail=0 simReady=0 fp=0"});
        row("6002 frame shown", {6002, true, {}, -1, 2, true, none, "0/0/0", noSim, "", 0, 1});
        row("6008 before frame: no plugin selection",
            {6008, true, {}, -1, 2, false, {bc(581)}, "1/0/0", avail});
        row("6008 frame shown: IMSI read", {6008, true, {}, -1, 2, true, {bc(581)}, "1/0/0", avail, "", 1});
        row("6014 device available", {6014, true, {}, -1, 2, false, {dialup}, "0/0/0", ready});
        row("6014 device status 1: nothing",
            {6014, true, {}, -1, 2, false, none, "0/0/0", idle, "", 0, 0, 0, 1});
        row("6016 frame shown", {6016, true, {}, -1, 2, true, {mini}, "1/1/1", idle});
        const QString fpLock = QStringLiteral("init=0 validSim=1 avail=0 simReady=0 fp=1");
        row("6018 frame shown", {6018, true, {}, -1, 2, true, none, "0/0/0", fpLock, "", 0, 0, 1});
        // Device and multi-device events.
        row("6500 about to change", {6500, false, {}, -1, 2, false, {bc(583)}, "0/0/0", idle});
        row("6501 changed", {6501, false, {}, -1, 2, false, {bc(584)}, "0/0/0", avail});
        row("6600 active, frame shown",
            {6600, false, {}, -1, 2, true, none, "0/1/0", avail, "IDS_DETECTE_DEVICE"});
        row("6601 reject, frame shown",
            {6601, false, {}, 0, 2, true, {bc(579)}, "1/1/1", idle, "IDS_DEVICE_INVALID"});
        row("6604 switch, frame shown", {6604, false, {}, -1, 2, true, {bc(579)}, "1/1/1", idle});
        row("6606 detected, two devices", {6606, false, {}, 2, 2, true, none, "0/0/0", idle});
        row("6010 list changed", {6010, false, {}, 1, 2, true, none, "0/0/0", idle});
        row("6619 SIM 1, card usable", {6619, false, {1}, -1, 2, false, {bc(578)}, "1/0/0", simReady});
        row("6619 SIM 1, card locked", {6619, false, {1}, -1, 1, false, {bc(579)}, "1/0/0", simReady});
        row("6619 SIM 0", {6619, false, {0}, -1, 2, false, {bc(579)}, "1/0/0", idle});
        row("6616 power", {6616, false, {1}, -1, 2, false, {bc(854, 1)}, "0/0/0", idle});
        row("7000 unknown", {7000, false, {}, -1, 2, true, none, "0/0/0", idle});
    }
    void eventTable()
    {
        QFETCH(Ev, e);
        zelk::sim::Device d = activeDevice();
        d.cardLock.state = e.cardLock;
        d.status = e.deviceStatus;
        d.radio.lte = true;
        QVERIFY(zelk::sim::updateDevice(d));
        startUi(e.frameShown);
        QSignalSpy simSpy(m_service, SIGNAL(signalSIMframelaunched()));
        QSignalSpy fpSpy(m_service, SIGNAL(signalFplockOnmainframelaunched()));
        const int dialupNotified = HostFramework::dialupService()->notifyCount();
        if (e.init)
            zelk::sim::injectEvent(zelk::Registry::DevInit, e.event, nullptr, 0);
        else if (e.listCount >= 0)
            svc::injectList(e.event, e.listCount);
        else
            svc::inject(e.event, e.words);
        QVERIFY(svc::settle(1));
        QCOMPARE(svc::g_handledEvents, QList<int>{e.event});
        QCOMPARE(svc::sent(), e.notifications);
        QCOMPARE(menuCounts(), e.menus);
        QCOMPARE(flags(), e.state);
        QCOMPARE(infoTexts(), e.dialog.isEmpty() ? QStringList() : QStringList{Change::tr(e.dialog)});
        if (!e.dialog.isEmpty())
            QCOMPARE(m_service->infoTimer()->interval(), e.event == ZELK_EVENT_DEV_REJECT ? 3000 : 10000);
        QCOMPARE(svc::callCount("ZELK_DevSrv_GetImsiInfo"), e.imsiReads);
        QCOMPARE(simSpy.count(), e.simSignals);
        QCOMPARE(fpSpy.count(), e.fpSignals);
        // A device list is taken over on the SDK thread before the handler runs.
        if (e.listCount >= 0)
            QCOMPARE(DeviceMgrUILogic::GetInstance()->GetLocalDeviceInfo().nDevNum, e.listCount);
        if (e.event == ZELK_EVENT_DEV_REJECT)
            QCOMPARE(CommonUtils::GetLteMode(), 0);
        // The SDK thread sets the LTE mode whatever the status; the dial-up plugin itself gets its code.
        if (e.event == ZELK_EVENT_DEV_DEVICE_INIT_FINISH) {
            QCOMPARE(CommonUtils::GetLteMode(), 1);
            QCOMPARE(HostFramework::dialupService()->notifyCount() - dialupNotified, e.notifications.size());
        }
        if (e.event == ZELK_EVENT_DEV_ACTIVE || e.event == ZELK_EVENT_DEV_CHANGED)
            QCOMPARE(CommonUtils::GetSettings(QStringLiteral("Device"), QStringLiteral("ProductType")),
                     QStringLiteral("2"));
    }

    void simInvalidDuringFingerprintLockStaysQuiet()
    {
        startUi();
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
        QTEST(m_service->pinState(), "pinState");
        QTEST(m_service->cardState(), "cardState");
    }

    void notifyCodes_data()
    {
        QTest::addColumn<QList<uint>>("codes");
        QTest::addColumn<bool>("external");
        QTest::addColumn<bool>("frameShown");
        QTest::newRow("784") << QList<uint>{784} << true << false;
        QTest::newRow("786 then 787") << QList<uint>{786, 787} << false << false;
        QTest::newRow("786 then 788 changes nothing") << QList<uint>{786, 788} << true << false;
        QTest::newRow("258 frame shown") << QList<uint>{258} << false << true;
    }
    void notifyCodes()
    {
        QFETCH(QList<uint>, codes);
        QFETCH(bool, frameShown);
        start();
        zelk::sim::forceResult("ZELK_DevSrv_GetDevStatus", 2, ZELK_ERROR_FAILURE); // no card yet at 258
        for (uint code : codes)
            QCOMPARE(m_service->Notify(code, 1, 2), 0);
        QTEST(m_service->isExternalDlgShown(), "external");
        QCOMPARE(m_service->isFrameShown(), frameShown);
        QCOMPARE(m_service->parentWidget(),
                 frameShown ? static_cast<QWidget*>(m_host.mainWindow()) : nullptr);
        QCOMPARE(svc::sent(), QStringList());
    }

    // A SIM found invalid before the first frame shows 579 and the message; either way the work reads
    // the PIN state (the PIN request is off), stores the product type and asks for the call service's
    // dialog notifications, 784 to 787.
    void firstFrameWork_data()
    {
        QTest::addColumn<bool>("simInvalid");
        QTest::newRow("valid SIM") << false;
        QTest::newRow("SIM invalid: 579 and the message") << true;
    }
    void firstFrameWork()
    {
        QFETCH(bool, simInvalid);
        start();
        if (simInvalid) {
            svc::inject(ZELK_EVENT_DEV_SIM_INVALID);
            QVERIFY(svc::settle(1));
        }
        clearRecords();
        QVERIFY(Change::LoadLanguage(QStringLiteral("en")));
        m_service->InitOnMainFrameShow();
        QCOMPARE(svc::sent(), simInvalid ? QStringList{bc(579)} : QStringList());
        const auto boxes = HostFramework::messageRecords();
        QCOMPARE(boxes.size(), simInvalid ? 1 : 0);
        if (simInvalid)
            QCOMPARE(boxes.first().text,
                     QStringLiteral("The SIM card is missing or invalid. Please insert a valid SIM card."));
        QCOMPARE(m_service->pinState(), 0);
        QCOMPARE(CommonUtils::GetSettings(QStringLiteral("Device"), QStringLiteral("ProductType")),
                 QStringLiteral("2"));
        QList<uint> subscribed;
        const auto records = HostFramework::notificationRecords();
        for (const auto& r : records)
            if (r.kind == QLatin1String("subscribe") && r.clsid == QLatin1String(CALLSRV_PLUGIN_CLSID))
                subscribed << r.code;
        QCOMPARE(subscribed, (QList<uint>{784, 785, 786, 787}));
    }

    // The detection request goes to the SDK once, refused or not (its answers come as events).
    void startDetectDevice()
    {
        start();
        zelk::sim::clearCalls();
        zelk::sim::failNext("ZELK_DevSrv_DetectDevice");
        m_service->StartDetectDevice();
        QCOMPARE(svc::callCount("ZELK_DevSrv_DetectDevice"), 1);
        QVERIFY(zelk::sim::waitForIdle(5000));
    }

    // ---- information dialog ----------------------------------------------------------------------

    // A second notice replaces the text and the time of the first; one time-out closes the dialog.
    void secondNoticeReplacesTextAndTime()
    {
        startUi();
        m_service->showInfoDlg(Change::tr(QStringLiteral("IDS_DETECTE_DEVICE")), 10000);
        m_service->showInfoDlg(Change::tr(QStringLiteral("IDS_INIT_DEV_UNDERWAY")), 30);
        QCOMPARE(infoTexts(), QStringList{Change::tr(QStringLiteral("IDS_INIT_DEV_UNDERWAY"))});
        QCOMPARE(m_service->infoTimer()->interval(), 30);
        QTRY_COMPARE_WITH_TIMEOUT(infoTexts(), QStringList(), 5000);
        QVERIFY(!m_service->infoTimer()->isActive());
    }

    void messageCarriesTheCardWord_data()
    {
        // The SIM word is always configured ("Nano SIM"); the UIM word may be left out.
        QTest::addColumn<int>("productType");
        QTest::addColumn<QString>("uimtype");
        QTest::addColumn<QString>("word");
        QTest::newRow("GSM configured") << 2 << QStringLiteral("R-UIM") << "Nano SIM";
        QTest::newRow("CDMA default") << 1 << QString() << "UIM";
        QTest::newRow("CDMA configured") << 1 << QStringLiteral("R-UIM") << "R-UIM";
    }
    void messageCarriesTheCardWord()
    {
        QFETCH(int, productType);
        QFETCH(QString, uimtype);
        QFETCH(QString, word);
        zelk::sim::Device d = activeDevice();
        d.productType = productType;
        QVERIFY(zelk::sim::updateDevice(d));
        m_host.setSetting(QStringLiteral("customize"), QStringLiteral("simtype"), QStringLiteral("Nano SIM"));
        m_host.setSetting(QStringLiteral("customize"), QStringLiteral("uimtype"), uimtype);
        QVERIFY(Change::LoadLanguage(QStringLiteral("en")));
        startUi();
        m_service->showInfoDlg(QStringLiteral("up"), 3000);
        m_service->showMessage(QStringLiteral("IDS_SIM_INVALID"));
        QCOMPARE(infoTexts(), QStringList());
        const auto boxes = HostFramework::messageRecords();
        QCOMPARE(boxes.size(), 1);
        QCOMPARE(
            boxes.first().text,
            QStringLiteral("The %1 card is missing or invalid. Please insert a valid %1 card.").arg(word));
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
        QTest::newRow("hardware off first") << QList<QPoint>{{0, 1}} << QList<uint>{576, 580};
        QTest::newRow("event without data: nothing") << QList<QPoint>() << QList<uint>();
    }
    void radioEventSequences()
    {
        QFETCH(QList<QPoint>, events);
        QFETCH(QList<uint>, codes);
        startUi();
        if (events.isEmpty())
            svc::inject(ZELK_EVENT_DEV_RF_SWITCH);
        for (const QPoint& e : qAsConst(events)) {
            // The SDK's data words: software state first, hardware state second.
            svc::inject(ZELK_EVENT_DEV_RF_SWITCH, {uint32_t(e.y()), uint32_t(e.x())});
        }
        QVERIFY(svc::settle(qMax(1, events.size())));
        if (!events.isEmpty())
            QTRY_COMPARE(HostFramework::mainMenuService()->radioRefreshCount(), events.size());
        QStringList expected;
        for (uint code : codes)
            expected << bc(code);
        QCOMPARE(svc::sent(), expected);
        QCOMPARE(m_service->lastSwRFState(), events.isEmpty() ? -1 : events.last().y());
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
        zelk::sim::Device d = activeDevice();
        d.radio.softwareOn = radioOn;
        d.radio.switchable = switchable;
        QVERIFY(zelk::sim::updateDevice(d));
        startUi(false);
        if (sdkFails)
            zelk::sim::failNext("ZELK_DevSrv_SetRFSwitch");
        QTEST(enable ? m_service->EnableRF() : m_service->DisableRF(), "result");
        QTEST(svc::sent(), "notifications");
        QTEST(HostFramework::mainMenuService()->radioRefreshCount(), "menuRefreshes");
    }

    void detachCommands_data()
    {
        QTest::addColumn<bool>("gprs");
        QTest::addColumn<QString>("setting");
        QTest::addColumn<int>("calls");
        QTest::newRow("packet detach, yes") << true << "yes" << 1;
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
        startUi(false);
        if (gprs)
            m_service->DetatchGPRS();
        else
            m_service->SetOffline();
        const char* function = gprs ? "ZELK_NetSrv_SetPSState" : "ZELK_DevSrv_SetOffline";
        QCOMPARE(svc::callCount(function), calls);
        if (gprs && calls)
            QCOMPARE(zelk::sim::calls(function).front().args.front(), std::string("0"));
    }

    // A service whose start-up never ran has no logic layer: commands and the first-frame work do
    // nothing and crash nothing.
    void commandsWithoutLogicLayer()
    {
        m_host.setSetting(QStringLiteral("customize"), QStringLiteral("gprs_detach"), QStringLiteral("yes"));
        m_host.setSetting(QStringLiteral("customize"), QStringLiteral("imsi_detach"), QStringLiteral("yes"));
        m_service = CDeviceMgrService::instance();
        QCOMPARE(m_service->EnableRF(), 13);
        QCOMPARE(m_service->DisableRF(), 13);
        m_service->DetatchGPRS();
        m_service->SetOffline();
        QCOMPARE(svc::sent(), QStringList());
        QCOMPARE(zelk::sim::calls().size(), std::size_t(0));
        m_service->InitOnMainFrameShow();
        QCOMPARE(HostFixture::visibleTopLevels().size(), 0);
    }
};

QTEST_MAIN(tst_ServiceDispatch)
#include "tst_servicedispatch.moc"
