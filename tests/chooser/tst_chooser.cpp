// The device chooser against the simulated card, the plugin reload it drives in the host's container,
// the start-up that reaches it, the SIM group rules and the last used device.
#include "SimTestSupport.h"

#include "Change.h"
#include "CommonUtils.h"
#include "DeviceMgrChooseDevice.h"
#include "GIDConfigParse.h"
#include "HostFixture.h"
#include "PluginContainer.h"

#include <QtWidgets/QTableWidget>

using namespace simtest;
using Names = QList<QByteArray>;

namespace {

const QString kChooser = QStringLiteral("ChooseDevice_ExtendedDlg");

// Devices named `names` (UTF-8) on ports 1, 2, ...; the one at `active` in use (-1: none).
void loadDevices(const Names& names, int active)
{
    QStringList devices;
    for (int i = 0; i < names.size(); ++i)
        devices << QStringLiteral("{\"id\": \"d%1\", \"port\": %2, \"name\": \"").arg(i).arg(i + 1) +
                       QString::fromUtf8(names.at(i)) + "\"}";
    const QString json =
        QStringLiteral("{\"devices\": [%1], \"activeDevice\": %2}")
            .arg(devices.join(','), active < 0 ? "null" : QStringLiteral("\"d%1\"").arg(active));
    QString error;
    QVERIFY2(zelk::sim::loadScenarioText(json.toUtf8(), QStringLiteral("c.json"), &error), qPrintable(error));
}

QString writeFile(const QTemporaryDir& dir, const QString& name, const QByteArray& content)
{
    QFile file(dir.filePath(name));
    if (content != "-" && file.open(QIODevice::WriteOnly))
        file.write(content);
    return file.fileName();
}

// A group "G" of tests written "GID1 2 1 and 80" (kind, byte, result, method, mask), ';'-separated.
QByteArray gidFile(const QByteArray& rules, const QByteArray& name = "G")
{
    QByteArray tests;
    for (const QByteArray& t : rules.split(';')) {
        const QList<QByteArray> f = t.split(' ');
        if (f.size() == 5)
            tests += "<" + f[0] + " byte=\"" + f[1] + "\" result=\"" + f[2] + "\" method=\"" + f[3] + "\">" +
                     f[4] + "</" + f[0] + ">";
    }
    return "<zelkdoc><GID><group name=\"" + name + "\">" + tests + "</group></GID></zelkdoc>";
}

} // namespace

class tst_Chooser : public QObject
{
    Q_OBJECT
    HostFixture m_host;
    CDeviceMgrService* m_service = nullptr;
    QTemporaryDir m_dir;

private slots:
    void initTestCase() { m_host.init(); }
    void init()
    {
        m_host.beginTest();
        zelk::sim::reset();
        svc::resetHandled();
        svc::startLogCapture();
    }
    void cleanup()
    {
        svc::stopService();
        qInstallMessageHandler(nullptr);
        Change::LoadLanguage(QStringLiteral("none"));
        QVERIFY2(m_host.endTest(), qPrintable(m_host.lastError()));
    }
    void cleanupTestCase() { m_host.shutdown(); }

    void listMarksTheActiveDevice_data()
    {
        QTest::addColumn<Names>("names");
        QTest::addColumn<int>("active");
        const QByteArray n23(23, 'a'), n24 = QByteArray(23, 'b') + 'X';
        Names many;
        for (int i = 0; i < 64; ++i)
            many << "Modem " + QByteArray::number(i);
        QTest::newRow("none") << Names() << -1;
        QTest::newRow("two, none active") << Names{"USB Modem", "EV-DO Card"} << -1;
        QTest::newRow("64") << many << 63;
        QTest::newRow("24 bytes, longer than the SDK's active name") << Names{n23, n24} << 1;
        QTest::newRow("non-ASCII") << Names{"Modem", "Mod\xc3\xa9m \xe2\x82\xac"} << 1;
    }
    void listMarksTheActiveDevice()
    {
        QFETCH(Names, names);
        QFETCH(int, active);
        loadDevices(names, active);
        m_service = startService(false);
        m_service->ShowChooseDevice();
        QTableWidget* list = child<QTableWidget>(kChooser);
        QVERIFY(list);
        QCOMPARE(list->rowCount(), names.size());
        QCOMPARE(svc::logCount(QStringLiteral("nDevNum  is not correct")), names.isEmpty() ? 1 : 0);
        for (int row = 0; row < names.size(); ++row) {
            QCOMPARE(list->item(row, 1)->text(), QString::fromUtf8(names.at(row)));
            QCOMPARE(!list->item(row, 0)->icon().isNull(), row == active);
        }
        if (names.isEmpty())
            return;
        // A click on the icon column picks the row, yet leaves no icon cell selected.
        const int row = names.size() - 1;
        list->scrollToItem(list->item(row, 0));
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                          list->visualItemRect(list->item(row, 0)).center());
        QCOMPARE(list->selectedItems(), QList<QTableWidgetItem*>{list->item(row, 1)});
    }

    void okPaths_data()
    {
        QTest::addColumn<int>("active");
        QTest::addColumn<int>("row");
        QTest::addColumn<QString>("how");
        QTest::addColumn<int>("answer");    // queued for the question; -1: no question expected
        QTest::addColumn<QString>("calls"); // device switches / product type reads / 585 broadcasts
        const int yes = MSGBOX_ACCEPTED;
        QTest::newRow("no active device: switch, forced reload") << -1 << 1 << "ok" << -1 << "1/2/1";
        QTest::newRow("the active device: nothing") << 0 << 0 << "ok" << -1 << "0/0/0";
        QTest::newRow("another device, yes") << 0 << 1 << "ok" << yes << "1/0/0";
        QTest::newRow("another device, no") << 0 << 1 << "ok" << 0 << "0/0/0";
        QTest::newRow("double click is OK") << 0 << 1 << "double" << yes << "1/0/0";
        QTest::newRow("closed") << -1 << 1 << "close" << -1 << "0/0/0";
    }
    void okPaths()
    {
        QFETCH(int, row);
        QFETCH(QString, how);
        QFETCH(int, answer);
        QFETCH(int, active);
        loadDevices({"USB Modem", "EV-DO Card"}, active);
        m_service = startService(false);
        m_service->ShowChooseDevice();
        QTableWidget* list = child<QTableWidget>(kChooser);
        QVERIFY(list);
        zelk::sim::clearCalls();
        HostFramework::clearNotificationRecords();
        if (answer >= 0)
            HostFramework::pushNextAnswer(answer);
        list->setCurrentCell(row, 1);
        const QPoint at = list->visualItemRect(list->item(row, 1)).center();
        if (how == QLatin1String("double")) {
            QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, at); // a double click starts with a press
            QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, at);
        } else if (how == QLatin1String("close")) {
            window(kChooser)->close();
        } else {
            click(button(kChooser, QStringLiteral("ChooseDevice_buttonOk")));
        }
        QTEST(QStringLiteral("%1/%2/%3")
                  .arg(svc::callCount("ZELK_DevSrv_ManualChangeDevice"))
                  .arg(svc::callCount("ZELK_DevSrv_GetProductType"))
                  .arg(svc::sent().filter(QStringLiteral("broadcast 585 ")).size()),
              "calls");
        QCOMPARE(messages(),
                 answer < 0 ? QStringList()
                            : QStringList{"ShowMessage 4 ChooseDevice_ExtendedDlg | IDS_PROMPT_CAPTION | "
                                          "IDS_ACTIVE_DEVICE_FALSE | IDS_YES,IDS_NO"});
        QVERIFY(!window(kChooser));
        QVERIFY(zelk::sim::waitForIdle());
    }

    // Broadcast first, then every replaced plugin unregistered, then each unloaded and loaded again;
    // a plugin that refuses its release (as the device manager does) stays.
    void reloadReplacesPluginsInOrder()
    {
        const QString root = CommonUtils::GetPluginLibraryPath();
        HostFramework::setPluginLibraryPath(QStringLiteral(CHOOSER_PLUGIN_ROOT));
        m_host.setSetting("pluginsets", "default", "FixtureAlpha,FixtureKeep");
        m_host.setSetting("pluginsets", "DevB", "FixtureBeta,FixtureAlpha,FixtureKeep");
        HostFramework::destroyHost();
        PluginContainer* container = HostFramework::createHost(m_host.mainWindow());
        for (const char* name : {"FixtureAlpha", "FixtureBeta", "FixtureKeep"})
            QVERIFY(container->LoadPlugin(QLatin1String(name)));
        clearFixtureEvents();
        ChooseDevice chooser;
        chooser.ReloadPlugins(QStringLiteral("DevB"), false);
        chooser.ReloadPlugins(QStringLiteral("DevB"), false); // that set is the loaded one now
        QStringList events = fixtureEvents();
        events.replaceInStrings(QRegularExpression(QStringLiteral(" 585 .*")), QStringLiteral(" 585"));
        QCOMPARE(events,
                 QStringList({"FixtureAlpha:Notify 585", "FixtureBeta:Notify 585", "FixtureKeep:Notify 585",
                              "FixtureBeta:OnDestroy", "FixtureBeta:deleted", "FixtureAlpha:OnDestroy",
                              "FixtureAlpha:deleted"}));
        QCOMPARE(container->loadedPluginNames(), QStringList({"FixtureKeep", "FixtureBeta", "FixtureAlpha"}));
        QCOMPARE(svc::logCount(QStringLiteral("don't need to reload")), 1);
        HostFramework::destroyHost();
        HostFramework::setPluginLibraryPath(root);
        HostFramework::createHost(m_host.mainWindow(), m_host.mainWindow()->menuBar());
    }

    void frameShownLeadsToThePinCheck_data()
    {
        QTest::addColumn<bool>("cardFirst");
        QTest::newRow("card initialised before the frame") << true;
        QTest::newRow("card initialised after the frame") << false;
    }
    void frameShownLeadsToThePinCheck()
    {
        QFETCH(bool, cardFirst);
        loadDevices({"USB Modem"}, -1);
        zelk::sim::Device d;
        QVERIFY(zelk::sim::findDevice("d0", &d));
        d.sim.pinEnabled = true;
        QVERIFY(zelk::sim::updateDevice(d));
        m_service = startService(false);
        for (int pass = 0; pass < 2; ++pass) {
            if (cardFirst == (pass == 0)) {
                QCOMPARE(ZELK_DevSrv_DetectDevice(), ZELK_ERROR_SUCCESS);
                QVERIFY(svc::settle(6)); // 6606, 6600, 6000, 6008, 6011, 6014
            } else {
                m_service->Notify(NTF_FRAME_SHOWN, 0, 0);
            }
        }
        QCOMPARE(openDialogs(), QStringList{kVerifyDlg});
        // With the card there first, the first-frame work also subscribed to the call service.
        QCOMPARE(HostFramework::notificationRecords().size() - svc::sent().size(), cardFirst ? 4 : 0);
    }

    // At 6008 after the frame, the first GID group the host names and the SIM matches picks the set.
    void simRulesPickThePluginSetAfterTheFrame()
    {
        m_host.setSetting("gid", "names", "Business,Prepaid");
        m_host.setSetting("pluginsets", "GIDPrepaid", "NoSuchPlugin");
        m_host.setSetting("pluginsets", "GIDBusiness", "NoSuchPlugin");
        HostFramework::destroyHost();
        PluginContainer* container =
            HostFramework::createHost(m_host.mainWindow(), m_host.mainWindow()->menuBar());
        m_service = startService(false);
        m_service->sendNotification(NTF_SIM_READY); // the container is known from here on
        svc::inject(ZELK_EVENT_DEV_INIT_SUCCESS);
        QVERIFY(svc::settle(1));
        pinRequired(); // so that the first-frame PIN check picks nothing itself
        m_service->Notify(NTF_FRAME_SHOWN, 0, 0);
        QCOMPARE(container->currentPluginSetKey(), QStringLiteral("default"));
        zelk::sim::Device d = activeDevice();
        d.sim.pinEnabled = false;
        QVERIFY(zelk::sim::updateDevice(d));
        svc::inject(ZELK_EVENT_DEV_INIT_SUCCESS);
        QVERIFY(svc::settle(2));
        QCOMPARE(container->currentPluginSetKey(), QStringLiteral("GIDPrepaid"));
    }

    // The SIM holds GID1 0A81 and GID2 F000.
    void gidRules_data()
    {
        QTest::addColumn<QByteArray>("file"); // GIDConfig.xml; "-": none
        QTest::addColumn<QString>("group");
        QTest::addColumn<bool>("matched");
        QTest::addColumn<int>("reads");
        QTest::addColumn<QString>("log");
        auto rule = [](const char* name, const QByteArray& file, bool matched, int reads,
                       const char* log = "", const char* group = "G") {
            QTest::newRow(name) << (file.contains(" and ") || file.contains(" or ") ? gidFile(file) : file)
                                << group << matched << reads << log;
        };
        rule("mask bit set", "GID1 2 1 and 80", true, 1);
        rule("byte beyond the GID", "GID1 3 1 and 80", false, 1);
        rule("method not and", "GID1 1 1 or 0A", false, 1);
        rule("result 0, bit set", "GID1 1 0 and 08", false, 1);
        rule("byte 0", "GID1 0 1 and 00", false, 1);
        rule("byte 4e9", "GID1 4000000000 0 and 1", false, 1);
        rule("first failure ends the group", "GID1 1 1 and F0;GID2 1 1 and F0", false, 1);
        rule("each test reads anew", "GID1 1 1 and 0A;GID2 1 0 and 0F", true, 2);
        rule("group without tests", gidFile(""), true, 0);
        rule("unknown group matches", "GID1 1 1 and FF", true, 0, "", "Other");
        rule("non-hex mask left out", "GID1 1 1 and 0G;GID1 2 1 and 80", true, 1,
             "GID config value convert error");
        rule("odd-length mask is hex", "GID1 2 1 and 181", false, 1);
        rule("missing file: no groups", "-", true, 0, "Error open file:");
        rule("not XML", "GID=0A81", true, 0, "Read Error: ");
        rule("truncated: nothing kept", gidFile("GID1 2 1 and 80").left(90), true, 0, "GroupInfo Read Error");
        QByteArray many = "<zelkdoc><GID>";
        for (int i = 0; i < 1000; ++i)
            many += gidFile("GID1 1 1 and 0A", "g" + QByteArray::number(i)).mid(14).chopped(16);
        rule("1000 groups", many + "</GID></zelkdoc>", true, 1, "", "g999");
        rule("10 MB", gidFile("GID1 2 1 and 80").insert(14, "<!--" + QByteArray(10 << 20, 'x') + "-->"), true,
             1);
    }
    void gidRules()
    {
        QFETCH(QByteArray, file);
        QFETCH(QString, group);
        QFETCH(QString, log);
        zelk::sim::Device d = activeDevice();
        d.sim.gid2 = "F000";
        QVERIFY(zelk::sim::updateDevice(d));
        m_service = CDeviceMgrService::instance();
        GIDConfigParse::GetInstance()->LoadFile(
            writeFile(m_dir, QStringLiteral("%1.xml").arg(qHash(file)), file));
        zelk::sim::clearCalls();
        QTEST(m_service->IsGIDMatched(group), "matched");
        QTEST(svc::callCount("ZELK_DevSrv_GetGID"), "reads");
        if (!log.isEmpty())
            QCOMPARE(svc::logCount(log), 1);
    }

    void lastUsedDevice_data()
    {
        QTest::addColumn<QByteArray>("content"); // "-": no file
        QTest::addColumn<QString>("name");
        const QByteArray two =
            "<devices><item id=\"A\">0</item><item id=\"B\">1</item><item id=\"C\">1</item>";
        QTest::newRow("missing") << QByteArray("-") << "";
        const QByteArray noMark = "<d><item id=\"A\">0</item><item id=\"B\"> 1</item></d>";
        QTest::newRow("first of two marked") << two + "</devices>" << QStringLiteral("B");
        QTest::newRow("none marked") << noMark << QString();
        QTest::newRow("truncated after the mark") << two.left(two.size() - 20) << "B";
        const QByteArray broken = "<d><item id=\"A\">0</i><item id=\"B\">1</item>";
        QTest::newRow("broken before the mark") << broken << QString();
        QTest::newRow("non-ASCII name")
            << QByteArray("<d><item id=\"Mod\xc3\xa9m\">1</item></d>") << "Mod\u00e9m";
        QTest::newRow("10 MB before the mark")
            << "<d><x>" + QByteArray(10 << 20, 'x') + "</x>" + two.mid(9) << "B";
    }
    void lastUsedDevice()
    {
        QFETCH(QByteArray, content);
        zelk::sim::Platform platform = zelk::sim::platform();
        platform.userDataDirectory = m_dir.filePath(QString::number(qHash(content))).toStdString() + "/";
        zelk::sim::setPlatform(platform);
        QDir().mkpath(QString::fromStdString(platform.userDataDirectory));
        writeFile(m_dir, QStringLiteral("%1/localdeviceinfo.xml").arg(qHash(content)), content);
        QTEST(CDeviceMgrService::instance()->GetLastUsedDeviceName(), "name");
    }
};

QTEST_MAIN(tst_Chooser)
#include "tst_chooser.moc"
