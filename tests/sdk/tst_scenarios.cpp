// Scenario files: the shipped ones load and play; malformed ones are refused with file, field and fault.
#include "SdkTestSupport.h"

#include <QtCore/QDir>
#include <QtTest/QtTest>

using namespace zelk::sim;
using sdktest::Recorder;

namespace {

QString scenarioDir()
{
    return QStringLiteral(TESSARO_SOURCE_DIR "/scenarios");
}

// A minimal valid scenario with `device` as its only device's extra fields.
QByteArray withDevice(const QByteArray& fields)
{
    return "{ \"devices\": [ { \"name\": \"M\"" + (fields.isEmpty() ? QByteArray() : ", " + fields) +
           " } ] }";
}

} // namespace

class tst_Scenarios : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void init();
    void shippedScenarioLoads_data();
    void shippedScenarioLoads();
    void malformedIsRefused_data();
    void malformedIsRefused();
    void refusedScenarioLeavesTheCardAlone();
    void missingFileNamesTheFile();
    void gsmPinScenarioAsksForThePin();
    void twoCardsTimelinePlays();
    void fingerprintTimelineEndsTheLock();
    void forceResultAction();
    void sixtyFiveDevicesAreTooMany();
};

void tst_Scenarios::initTestCase()
{
    sdktest::registerAll();
}

void tst_Scenarios::cleanupTestCase()
{
    sdktest::unregisterAll();
    reset();
}

void tst_Scenarios::init()
{
    reset();
    Recorder::instance().clear();
}

void tst_Scenarios::shippedScenarioLoads_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<int>("devices");
    QTest::addColumn<QString>("active");
    for (const char* name :
         {"default", "gsm-pin", "puk-locked", "network-locked", "cdma-not-activated", "fingerprint-locked"}) {
        QTest::newRow(name) << QString::fromLatin1(name) << 1
                            << (QString(name).contains("cdma") ? "evdo" : "modem");
    }
    QTest::newRow("two-cards") << "two-cards" << 2 << "";
}

// Every shipped file loads, and every step of its timeline applies.
void tst_Scenarios::shippedScenarioLoads()
{
    QFETCH(QString, file);
    QFETCH(int, devices);
    QFETCH(QString, active);
    QString error;
    QVERIFY2(loadScenario(scenarioDir() + "/" + file + ".json", &error), qPrintable(error));
    QCOMPARE(scenarioName(), file);
    QCOMPARE(int(zelk::sim::devices().size()), devices);
    QCOMPARE(QString::fromStdString(activeDeviceId()), active);
    QVERIFY(scenarioStepCount() > 0);
    for (int i = 0; i < scenarioStepCount(); ++i) {
        QVERIFY(!scenarioStepCaption(i).isEmpty());
        QVERIFY2(runScenarioStep(i, &error), qPrintable(error));
    }
    QVERIFY(waitForIdle());
}

void tst_Scenarios::malformedIsRefused_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("message");

    QTest::newRow("not JSON") << QByteArray("{ \"devices\": [ }") << "(document): not valid JSON at line 1";
    QTest::newRow("not an object") << QByteArray("[1, 2]") << "(document): must be an object";
    QTest::newRow("no devices") << QByteArray("{}") << "devices: is missing";
    QTest::newRow("devices not an array")
        << QByteArray("{ \"devices\": 3 }") << "devices: must be an array (got number)";
    QTest::newRow("unknown top-level field")
        << QByteArray("{ \"devices\": [], \"devcies\": [] }") << "devcies: unknown field";
    QTest::newRow("device not an object")
        << QByteArray("{ \"devices\": [ \"M\" ] }") << "devices[0]: must be an object (got string)";
    QTest::newRow("port of wrong type")
        << withDevice("\"port\": \"3\"") << "devices[0].port: must be an integer (got string)";
    QTest::newRow("port not whole") << withDevice("\"port\": 3.5")
                                    << "devices[0].port: must be an integer (got number)";
    QTest::newRow("unknown product type")
        << withDevice("\"productType\": \"lte\"")
        << "devices[0].productType: must be \"gsm\", \"cdma\" or an integer (got \"lte\")";
    QTest::newRow("PIN too short") << withDevice("\"sim\": { \"pin\": \"12\" }")
                                   << "devices[0].sim.pin: must be 4 to 8 digits";
    QTest::newRow("PIN as a number") << withDevice("\"sim\": { \"pin\": 1234 }")
                                     << "devices[0].sim.pin: must be a string of digits (got number)";
    QTest::newRow("PUK of seven digits")
        << withDevice("\"sim\": { \"puk\": \"1234567\" }") << "devices[0].sim.puk: must be 8 digits";
    QTest::newRow("four PIN attempts") << withDevice("\"sim\": { \"pinAttempts\": 4 }")
                                       << "devices[0].sim.pinAttempts: must be 0 to 3 (got 4)";
    QTest::newRow("misspelt SIM field")
        << withDevice("\"sim\": { \"pni\": \"1234\" }") << "devices[0].sim.pni: unknown field";
    QTest::newRow("card lock state 4") << withDevice("\"cardLock\": { \"state\": 4 }")
                                       << "devices[0].cardLock.state: must be 1 to 3 (got 4)";
    QTest::newRow("odd GID text") << withDevice("\"sim\": { \"gid1\": \"0A8\" }")
                                  << "devices[0].sim.gid1: must be whole bytes";
    QTest::newRow("ESN not hexadecimal") << withDevice("\"cdma\": { \"esn\": \"1A2B3C4G\" }")
                                         << "devices[0].cdma.esn: must be hexadecimal text";
    QTest::newRow("OTASP state 10") << withDevice("\"cdma\": { \"otaspStates\": [1, 10] }")
                                    << "devices[0].cdma.otaspStates[1]: must be 0 to 9 (got 10)";
    QTest::newRow("second device's PIN")
        << QByteArray(
               "{ \"devices\": [ { \"name\": \"A\" }, { \"name\": \"B\", \"sim\": { \"pin\": \"x\" } } ] }")
        << "devices[1].sim.pin: must be 4 to 8 digits";
    QTest::newRow("duplicate ids") << QByteArray(
                                          "{ \"devices\": [ { \"name\": \"A\" }, { \"name\": \"A\" } ] }")
                                   << "devices[1].name: the id \"A\" is taken by devices[0]";
    QTest::newRow("active device unknown")
        << QByteArray("{ \"devices\": [ { \"name\": \"A\" } ], \"activeDevice\": \"B\" }")
        << "activeDevice: no attached, usable device \"B\"";
    QTest::newRow("unknown action")
        << QByteArray(
               "{ \"devices\": [], \"timeline\": [ { \"actions\": [ { \"action\": \"explode\" } ] } ] }")
        << "timeline[0].actions[0].action: unknown action \"explode\"";
    QTest::newRow("action on an undefined device")
        << QByteArray("{ \"devices\": [], \"timeline\": [ { \"caption\": \"x\" }, "
                      "{ \"actions\": [ { \"action\": \"remove\", \"device\": \"m2\" } ] } ] }")
        << "timeline[1].actions[0].device: no device \"m2\" is defined";
    QTest::newRow("force an unknown function")
        << QByteArray("{ \"devices\": [], \"timeline\": [ { \"actions\": [ { \"action\": \"forceResult\", "
                      "\"function\": \"ZELK_DevSrv_Explode\" } ] } ] }")
        << "timeline[0].actions[0].function: no SDK function \"ZELK_DevSrv_Explode\"";
    QTest::newRow("empty step") << QByteArray("{ \"devices\": [], \"timeline\": [ {} ] }")
                                << "timeline[0]: a step needs a caption, actions or a user part";
    QTest::newRow("set changes the id")
        << QByteArray(
               "{ \"devices\": [ { \"id\": \"m\", \"name\": \"M\" } ], \"timeline\": [ { \"actions\": [ "
               "{ \"action\": \"set\", \"device\": \"m\", \"state\": { \"id\": \"n\" } } ] } ] }")
        << "timeline[0].actions[0].state.id: cannot change";
    QTest::newRow("wrong platform answer")
        << QByteArray("{ \"devices\": [], \"platform\": { \"wwanService\": 2 } }")
        << "platform.wwanService: must be -1 to 1 (got 2)";
}

void tst_Scenarios::malformedIsRefused()
{
    QFETCH(QByteArray, json);
    QFETCH(QString, message);
    QString error;
    QVERIFY(!loadScenarioText(json, "broken.json", &error));
    QVERIFY2(error.startsWith("broken.json: " + message), qPrintable(error));
}

void tst_Scenarios::refusedScenarioLeavesTheCardAlone()
{
    QString error;
    QVERIFY(loadScenario(scenarioDir() + "/two-cards.json", &error));
    QVERIFY(!loadScenarioText(withDevice("\"sim\": { \"pin\": \"1\" }"), "x.json", &error));
    QCOMPARE(int(devices().size()), 2);
    QCOMPARE(scenarioName(), QString("two-cards"));
    // Codes are never quoted back.
    QVERIFY(!loadScenarioText(withDevice("\"sim\": { \"puk\": \"98765\" }"), "x.json", &error));
    QVERIFY(!error.contains("98765"));
}

void tst_Scenarios::missingFileNamesTheFile()
{
    QString error;
    const QString path = QDir::tempPath() + "/no-such-scenario.json";
    QVERIFY(!loadScenario(path, &error));
    QCOMPARE(error, path + ": (file): does not exist");
}

void tst_Scenarios::gsmPinScenarioAsksForThePin()
{
    QString error;
    QVERIFY2(loadScenario(scenarioDir() + "/gsm-pin.json", &error), qPrintable(error));
    QVERIFY(Recorder::instance().seen().empty()); // loading sends nothing
    QCOMPARE(ZELK_DevSrv_DetectDevice(), ZELK_ERROR_SUCCESS);
    QVERIFY(waitForIdle());
    QCOMPARE(Recorder::instance().events(), (QList<int>{6606, 6600, 6000, 6008, 6011, 6014}));
    int status = 0;
    unsigned char ind = 0, res = 0, rem = 0;
    QCOMPARE(ZELK_DevSrv_GetPinStatus(0, &status, &ind, &res, &rem), ZELK_ERROR_SUCCESS);
    QCOMPARE(status, ZELK_PIN_STATUS_PIN_REQUIRED);
    QCOMPARE(int(rem), 3);
}

void tst_Scenarios::twoCardsTimelinePlays()
{
    QString error;
    QVERIFY2(loadScenario(scenarioDir() + "/two-cards.json", &error), qPrintable(error));
    QVERIFY(activeDeviceId().empty());
    QVERIFY(runScenarioStep(0, &error));
    QVERIFY(waitForIdle());
    QCOMPARE(Recorder::instance().events(), QList<int>{6606}); // two devices: someone has to choose
    QCOMPARE(ZELK_DevSrv_ManualChangeDevice("USB Modem", "", 3), ZELK_ERROR_SUCCESS);
    QVERIFY(runScenarioStep(1, &error));
    QCOMPARE(activeDeviceId(), std::string("cdma"));
    QVERIFY(runScenarioStep(2, &error));
    QCOMPARE(activeDeviceId(), std::string("gsm"));
    QVERIFY(!runScenarioStep(3, &error));
    QCOMPARE(error, QString("timeline[3]: no such step"));
    QVERIFY(waitForIdle());
}

void tst_Scenarios::fingerprintTimelineEndsTheLock()
{
    QString error;
    QVERIFY2(loadScenario(scenarioDir() + "/fingerprint-locked.json", &error), qPrintable(error));
    Device d;
    QVERIFY(findDevice("modem", &d));
    QVERIFY(d.fingerprintLocked);
    for (int i = 0; i < scenarioStepCount(); ++i) {
        QVERIFY(runScenarioStep(i, &error));
    }
    QVERIFY(waitForIdle());
    QVERIFY(findDevice("modem", &d));
    QVERIFY(!d.fingerprintLocked);
    QCOMPARE(Recorder::instance().events().count(6620), 4);
    QCOMPARE(scenarioStepUser(6).value("expect").toString(), QString("verifyPinDialog"));
}

void tst_Scenarios::forceResultAction()
{
    QString error;
    QVERIFY2(loadScenarioText(
                 "{ \"devices\": [ { \"id\": \"m\", \"name\": \"M\", \"sim\": { \"pinAttempts\": 0 } } ],"
                 "  \"timeline\": [ { \"actions\": [ { \"action\": \"forceResult\", \"function\": "
                 "\"ZELK_DevSrv_ChangePin\", \"result\": -1, \"count\": 2 } ] } ] }",
                 "inline.json", &error),
             qPrintable(error));
    QVERIFY(runScenarioStep(0, &error));
    QCOMPARE(ZELK_DevSrv_ChangePin(0, "1234", "5678"), ZELK_ERROR_FAILURE);
    QCOMPARE(ZELK_DevSrv_ChangePin(0, "1234", "5678"), ZELK_ERROR_FAILURE);
    QCOMPARE(calls("ZELK_DevSrv_ChangePin").size(), std::size_t(2));
    QVERIFY(calls("ZELK_DevSrv_ChangePin")[1].forced);
}

void tst_Scenarios::sixtyFiveDevicesAreTooMany()
{
    QByteArray many = "{ \"devices\": [";
    for (int i = 0; i < 65; ++i) {
        many += (i ? "," : "") + QByteArray("{ \"name\": \"M") + QByteArray::number(i) + "\" }";
    }
    QString error;
    QVERIFY(!loadScenarioText(many + "] }", "many.json", &error));
    QCOMPARE(error, QString("many.json: devices: at most 64 devices (got 65)"));
    many.chop(0);
    QByteArray sixtyFour = "{ \"devices\": [";
    for (int i = 0; i < 64; ++i) {
        sixtyFour += (i ? "," : "") + QByteArray("{ \"name\": \"M") + QByteArray::number(i) + "\" }";
    }
    QVERIFY2(loadScenarioText(sixtyFour + "] }", "max.json", &error), qPrintable(error));
    _ZELK_ST_MULTI_DEVICE_INFO list;
    QCOMPARE(ZELK_DevSrv_GetAvailableDeviceList(&list), ZELK_ERROR_SUCCESS);
    QCOMPARE(list.nDevNum, 64);
}

QTEST_GUILESS_MAIN(tst_Scenarios)
#include "tst_scenarios.moc"
