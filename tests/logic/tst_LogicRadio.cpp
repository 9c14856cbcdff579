// The logic layer's radio switch, offline and packet-detach operations, the detach settings and the
// interruption of the host's dial-up connection.
#include "DeviceMgrUILogic.h"
#include "HostFixture.h"
#include "HostFramework.h"
#include "HostServiceObjects.h"
#include "LogicTestSupport.h"
#include "Startup.h"
#include <QtWidgets/QMainWindow> // HostFixture keeps a QPointer to one

#include <QtTest/QtTest>

using namespace logictest;
namespace sim = zelk::sim;

class tst_LogicRadio : public QObject
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
        HostFramework::dialupService()->setDisconnectResult(0);
        HostFramework::dialupService()->resetCounts();
    }
    void cleanup() { QVERIFY2(m_host.endTest(), qPrintable(m_host.lastError())); }
    void cleanupTestCase()
    {
        delete m_logic;
        m_host.shutdown();
    }

    void switchRF_data();
    void switchRF();
    void setOffline_data();
    void setOffline();
    void detachGprs_data();
    void detachGprs();
    void detachSettings_data();
    void detachSettings();
    void interruptServers_data();
    void interruptServers();
    void interruptServersWithoutContainer();

private:
    HostFixture m_host;
    DeviceMgrUILogic* m_logic = nullptr;
};

void tst_LogicRadio::switchRF_data()
{
    QTest::addColumn<bool>("switchable");
    QTest::addColumn<bool>("radioOn");
    QTest::addColumn<bool>("request");
    QTest::addColumn<QString>("failing");
    QTest::addColumn<int>("expected");
    QTest::addColumn<int>("setCalls");
    QTest::addColumn<bool>("radioAfter");

    const QString none;
    const QString getFails = QStringLiteral("ZELK_DevSrv_GetRFSwitch");
    const QString setFails = QStringLiteral("ZELK_DevSrv_SetRFSwitch");
    QTest::newRow("off -> on") << true << false << true << none << 0 << 1 << true;
    QTest::newRow("on -> off") << true << true << false << none << 0 << 1 << false;
    QTest::newRow("already on") << true << true << true << none << 0 << 0 << true;
    QTest::newRow("already off") << true << false << false << none << 0 << 0 << false;
    QTest::newRow("no radio switch, on") << false << false << true << none << 15 << 0 << false;
    QTest::newRow("no radio switch, off") << false << true << false << none << 15 << 0 << true;
    // The read failure comes before the support test.
    QTest::newRow("read fails") << false << false << true << getFails << 1 << 0 << false;
    QTest::newRow("read fails, switchable") << true << true << false << getFails << 1 << 0 << true;
    QTest::newRow("switch fails") << true << false << true << setFails << 1 << 1 << false;
}

void tst_LogicRadio::switchRF()
{
    QFETCH(bool, switchable);
    QFETCH(bool, radioOn);
    QFETCH(bool, request);
    QFETCH(QString, failing);
    QFETCH(int, expected);
    QFETCH(int, setCalls);
    QFETCH(bool, radioAfter);
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
    QCOMPARE(activeDevice().radio.softwareOn, radioAfter);
}

void tst_LogicRadio::setOffline_data()
{
    QTest::addColumn<bool>("fail");
    QTest::addColumn<int>("expected");
    QTest::addColumn<bool>("offlineAfter");
    QTest::newRow("success") << false << 0 << true;
    QTest::newRow("SDK error") << true << 15 << false;
}

void tst_LogicRadio::setOffline()
{
    QFETCH(bool, fail);
    QFETCH(int, expected);
    QFETCH(bool, offlineAfter);
    sim::clearCalls();
    if (fail)
        sim::failNext("ZELK_DevSrv_SetOffline");
    QCOMPARE(m_logic->SetOffline(), expected);
    QCOMPARE(callCount("ZELK_DevSrv_SetOffline"), 1);
    QCOMPARE(activeDevice().offline, offlineAfter);
}

void tst_LogicRadio::detachGprs_data()
{
    QTest::addColumn<bool>("fail");
    QTest::addColumn<int>("expected");
    QTest::addColumn<bool>("attachedAfter");
    QTest::newRow("success") << false << 0 << false;
    QTest::newRow("SDK error") << true << 15 << true;
}

void tst_LogicRadio::detachGprs()
{
    QFETCH(bool, fail);
    QFETCH(int, expected);
    QFETCH(bool, attachedAfter);
    sim::clearCalls();
    if (fail)
        sim::failNext("ZELK_NetSrv_SetPSState");
    QCOMPARE(m_logic->DetachGPRS(), expected);
    QCOMPARE(callCount("ZELK_NetSrv_SetPSState"), 1);
    QCOMPARE(sim::calls("ZELK_NetSrv_SetPSState").front().args.front(), std::string("0"));
    QCOMPARE(activeDevice().packetAttached, attachedAfter);
}

void tst_LogicRadio::detachSettings_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<bool>("enabled");
    // A fresh settings file: the keys are not there yet.
    QTest::newRow("missing") << QString() << false;
    QTest::newRow("Yes") << QStringLiteral("Yes") << true;
    QTest::newRow("yes") << QStringLiteral("yes") << true;
    QTest::newRow("y") << QStringLiteral("y") << true;
    QTest::newRow("Y") << QStringLiteral("Y") << true;
    QTest::newRow("only by key") << QStringLiteral("only by key") << true;
    QTest::newRow("YES trailing") << QStringLiteral("no, YES") << true;
    QTest::newRow("no") << QStringLiteral("no") << false;
    QTest::newRow("true") << QStringLiteral("true") << false;
    QTest::newRow("1") << QStringLiteral("1") << false;
    QTest::newRow("on") << QStringLiteral("on") << false;
    QTest::newRow("empty") << QString() << false;
}

void tst_LogicRadio::detachSettings()
{
    QFETCH(QString, value);
    QFETCH(bool, enabled);
    const QString section = QStringLiteral("customize");
    if (QByteArray(QTest::currentDataTag()) != "missing") {
        // Each key is read on its own: the other one holds the opposite answer.
        m_host.setSetting(section, QStringLiteral("imsi_detach"), value);
        m_host.setSetting(section, QStringLiteral("gprs_detach"),
                          enabled ? QStringLiteral("no") : QStringLiteral("yes"));
        QCOMPARE(m_logic->IsIMSIDetachEnabled(), enabled);
        QCOMPARE(m_logic->IsGPRSDetachEnabled(), !enabled);

        m_host.setSetting(section, QStringLiteral("gprs_detach"), value);
        m_host.setSetting(section, QStringLiteral("imsi_detach"),
                          enabled ? QStringLiteral("no") : QStringLiteral("yes"));
        QCOMPARE(m_logic->IsGPRSDetachEnabled(), enabled);
        QCOMPARE(m_logic->IsIMSIDetachEnabled(), !enabled);
    } else {
        QCOMPARE(m_logic->IsIMSIDetachEnabled(), enabled);
        QCOMPARE(m_logic->IsGPRSDetachEnabled(), enabled);
    }
}

void tst_LogicRadio::interruptServers_data()
{
    QTest::addColumn<bool>("connected");
    QTest::addColumn<int>("disconnectResult");
    QTest::addColumn<int>("disconnects");
    QTest::newRow("no connection") << false << 0 << 0;
    QTest::newRow("connected") << true << 0 << 1;
    QTest::newRow("connected, disconnect fails") << true << 5 << 1;
}

void tst_LogicRadio::interruptServers()
{
    QFETCH(bool, connected);
    QFETCH(int, disconnectResult);
    QFETCH(int, disconnects);
    DialupService* dialup = HostFramework::dialupService();
    QVERIFY(dialup);
    dialup->setConnected(connected);
    dialup->setDisconnectResult(disconnectResult);
    sim::clearCalls();

    m_logic->InterruptServers();
    QCOMPARE(dialup->disconnectCount(), disconnects);
    QList<int> reasons;
    for (int i = 0; i < disconnects; ++i)
        reasons << 0;
    QCOMPARE(dialup->disconnectReasons(), reasons);
    // The device is not touched.
    QCOMPARE(allCallCount(), 0);
}

void tst_LogicRadio::interruptServersWithoutContainer()
{
    HostFramework::destroyHost();
    QVERIFY(Startup::GetPluginContainer() == nullptr);
    // Nothing to reach: the lookup is abandoned and said so.
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression(QStringLiteral(
                                         " : InterruptServers : GetPluginContainer returned NULL$")));
    m_logic->InterruptServers();
    HostFramework::createHost(nullptr, nullptr);
    QVERIFY(Startup::GetPluginContainer() != nullptr);
}

QTEST_MAIN(tst_LogicRadio)
#include "tst_LogicRadio.moc"
