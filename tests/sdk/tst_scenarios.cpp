// Scenario files: the shipped ones load and play; malformed ones are refused with file, field and fault.
#include "SdkTestSupport.h"

#include <QtCore/QDir>
#include <QtTest/QtTest>

using namespace zelk::sim;

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
    void init() { reset(); }
    void shippedScenarioLoads_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<int>("devices");
        QTest::addColumn<QString>("active");
        for (const char* name : {"default", "gsm-pin", "puk-locked", "network-locked", "cdma-not-activated",
                                 "fingerprint-locked"}) {
            QTest::newRow(name) << QString::fromLatin1(name) << 1
                                << (QString(name).contains("cdma") ? "evdo" : "modem");
        }
        QTest::newRow("two-cards") << "two-cards" << 2 << "";
    }
    // Every shipped file loads, and every step of its timeline applies.
    void shippedScenarioLoads()
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
    void malformedIsRefused_data()
    {
        QTest::addColumn<QByteArray>("json");
        QTest::addColumn<QString>("message");

        QTest::newRow("not JSON") << QByteArray("{ \"devices\": [ }")
                                  << "(document): not valid JSON at line 1";
        QTest::newRow("not an object") << QByteArray("[1, 2]") << "(document): must be an object";
        QTest::newRow("no devices") << QByteArray("{}") << "devices: is missing";
        QTest::newRow("devices not an array")
            << QByteArray("{ \"devices\": 3 }") << "devices: must be an array (got number)";
        QTest::newRow("unknown top-level field")
            << QByteArray("{ \"devices\": [], \"devcies\": [] }") << "devcies: unknown field";
        QTest::newRow("port of wrong type")
            << withDevice("\"port\": \"3\"") << "devices[0].port: must be an integer (got string)";
        QTest::newRow("unknown product type")
            << withDevice("\"productType\": \"lte\"")
            << "devices[0].productType: must be \"gsm\", \"cdma\" or an integer (got \"lte\")";
        QTest::newRow("PIN too short")
            << withDevice("\"sim\": { \"pin\": \"12\" }") << "devices[0].sim.pin: must be 4 to 8 digits";
        QTest::newRow("four PIN attempts") << withDevice("\"sim\": { \"pinAttempts\": 4 }")
                                           << "devices[0].sim.pinAttempts: must be 0 to 3 (got 4)";
        QTest::newRow("misspelt SIM field")
            << withDevice("\"sim\": { \"pni\": \"1234\" }") << "devices[0].sim.pni: unknown field";
        QTest::newRow("second device's PIN")
            << QByteArray("{ \"devices\": [ { \"name\": \"A\" }, { \"name\": \"B\", \"sim\": { \"pin\": "
                          "\"x\" } } ] }")
            << "devices[1].sim.pin: must be 4 to 8 digits";
        QTest::newRow("duplicate ids")
            << QByteArray("{ \"devices\": [ { \"name\": \"A\" }, { \"name\": \"A\" } ] }")
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
    void malformedIsRefused()
    {
        QFETCH(QByteArray, json);
        QFETCH(QString, message);
        QString error;
        QVERIFY(!loadScenarioText(json, "broken.json", &error));
        QVERIFY2(error.startsWith("broken.json: " + message), qPrintable(error));
    }
    void refusedScenarioLeavesTheCardAlone()
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
    void missingFileNamesTheFile()
    {
        QString error;
        const QString path = QDir::tempPath() + "/no-such-scenario.json";
        QVERIFY(!loadScenario(path, &error));
        QCOMPARE(error, path + ": (file): does not exist");
    }
    void sixtyFiveDevicesAreTooMany()
    {
        QByteArray many = "{ \"devices\": [";
        for (int i = 0; i < 65; ++i) {
            many += (i ? "," : "") + QByteArray("{ \"name\": \"M") + QByteArray::number(i) + "\" }";
        }
        QString error;
        QVERIFY(!loadScenarioText(many + "] }", "many.json", &error));
        QCOMPARE(error, QString("many.json: devices: at most 64 devices (got 65)"));
    }
};

QTEST_GUILESS_MAIN(tst_Scenarios)
#include "tst_scenarios.moc"
