// The PIN state dispatch and the start-up verification dialog, driven through the simulated card:
// which dialog the user gets for which SIM, what typing a PIN does, and what the other plugins hear.
#include "SimTestSupport.h"

#include "Change.h"
#include "HostFixture.h"

#include <QtGui/QClipboard>
#include <QtWidgets/QAction>
#include <QtWidgets/QPushButton>

using namespace simtest;
using svc::bc;

class tst_SimStartup : public QObject
{
    Q_OBJECT

private:
    HostFixture m_host;
    CDeviceMgrService* m_service = nullptr;

    void start(bool frameShown = true)
    {
        m_service = startService(frameShown);
        QVERIFY(m_service);
    }

    // The SIM asks for its PIN and the start-up dialog is on screen.
    void openVerifyDialog(int pinAttempts = 3)
    {
        pinRequired(pinAttempts);
        start();
        QVERIFY(startupPinCheck());
        QCOMPARE(openDialogs(), QStringList{kVerifyDlg});
        HostFramework::clearNotificationRecords();
        zelk::sim::clearCalls();
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
        Change::LoadLanguage(QStringLiteral("none"));
        QVERIFY2(m_host.endTest(), qPrintable(m_host.lastError()));
    }
    void cleanupTestCase() { m_host.shutdown(); }

    // ---- dispatch --------------------------------------------------------------------------------

    void startupCheckOpensWhatTheSimAsksFor_data()
    {
        QTest::addColumn<int>("pinAttempts");
        QTest::addColumn<int>("pukAttempts");
        QTest::addColumn<bool>("pinEnabled");
        QTest::addColumn<QStringList>("dialogs");
        QTest::addColumn<QStringList>("notifications");
        QTest::addColumn<bool>("validPinState");
        QTest::addColumn<int>("pinState");
        QTest::newRow("PIN asked: verification")
            << 3 << 10 << true << QStringList{kVerifyDlg} << QStringList{bc(579)} << false << 1;
        QTest::newRow("PIN used up: PUK")
            << 0 << 10 << true << QStringList{kPukDlg} << QStringList{bc(579)} << false << 4;
        QTest::newRow("PUK used up: message only")
            << 0 << 0 << true << QStringList() << QStringList() << false << 5;
        QTest::newRow("no PIN, card usable: 578 once")
            << 3 << 10 << false << QStringList() << QStringList{bc(578)} << true << 0;
    }
    void startupCheckOpensWhatTheSimAsksFor()
    {
        QFETCH(int, pinAttempts);
        QFETCH(int, pukAttempts);
        QFETCH(bool, pinEnabled);
        QFETCH(QStringList, dialogs);
        QFETCH(QStringList, notifications);
        QFETCH(bool, validPinState);
        QFETCH(int, pinState);
        pinRequired(pinAttempts, pukAttempts);
        zelk::sim::Device d = activeDevice();
        d.sim.pinEnabled = pinEnabled;
        QVERIFY(zelk::sim::updateDevice(d));
        start();
        QVERIFY(startupPinCheck());
        QCOMPARE(openDialogs(), dialogs);
        QCOMPARE(svc::sent(), notifications);
        QCOMPARE(m_service->isValidPinState(), validPinState);
        QCOMPARE(m_service->pinState(), pinState);
        if (pinState == DEVMGR_PIN_BLOCKED)
            QCOMPARE(messages(), QStringList{info(QStringLiteral("IDS_PIN_SIM_LOCKED"), "TestMainWindow")});
        else
            QCOMPARE(messages(), QStringList());
        // The host's SIM, radio and device menu items were refreshed once by the check.
        QVERIFY(HostFramework::mainMenuService()->deviceRefreshCount() >= 1);
    }

    void readyWithLockedCardReportsNotReady()
    {
        m_host.setSetting(QStringLiteral("support"), QStringLiteral("type"), QStringLiteral("2"));
        cardLock(1);
        start();
        m_service->launchSpecificPinDlg(DEVMGR_PIN_READY);
        QCOMPARE(svc::sent(), QStringList{bc(579)});
        QVERIFY(m_service->isValidPinState());
        QVERIFY(!m_service->IsValidSim());
        QCOMPARE(m_service->cardState(), 1);
    }

    void jobsFromTheDeviceOpenNothing_data()
    {
        QTest::addColumn<int>("state");
        QTest::newRow("2 enable") << 2;
        QTest::newRow("3 disable") << 3;
        QTest::newRow("6 change") << 6;
    }
    void jobsFromTheDeviceOpenNothing()
    {
        QFETCH(int, state);
        start();
        m_service->launchPinDlg(static_cast<E_DEVMGR_PIN_STATE>(state));
        QCOMPARE(openDialogs(), QStringList());
        QCOMPARE(svc::sent(), QStringList());
        QVERIFY(!m_service->isValidPinState());
        QCOMPARE(messages(), QStringList());
    }

    void frameNotShownYet_data()
    {
        QTest::addColumn<int>("state");
        QTest::addColumn<QStringList>("notifications");
        QTest::addColumn<bool>("validPinState");
        QTest::newRow("PIN asked") << 1 << QStringList{bc(579)} << false;
        QTest::newRow("PUK asked") << 4 << QStringList{bc(579)} << false;
        QTest::newRow("ready") << 0 << QStringList{bc(578)} << true;
    }
    void frameNotShownYet()
    {
        QFETCH(int, state);
        QFETCH(QStringList, notifications);
        QFETCH(bool, validPinState);
        start(false);
        m_service->launchPinDlg(static_cast<E_DEVMGR_PIN_STATE>(state));
        QCOMPARE(openDialogs(), QStringList());
        QCOMPARE(svc::sent(), notifications);
        QCOMPARE(m_service->isValidPinState(), validPinState);
    }

    // Before the frame the start-up check reads the state and stops there.
    void startupCheckBeforeFrameShowsNothing()
    {
        pinRequired();
        start(false);
        QVERIFY(startupPinCheck());
        QCOMPARE(openDialogs(), QStringList());
        QCOMPARE(m_service->pinState(), 1);
        QCOMPARE(messages(), QStringList());
    }

    void failingStatusReadShowsNothing()
    {
        pinRequired();
        start();
        zelk::sim::failNext("ZELK_DevSrv_GetPinStatus");
        QVERIFY(startupPinCheck());
        QCOMPARE(openDialogs(), QStringList());
        QCOMPARE(svc::sent(), QStringList());
    }

    void suspendedCheckOpensNothing()
    {
        pinRequired();
        start();
        m_service->setPinCheckSuspended(true);
        QVERIFY(startupPinCheck());
        QCOMPARE(openDialogs(), QStringList());
        QCOMPARE(m_service->pinState(), 1);
    }

    // ---- the verification dialog -----------------------------------------------------------------

    void verifyDialogLooksAsDescribed()
    {
        openVerifyDialog();
        SimDlg* dlg = dialog(kVerifyDlg);
        QCOMPARE(dlg->size(), QSize(260, 170));
        QCOMPARE(dlg->windowTitle(), QStringLiteral("IDS_MAINFRM_PIN_VERIFY_WINDOWSTXT"));
        QCOMPARE(dlg->parentWidget(), static_cast<QWidget*>(m_host.mainWindow()));
        QVERIFY(child<QWidget>(kVerifyDlg, QStringLiteral("DeviceMgrUI_widgetVerifyPINDlg")));
        QCOMPARE(labelText(kVerifyDlg, QStringLiteral("DeviceMgrUI_VerifyPIN")),
                 QStringLiteral("IDS_MAINFRM_INPUT_PIN_PROMPT"));
        QCOMPARE(labelText(kVerifyDlg, QStringLiteral("DeviceMgrUI_VerifyPINTimes")),
                 QStringLiteral("IDS_MAINFRM_PIN_REMAIN_PROMPT3"));
        QLineEdit* pin = field(kVerifyDlg, QStringLiteral("DeviceMgrUI_VerifyeditPINText"));
        QVERIFY(pin);
        QCOMPARE(pin->size(), QSize(230, 20));
        QCOMPARE(pin->echoMode(), QLineEdit::Password);
        QCOMPARE(pin->maxLength(), 8);
        QCOMPARE(pin->contextMenuPolicy(), Qt::CustomContextMenu);
        QTRY_VERIFY(pin->hasFocus());
        auto* ok = child<QPushButton>(kVerifyDlg, QStringLiteral("DeviceMgrUI_VerifyPINO"));
        auto* cancel = child<QPushButton>(kVerifyDlg, QStringLiteral("DeviceMgrUI_VerifyPINCancel"));
        QVERIFY(ok && cancel);
        QCOMPARE(ok->text(), QStringLiteral("IDS_MAINFRM_OK_PROMPT"));
        QCOMPARE(cancel->text(), QStringLiteral("IDS_MAINFRM_CANCEL_PROMPT"));
        QVERIFY(!ok->isEnabled());
        QVERIFY(dlg->m_bAskOnClose);
        QVERIFY(!dlg->m_bOkCancelButtons);
    }

    void typingAPin_data()
    {
        QTest::addColumn<int>("pinAttempts");
        QTest::addColumn<QString>("pin");
        QTest::addColumn<bool>("unknownCount");
        QTest::addColumn<QStringList>("dialogs");
        QTest::addColumn<QStringList>("shown");
        QTest::addColumn<QStringList>("notifications");
        QTest::addColumn<QString>("retriesLabel");
        const QString failed =
            info(QStringLiteral("IDS_PIN_CHECK_FAILED"), kVerifyDlg, QStringLiteral("ShowMessageCustomize"));
        QTest::newRow("right PIN") << 3 << "1234" << false << QStringList() << QStringList()
                                   << QStringList{bc(578)} << QString();
        QTest::newRow("wrong PIN, attempts left")
            << 3 << "4321" << false << QStringList{kVerifyDlg} << QStringList{failed} << QStringList()
            << "IDS_MAINFRM_PIN_REMAIN_PROMPT2";
        QTest::newRow("wrong PIN on the last attempt: PUK")
            << 1 << "4321" << false << QStringList{kPukDlg} << QStringList{failed} << QStringList()
            << "IDS_MAINFRM_PUK_REMAIN_PROMPT10";
        QTest::newRow("count unknown: no message, the dialog stays")
            << 3 << "4321" << true << QStringList{kVerifyDlg} << QStringList() << QStringList()
            << "IDS_MAINFRM_UNKNOWN";
    }
    void typingAPin()
    {
        QFETCH(int, pinAttempts);
        QFETCH(QString, pin);
        QFETCH(bool, unknownCount);
        QFETCH(QStringList, dialogs);
        QFETCH(QStringList, shown);
        QFETCH(QStringList, notifications);
        QFETCH(QString, retriesLabel);
        openVerifyDialog(pinAttempts);
        if (unknownCount)
            zelk::sim::forceResult("ZELK_DevSrv_VerifyPin", 1, ZELK_ERROR_FAILURE);
        type(field(kVerifyDlg), pin);
        click(okButton(kVerifyDlg));
        QCOMPARE(openDialogs(), dialogs);
        QCOMPARE(messages(), shown);
        QCOMPARE(svc::sent(), notifications);
        QCOMPARE(m_service->isValidPinState(), dialogs.isEmpty());
        // The code went to the card once, and nowhere in clear.
        const auto calls = zelk::sim::calls("ZELK_DevSrv_VerifyPin");
        QCOMPARE(int(calls.size()), 1);
        for (const auto& arg : calls.front().args)
            QVERIFY(QString::fromStdString(arg) != pin);
        if (dialogs.isEmpty()) {
            QVERIFY(m_service->IsValidSim());
            return;
        }
        const QString top = dialogs.first();
        QCOMPARE(labelText(top, top == kVerifyDlg ? QStringLiteral("DeviceMgrUI_VerifyPINTimes")
                                                  : QStringLiteral("DeviceMgrUI_labelPUKTimes")),
                 retriesLabel);
        // Ready for the next attempt: empty field, OK off until enough digits are typed.
        QCOMPARE(field(top)->text(), QString());
        QVERIFY(!okButton(top)->isEnabled());
    }

    void callInProgressNeverReachesTheSim()
    {
        openVerifyDialog();
        m_service->Notify(NTF_CALL_DLG_SHOWN_1, 0, 0);
        type(field(kVerifyDlg), QStringLiteral("1234"));
        click(okButton(kVerifyDlg));
        QCOMPARE(messages(), QStringList{QStringLiteral("ShowMessage 2 %1 | IDS_MAINFRM_PROMPT | "
                                                        "IDS_PROMPT_CALLING_DISABLE | IDS_OK")
                                             .arg(kVerifyDlg)});
        QCOMPARE(openDialogs(), QStringList());
        QCOMPARE(svc::callCount("ZELK_DevSrv_VerifyPin"), 0);
        QVERIFY(!m_service->isValidPinState());
    }

    void cancelAsksFirst_data()
    {
        QTest::addColumn<int>("answer");
        QTest::addColumn<QStringList>("dialogs");
        QTest::newRow("No keeps the dialog and its digits") << 0 << QStringList{kVerifyDlg};
        QTest::newRow("Yes abandons the entry") << 1024 << QStringList();
    }
    void cancelAsksFirst()
    {
        QFETCH(int, answer);
        QFETCH(QStringList, dialogs);
        openVerifyDialog();
        type(field(kVerifyDlg), QStringLiteral("12"));
        HostFramework::pushNextAnswer(answer);
        click(button(kVerifyDlg, QStringLiteral("DeviceMgrUI_VerifyPINCancel")));
        QCOMPARE(messages(), QStringList{QStringLiteral("ShowMessage 4 %1 | IDS_MAINFRM_PROMPT | "
                                                        "IDS_MAINFRM_PIN_CANCELPROMPT | IDS_YES,IDS_NO")
                                             .arg(kVerifyDlg)});
        QCOMPARE(openDialogs(), dialogs);
        QCOMPARE(svc::callCount("ZELK_DevSrv_VerifyPin"), 0);
        if (!dialogs.isEmpty()) {
            QCOMPARE(field(kVerifyDlg)->text(), QStringLiteral("12"));
            QVERIFY(field(kVerifyDlg)->isEnabled());
            QTRY_VERIFY(field(kVerifyDlg)->hasFocus());
        }
    }

    void closeAndEscapeAskToo_data()
    {
        QTest::addColumn<bool>("escape");
        QTest::newRow("close button") << false;
        QTest::newRow("Escape") << true;
    }
    void closeAndEscapeAskToo()
    {
        QFETCH(bool, escape);
        openVerifyDialog();
        type(field(kVerifyDlg), QStringLiteral("1234"));
        if (escape)
            QTest::keyClick(field(kVerifyDlg), Qt::Key_Escape);
        else
            dialog(kVerifyDlg)->close();
        QCOMPARE(messages().size(), 1);
        QCOMPARE(openDialogs(), QStringList{kVerifyDlg});
        QCOMPARE(field(kVerifyDlg)->text(), QStringLiteral("1234"));
        QVERIFY(okButton(kVerifyDlg)->isEnabled());
    }

    // ---- the card goes away ----------------------------------------------------------------------

    void deviceSwitchOrRejectClosesTheDialog_data()
    {
        QTest::addColumn<int>("event");
        QTest::newRow("switch") << int(ZELK_EVENT_DEV_SWITCH);
        QTest::newRow("reject") << int(ZELK_EVENT_DEV_REJECT);
        QTest::newRow("removed") << int(ZELK_EVENT_DEV_DEVICE_REMOVED);
        QTest::newRow("SIM invalid") << int(ZELK_EVENT_DEV_SIM_INVALID);
    }
    void deviceSwitchOrRejectClosesTheDialog()
    {
        QFETCH(int, event);
        openVerifyDialog();
        QPointer<QLineEdit> pin = field(kVerifyDlg);
        type(pin, QStringLiteral("1234"));
        if (event == ZELK_EVENT_DEV_REJECT)
            svc::injectList(event, 0);
        else
            svc::inject(event);
        QVERIFY(svc::settle(svc::g_handled.load() + 1));
        QCOMPARE(openDialogs(), QStringList());
        // No question: the card, not the user, ended the entry; and the digits are gone.
        QCOMPARE(messages(), QStringList());
        QVERIFY(pin);
        QCOMPARE(pin->text(), QString());
        QCOMPARE(svc::callCount("ZELK_DevSrv_VerifyPin"), 0);
    }

    // ---- language --------------------------------------------------------------------------------

    void languageChangeRetranslates()
    {
        openVerifyDialog();
        QVERIFY(Change::LoadLanguage(QStringLiteral("de")));
        m_service->Notify(NTF_LANGUAGE_CHANGED, 0, 0);
        SimDlg* dlg = dialog(kVerifyDlg);
        QCOMPARE(dlg->windowTitle(), Change::tr(QStringLiteral("IDS_MAINFRM_PIN_VERIFY_WINDOWSTXT")));
        QVERIFY(dlg->windowTitle() != QLatin1String("IDS_MAINFRM_PIN_VERIFY_WINDOWSTXT"));
        QCOMPARE(labelText(kVerifyDlg, QStringLiteral("DeviceMgrUI_VerifyPIN")),
                 Change::tr(QStringLiteral("IDS_MAINFRM_INPUT_PIN_PROMPT")));
        QCOMPARE(labelText(kVerifyDlg, QStringLiteral("DeviceMgrUI_VerifyPINTimes")),
                 Change::tr(QStringLiteral("IDS_MAINFRM_PIN_REMAIN_PROMPT")) + QStringLiteral("3"));
        QCOMPARE(okButton(kVerifyDlg), static_cast<QAbstractButton*>(nullptr));
        QCOMPARE(button(kVerifyDlg, QStringLiteral("DeviceMgrUI_VerifyPINO"))->text(),
                 Change::tr(QStringLiteral("IDS_MAINFRM_OK_PROMPT")));
        // No new SDK reads: the count shown is the one already read.
        QCOMPARE(svc::callCount("ZELK_DevSrv_GetPinStatus"), 0);
    }

    // ---- codes stay private ----------------------------------------------------------------------

    void noCodeInLogsOrClipboard()
    {
        QGuiApplication::clipboard()->setText(QStringLiteral("before"));
        openVerifyDialog();
        // Digits that no time stamp or line number of the log would show by chance.
        zelk::sim::Device d = activeDevice();
        d.sim.pin = "8642";
        QVERIFY(zelk::sim::updateDevice(d));
        svc::startLogCapture();
        QLineEdit* pin = field(kVerifyDlg);
        type(pin, QStringLiteral("4321"));
        pin->selectAll();
        pin->findChild<QAction*>(QStringLiteral("DeviceMgrUI_VerifyCopy"))->trigger();
        QTest::keyClick(pin, Qt::Key_C, Qt::ControlModifier);
        click(okButton(kVerifyDlg));
        type(field(kVerifyDlg), QStringLiteral("8642"));
        click(okButton(kVerifyDlg));
        qInstallMessageHandler(nullptr);
        QCOMPARE(openDialogs(), QStringList());
        QCOMPARE(svc::logCount(QStringLiteral("4321")), 0);
        QCOMPARE(svc::logCount(QStringLiteral("8642")), 0);
        QVERIFY(svc::logCount(QStringLiteral("ZELK_DevSrv_VerifyPin")) > 0);
        QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("before"));
    }
};

QTEST_MAIN(tst_SimStartup)
#include "tst_simstartup.moc"
