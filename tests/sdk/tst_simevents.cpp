// Simulated data card: the events each situation sends, in order, on the SDK's own thread; and the
// promise of unregistration under concurrent use.
#include "SdkTestSupport.h"

#include <QtTest/QtTest>

#include <atomic>

using namespace zelk::sim;
using sdktest::Recorder;

namespace {

Device modem(const std::string& id, int port)
{
    return sdktest::device(id, "Modem " + id, port);
}

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

std::atomic<bool> g_afterUnregister[4];
std::atomic<int> g_lateCalls{0};
std::atomic<int> g_calls[4];

template<int N>
int stressCallback(int, void*)
{
    if (g_afterUnregister[N].load()) {
        ++g_lateCalls;
    }
    ++g_calls[N];
    return 1;
}

std::atomic<int> g_selfCalls{0};
int unregistersItself(int, void*)
{
    ++g_selfCalls;
    ZELK_DevSrv_UnRegisterDevMgrCallback(unregistersItself);
    return 1;
}

std::atomic<int> g_waitAnswer{-1};
int waitsInside(int, void*)
{
    g_waitAnswer = waitForIdle(1000) ? 1 : 0;
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
        Recorder::instance().clear();
    }
    void eventOrder_data();
    void eventOrder();
    void deliveredOnTheSdkThread();
    void noCallAfterUnregistration();
    void callbackMayUnregisterItself();
    void waitForIdleRefusesInsideACallback();
};

void tst_SimEvents::eventOrder_data()
{
    QTest::addColumn<QString>("situation");
    QTest::addColumn<QString>("expected");

    QTest::newRow("plugged in, PIN off") << "plugPinOff"
                                         << "m6606 d6600 i6000 i6008 i6012 i6014";
    QTest::newRow("plugged in, PIN on") << "plugPinOn"
                                        << "m6606 d6600 i6000 i6008 i6011 i6014";
    QTest::newRow("plugged in, network-locked") << "plugLocked"
                                                << "m6606 d6600 i6000 i6008 i6012 i6013 i6014";
    QTest::newRow("plugged in, fingerprint-locked") << "plugFp"
                                                    << "m6606 d6600 i6000 i6018 i6008 i6011 i6014";
    QTest::newRow("plugged in, no SIM") << "plugNoSim"
                                        << "m6606 d6600 i6000 i6002 i6008 i6014";
    QTest::newRow("second device plugged in") << "plugSecond"
                                              << "m6606";
    QTest::newRow("rejected device plugged in") << "plugRejected"
                                                << "m6601";
    QTest::newRow("active removed, one left") << "removeActive"
                                              << "i6016 m6010 d6600 i6000 i6008 i6012 i6014";
    QTest::newRow("active removed, two left") << "removeActiveTwoLeft"
                                              << "i6016 m6010 m6606";
    QTest::newRow("other removed") << "removeOther"
                                   << "m6010";
    QTest::newRow("switch between two devices") << "switch"
                                                << "m6500 m6604 m6501 d6600 i6000 i6008 i6012 i6014";
    QTest::newRow("first choice of a device") << "firstChoice"
                                              << "d6600 i6000 i6008 i6012 i6014";
    QTest::newRow("SIM removed") << "simOut"
                                 << "d6619";
    QTest::newRow("SIM inserted, PIN on") << "simInPinOn"
                                          << "d6619 i6011";
    QTest::newRow("SIM inserted, PIN off, network-locked") << "simInLocked"
                                                           << "d6619 i6012 i6013";
    QTest::newRow("hardware radio switch") << "radio"
                                           << "d6615";
    QTest::newRow("power") << "power"
                           << "d6616";
    QTest::newRow("fingerprint verification") << "fingerprint"
                                              << "d6620";
    QTest::newRow("detection") << "detect"
                               << "m6606 d6600 i6000 i6008 i6012 i6014";
    QTest::newRow("modem reset") << "resetMs"
                                 << "i6016 m6606 d6600 i6000 i6008 i6011 i6014";
    QTest::newRow("PIN entered: no event") << "verifyPin"
                                           << "";
}

void tst_SimEvents::eventOrder()
{
    QFETCH(QString, situation);
    QFETCH(QString, expected);

    Device a = modem("a", 3);
    Device b = modem("b", 4);
    Device c = modem("c", 5);
    const auto start = [&](std::vector<Device> list, const std::string& active) {
        sdktest::setDevices(list, active);
    };
    if (situation.startsWith("plug")) {
        Device d = modem("new", 9);
        d.sim.pinEnabled = situation == "plugPinOn" || situation == "plugFp";
        d.cardLock.state = situation == "plugLocked" ? 1 : 2;
        d.fingerprintLocked = situation == "plugFp";
        d.sim.present = situation != "plugNoSim";
        d.status = situation == "plugRejected" ? DEVICE_STATUS_REJECTED : DEVICE_STATUS_AVAILABLE;
        start(situation == "plugSecond" ? std::vector<Device>{a} : std::vector<Device>{}, std::string());
        std::string error;
        QVERIFY2(attachDevice(d, &error), error.c_str());
    } else if (situation == "removeActive") {
        start({a, b}, "a");
        QVERIFY(removeDevice("a"));
    } else if (situation == "removeActiveTwoLeft") {
        start({a, b, c}, "a");
        QVERIFY(removeDevice("a"));
    } else if (situation == "removeOther") {
        start({a, b}, "a");
        QVERIFY(removeDevice("b"));
    } else if (situation == "switch") {
        start({a, b}, "a");
        QCOMPARE(ZELK_DevSrv_ManualChangeDevice("Modem b", "", 4), ZELK_ERROR_SUCCESS);
    } else if (situation == "firstChoice") {
        start({a, b}, "");
        QVERIFY(rejectDevice("a")); // leaves nothing active
        waitForIdle();
        Recorder::instance().clear();
        QCOMPARE(ZELK_DevSrv_ManualChangeDevice("Modem b", "", 4), ZELK_ERROR_SUCCESS);
    } else if (situation == "simOut") {
        start({a}, "a");
        QVERIFY(removeSim("a"));
    } else if (situation == "simInPinOn" || situation == "simInLocked") {
        a.sim.present = false;
        a.sim.pinEnabled = situation == "simInPinOn";
        a.cardLock.state = situation == "simInLocked" ? 1 : 2;
        start({a}, "a");
        QVERIFY(insertSim("a"));
    } else if (situation == "radio") {
        start({a}, "a");
        QVERIFY(setHardwareRadio(false));
    } else if (situation == "power") {
        sendPowerEvent(ZELK_POWER_SUSPEND);
    } else if (situation == "fingerprint") {
        sendFingerprintState(ZELK_VERIFYIND_TOO_LEFT);
    } else if (situation == "detect") {
        start({a}, "a");
        QCOMPARE(ZELK_DevSrv_DetectDevice(), ZELK_ERROR_SUCCESS);
    } else if (situation == "resetMs") {
        a.sim.pinEnabled = true;
        start({a}, "a");
        QCOMPARE(ZELK_DevSrv_ResetMs(), ZELK_ERROR_SUCCESS);
    } else if (situation == "verifyPin") {
        a.sim.pinEnabled = true;
        start({a}, "a");
        unsigned char rem = 0;
        QCOMPARE(ZELK_DevSrv_VerifyPin(0, "1234", &rem), ZELK_ERROR_SUCCESS);
    } else {
        QFAIL("unknown situation");
    }
    QVERIFY(waitForIdle());
    QCOMPARE(tagged(Recorder::instance().seen()), expected);
}

void tst_SimEvents::deliveredOnTheSdkThread()
{
    sdktest::setDevices({}, "");
    attachDevice(modem("a", 3));
    sendPowerEvent(1);
    sendCallEnd();
    QVERIFY(waitForIdle());
    const std::vector<sdktest::Seen> seen = Recorder::instance().seen();
    QCOMPARE(seen.size(), std::size_t(8));
    for (const sdktest::Seen& s : seen) {
        QVERIFY(s.thread != std::this_thread::get_id());
        QVERIFY(s.thread == deliveryThread());
    }
}

// Four threads each register their own callback, let a fifth thread flood events, unregister and
// raise a flag right after: the callback must never find the flag raised.
void tst_SimEvents::noCallAfterUnregistration()
{
    ZELK_EVENT_CALLBACK callbacks[4] = {stressCallback<0>, stressCallback<1>, stressCallback<2>,
                                        stressCallback<3>};
    g_lateCalls = 0;
    std::atomic<bool> stop{false};
    std::thread flood([&] {
        while (!stop.load()) {
            injectEvent(zelk::Registry::DevMgr, ZELK_EVENT_DEV_POWER, {1});
            waitForIdle(100);
        }
    });
    std::vector<std::thread> workers;
    for (int n = 0; n < 4; ++n) {
        workers.emplace_back([&, n] {
            for (int round = 0; round < 150; ++round) {
                g_afterUnregister[n] = false;
                ZELK_DevSrv_RegisterDevMgrCallback(callbacks[n]);
                const int before = g_calls[n].load();
                while (g_calls[n].load() == before && round % 10 == 0) {
                    std::this_thread::yield(); // now and then make sure a call really raced us
                }
                ZELK_DevSrv_UnRegisterDevMgrCallback(callbacks[n]);
                g_afterUnregister[n] = true;
            }
        });
    }
    for (std::thread& t : workers) {
        t.join();
    }
    stop = true;
    flood.join();
    QVERIFY(waitForIdle());
    QCOMPARE(g_lateCalls.load(), 0);
    for (int n = 0; n < 4; ++n) {
        QVERIFY(g_calls[n].load() >= 15);
    }
    QCOMPARE(callbackCount(zelk::Registry::DevMgr), 1); // only the recorder's is left
}

void tst_SimEvents::callbackMayUnregisterItself()
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
    QCOMPARE(Recorder::instance().events(), (QList<int>{6616, 6616, 6616}));
}

void tst_SimEvents::waitForIdleRefusesInsideACallback()
{
    g_waitAnswer = -1;
    ZELK_DevSrv_RegisterDevMgrCallback(waitsInside);
    sendPowerEvent(1);
    QVERIFY(waitForIdle());
    ZELK_DevSrv_UnRegisterDevMgrCallback(waitsInside);
    QCOMPARE(g_waitAnswer.load(), 0);
}

QTEST_GUILESS_MAIN(tst_SimEvents)
#include "tst_simevents.moc"
