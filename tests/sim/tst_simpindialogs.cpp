// The SIM dialogs a user opens from the menu or meets when the PIN runs out: enable and disable the
// PIN request, unblock with the PUK, change the PIN; plus what all SIM dialogs share (OK rules,
// one dialog at a time, language changes), driven through the simulated card.
#include "SimTestSupport.h"

#include "Change.h"
#include "HostFixture.h"

#include <QtWidgets/QPushButton>

using namespace simtest;
using svc::bc;

namespace {

// "field=text" entries: the field's object name, empty for the dialog's only code field.
using Entries = QStringList;

} // namespace

class tst_SimPinDialogs : public QObject
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

    void pinOn(int attempts = 3)
    {
        zelk::sim::Device d = activeDevice();
        d.sim.pinEnabled = true;
        d.sim.pinVerified = true;
        d.sim.pinAttempts = attempts;
        QVERIFY(zelk::sim::updateDevice(d));
    }

    // Brings up one SIM dialog the way the user meets it; returns its object name.
    QString open(const QString& which)
    {
        if (which == QLatin1String("verify")) {
            pinRequired();
            start();
            startupPinCheck();
            return kVerifyDlg;
        }
        if (which == QLatin1String("puk")) {
            pinRequired(0);
            start();
            startupPinCheck();
            return kPukDlg;
        }
        if (which == QLatin1String("cardlock")) {
            m_host.setSetting(QStringLiteral("support"), QStringLiteral("type"), QStringLiteral("0"));
            cardLock(1);
            start();
            svc::inject(ZELK_EVENT_DEV_CARD_LOCK);
            svc::settle(svc::g_handled.load() + 1);
            return kPinDlg;
        }
        if (which == QLatin1String("enable")) {
            start();
            m_service->EnablePIN();
            return kPinDlg;
        }
        if (which == QLatin1String("disable")) {
            pinOn();
            start();
            m_service->DisablePIN();
            return kPinDlg;
        }
        pinOn();
        start();
        m_service->ModifyPIN();
        return kModifyDlg;
    }

    void enter(const QString& dialogName, const Entries& entries)
    {
        for (const QString& entry : entries) {
            const QString name = entry.section(QLatin1Char('='), 0, 0);
            const QString text = entry.section(QLatin1Char('='), 1);
            QLineEdit* f = field(dialogName, name);
            QVERIFY2(f, qPrintable(QStringLiteral("no field '%1' in %2").arg(name, dialogName)));
            type(f, text);
        }
    }

    static Entries puk(const QString& code, const QString& newPin, const QString& confirm)
    {
        return {QStringLiteral("DeviceMgrUI_editPUKText=") + code,
                QStringLiteral("DeviceMgrUI_editPUKPINText=") + newPin,
                QStringLiteral("DeviceMgrUI_editConfirmPUKPINText=") + confirm};
    }

    static Entries change(const QString& current, const QString& newPin, const QString& confirm)
    {
        return {QStringLiteral("DeviceMgrUI_editCurrPINText=") + current,
                QStringLiteral("DeviceMgrUI_editNewPINText=") + newPin,
                QStringLiteral("DeviceMgrUI_editConfirmNewPINText=") + confirm};
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

    // ---- OK follows the job's rule ---------------------------------------------------------------

    void okEnablement_data()
    {
        QTest::addColumn<QString>("which");
        QTest::addColumn<Entries>("entries");
        QTest::addColumn<bool>("enabled");
        QTest::newRow("verify, 3 digits") << "verify" << Entries{"=123"} << false;
        QTest::newRow("verify, 4 digits") << "verify" << Entries{"=1234"} << true;
        QTest::newRow("enable, 3 digits") << "enable" << Entries{"=123"} << false;
        QTest::newRow("enable, 4 digits") << "enable" << Entries{"=1234"} << true;
        QTest::newRow("disable, 8 digits") << "disable" << Entries{"=12345678"} << true;
        QTest::newRow("unlock code, 7 digits") << "cardlock" << Entries{"=1234567"} << false;
        QTest::newRow("unlock code, 8 digits") << "cardlock" << Entries{"=12345678"} << true;
        QTest::newRow("PUK of 7") << "puk" << puk("1234567", "1234", "1234") << false;
        QTest::newRow("PUK, new PIN of 3") << "puk" << puk("12345678", "123", "1234") << false;
        QTest::newRow("PUK, confirmation of 3") << "puk" << puk("12345678", "1234", "123") << false;
        QTest::newRow("PUK complete") << "puk" << puk("12345678", "1234", "1234") << true;
        QTest::newRow("change, confirmation of 3") << "change" << change("1234", "5678", "567") << false;
        QTest::newRow("change, current of 3") << "change" << change("123", "5678", "5678") << false;
        QTest::newRow("change complete") << "change" << change("1234", "5678", "5678") << true;
    }
    void okEnablement()
    {
        QFETCH(QString, which);
        QFETCH(Entries, entries);
        QFETCH(bool, enabled);
        const QString name = open(which);
        QCOMPARE(openDialogs(), QStringList{name});
        QVERIFY(!okButton(name)->isEnabled());
        enter(name, entries);
        QCOMPARE(okButton(name)->isEnabled(), enabled);
        auto* ok = qobject_cast<QPushButton*>(okButton(name));
        QVERIFY(ok);
        QCOMPARE(ok->isDefault(), enabled);
    }

    // ---- enable and disable ----------------------------------------------------------------------

    void enableDisable_data()
    {
        QTest::addColumn<bool>("enable");
        QTest::addColumn<int>("attempts");
        QTest::addColumn<QString>("pin");
        QTest::addColumn<QStringList>("shown");
        QTest::addColumn<QStringList>("dialogs");
        QTest::addColumn<QStringList>("notifications");
        QTest::addColumn<bool>("pinEnabledAfter");
        const QString main = QStringLiteral("TestMainWindow");
        const QString locked = info(QStringLiteral("IDS_PIN_PIN_LOCKED"), kPinDlg);
        QTest::newRow("enable, right PIN")
            << true << 3 << "1234" << QStringList{info(QStringLiteral("IDS_MAINFRM_ENABLEPIN_SUCCESS"), main)}
            << QStringList() << QStringList() << true;
        QTest::newRow("enable, wrong PIN")
            << true << 3 << "9999" << QStringList{info(QStringLiteral("IDS_PIN_ENABLE_FAILED"), kPinDlg)}
            << QStringList{kPinDlg} << QStringList() << false;
        QTest::newRow("enable, wrong PIN on the last attempt: PUK")
            << true << 1 << "9999"
            << QStringList{locked, info(QStringLiteral("IDS_PIN_ENABLE_FAILED"), kPinDlg)}
            << QStringList{kPukDlg} << QStringList{bc(579)} << false;
        QTest::newRow("disable, right PIN")
            << false << 3 << "1234"
            << QStringList{info(QStringLiteral("IDS_MAINFRM_DISABLEPIN_SUCCESS"), main)} << QStringList()
            << QStringList() << false;
        QTest::newRow("disable, wrong PIN")
            << false << 3 << "9999" << QStringList{info(QStringLiteral("IDS_PIN_DISABLE_FAILED"), kPinDlg)}
            << QStringList{kPinDlg} << QStringList() << true;
        QTest::newRow("disable, wrong PIN on the last attempt: PUK")
            << false << 1 << "9999"
            << QStringList{locked, info(QStringLiteral("IDS_PIN_DISABLE_FAILED"), kPinDlg)}
            << QStringList{kPukDlg} << QStringList{bc(579)} << true;
    }
    void enableDisable()
    {
        QFETCH(bool, enable);
        QFETCH(int, attempts);
        QFETCH(QString, pin);
        QFETCH(QStringList, shown);
        QFETCH(QStringList, dialogs);
        QFETCH(QStringList, notifications);
        QFETCH(bool, pinEnabledAfter);
        if (!enable)
            pinOn(attempts);
        else {
            zelk::sim::Device d = activeDevice();
            d.sim.pinAttempts = attempts;
            QVERIFY(zelk::sim::updateDevice(d));
        }
        start();
        if (enable)
            m_service->EnablePIN();
        else
            m_service->DisablePIN();
        QCOMPARE(openDialogs(), QStringList{kPinDlg});
        SimDlg* dlg = dialog(kPinDlg);
        QCOMPARE(dlg->size(), QSize(260, 170));
        QCOMPARE(dlg->windowTitle(), enable ? QStringLiteral("IDS_MAINFRM_ENABLE_WINDOWSTXT")
                                            : QStringLiteral("IDS_MAINFRM_DISABLE_WINDOWSTXT"));
        QCOMPARE(field(kPinDlg)->size(), QSize(230, 20));
        QCOMPARE(labelText(kPinDlg, QStringLiteral("DeviceMgrUI_m_plabelPINTimes")),
                 QStringLiteral("IDS_MAINFRM_PIN_REMAIN_PROMPT%1").arg(attempts));
        QVERIFY(child<QWidget>(kPinDlg, QStringLiteral("DeviceMgrUI_widgetPINDlg")));

        type(field(kPinDlg), pin);
        click(okButton(kPinDlg));
        QCOMPARE(messages(), shown);
        QCOMPARE(openDialogs(), dialogs);
        QCOMPARE(svc::sent(), notifications);
        QCOMPARE(activeDevice().sim.pinEnabled, pinEnabledAfter);
        QCOMPARE(svc::callCount(enable ? "ZELK_DevSrv_EnablePin" : "ZELK_DevSrv_DisablePin"), 1);
        if (dialogs == QStringList{kPinDlg}) {
            QCOMPARE(labelText(kPinDlg, QStringLiteral("DeviceMgrUI_m_plabelPINTimes")),
                     QStringLiteral("IDS_MAINFRM_PIN_REMAIN_PROMPT%1").arg(attempts - 1));
            QCOMPARE(field(kPinDlg)->text(), QString());
        }
    }

    // A failure whose count cannot be read closes the dialog without a message.
    void enableWithUnknownCountClosesSilently()
    {
        start();
        m_service->EnablePIN();
        type(field(kPinDlg), QStringLiteral("9999"));
        zelk::sim::forceResult("ZELK_DevSrv_EnablePin", 1, ZELK_ERROR_FAILURE);
        zelk::sim::failNext("ZELK_DevSrv_GetPinStatus");
        click(okButton(kPinDlg));
        QCOMPARE(openDialogs(), QStringList());
        QCOMPARE(messages(), QStringList());
    }

    void cancelOfEnableClosesWithoutAsking()
    {
        start();
        m_service->EnablePIN();
        type(field(kPinDlg), QStringLiteral("12"));
        click(button(kPinDlg, QStringLiteral("IDS_MAINFRM_CANCEL_PROMPT")));
        QCOMPARE(openDialogs(), QStringList());
        QCOMPARE(messages(), QStringList());
        QCOMPARE(svc::callCount("ZELK_DevSrv_EnablePin"), 0);
        // Opened again, it starts empty.
        m_service->EnablePIN();
        QCOMPARE(field(kPinDlg)->text(), QString());
    }

    void callInProgressRefusesEveryDialog_data()
    {
        QTest::addColumn<QString>("which");
        QTest::addColumn<Entries>("entries");
        QTest::addColumn<QString>("sdkFunction");
        QTest::newRow("enable") << "enable" << Entries{"=1234"} << "ZELK_DevSrv_EnablePin";
        QTest::newRow("unlock code") << "cardlock" << Entries{"=12345678"} << "ZELK_DevSrv_VerifyCardLock";
        QTest::newRow("PUK") << "puk" << puk("12345678", "1234", "1234") << "ZELK_DevSrv_UnblockPin";
        QTest::newRow("change") << "change" << change("1234", "5678", "5678") << "ZELK_DevSrv_ChangePin";
    }
    void callInProgressRefusesEveryDialog()
    {
        QFETCH(QString, which);
        QFETCH(Entries, entries);
        QFETCH(QString, sdkFunction);
        const QString name = open(which);
        enter(name, entries);
        HostFramework::clearMessageRecords();
        m_service->Notify(NTF_CALL_DLG_SHOWN_2, 0, 0);
        click(okButton(name));
        QCOMPARE(messages(), QStringList{QStringLiteral("ShowMessage 2 %1 | IDS_MAINFRM_PROMPT | "
                                                        "IDS_PROMPT_CALLING_DISABLE | IDS_OK")
                                             .arg(name)});
        QCOMPARE(openDialogs(), QStringList());
        QCOMPARE(svc::callCount(sdkFunction.toLatin1().constData()), 0);
    }

    // ---- PUK -------------------------------------------------------------------------------------

    void unblockWithPuk_data()
    {
        QTest::addColumn<int>("pukAttempts");
        QTest::addColumn<Entries>("entries");
        QTest::addColumn<bool>("unknownCount");
        QTest::addColumn<QStringList>("shown");
        QTest::addColumn<QStringList>("dialogs");
        QTest::addColumn<QStringList>("notifications");
        QTest::addColumn<QString>("retriesLabel");
        QTest::addColumn<int>("unblockCalls");
        QTest::newRow("new PINs differ: never reaches the SIM")
            << 10 << puk("12345678", "1111", "2222") << false
            << QStringList{info(QStringLiteral("IDS_PIN_MSG_PIN_DIFFER"), kPukDlg)} << QStringList{kPukDlg}
            << QStringList() << "IDS_MAINFRM_PUK_REMAIN_PROMPT10" << 0;
        QTest::newRow("right PUK") << 10 << puk("12345678", "4321", "4321") << false
                                   << QStringList{info(QStringLiteral("IDS_MAINFRM_UNLOCKPIN_SUCCESS"))}
                                   << QStringList() << QStringList{bc(578)} << QString() << 1;
        QTest::newRow("wrong PUK") << 10 << puk("87654321", "4321", "4321") << false
                                   << QStringList{info(QStringLiteral("IDS_PIN_PUK_FAILED"), kPukDlg)}
                                   << QStringList{kPukDlg} << QStringList()
                                   << "IDS_MAINFRM_PUK_REMAIN_PROMPT9" << 1;
        QTest::newRow("last wrong PUK: card blocked")
            << 1 << puk("87654321", "4321", "4321") << false
            << QStringList{info(QStringLiteral("IDS_MSG_CARD_BLOCKED"))} << QStringList() << QStringList()
            << QString() << 1;
        QTest::newRow("count unknown: fields cleared, the dialog stays")
            << 10 << puk("87654321", "4321", "4321") << true << QStringList() << QStringList{kPukDlg}
            << QStringList() << "IDS_MAINFRM_UNKNOWN" << 1;
    }
    void unblockWithPuk()
    {
        QFETCH(int, pukAttempts);
        QFETCH(Entries, entries);
        QFETCH(bool, unknownCount);
        QFETCH(QStringList, shown);
        QFETCH(QStringList, dialogs);
        QFETCH(QStringList, notifications);
        QFETCH(QString, retriesLabel);
        QFETCH(int, unblockCalls);
        pinRequired(0, pukAttempts);
        start();
        QVERIFY(startupPinCheck());
        QCOMPARE(openDialogs(), QStringList{kPukDlg});
        SimDlg* dlg = dialog(kPukDlg);
        QCOMPARE(dlg->size(), QSize(320, 200));
        QCOMPARE(dlg->windowTitle(), QStringLiteral("IDS_MAINFRM_PIN_UNLOCK_WINDOWSTXT"));
        QCOMPARE(labelText(kPukDlg, QStringLiteral("DeviceMgrUI_labelPUK")),
                 QStringLiteral("IDS_MAINFRM_INPUT_PUK_PROMPT"));
        QCOMPARE(field(kPukDlg, QStringLiteral("DeviceMgrUI_editPUKText"))->size(), QSize(105, 20));
        QVERIFY(child<QWidget>(kPukDlg, QStringLiteral("DeviceMgrUI_widgetPUKDlg")));
        QVERIFY(button(kPukDlg, QStringLiteral("DeviceMgrUI_buttonPUKCancel")));
        HostFramework::clearNotificationRecords();
        zelk::sim::clearCalls();
        if (unknownCount)
            zelk::sim::forceResult("ZELK_DevSrv_UnblockPin", 1, ZELK_ERROR_FAILURE);

        enter(kPukDlg, entries);
        click(button(kPukDlg, QStringLiteral("DeviceMgrUI_buttonPUKOK")));
        QCOMPARE(messages(), shown);
        QCOMPARE(openDialogs(), dialogs);
        QCOMPARE(svc::sent(), notifications);
        QCOMPARE(svc::callCount("ZELK_DevSrv_UnblockPin"), unblockCalls);
        QCOMPARE(m_service->isValidPinState(), notifications == QStringList{bc(578)});
        if (!dialogs.isEmpty()) {
            QCOMPARE(labelText(kPukDlg, QStringLiteral("DeviceMgrUI_labelPUKTimes")), retriesLabel);
            // Differing PINs leave everything typed for the user to correct.
            QCOMPARE(okButton(kPukDlg)->isEnabled(), unblockCalls == 0);
            if (unblockCalls == 0)
                return;
            const auto fields = dialog(kPukDlg)->findChildren<QLineEdit*>();
            for (QLineEdit* f : fields)
                QCOMPARE(f->text(), QString());
        }
    }

    void privilegeRefusal_data()
    {
        QTest::addColumn<QString>("language");
        QTest::addColumn<QString>("text");
        QTest::newRow("without a translation: built-in English")
            << "none"
            << "This method is not allowed for calling process privileges. Please use system's WWAN UI to "
               "unblock the PIN";
        QTest::newRow("with a translation") << "en"
                                            << "";
    }
    void privilegeRefusal()
    {
        QFETCH(QString, language);
        QFETCH(QString, text);
        QVERIFY(Change::LoadLanguage(language));
        if (text.isEmpty())
            text = Change::tr(QStringLiteral("IDS_MSG_WWAN_PRIVILIGE"));
        QVERIFY(text != QLatin1String("IDS_MSG_WWAN_PRIVILIGE"));
        pinRequired(0);
        zelk::sim::Device d = activeDevice();
        d.sim.unblockAllowed = false;
        QVERIFY(zelk::sim::updateDevice(d));
        start();
        QVERIFY(startupPinCheck());
        enter(kPukDlg, puk("12345678", "4321", "4321"));
        click(button(kPukDlg, QStringLiteral("DeviceMgrUI_buttonPUKOK")));
        QCOMPARE(openDialogs(), QStringList());
        const auto records = HostFramework::messageRecords();
        QCOMPARE(records.size(), 1);
        QCOMPARE(records.first().text, text);
        QCOMPARE(records.first().icon, 1);
        QCOMPARE(records.first().parentName, QString());
        QCOMPARE(records.first().title, Change::tr(QStringLiteral("IDS_MAINFRM_PROMPT")));
    }

    // Each switch to the PUK builds the dialog anew; the old one is deleted by the event loop.
    void pukDialogIsRebuiltOnEachUse()
    {
        start();
        m_service->EnablePIN();
        m_service->processPINPUK();
        QPointer<SimDlg> first = dialog(kPukDlg);
        QVERIFY(first);
        type(field(kPukDlg, QStringLiteral("DeviceMgrUI_editPUKText")), QStringLiteral("1234"));
        // The menu's Enable PIN opens its dialog beside the pending PUK entry.
        m_service->EnablePIN();
        QCOMPARE(openDialogs(), (QStringList{kPukDlg, kPinDlg}));
        m_service->processPINPUK();
        flushDeletes();
        QVERIFY(!first);
        SimDlg* second = dialog(kPukDlg);
        QVERIFY(second);
        QCOMPARE(field(kPukDlg, QStringLiteral("DeviceMgrUI_editPUKText"))->text(), QString());
        QCOMPARE(svc::sent(), (QStringList{bc(579), bc(579)}));
    }

    // ---- change PIN ------------------------------------------------------------------------------

    void changePin_data()
    {
        QTest::addColumn<int>("attempts");
        QTest::addColumn<Entries>("entries");
        QTest::addColumn<QStringList>("shown");
        QTest::addColumn<QStringList>("dialogs");
        QTest::addColumn<QStringList>("notifications");
        QTest::addColumn<QString>("pinAfter");
        QTest::addColumn<int>("changeCalls");
        QTest::newRow("right current PIN")
            << 3 << change("1234", "5678", "5678")
            << QStringList{info(QStringLiteral("IDS_MAINFRM_CHANGEPIN_SUCCESS"), "TestMainWindow")}
            << QStringList() << QStringList() << "5678" << 1;
        QTest::newRow("new PINs differ: cleared, never reaches the SIM")
            << 3 << change("1234", "5678", "5679")
            << QStringList{info(QStringLiteral("IDS_PIN_MSG_PIN_DIFFER"), kModifyDlg)}
            << QStringList{kModifyDlg} << QStringList() << "1234" << 0;
        QTest::newRow("wrong current PIN")
            << 3 << change("9999", "5678", "5678")
            << QStringList{info(QStringLiteral("IDS_PIN_CHANGE_FAILED"), kModifyDlg)}
            << QStringList{kModifyDlg} << QStringList() << "1234" << 1;
        QTest::newRow("wrong current PIN on the last attempt: PUK")
            << 1 << change("9999", "5678", "5678")
            << QStringList{info(QStringLiteral("IDS_PIN_CHANGE_FAILED"), kModifyDlg)} << QStringList{kPukDlg}
            << QStringList{bc(579)} << "1234" << 1;
    }
    void changePin()
    {
        QFETCH(int, attempts);
        QFETCH(Entries, entries);
        QFETCH(QStringList, shown);
        QFETCH(QStringList, dialogs);
        QFETCH(QStringList, notifications);
        QFETCH(QString, pinAfter);
        QFETCH(int, changeCalls);
        pinOn(attempts);
        start();
        m_service->ModifyPIN();
        QCOMPARE(openDialogs(), QStringList{kModifyDlg});
        SimDlg* dlg = dialog(kModifyDlg);
        QCOMPARE(dlg->size(), QSize(300, 200));
        QCOMPARE(dlg->windowTitle(), QStringLiteral("IDS_MAINFRM_PIN_CHANGE_WINDOWSTXT"));
        QCOMPARE(labelText(kModifyDlg, QStringLiteral("DeviceMgrUI_labelModTimes")),
                 QStringLiteral("IDS_MAINFRM_PIN_REMAIN_PROMPT%1").arg(attempts));
        QCOMPARE(labelText(kModifyDlg, QStringLiteral("DeviceMgrUI_labelCurrPIN")),
                 QStringLiteral("IDS_MAINFRM_INPUT_OLD_PIN_PROMPT"));
        QCOMPARE(field(kModifyDlg, QStringLiteral("DeviceMgrUI_editNewPINText"))->size(), QSize(105, 20));
        QVERIFY(child<QWidget>(kModifyDlg, QStringLiteral("DeviceMgrUI_widgetModifyDlg")));

        enter(kModifyDlg, entries);
        click(button(kModifyDlg, QStringLiteral("DeviceMgrUI_buttonModOK")));
        QCOMPARE(messages(), shown);
        QCOMPARE(openDialogs(), dialogs);
        QCOMPARE(svc::sent(), notifications);
        QCOMPARE(QString::fromStdString(activeDevice().sim.pin), pinAfter);
        QCOMPARE(svc::callCount("ZELK_DevSrv_ChangePin"), changeCalls);
        if (dialogs == QStringList{kModifyDlg}) {
            const auto fields = dialog(kModifyDlg)->findChildren<QLineEdit*>();
            for (QLineEdit* f : fields)
                QCOMPARE(f->text(), QString());
            QVERIFY(!okButton(kModifyDlg)->isEnabled());
        }
    }

    // ---- one dialog at a time --------------------------------------------------------------------

    void checkPinLeavesAnActiveDialogAlone_data()
    {
        QTest::addColumn<QString>("which");
        QTest::addColumn<QString>("fieldName");
        QTest::newRow("PIN dialog") << "enable"
                                    << "";
        QTest::newRow("PUK dialog") << "puk"
                                    << "DeviceMgrUI_editPUKText";
    }
    void checkPinLeavesAnActiveDialogAlone()
    {
        QFETCH(QString, which);
        QFETCH(QString, fieldName);
        const QString name = open(which);
        type(field(name, fieldName), QStringLiteral("12"));
        QTRY_VERIFY(dialog(name)->isActiveWindow());
        zelk::sim::clearCalls();
        HostFramework::clearNotificationRecords();
        m_service->checkPIN();
        QCOMPARE(svc::callCount("ZELK_DevSrv_GetPinStatus"), 0);
        QCOMPARE(openDialogs(), QStringList{name});
        QCOMPARE(field(name, fieldName)->text(), QStringLiteral("12"));
        QCOMPARE(svc::sent(), QStringList());
    }

    // ---- language --------------------------------------------------------------------------------

    void languageChangeRetranslatesEveryDialog_data()
    {
        QTest::addColumn<QString>("which");
        QTest::addColumn<QString>("titleKey");
        QTest::addColumn<QString>("labelName");
        QTest::addColumn<QString>("labelText");
        QTest::newRow("enable") << "enable"
                                << "IDS_MAINFRM_ENABLE_WINDOWSTXT"
                                << "DeviceMgrUI_m_plabelPINTimes"
                                << "IDS_MAINFRM_PIN_REMAIN_PROMPT|3";
        QTest::newRow("unlock code") << "cardlock"
                                     << "IDS_MAINFRM_CARDLOCKDLG_CAPTION"
                                     << "DeviceMgrUI_m_plabelPINTimes"
                                     << "IDS_MAINFRM_PIN_REMAIN_PROMPT|5";
        QTest::newRow("PUK") << "puk"
                             << "IDS_MAINFRM_PIN_UNLOCK_WINDOWSTXT"
                             << "DeviceMgrUI_labelPUK"
                             << "IDS_MAINFRM_INPUT_PUK_PROMPT|";
        QTest::newRow("change") << "change"
                                << "IDS_MAINFRM_PIN_CHANGE_WINDOWSTXT"
                                << "DeviceMgrUI_labelConfirmPIN"
                                << "IDS_MAINFRM_INPUT_NEW_PIN_PROMPT2|";
    }
    void languageChangeRetranslatesEveryDialog()
    {
        QFETCH(QString, which);
        QFETCH(QString, titleKey);
        QFETCH(QString, labelName);
        QFETCH(QString, labelText);
        const QString name = open(which);
        QCOMPARE(dialog(name)->windowTitle(), titleKey);
        QVERIFY(Change::LoadLanguage(QStringLiteral("de")));
        m_service->Notify(NTF_LANGUAGE_CHANGED, 0, 0);
        QCOMPARE(dialog(name)->windowTitle(), Change::tr(titleKey));
        QVERIFY(dialog(name)->windowTitle() != titleKey);
        const QString key = labelText.section(QLatin1Char('|'), 0, 0);
        QCOMPARE(simtest::labelText(name, labelName),
                 Change::tr(key) + labelText.section(QLatin1Char('|'), 1));
        QVERIFY(button(name, Change::tr(QStringLiteral("IDS_MAINFRM_CANCEL_PROMPT"))));
    }
};

QTEST_MAIN(tst_SimPinDialogs)
#include "tst_simpindialogs.moc"
