// Scenario files: the shipped ones load and play; malformed ones are refused with file, field and fault.
#include "SdkTestSupport.h"

#include <QtCore/QDir>
#include <QtTest/QtTest>

using namespace zelk::sim;

namespace {

const QString kScenarioDir = QStringLiteral(TESSARO_SOURCE_DIR "/scenarios");

// A minimal valid scenario with `fields` added to its only device.
QByteArray withDevice(const QByteArray& fields)
{
    return "{ \"devices\": [ { \"name\": \"M\", " + fields + " } ] }";
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
        QString error;
        QVERIFY2(loadScenario(kScenarioDir + "/" + file + ".json", &error), qPrintable(error));
        QCOMPARE(scenarioName(), file);
        QTEST(int(zelk::sim::devices().size()), "devices");
        QTEST(QString::fromStdString(activeDeviceId()), "active");
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
        const auto row = [](const char* name, const QByteArray& json, const char* message) {
            QTest::newRow(name) << json << QString::fromLatin1(message);
        };
        row("not JSON", R"({ "devices": [ })", "(document): not valid JSON at line 1");
        row("no devices", "{}", "devices: is missing");
        row("unknown top-level field", R"({ "devices": [], "devcies": [] })", "devcies: unknown field");
        row("port of wrong type", withDevice(R"("port": "3")"),
            "devices[0].port: must be an integer (got string)");
        row("unknown product type", withDevice(R"("productType": "lte")"),
            R"(devices[0].productType: must be "gsm", "cdma" or an integer (got "lte"))");
        row("PIN too short", withDevice(R"("sim": { "pin": "12" })"),
            "devices[0].sim.pin: must be 4 to 8 digits");
        row("duplicate ids", R"({ "devices": [ { "name": "A" }, { "name": "A" } ] })",
            R"(devices[1].name: the id "A" is taken by devices[0])");
        row("active device unknown", R"({ "devices": [ { "name": "A" } ], "activeDevice": "B" })",
            R"(activeDevice: no attached, usable device "B")");
        row("unknown action",
            R"({ "devices": [], "timeline": [ { "actions": [ { "action": "explode" } ] } ] })",
            R"(timeline[0].actions[0].action: unknown action "explode")");
        row("action on an undefined device",
            R"({ "devices": [], "timeline": [ { "caption": "x" }, { "actions": [ { "action": "remove", "device": "m2" } ] } ] })",
            R"(timeline[1].actions[0].device: no device "m2" is defined)");
        row("empty step", R"({ "devices": [], "timeline": [ {} ] })",
            "timeline[0]: a step needs a caption, actions or a user part");
        row("set changes the id",
            R"({ "devices": [ { "id": "m", "name": "M" } ], "timeline": [ { "actions": [ { "action": "set", "device": "m", "state": { "id": "n" } } ] } ] })",
            "timeline[0].actions[0].state.id: cannot change");
        row("wrong platform answer", R"({ "devices": [], "platform": { "wwanService": 2 } })",
            "platform.wwanService: must be -1 to 1 (got 2)");
        QByteArray many = "{ \"devices\": [ { \"name\": \"M\" }";
        for (int i = 1; i < 65; ++i)
            many += ", { \"name\": \"M" + QByteArray::number(i) + "\" }";
        row("65 devices", many + "] }", "devices: at most 64 devices (got 65)");
    }
    void malformedIsRefused()
    {
        QFETCH(QByteArray, json);
        QFETCH(QString, message);
        QString error;
        QVERIFY(!loadScenarioText(json, "broken.json", &error));
        QVERIFY2(error.startsWith("broken.json: " + message), qPrintable(error));
    }
    // A refused or missing file leaves the card as it was, and names the file.
    void refusedScenarioLeavesTheCardAlone()
    {
        QString error;
        QVERIFY(loadScenario(kScenarioDir + "/two-cards.json", &error));
        QVERIFY(!loadScenarioText(withDevice("\"sim\": { \"pin\": \"1\" }"), "x.json", &error));
        QCOMPARE(int(devices().size()), 2);
        QCOMPARE(scenarioName(), QString("two-cards"));
        // Codes are never quoted back.
        QVERIFY(!loadScenarioText(withDevice("\"sim\": { \"puk\": \"98765\" }"), "x.json", &error));
        QVERIFY(!error.contains("98765"));
        const QString path = QDir::tempPath() + "/no-such-scenario.json";
        QVERIFY(!loadScenario(path, &error));
        QCOMPARE(error, path + ": (file): does not exist");
    }
};

QTEST_GUILESS_MAIN(tst_Scenarios)
#include "tst_scenarios.moc"
