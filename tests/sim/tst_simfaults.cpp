// Regressions met by users and other plugins: OK over a field the window system emptied, IDeviceMgr
// operations while another SIM dialog is open, the PUK switch without its parts, shut-down behind a WWAN
// poll that never returns, the card word of messages, and out-of-range numbers in scenario files.
#include "SimTestSupport.h"

#include "Change.h"
#include "CommonUtils.h"
#include "DeviceMgrWin7Thread.h"
#include "HostFixture.h"
#include "PluginContainer.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QSettings>

using namespace simtest;

class tst_SimFaults : public QObject
{
    Q_OBJECT

private:
    HostFixture m_host;
    CDeviceMgrService* m_service = nullptr;

    void start()
    {
        m_service = startService(true);
        QVERIFY(m_service);
    }

    // One SIM dialog as the user meets it, each field holding a code that meets every rule.
    QString openTyped(const QString& which)
    {
        const QString name = openSimDialog(m_service, which);
        const auto fields = window(name)->findChildren<QLineEdit*>();
        for (QLineEdit* f : fields)
            type(f, QStringLiteral("12345678"));
        return name;
    }

private slots:
    void initTestCase() { m_host.init(); }
    void init()
    {
        m_host.beginTest();
        zelk::sim::reset();
        svc::resetHandled();
        m_service = nullptr;
    }
    void cleanup()
    {
        svc::stopService();
        m_service = nullptr;
        PluginContainer* container = HostFramework::container();
        if (!container->isRegistered(QStringLiteral("MainMenuService")))
            container->registerService(QStringLiteral(MAINMENU_PLUGIN_CLSID), MAINMENU_PLUGIN_ID,
                                       HostFramework::mainMenuService());
        Change::LoadLanguage(QStringLiteral("none"));
        QVERIFY2(m_host.endTest(), qPrintable(m_host.lastError()));
    }
    void cleanupTestCase() { m_host.shutdown(); }

    void hiddenAndShownDialogKeepsOkOffOverEmptiedField_data()
    {
        // clang-format off
        QTest::addColumn<QString>("which");
        QTest::addColumn<QString>("okSlot");
        QTest::addColumn<QString>("sdkFunction");
        QTest::newRow("start-up") << "verify" << "onVerifyPINOkButtonClicked" << "ZELK_DevSrv_VerifyPin";
        QTest::newRow("enable") << "enable" << "onPINOkButtonClicked" << "ZELK_DevSrv_EnablePin";
        QTest::newRow("unlock code") << "cardlock" << "onPINOkButtonClicked" << "ZELK_DevSrv_VerifyCardLock";
        QTest::newRow("PUK") << "puk" << "onPUKOkButtonClicked" << "ZELK_DevSrv_UnblockPin";
        QTest::newRow("change") << "change" << "onModOkButtonClicked" << "ZELK_DevSrv_ChangePin";
        // clang-format on
    }
    void hiddenAndShownDialogKeepsOkOffOverEmptiedField()
    {
        QFETCH(QString, which);
        QFETCH(QString, okSlot);
        QFETCH(QString, sdkFunction);
        const QString name = openTyped(which);
        QVERIFY(okButton(name)->isEnabled());
        // Minimised and restored by the window system.
        SimDlg* dlg = dialog(name);
        dlg->hide();
        dlg->show();
        QCOMPARE(field(name)->text(), QString());
        QVERIFY(!okButton(name)->isEnabled());
        // Not even a stray OK (Return on a default button) sends the empty code.
        HostFramework::clearMessageRecords();
        QVERIFY(QMetaObject::invokeMethod(m_service, okSlot.toLatin1().constData()));
        QCOMPARE(svc::callCount(sdkFunction.toLatin1().constData()), 0);
        QCOMPARE(messages(), QStringList());
        QCOMPARE(openDialogs(), QStringList{name});
    }

    void deviceMgrOperationOverAnotherSimDialog_data()
    {
        // clang-format off
        QTest::addColumn<QString>("other");
        QTest::addColumn<QString>("operation");
        QTest::addColumn<QString>("opened");
        QTest::addColumn<int>("job");
        QTest::newRow("EnablePIN over start-up") << "verify" << "EnablePIN" << kPinDlg << 2;
        QTest::newRow("DisablePIN over PUK") << "puk" << "DisablePIN" << kPinDlg << 3;
        QTest::newRow("ModifyPIN over unlock code") << "cardlock" << "ModifyPIN" << kModifyDlg << 6;
        QTest::newRow("UnlockPIN over change") << "change" << "UnlockPIN" << kPukDlg << 6;
        QTest::newRow("VerifyPIN over enable") << "enable" << "VerifyPIN" << kVerifyDlg << 2;
        // clang-format on
    }
    void deviceMgrOperationOverAnotherSimDialog()
    {
        QFETCH(QString, other);
        QFETCH(QString, operation);
        QFETCH(QString, opened);
        const QString name = openTyped(other);
        const QMap<QString, void (IDeviceMgr::*)()> operations{{"EnablePIN", &IDeviceMgr::EnablePIN},
                                                               {"DisablePIN", &IDeviceMgr::DisablePIN},
                                                               {"ModifyPIN", &IDeviceMgr::ModifyPIN},
                                                               {"UnlockPIN", &IDeviceMgr::UnlockPIN},
                                                               {"VerifyPIN", &IDeviceMgr::VerifyPIN}};
        IDeviceMgr* api = m_service;
        (api->*operations.value(operation))();
        QStringList both{name, opened};
        both.sort();
        QCOMPARE(openDialogs(), both);
        QTEST(m_service->pinState(), "job");
        // The digits typed in the other dialog are still there.
        const auto fields = window(name)->findChildren<QLineEdit*>();
        for (QLineEdit* f : fields)
            QVERIFY(!f->text().isEmpty());
        // Closing the new dialog asks first; "No" keeps it.
        HostFramework::clearMessageRecords();
        HostFramework::pushNextAnswer(0);
        dialog(opened)->close();
        QCOMPARE(messages(), QStringList{QStringLiteral("ShowMessage 4 %1 | IDS_MAINFRM_PROMPT | "
                                                        "IDS_MAINFRM_PIN_CANCELPROMPT | IDS_YES,IDS_NO")
                                             .arg(opened)});
        QCOMPARE(openDialogs(), both);
    }

    void lastPinAttemptWithoutPukPartsStops_data()
    {
        QTest::addColumn<bool>("menuMissing");
        QTest::newRow("main menu missing") << true;
        QTest::newRow("PUK dialog lost a part") << false;
    }
    void lastPinAttemptWithoutPukPartsStops()
    {
        QFETCH(bool, menuMissing);
        if (menuMissing)
            QVERIFY(HostFramework::container()->UnRegisterPlugin(QStringLiteral("MainMenuService")));
        zelk::sim::Device d = activeDevice();
        d.sim.pinEnabled = d.sim.pinVerified = true;
        d.sim.pinAttempts = 1;
        QVERIFY(zelk::sim::updateDevice(d));
        start();
        if (!menuMissing) {
            m_service->UnlockPIN();
            delete child<QLabel>(kPukDlg, QStringLiteral("DeviceMgrUI_labelPUKTimes"));
            dialog(kPukDlg)->hide();
        }
        m_service->DisablePIN();
        type(field(kPinDlg), QStringLiteral("9999"));
        click(okButton(kPinDlg));
        QCOMPARE(openDialogs(), QStringList{kPinDlg});
        QVERIFY(!svc::sent().contains(svc::bc(NTF_SIM_NOT_READY)));
    }

    void shutdownDoesNotWaitForHangingWwanPoll()
    {
        pinRequired();
        zelk::sim::Platform p = zelk::sim::platform();
        p.isWin7 = ZELK_ERROR_SUCCESS;
        p.wwanReady = false;
        p.wwanService = 1;
        p.wwanPollDelayMs = 20000;
        zelk::sim::setPlatform(p);
        start();
        m_service->checkPINWithWin7();
        QPointer<DeviceMgrWin7Thread> thread = m_service->win7Thread();
        QVERIFY(thread);
        // The thread asks the platform first, then polls (and hangs): a Stop() before that is forgotten.
        QTRY_COMPARE(svc::callCount("ZELK_DevSrv_IsWin7"), 2);
        QElapsedTimer clock;
        clock.start();
        svc::stopService();
        // Stop() waits 5 s at most.
        QVERIFY2(clock.elapsed() < 8000, qPrintable(QString::number(clock.elapsed())));
        p.wwanPollDelayMs = 0;
        zelk::sim::setPlatform(p);
        QTRY_VERIFY_WITH_TIMEOUT(!thread, 10000);
        QCOMPARE(CommonUtils::ThreadCount(), 0);
    }

    void cardWordInNetworkLockMessage_data()
    {
        // clang-format off
        QTest::addColumn<int>("productType");
        QTest::addColumn<QString>("setting"); // "-": none in the user's settings file
        QTest::addColumn<QString>("word");
        QTest::newRow("GSM, shipped") << 2 << "-" << "SIM";
        QTest::newRow("CDMA, shipped") << 1 << "-" << "UIM";
        QTest::newRow("GSM, user's word") << 2 << "Nano SIM" << "Nano SIM";
        QTest::newRow("GSM, emptied by the user") << 2 << "" << "SIM/USIM";
        // clang-format on
    }
    void cardWordInNetworkLockMessage()
    {
        QFETCH(int, productType);
        QFETCH(QString, setting);
        QFETCH(QString, word);
        QSettings(m_host.settingsPath(), QSettings::IniFormat).remove(QStringLiteral("customize"));
        if (setting != QLatin1String("-"))
            m_host.setSetting(QStringLiteral("customize"),
                              QLatin1String(productType == 1 ? "uimtype" : "simtype"), setting);
        m_host.setSetting(QStringLiteral("support"), QStringLiteral("type"), QStringLiteral("1"));
        zelk::sim::Device d = activeDevice();
        d.productType = productType;
        d.cardLock.state = 1;
        QVERIFY(zelk::sim::updateDevice(d));
        QVERIFY(Change::LoadLanguage(QStringLiteral("en")));
        start();
        svc::inject(ZELK_EVENT_DEV_CARD_LOCK);
        QVERIFY(svc::settle(1));
        const auto boxes = HostFramework::messageRecords();
        QCOMPARE(boxes.size(), 1);
        QCOMPARE(boxes.first().text,
                 Change::tr(QStringLiteral("IDS_CARDLOCKDLG_DEADLOCK")).replace("%s", word));
    }

    void scenarioNumberOutOfRangeNamesFileValue_data()
    {
        // clang-format off
        QTest::addColumn<QString>("port");
        QTest::addColumn<QString>("got");
        QTest::newRow("beyond 64 bits") << "1e23" << "1e+23";
        QTest::newRow("far below") << "-2.5e30" << "-2.5e+30";
        QTest::newRow("small") << "-7" << "-7";
        // clang-format on
    }
    void scenarioNumberOutOfRangeNamesFileValue()
    {
        QFETCH(QString, port);
        QFETCH(QString, got);
        QString error;
        const QByteArray json = "{ \"devices\": [ { \"name\": \"M\", \"port\": " + port.toLatin1() + " } ] }";
        QVERIFY(!zelk::sim::loadScenarioText(json, QStringLiteral("x.json"), &error));
        QCOMPARE(error, QStringLiteral("x.json: devices[0].port: must be 0 to 2147483647 (got %1)").arg(got));
    }
};

QTEST_MAIN(tst_SimFaults)
#include "tst_simfaults.moc"
