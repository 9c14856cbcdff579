// The logic layer's device list (taken over from the SDK's records without reading past them), the
// choice of a device, the device status queries, against the simulated card. SIM status, detach and
// card-word texts are played through the service's and plugin's suites.
#include "DeviceMgrUILogic.h"
#include "HostFixture.h"
#include "HostFramework.h"
#include "HostServiceObjects.h"
#include "LogicTestSupport.h"
#include "Startup.h"
#include <QtWidgets/QMainWindow> // HostFixture keeps a QPointer to one

#include <QtTest/QtTest>

#include <cstdlib>
#include <cstring>
#include <memory>

using namespace logictest;
namespace sim = zelk::sim;

namespace {

// A device list with `count` entries "Modem <i>", port 10 + i, protocol 20 + i.
std::unique_ptr<_ZELK_ST_MULTI_DEVICE_INFO> makeList(int count, int filled = -1)
{
    std::unique_ptr<_ZELK_ST_MULTI_DEVICE_INFO> list(new _ZELK_ST_MULTI_DEVICE_INFO);
    std::memset(list.get(), 0, sizeof(*list));
    list->nDevNum = count;
    const int n = filled < 0 ? qBound(0, count, MAX_DEVICE_COUNT) : filled;
    for (int i = 0; i < n; ++i) {
        list->stDevInfo[i].nPort = 10 + i;
        list->stDevInfo[i].nProtocol = 20 + i;
        qsnprintf(list->stDevInfo[i].szName, sizeof(list->stDevInfo[i].szName), "Modem %d", i);
    }
    return list;
}

_ZELK_ST_DEVICE_INFO deviceRecord(const std::string& name, int port)
{
    _ZELK_ST_DEVICE_INFO record;
    std::memset(&record, 0, sizeof(record));
    record.nPort = port;
    qstrncpy(record.szName, name.c_str(), sizeof(record.szName));
    return record;
}

// SetDeviceInfo's count for "no list at all".
constexpr int kNoList = -1000;

} // namespace

class tst_LogicDevice : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        m_host.init(false);
        m_logic = DeviceMgrUILogic::GetInstance();
        QVERIFY(m_logic);
    }
    void init()
    {
        m_host.beginTest();
        sim::reset();
        m_logic->init();
        HostFramework::dialupService()->setConnected(false);
        HostFramework::dialupService()->resetCounts();
    }
    void cleanup() { QVERIFY2(m_host.endTest(), qPrintable(m_host.lastError())); }
    void cleanupTestCase()
    {
        delete m_logic;
        m_host.shutdown();
    }

    void setDeviceInfoCounts_data()
    {
        QTest::addColumn<int>("count");
        QTest::addColumn<int>("storedCount");
        QTest::addColumn<int>("copied");     // entries expected in the stored list
        QTest::addColumn<bool>("takesOver"); // the lone device becomes the current one
        QTest::newRow("none") << 0 << 0 << 0 << false;
        QTest::newRow("one") << 1 << 1 << 1 << true;
        QTest::newRow("64") << 64 << 64 << 64 << false;
        // Refused whole: the list from before stays.
        QTest::newRow("65") << 65 << 3 << 3 << false;
        QTest::newRow("negative") << -5 << -5 << 0 << false;
        QTest::newRow("no list") << kNoList << 3 << 0 << false;
    }
    void setDeviceInfoCounts()
    {
        QFETCH(int, count);
        QFETCH(int, copied);
        QFETCH(bool, takesOver);

        // What was there before: a current device and a list of three other devices.
        m_logic->ClearDeviceInfo();
        auto previous = makeList(1);
        qstrcpy(previous->stDevInfo[0].szName, "Previous");
        previous->stDevInfo[0].nPort = 99;
        previous->stDevInfo[0].nProtocol = 98;
        m_logic->SetDeviceInfo(previous.get());
        auto before = makeList(3);
        for (int i = 0; i < 3; ++i)
            qsnprintf(before->stDevInfo[i].szName, 128, "Old %d", i);
        m_logic->SetDeviceInfo(before.get());

        // Entries past the count carry data too: none of it may be copied.
        auto list = makeList(count, MAX_DEVICE_COUNT);
        m_logic->SetDeviceInfo(count == kNoList ? nullptr : list.get());

        const _ZELK_ST_MULTI_DEVICE_INFO stored = m_logic->GetLocalDeviceInfo();
        QTEST(stored.nDevNum, "storedCount");
        const bool refused = count > MAX_DEVICE_COUNT;
        for (int i = 0; i < MAX_DEVICE_COUNT; ++i) {
            const QString name = QString::fromLatin1(stored.stDevInfo[i].szName);
            if (i < copied && !refused) {
                QCOMPARE(name, QStringLiteral("Modem %1").arg(i));
                QCOMPARE(stored.stDevInfo[i].nPort, 10 + i);
                QCOMPARE(stored.stDevInfo[i].nProtocol, 20 + i);
            } else if (i < 3) {
                QCOMPARE(name, QStringLiteral("Old %1").arg(i));
            } else {
                QVERIFY2(name.isEmpty(), qPrintable(name));
            }
        }
        QCOMPARE(current(), takesOver ? QStringLiteral("Modem 0/10/20") : QStringLiteral("Previous/99/98"));
    }
    void setDeviceInfoStaysInsideTheRecord()
    {
        // An SDK may hand over a record that holds only the listed entries, with a name that fills its
        // field: anything read past them is outside the heap block (an AddressSanitizer error). The block
        // is written byte-wise, as such an SDK would fill it; its lone device becomes the current one.
        const std::size_t size =
            offsetof(_ZELK_ST_MULTI_DEVICE_INFO, stDevInfo) + sizeof(_ZELK_ST_DEVICE_INFO);
        auto* bytes = static_cast<unsigned char*>(std::malloc(size));
        QVERIFY(bytes);
        std::memset(bytes, 'Q', size);
        const int one = 1, port = 4;
        std::memcpy(bytes + offsetof(_ZELK_ST_MULTI_DEVICE_INFO, nDevNum), &one, sizeof one);
        std::memcpy(bytes + offsetof(_ZELK_ST_MULTI_DEVICE_INFO, stDevInfo) +
                        offsetof(_ZELK_ST_DEVICE_INFO, nPort),
                    &port, sizeof port);
        m_logic->SetDeviceInfo(reinterpret_cast<_ZELK_ST_MULTI_DEVICE_INFO*>(bytes));
        std::free(bytes);
        const QString cut(ZELK_DEVICE_NAME_SIZE - 1, QLatin1Char('Q'));
        QCOMPARE(m_logic->GetLocalDeviceInfo().nDevNum, 1);
        QCOMPARE(QString::fromLatin1(m_logic->GetLocalDeviceInfo().stDevInfo[0].szName), cut);
        QCOMPARE(m_logic->GetLocalDeviceName(), cut);
        QCOMPARE(m_logic->GetLocalDevicePortNo(), 4);
    }
    void selectOtherDevice_data()
    {
        QTest::addColumn<bool>("connected");
        QTest::addColumn<int>("disconnects");
        QTest::newRow("no connection") << false << 0;
        QTest::newRow("connection up") << true << 1;
    }
    void selectOtherDevice()
    {
        QFETCH(bool, connected);
        QFETCH(int, disconnects);
        const std::string firstId = sim::activeDeviceId();
        sim::Device second = sim::defaultDevice();
        second.id = "second";
        second.name = "Second Modem";
        second.port = 7;
        std::string error;
        QVERIFY2(sim::attachDevice(second, &error), error.c_str());
        QVERIFY(sim::selectDevice(firstId));
        m_logic->ClearDeviceInfo();
        m_logic->SetDeviceInfo(makeList(1).get()); // current port 10, protocol 20
        HostFramework::dialupService()->setConnected(connected);
        sim::clearCalls();

        QCOMPARE(m_logic->SelectDevice(deviceRecord("Second Modem", 7)), 0);
        const std::vector<sim::CallRecord> calls = sim::calls("ZELK_DevSrv_ManualChangeDevice");
        QCOMPARE(calls.size(), std::size_t(1));
        // Texts appear quoted in the record.
        QCOMPARE(calls.front().args, (std::vector<std::string>{"\"Second Modem\"", "\"\"", "7"}));
        QCOMPARE(QString::fromStdString(sim::activeDeviceId()), QStringLiteral("second"));
        QCOMPARE(HostFramework::dialupService()->disconnectCount(), disconnects);
        if (disconnects)
            QCOMPARE(HostFramework::dialupService()->disconnectReasons(), QList<int>{0});
        // The name follows at once; port and protocol come with the next list or status query.
        QCOMPARE(current(), QStringLiteral("Second Modem/10/20"));
    }
    // A refused change leaves the current device as it was.
    void selectRefused_data()
    {
        QTest::addColumn<bool>("fillsField");
        QTest::newRow("same name, other port: another device") << false;
        QTest::newRow("name filling its field: cut") << true;
    }
    void selectRefused()
    {
        QFETCH(bool, fillsField);
        const sim::Device active = activeDevice();
        m_logic->ClearDeviceInfo();
        m_logic->SetDeviceInfo(makeList(1).get());
        _ZELK_ST_DEVICE_INFO record = deviceRecord(active.name, active.port + 1);
        if (fillsField)
            std::memset(record.szName, 'Z', sizeof(record.szName));
        sim::clearCalls();
        sim::failNext("ZELK_DevSrv_ManualChangeDevice");

        QCOMPARE(m_logic->SelectDevice(record), 1);
        const std::vector<sim::CallRecord> calls = sim::calls("ZELK_DevSrv_ManualChangeDevice");
        QCOMPARE(calls.size(), std::size_t(1));
        const std::string sent = fillsField ? std::string(ZELK_DEVICE_NAME_SIZE - 1, 'Z') : active.name;
        QCOMPARE(calls.front().args[0], '"' + sent + '"');
        QCOMPARE(m_logic->GetLocalDeviceName(), QStringLiteral("Modem 0"));
        QCOMPARE(QString::fromStdString(sim::activeDeviceId()), QString::fromStdString(active.id));
    }

    void systemDevStatus_data()
    {
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("failing"); // SDK function made to fail, or empty
        QTest::addColumn<int>("expected");
        QTest::addColumn<int>("sdkCalls");
        QTest::addColumn<QString>("current");
        // An available device is taken over; the SDK hands out at most 23 characters of the name.
        const QString taken = QStringLiteral("A Modem With A Rather L/5/20"),
                      kept = QStringLiteral("Modem 0/10/20");
        QTest::newRow("available") << 3 << QString() << 3 << 3 << taken;
        QTest::newRow("initialising") << 2 << QString() << 2 << 3 << kept;
        QTest::newRow("status fails") << 3 << QStringLiteral("ZELK_DevSrv_GetDevStatus") << 0 << 1 << kept;
        QTest::newRow("name fails") << 3 << QStringLiteral("ZELK_DevSrv_GetDeviceName") << 0 << 2 << kept;
        QTest::newRow("port fails") << 3 << QStringLiteral("ZELK_DevSrv_GetDevicePort") << 0 << 3 << kept;
    }
    void systemDevStatus()
    {
        QFETCH(int, status);
        QFETCH(QString, failing);
        QVERIFY(changeActiveDevice([&](sim::Device& d) {
            d.status = status;
            d.name = "A Modem With A Rather Long Name";
            d.port = 5;
        }));
        m_logic->ClearDeviceInfo();
        m_logic->SetDeviceInfo(makeList(1).get());
        sim::clearCalls();
        if (!failing.isEmpty())
            sim::failNext(failing.toStdString());

        QTEST(m_logic->GetSystemDevStatus(), "expected");
        QTEST(allCallCount(), "sdkCalls");
        QTEST(current(), "current");
    }
    void deviceNameAndPort_data()
    {
        QTest::addColumn<QString>("failing");
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("port");
        QTest::newRow("answers") << QString() << QStringLiteral("Modem \u00e4 A") << 6;
        QTest::newRow("name fails") << QStringLiteral("ZELK_DevSrv_GetDeviceName") << QString() << 6;
        QTest::newRow("port fails") << QStringLiteral("ZELK_DevSrv_GetDevicePort")
                                    << QStringLiteral("Modem \u00e4 A") << 0;
    }
    void deviceNameAndPort()
    {
        QFETCH(QString, failing);
        QFETCH(QString, name);
        QFETCH(int, port);
        QVERIFY(changeActiveDevice([](sim::Device& d) {
            d.name = QStringLiteral("Modem \u00e4 A").toLocal8Bit().toStdString();
            d.port = 6;
        }));
        // The stored copy says otherwise: these ask the SDK.
        m_logic->ClearDeviceInfo();
        m_logic->SetDeviceInfo(makeList(1).get());
        if (!failing.isEmpty())
            sim::forceResult(failing.toStdString(), 2, ZELK_ERROR_FAILURE);
        sim::clearCalls();

        QCOMPARE(m_logic->GetDeviceName(), name);
        QCOMPARE(m_logic->GetCurrentDeviceName(), name);
        QCOMPARE(m_logic->GetCurrentDevicePortNo(), port);
        QCOMPARE(callCount("ZELK_DevSrv_GetDeviceName"), 2);
        QCOMPARE(callCount("ZELK_DevSrv_GetDevicePort"), 1);
    }

    // The radio switch asks the device first and changes only what differs; 15: no switch to turn.
    void switchRF_data()
    {
        QTest::addColumn<bool>("switchable");
        QTest::addColumn<bool>("radioOn");
        QTest::addColumn<bool>("request");
        QTest::addColumn<QString>("failing");
        QTest::addColumn<int>("expected");
        QTest::addColumn<int>("setCalls");
        QTest::newRow("off -> on") << true << false << true << "" << 0 << 1;
        QTest::newRow("on -> off") << true << true << false << "" << 0 << 1;
        QTest::newRow("already on") << true << true << true << "" << 0 << 0;
        QTest::newRow("no radio switch") << false << false << true << "" << 15 << 0;
        QTest::newRow("read fails") << true << true << false << "ZELK_DevSrv_GetRFSwitch" << 1 << 0;
        QTest::newRow("switch fails") << true << false << true << "ZELK_DevSrv_SetRFSwitch" << 1 << 1;
    }
    void switchRF()
    {
        QFETCH(bool, switchable);
        QFETCH(bool, radioOn);
        QFETCH(bool, request);
        QFETCH(QString, failing);
        QFETCH(int, expected);
        QFETCH(int, setCalls);
        QVERIFY(changeActiveDevice([&](sim::Device& d) {
            d.radio.switchable = switchable;
            d.radio.softwareOn = radioOn;
        }));
        sim::clearCalls();
        if (!failing.isEmpty())
            sim::failNext(failing.toStdString());
        QCOMPARE(m_logic->SwitchRFMode(request), expected);
        QCOMPARE(callCount("ZELK_DevSrv_GetRFSwitch"), 1);
        QCOMPARE(callCount("ZELK_DevSrv_SetRFSwitch"), setCalls);
        if (setCalls)
            QCOMPARE(sim::calls("ZELK_DevSrv_SetRFSwitch").front().args.front(),
                     std::string(request ? "1" : "0"));
        QCOMPARE(activeDevice().radio.softwareOn, expected == 0 && setCalls ? request : radioOn);
    }

    void interruptServersWithoutContainer()
    {
        HostFramework::destroyHost();
        QVERIFY(Startup::GetPluginContainer() == nullptr);
        // Nothing to reach: the lookup is abandoned without a crash.
        m_logic->InterruptServers();
        HostFramework::createHost(nullptr, nullptr);
        QVERIFY(Startup::GetPluginContainer() != nullptr);
    }

private:
    // The current device as the logic layer keeps it, "name/port/protocol".
    QString current() const
    {
        return QStringLiteral("%1/%2/%3")
            .arg(m_logic->GetLocalDeviceName())
            .arg(m_logic->GetLocalDevicePortNo())
            .arg(m_logic->GetCurrentDeviceProtocol());
    }

    HostFixture m_host;
    DeviceMgrUILogic* m_logic = nullptr;
};

QTEST_MAIN(tst_LogicDevice)
#include "tst_LogicDevice.moc"
