// Simulated data card: the events each situation sends, in order, on the SDK's own thread; a callback
// that unregisters itself; typed codes masked in its call record; bad input refused; the host
// application's simulator panel driving it. That no callback runs after its unregistration returned
// is played by the service's tear-down under a storm.
#include "SdkTestSupport.h"
#include "SimulatorPanel.h"

#include <QtTest/QtTest>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QPushButton>

#include <atomic>
#include <cstring>

using namespace zelk::sim;

namespace {

// "i6000" for an initialisation event, "d" device manager, "m" multi-device, "c" call service.
QString tagged(const std::vector<sdktest::Seen>& seen)
{
    QStringList parts;
    for (const sdktest::Seen& s : seen) {
        const char* prefix = "dimc";
        parts << QString(QLatin1Char(prefix[static_cast<int>(s.registry)])) + QString::number(s.event);
    }
    return parts.join(' ');
}

std::atomic<int> g_selfCalls{0};
int unregistersItself(int, void*)
{
    ++g_selfCalls;
    ZELK_DevSrv_UnRegisterDevMgrCallback(unregistersItself);
    return 1;
}

} // namespace

class tst_SimEvents : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { sdktest::registerAll(); }
    void cleanupTestCase() { sdktest::unregisterAll(); }
    void init()
    {
        reset();
        sdktest::clearSeen();
    }
    void eventOrder_data()
    {
        QTest::addColumn<QString>("situation");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char* name, const char* situation, const char* expected) {
            QTest::newRow(name) << QString::fromLatin1(situation) << QString::fromLatin1(expected);
        };
        row("plugged in, fingerprint-locked", "plugFp", "m6606 d6600 i6000 i6018 i6008 i6011 i6014");
        row("active removed, one left", "removeActive", "i6016 m6010 d6600 i6000 i6008 i6012 i6014");
        row("switch between two devices", "switch", "m6500 m6604 m6501 d6600 i6000 i6008 i6012 i6014");
        row("SIM inserted, PIN off, network-locked", "simInLocked", "d6619 i6012 i6013");
        row("modem reset", "resetMs", "i6016 m6606 d6600 i6000 i6008 i6011 i6014");
        row("PIN entered: no event", "verifyPin", "");
        row("power switched, call ended", "powerCall", "d6616 c6618");
    }
    void eventOrder()
    {
        QFETCH(QString, situation);

        Device a = sdktest::device("a", "Modem a", 3);
        Device b = sdktest::device("b", "Modem b", 4);
        if (situation == "plugFp") {
            Device d = sdktest::device("new", "Modem new", 9);
            d.sim.pinEnabled = true;
            d.fingerprintLocked = true;
            sdktest::setDevices({}, "");
            std::string error;
            QVERIFY2(attachDevice(d, &error), error.c_str());
        } else if (situation == "removeActive") {
            sdktest::setDevices({a, b}, "a");
            QVERIFY(removeDevice("a"));
        } else if (situation == "switch") {
            sdktest::setDevices({a, b}, "a");
            QCOMPARE(ZELK_DevSrv_ManualChangeDevice("Modem b", "", 4), ZELK_ERROR_SUCCESS);
        } else if (situation == "simInLocked") {
            a.sim.present = false;
            a.cardLock.state = 1;
            sdktest::setDevices({a}, "a");
            QVERIFY(insertSim("a"));
        } else if (situation == "resetMs") {
            a.sim.pinEnabled = true;
            sdktest::setDevices({a}, "a");
            QCOMPARE(ZELK_DevSrv_ResetMs(), ZELK_ERROR_SUCCESS);
        } else if (situation == "verifyPin") {
            a.sim.pinEnabled = true;
            sdktest::setDevices({a}, "a");
            unsigned char rem = 0;
            QCOMPARE(ZELK_DevSrv_VerifyPin(0, "1234", &rem), ZELK_ERROR_SUCCESS);
        } else if (situation == "powerCall") {
            sdktest::setDevices({a}, "a");
            sendPowerEvent(1);
            sendCallEnd();
        } else {
            QFAIL("unknown situation");
        }
        QVERIFY(waitForIdle());
        const std::vector<sdktest::Seen> seen = sdktest::seen();
        QTEST(tagged(seen), "expected");
        // Every callback runs on the SDK's own delivery thread, never the caller's.
        for (const sdktest::Seen& s : seen)
            QVERIFY(s.thread == deliveryThread() && s.thread != std::this_thread::get_id());
    }
    void callbackMayUnregisterItself()
    {
        g_selfCalls = 0;
        QCOMPARE(ZELK_DevSrv_RegisterDevMgrCallback(unregistersItself), ZELK_ERROR_SUCCESS);
        sendPowerEvent(1);
        sendPowerEvent(0);
        sendPowerEvent(1);
        QVERIFY(waitForIdle());
        QCOMPARE(g_selfCalls.load(), 1);
        QCOMPARE(ZELK_DevSrv_UnRegisterDevMgrCallback(unregistersItself), ZELK_ERROR_FAILURE);
        // The recorder, registered before, saw all three.
        QCOMPARE(sdktest::events(), (QList<int>{6616, 6616, 6616}));
    }
    void typedCodesAreMaskedInTheCallRecord()
    {
        Device d = sdktest::device("m", "USB Modem", 3);
        d.sim.pinEnabled = true;
        d.sim.pin = "97531";
        d.cardLock.state = 1;
        sdktest::setDevices({d}, "m");
        unsigned char rem = 0;
        int remaining = 0;
        const char* typed[] = {"97531", "86420", "24681357", "13572468", "424242", "717171"};
        ZELK_DevSrv_VerifyPin(0, typed[0], &rem);
        ZELK_DevSrv_ChangePin(0, typed[0], typed[1]);
        ZELK_DevSrv_EnablePin(0, typed[1]);
        ZELK_DevSrv_DisablePin(0, typed[1]);
        ZELK_DevSrv_UnblockPin(0, typed[1], typed[2], &rem);
        ZELK_DevSrv_VerifyCardLock(typed[3], &remaining);
        ZELK_DevSrv_VerifyMSL(typed[4]);
        ZELK_DevSrv_VerifyOTKSL(typed[5], &rem);
        ZELK_DevSrv_VerifyPin(0, nullptr, &rem);

        const std::vector<CallRecord> all = calls();
        QCOMPARE(all.size(), std::size_t(9));
        int masked = 0;
        for (const CallRecord& r : all) {
            for (const std::string& arg : r.args) {
                for (const char* code : typed) {
                    QVERIFY2(arg.find(code) == std::string::npos, (r.function + " " + arg).c_str());
                }
                masked += arg == "****" ? 1 : 0;
            }
        }
        QCOMPARE(masked, 10);
        QCOMPARE(all.back().args[1], std::string("null"));
        QCOMPARE(all.front().args[0], std::string("0"));
    }
    void badInputFailsCleanly()
    {
        // A name longer than the record's field is cut, never written past it.
        sdktest::setDevices({sdktest::device("long", std::string(40, 'N'), 3)}, "long");
        char buffer[64];
        std::memset(buffer, 'x', sizeof buffer);
        QCOMPARE(ZELK_DevSrv_GetDeviceName(buffer), ZELK_ERROR_SUCCESS);
        QCOMPARE(std::strlen(buffer), std::size_t(23));
        QCOMPARE(buffer[24], 'x');
        QCOMPARE(ZELK_GetUserDataDirectory(buffer, 4), ZELK_ERROR_BAD_PARAM);
        QCOMPARE(ZELK_DevSrv_GetDevStatus(nullptr), ZELK_ERROR_BAD_PARAM);

        sdktest::setDevices({}, "");
        int port = 0;
        unsigned int sim = 0;
        _ZELK_EN_DEVICE_STATUS status = DEVICE_STATUS_AVAILABLE;
        QCOMPARE(ZELK_DevSrv_GetDevStatus(&status), ZELK_ERROR_SUCCESS);
        QCOMPARE(status, DEVICE_STATUS_NO_DEVICE);
        QCOMPARE(ZELK_DevSrv_GetDeviceName(buffer), ZELK_ERROR_FAILURE);
        QCOMPARE(ZELK_DevSrv_GetDevicePort(&port), ZELK_ERROR_FAILURE);
        QCOMPARE(ZELK_DevSrv_GetSimStatus(&sim), ZELK_ERROR_FAILURE);
    }
    // The panel's controls drive the card, which sends the events they promise.
    void simulatorPanelDrivesTheCard()
    {
        SimulatorPanel panel;
        auto* combo = panel.findChild<QComboBox*>("SimulatorPanel_comboDevices");
        QVERIFY(combo);
        QCOMPARE(combo->count(), 1);
        click(panel, "SimulatorPanel_btnAttachCdma");
        QCOMPARE(int(devices().size()), 2);
        QCOMPARE(devices().back().productType, ZELK_PRODUCT_TYPE_CDMA);
        QCOMPARE(combo->count(), 2);
        QVERIFY(waitForIdle());
        QCOMPARE(sdktest::events(), QList<int>{ZELK_EVENT_DEV_DETECTED});

        combo->setCurrentIndex(1);
        click(panel, "SimulatorPanel_btnSelectDevice");
        QCOMPARE(QString::fromStdString(activeDeviceId()), panel.selectedDeviceId());
        click(panel, "SimulatorPanel_btnRemoveDevice");
        QCOMPARE(int(devices().size()), 1);
        QCOMPARE(combo->count(), 1);
        QVERIFY(waitForIdle());
    }

private:
    static void click(QWidget& panel, const char* name)
    {
        auto* b = panel.findChild<QPushButton*>(QLatin1String(name));
        QVERIFY2(b, name);
        QTest::mouseClick(b, Qt::LeftButton);
    }
};

QTEST_MAIN(tst_SimEvents)
#include "tst_simevents.moc"
