// The SIM dialogs as the user meets them, driven through the simulated card: which dialog the
// start-up check opens for which SIM, what typing a code into each dialog does (messages, the next
// dialog, what the other plugins hear, the SDK calls), the question before an entry is abandoned, the
// code field (digits only, nothing cut or copied out), dialogs side by side, language changes, and the
// card's network lock by the operator's setting. Then regressions met by users and other plugins.
#include "SimTestSupport.h"

#include <QtCore/QSettings>
#include <QtCore/QTimer>
#include <QtWidgets/QAction>
#include <QtWidgets/QPushButton>

#include <functional>

using namespace simtest;
using svc::bc;

namespace {

// "field=text" entries: the field's object name, empty for the dialog's only code field.
using Entries = QStringList;

Entries puk(const QString& code, const QString& newPin, const QString& confirm)
{
    return {QStringLiteral("DeviceMgrUI_editPUKText=") + code,
            QStringLiteral("DeviceMgrUI_editPUKPINText=") + newPin,
            QStringLiteral("DeviceMgrUI_editConfirmPUKPINText=") + confirm};
}

Entries change(const QString& current, const QString& newPin, const QString& confirm)
{
    return {QStringLiteral("DeviceMgrUI_editCurrPINText=") + current,
            QStringLiteral("DeviceMgrUI_editNewPINText=") + newPin,
            QStringLiteral("DeviceMgrUI_editConfirmNewPINText=") + confirm};
}

// One code typed into one dialog and OK pressed: what the user, the other plugins and the card see.
struct Submit
{
    QString which; // the dialog, see open()
    int attempts;  // attempts left of the code it asks for
    Entries entries;
    QStringList shown;
    QStringList dialogs;
    QStringList notifications;
    int calls = 1;             // calls of the dialog's SDK function
    QString label = QString(); // the attempts label of the dialog left on screen, when checked
    bool cleared = true;       // the dialog left on screen is emptied, its OK off; else the entry is kept
    std::function<void()> before = {}; // how the card answers differently, set up before OK
};

// Set-up of a Submit: `function` answers a plain failure (the count cannot be read), and with
// `statusToo` the SIM's status cannot be read either.
std::function<void()> plainFailure(const char* function, bool statusToo = false)
{
    return [=] {
        zelk::sim::forceResult(function, 1, ZELK_ERROR_FAILURE);
        if (statusToo)
            zelk::sim::failNext("ZELK_DevSrv_GetPinStatus");
    };
}

QString attemptsLabel(const QString& dialogName)
{
    static const QMap<QString, QString> labels{{kVerifyDlg, "DeviceMgrUI_VerifyPINTimes"},
                                               {kPukDlg, "DeviceMgrUI_labelPUKTimes"},
                                               {kModifyDlg, "DeviceMgrUI_labelModTimes"},
                                               {kPinDlg, "DeviceMgrUI_m_plabelPINTimes"}};
    return labels.value(dialogName);
}

const QString kCardBlockedFallback =
    QStringLiteral("The Data card is permanently blocked. Please contact your Operator");

} // namespace

// An IDeviceMgr operation another plugin calls.
using Operation = void (IDeviceMgr::*)();

Q_DECLARE_METATYPE(Submit)
Q_DECLARE_METATYPE(Operation)

class tst_SimDialogs : public SimSuite
{
    Q_OBJECT

private:
    void customisation(const QString& value)
    {
        m_host.setSetting(QStringLiteral("support"), QStringLiteral("type"), value);
    }

    QString open(const QString& which, int attempts = -1)
    {
        return openSimDialog(m_service, which, attempts);
    }

    // One SIM dialog with each field holding a code that meets every rule.
    QString openTyped(const QString& which)
    {
        const QString name = open(which);
        const auto fields = window(name)->findChildren<QLineEdit*>();
        for (QLineEdit* f : fields)
            type(f, QStringLiteral("12345678"));
        return name;
    }

    void enter(const QString& dialogName, const Entries& entries)
    {
        for (const QString& entry : entries) {
            const QString name = entry.section(QLatin1Char('='), 0, 0);
            QLineEdit* f = field(dialogName, name);
            QVERIFY2(f, qPrintable(QStringLiteral("no field '%1' in %2").arg(name, dialogName)));
            type(f, entry.section(QLatin1Char('='), 1));
        }
    }

private slots:
    // ---- the start-up check ----------------------------------------------------------------------

    // What the start-up check opens for which SIM; before the frame, with the check suspended or when
    // the state cannot be read, nothing opens.
    void startupCheck_data()
    {
        QTest::addColumn<QString>("why"); // of opening nothing: "frame", "suspended", "fails"
        QTest::addColumn<int>("pinAttempts");
        QTest::addColumn<int>("pukAttempts");
        QTest::addColumn<bool>("pinEnabled");
        QTest::addColumn<QStringList>("dialogs");
        QTest::addColumn<QStringList>("notifications");
        QTest::addColumn<int>("pinState");
        const QStringList none, notReady{bc(579)}, verify{kVerifyDlg};
        QTest::newRow("PIN asked: verification") << "" << 3 << 10 << true << verify << notReady << 1;
        QTest::newRow("PIN used up: PUK") << "" << 0 << 10 << true << QStringList{kPukDlg} << notReady << 4;
        QTest::newRow("PUK used up: message only") << "" << 0 << 0 << true << none << none << 5;
        QTest::newRow("no PIN, card usable: 578 once")
            << "" << 3 << 10 << false << none << QStringList{bc(578)} << 0;
        QTest::newRow("before the frame") << "frame" << 3 << 10 << true << none << none << 1;
        QTest::newRow("suspended") << "suspended" << 3 << 10 << true << none << none << 1;
        QTest::newRow("status read fails") << "fails" << 3 << 10 << true << none << none << 8;
    }
    void startupCheck()
    {
        QFETCH(QString, why);
        QFETCH(int, pinAttempts);
        QFETCH(int, pukAttempts);
        QFETCH(bool, pinEnabled);
        QFETCH(int, pinState);
        pinRequired(pinAttempts, pukAttempts);
        zelk::sim::Device d = activeDevice();
        d.sim.pinEnabled = pinEnabled;
        QVERIFY(zelk::sim::updateDevice(d));
        start(why != QLatin1String("frame"));
        m_service->setPinCheckSuspended(why == QLatin1String("suspended"));
        if (why == QLatin1String("fails"))
            zelk::sim::failNext("ZELK_DevSrv_GetPinStatus");
        QVERIFY(startupPinCheck());
        QTEST(openDialogs(), "dialogs");
        QTEST(svc::sent(), "notifications");
        QCOMPARE(m_service->isValidPinState(), pinState == 0);
        QCOMPARE(m_service->pinState(), pinState);
        // The platform asks for no WWAN wait: no thread, no poll.
        QVERIFY(!m_service->win7Thread());
        QCOMPARE(svc::callCount("ZELK_DevSrv_IsWWanReady"), 0);
        if (pinState == DEVMGR_PIN_BLOCKED)
            QCOMPARE(messages(), QStringList{info(QStringLiteral("IDS_PIN_SIM_LOCKED"), "TestMainWindow")});
        else
            QCOMPARE(messages(), QStringList());
        // The host's SIM, radio and device menu items were refreshed by the check that read the state.
        QCOMPARE(HostFramework::mainMenuService()->deviceRefreshCount() >= 1, why != QLatin1String("fails"));
    }

    // Given to the dispatch directly: states that name a job of the device and states met before the
    // frame open no dialog; ready with the card locked to another network, the SIM is not usable yet.
    void dispatchWithoutDialog_data()
    {
        QTest::addColumn<bool>("frameShown");
        QTest::addColumn<int>("state");
        QTest::addColumn<int>("cardLock");
        QTest::addColumn<QStringList>("notifications");
        QTest::addColumn<bool>("validPinState");
        QTest::newRow("2 enable") << true << 2 << 2 << QStringList() << false;
        QTest::newRow("before the frame: PIN asked") << false << 1 << 2 << QStringList{bc(579)} << false;
        QTest::newRow("before the frame: ready") << false << 0 << 2 << QStringList{bc(578)} << true;
        QTest::newRow("ready, card locked") << true << 0 << 1 << QStringList{bc(579)} << true;
    }
    void dispatchWithoutDialog()
    {
        QFETCH(bool, frameShown);
        QFETCH(int, state);
        QFETCH(int, cardLock);
        customisation(QStringLiteral("2"));
        simtest::cardLock(cardLock);
        start(frameShown);
        m_service->launchPinDlg(static_cast<E_DEVMGR_PIN_STATE>(state));
        QCOMPARE(openDialogs(), QStringList());
        QTEST(svc::sent(), "notifications");
        QTEST(m_service->isValidPinState(), "validPinState");
        QCOMPARE(messages(), QStringList());
        if (state == DEVMGR_PIN_READY)
            QCOMPARE(m_service->cardState(), cardLock);
        QCOMPARE(m_service->IsValidSim(), cardLock == 2 && state == 0);
    }

    // ---- typing a code ---------------------------------------------------------------------------

    // OK is on, and the default button, only once every field holds enough digits. Over fields the
    // window system emptied (minimised and restored) it is off again, and not even a stray OK (Return
    // on a default button) sends the empty code.
    void okFollowsTheEntry_data()
    {
        QTest::addColumn<QString>("which");
        QTest::addColumn<Entries>("entries");
        QTest::addColumn<bool>("enabled");
        QTest::newRow("verify, 3 digits") << "verify" << Entries{"=123"} << false;
        QTest::newRow("verify, 4 digits") << "verify" << Entries{"=1234"} << true;
        QTest::newRow("unlock code, 7 digits") << "cardlock" << Entries{"=1234567"} << false;
        QTest::newRow("unlock code, 8 digits") << "cardlock" << Entries{"=12345678"} << true;
        QTest::newRow("PUK, confirmation of 3") << "puk" << puk("12345678", "1234", "123") << false;
        QTest::newRow("PUK complete") << "puk" << puk("12345678", "1234", "1234") << true;
        QTest::newRow("change complete") << "change" << change("1234", "5678", "5678") << true;
    }
    void okFollowsTheEntry()
    {
        QFETCH(QString, which);
        QFETCH(Entries, entries);
        QFETCH(bool, enabled);
        static const QMap<QString, const char*> okSlots{{"verify", "onVerifyPINOkButtonClicked"},
                                                        {"puk", "onPUKOkButtonClicked"},
                                                        {"change", "onModOkButtonClicked"}};
        const QString name = open(which);
        QCOMPARE(openDialogs(), QStringList{name});
        auto* ok = qobject_cast<QPushButton*>(okButton(name));
        QVERIFY(ok && !ok->isEnabled());
        enter(name, entries);
        QCOMPARE(ok->isEnabled(), enabled);
        QCOMPARE(ok->isDefault(), enabled);
        SimDlg* dlg = dialog(name);
        dlg->hide();
        dlg->show();
        QCOMPARE(field(name)->text(), QString());
        QVERIFY(!ok->isEnabled());
        HostFramework::clearMessageRecords();
        QVERIFY(QMetaObject::invokeMethod(m_service, okSlots.value(which, "onPINOkButtonClicked")));
        QCOMPARE(svc::callCount(jobFunction(which)), 0);
        QCOMPARE(messages(), QStringList());
        QCOMPARE(openDialogs(), QStringList{name});
    }

    void submit_data()
    {
        QTest::addColumn<Submit>("s");
        const auto row = [](const char* name, const Submit& s) { QTest::newRow(name) << s; };
        const auto at = [](const char* key, const QString& parent = QStringLiteral("-")) {
            return info(QLatin1String(key), parent);
        };
        const QString V = kVerifyDlg, P = kPinDlg, U = kPukDlg, M = kModifyDlg,
                      main = QStringLiteral("TestMainWindow");
        const QString checkFailed =
            info(QStringLiteral("IDS_PIN_CHECK_FAILED"), V, QStringLiteral("ShowMessageCustomize"));
        const QString locked = at("IDS_PIN_PIN_LOCKED", P),
                      left2 = QStringLiteral("IDS_MAINFRM_PIN_REMAIN_PROMPT2");
        const QString unknown = QStringLiteral("IDS_MAINFRM_UNKNOWN"),
                      pukLeft10 = QStringLiteral("IDS_MAINFRM_PUK_REMAIN_PROMPT10");
        const QString right = QStringLiteral("=1234"), wrong = QStringLiteral("=4321");
        const Entries goodPuk = puk("12345678", "4321", "4321"), badPuk = puk("87654321", "4321", "4321");
        const Entries goodChange = change("1234", "5678", "5678"), badChange = change("9999", "5678", "5678");
        row("verify, right PIN", {"verify", 3, {right}, {}, {}, {bc(578)}});
        row("verify, wrong PIN", {"verify", 3, {wrong}, {checkFailed}, {V}, {}, 1, left2});
        row("verify, last attempt wrong: PUK", {"verify", 1, {wrong}, {checkFailed}, {U}, {}, 1, pukLeft10});
        row("verify, count unknown: the dialog stays",
            {"verify", 3, {wrong}, {}, {V}, {}, 1, unknown, true, plainFailure("ZELK_DevSrv_VerifyPin")});
        row("enable, right PIN", {"enable", 3, {right}, {at("IDS_MAINFRM_ENABLEPIN_SUCCESS", main)}, {}, {}});
        row("enable, wrong PIN", {"enable", 3, {wrong}, {at("IDS_PIN_ENABLE_FAILED", P)}, {P}, {}, 1, left2});
        // A failure whose count cannot be read closes the dialog without a message.
        row("enable, count unknown: closed silently",
            {"enable", 3, {wrong}, {}, {}, {}, 1, "", true, plainFailure("ZELK_DevSrv_EnablePin", true)});
        row("enable, last attempt wrong: PUK",
            {"enable", 1, {wrong}, {locked, at("IDS_PIN_ENABLE_FAILED", P)}, {U}, {bc(579)}});
        row("disable, right PIN",
            {"disable", 3, {right}, {at("IDS_MAINFRM_DISABLEPIN_SUCCESS", main)}, {}, {}});
        // Differing new PINs never reach the SIM; the PUK dialog leaves the entry to be corrected.
        const Entries differ = puk("12345678", "1111", "2222");
        row("PUK, new PINs differ",
            {"puk", 10, differ, {at("IDS_PIN_MSG_PIN_DIFFER", U)}, {U}, {}, 0, pukLeft10, false});
        row("PUK, right", {"puk", 10, goodPuk, {at("IDS_MAINFRM_UNLOCKPIN_SUCCESS")}, {}, {bc(578)}});
        row("PUK, wrong",
            {"puk", 10, badPuk, {at("IDS_PIN_PUK_FAILED", U)}, {U}, {}, 1, "IDS_MAINFRM_PUK_REMAIN_PROMPT9"});
        // Without a translation loaded the refusal still reads in English.
        const QString refused = QStringLiteral("This method is not allowed for calling process privileges. "
                                               "Please use system's WWAN UI to unblock the PIN");
        const auto noUnblock = [] {
            zelk::sim::Device d = activeDevice();
            d.sim.unblockAllowed = false;
            zelk::sim::updateDevice(d);
        };
        row("PUK, refused to the caller",
            {"puk", 10, goodPuk, {info(refused)}, {}, {}, 1, "", true, noUnblock});
        row("PUK, last wrong: card blocked", {"puk", 1, badPuk, {at("IDS_MSG_CARD_BLOCKED")}, {}, {}});
        row("PUK, count unknown: emptied, the dialog stays",
            {"puk", 10, badPuk, {}, {U}, {}, 1, unknown, true, plainFailure("ZELK_DevSrv_UnblockPin")});
        row("change, right current PIN",
            {"change", 3, goodChange, {at("IDS_MAINFRM_CHANGEPIN_SUCCESS", main)}, {}, {}});
        row("change, new PINs differ: emptied",
            {"change", 3, change("1234", "5678", "5679"), {at("IDS_PIN_MSG_PIN_DIFFER", M)}, {M}, {}, 0});
        row("change, wrong current PIN", {"change", 3, badChange, {at("IDS_PIN_CHANGE_FAILED", M)}, {M}, {}});
        row("change, last attempt wrong: PUK",
            {"change", 1, badChange, {at("IDS_PIN_CHANGE_FAILED", M)}, {U}, {bc(579)}});
        // A call on the line refuses every code: the message, the dialog closed, nothing sent to the SIM.
        const auto onCall = [](unsigned int code) {
            return [code] { CDeviceMgrService::instance()->Notify(code, 0, 0); };
        };
        const auto calling = [](const QString& dialogName) {
            return QStringLiteral(
                       "ShowMessage 2 %1 | IDS_MAINFRM_PROMPT | IDS_PROMPT_CALLING_DISABLE | IDS_OK")
                .arg(dialogName);
        };
        const auto first = onCall(NTF_CALL_DLG_SHOWN_1), second = onCall(NTF_CALL_DLG_SHOWN_2);
        row("verify, on a call", {"verify", 3, {right}, {calling(V)}, {}, {}, 0, "", true, first});
        row("enable, on a call", {"enable", 3, {right}, {calling(P)}, {}, {}, 0, "", true, second});
        row("PUK, on a call", {"puk", 10, goodPuk, {calling(U)}, {}, {}, 0, "", true, second});
        row("change, on a call", {"change", 3, goodChange, {calling(M)}, {}, {}, 0, "", true, second});
        row("unlock code, right", {"cardlock", 5, {"=12345678"}, {}, {}, {bc(578)}});
        row("unlock code, wrong",
            {"cardlock", 5, {"=11112222"}, {}, {P}, {}, 1, "IDS_MAINFRM_PIN_REMAIN_PROMPT4"});
        row("unlock code, last attempt wrong",
            {"cardlock", 1, {"=11112222"}, {info(kCardBlockedFallback, main)}, {}, {}});
    }
    void submit()
    {
        QFETCH(Submit, s);
        const QString name = open(s.which, s.attempts);
        QCOMPARE(openDialogs(), QStringList{name});
        HostFramework::clearNotificationRecords();
        zelk::sim::clearCalls();
        if (s.before)
            s.before();
        enter(name, s.entries);
        click(okButton(name));
        QCOMPARE(messages(), s.shown);
        QCOMPARE(openDialogs(), s.dialogs);
        QCOMPARE(svc::sent(), s.notifications);
        QCOMPARE(svc::callCount(jobFunction(s.which)), s.calls);
        if (s.which == QLatin1String("verify") || s.which == QLatin1String("puk"))
            QCOMPARE(m_service->isValidPinState(), s.notifications.contains(bc(578)));
        // The codes went to the card, and nowhere in clear.
        for (const auto& call : zelk::sim::calls())
            for (const std::string& arg : call.args)
                for (const QString& entry : s.entries)
                    QVERIFY2(!QString::fromStdString(arg).contains(entry.section(QLatin1Char('='), 1)),
                             arg.c_str());
        if (s.dialogs.isEmpty())
            return;
        const QString top = s.dialogs.first();
        if (!s.label.isEmpty())
            QCOMPARE(labelText(top, attemptsLabel(top)), s.label);
        // Ready for the next attempt: empty fields, OK off until enough digits are typed.
        QCOMPARE(okButton(top)->isEnabled(), !s.cleared);
        const auto fields = dialog(top)->findChildren<QLineEdit*>();
        for (QLineEdit* f : fields)
            QCOMPARE(f->text().isEmpty(), s.cleared);
    }

    // ---- leaving a dialog ------------------------------------------------------------------------

    // Cancel, the window's close button and Escape ask first; No keeps the dialog and the digits typed,
    // Yes leaves nothing typed behind. Enabling the PIN has nothing pending: Cancel just closes.
    void cancelAsksFirst_data()
    {
        QTest::addColumn<QString>("which");
        QTest::addColumn<QString>("how");
        QTest::addColumn<QString>("key"); // of the question; empty: none is asked
        QTest::addColumn<int>("answer");
        const auto row = [](const char* name, const char* which, const char* how, int answer,
                            const char* key = "IDS_MAINFRM_PIN_CANCELPROMPT") {
            QTest::newRow(name) << QString(which) << QString(how) << QString(key) << answer;
        };
        row("verify, No", "verify", "cancel", 0);
        row("unlock code, Yes", "cardlock", "cancel", 1024, "IDS_MAINFRM_CARDLOCKDLG_CANCELPROMPT");
        row("close button, Yes", "verify", "close", 1024);
        row("Escape, Yes", "verify", "escape", 1024);
        row("enable: no question", "enable", "cancel", 1024, "");
    }
    void cancelAsksFirst()
    {
        QFETCH(QString, which);
        QFETCH(QString, how);
        QFETCH(QString, key);
        QFETCH(int, answer);
        const QString name = open(which);
        zelk::sim::clearCalls();
        QPointer<QLineEdit> edit = field(name);
        type(edit, QStringLiteral("12"));
        if (!key.isEmpty())
            HostFramework::pushNextAnswer(answer);
        if (how == QLatin1String("close"))
            dialog(name)->close();
        else if (how == QLatin1String("escape"))
            QTest::keyClick(edit, Qt::Key_Escape);
        else
            click(button(name, QStringLiteral("IDS_MAINFRM_CANCEL_PROMPT")));
        QCOMPARE(messages(), key.isEmpty() ? QStringList() : QStringList{question(name, key)});
        QCOMPARE(openDialogs(), answer ? QStringList() : QStringList{name});
        QCOMPARE(svc::callCount(jobFunction(which)), 0);
        QVERIFY(!edit || edit->text() == (answer ? QString() : QStringLiteral("12")));
        if (!answer && name == kVerifyDlg)
            QTRY_VERIFY(edit->hasFocus());
    }

    void deviceSwitchOrRejectClosesTheDialog_data()
    {
        QTest::addColumn<int>("event");
        QTest::newRow("switch") << int(ZELK_EVENT_DEV_SWITCH);
        QTest::newRow("reject") << int(ZELK_EVENT_DEV_REJECT);
        QTest::newRow("SIM invalid") << int(ZELK_EVENT_DEV_SIM_INVALID);
    }
    void deviceSwitchOrRejectClosesTheDialog()
    {
        QFETCH(int, event);
        open(QStringLiteral("verify"));
        zelk::sim::clearCalls();
        QPointer<QLineEdit> pin = field(kVerifyDlg);
        type(pin, QStringLiteral("1234"));
        if (event == ZELK_EVENT_DEV_REJECT) {
            svc::injectList(event, 0);
            QVERIFY(svc::settle(svc::g_handled.load() + 1));
        } else {
            QVERIFY(handle(event));
        }
        QCOMPARE(openDialogs(), QStringList());
        // No question: the card, not the user, ended the entry; and the digits are gone.
        QCOMPARE(messages(), QStringList());
        QVERIFY(pin);
        QCOMPARE(pin->text(), QString());
        QCOMPARE(svc::callCount("ZELK_DevSrv_VerifyPin"), 0);
        // Closed by the program, it asks the user again the next time.
        m_service->VerifyPIN();
        HostFramework::pushNextAnswer(0);
        dialog(kVerifyDlg)->close();
        QCOMPARE(messages(), QStringList{question(kVerifyDlg)});
        QCOMPARE(openDialogs(), QStringList{kVerifyDlg});
    }

    // ---- dialogs side by side --------------------------------------------------------------------

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
        QVERIFY(dialog(kPukDlg));
        QCOMPARE(field(kPukDlg, QStringLiteral("DeviceMgrUI_editPUKText"))->text(), QString());
        QCOMPARE(svc::sent(), (QStringList{bc(579), bc(579)}));
    }

    void checkPinLeavesAnActiveDialogAlone_data()
    {
        QTest::addColumn<QString>("which");
        QTest::addColumn<QString>("fieldName");
        QTest::newRow("PIN dialog") << "enable" << QString();
        QTest::newRow("PUK dialog") << "puk" << QStringLiteral("DeviceMgrUI_editPUKText");
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

    // ---- language and privacy --------------------------------------------------------------------

    // Each dialog's title and labels follow the host's language notification; the count shown stays.
    void languageChangeRetranslatesEveryDialog_data()
    {
        QTest::addColumn<QStringList>("d"); // dialog, title key, label name, label key, what follows the text
        const QString left = QStringLiteral("IDS_MAINFRM_PIN_REMAIN_PROMPT");
        QTest::newRow("verify") << QStringList{"verify", "IDS_MAINFRM_PIN_VERIFY_WINDOWSTXT",
                                               "DeviceMgrUI_VerifyPINTimes", left, "3"};
        QTest::newRow("PUK") << QStringList{"puk", "IDS_MAINFRM_PIN_UNLOCK_WINDOWSTXT",
                                            "DeviceMgrUI_labelPUK", "IDS_MAINFRM_INPUT_PUK_PROMPT", ""};
    }
    void languageChangeRetranslatesEveryDialog()
    {
        QFETCH(QStringList, d);
        const QString name = open(d[0]);
        zelk::sim::clearCalls();
        QVERIFY(Change::LoadLanguage(QStringLiteral("de")));
        m_service->Notify(NTF_LANGUAGE_CHANGED, 0, 0);
        QCOMPARE(dialog(name)->windowTitle(), Change::tr(d[1]));
        QVERIFY(dialog(name)->windowTitle() != d[1]);
        QCOMPARE(labelText(name, d[2]), Change::tr(d[3]) + d[4]);
        QVERIFY(button(name, Change::tr(QStringLiteral("IDS_MAINFRM_CANCEL_PROMPT"))));
        // No new SDK reads: the count shown is the one already read.
        if (name == kVerifyDlg)
            QCOMPARE(svc::callCount("ZELK_DevSrv_GetPinStatus"), 0);
    }

    // Neither the Cut action, Ctrl+X (as the keyboard sends it and as synthesised) nor Copy takes the
    // code out, Undo does not bring a deleted one back, pasted letters are refused like typed ones, and
    // no code typed reaches the log.
    void codeNeverLeavesTheField()
    {
        open(QStringLiteral("verify"));
        // Digits that no time stamp or line number of the log would show by chance.
        zelk::sim::Device d = activeDevice();
        d.sim.pin = "8642";
        QVERIFY(zelk::sim::updateDevice(d));
        svc::startLogCapture();
        QLineEdit* pin = field(kVerifyDlg);
        const auto trigger = [pin](const char* action) { pin->findChild<QAction*>(action)->trigger(); };
        type(pin, QStringLiteral("12ab4321"));
        QCOMPARE(pin->text(), QStringLiteral("124321"));
        pin->selectAll();
        QTest::sendKeyEvent(QTest::Click, pin, Qt::Key_X, QString(QChar(0x18)), Qt::ControlModifier);
        QTest::keyClick(pin, Qt::Key_X, Qt::ControlModifier);
        trigger("DeviceMgrUI_VerifyCut");
        trigger("DeviceMgrUI_VerifyCopy");
        QTest::keyClick(pin, Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(pin->text(), QStringLiteral("124321"));
        QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("clipboard-before"));
        trigger("DeviceMgrUI_VerifySelectAll");
        trigger("DeviceMgrUI_VerifyDelete");
        trigger("DeviceMgrUI_VerifyUndo");
        QGuiApplication::clipboard()->setText(QStringLiteral("12ab"));
        trigger("DeviceMgrUI_VerifyPaste");
        QCOMPARE(pin->text(), QString());
        // A wrong code, then the right one.
        type(pin, QStringLiteral("4321"));
        click(okButton(kVerifyDlg));
        type(field(kVerifyDlg), QStringLiteral("8642"));
        click(okButton(kVerifyDlg));
        qInstallMessageHandler(nullptr);
        QCOMPARE(openDialogs(), QStringList());
        QCOMPARE(svc::logCount(QStringLiteral("4321")), 0);
        QCOMPARE(svc::logCount(QStringLiteral("8642")), 0);
        QVERIFY(svc::logCount(QStringLiteral("ZELK_DevSrv_VerifyPin")) > 0);
    }

    // ---- the card's network lock -----------------------------------------------------------------

    void cardLockByCustomisation_data()
    {
        QTest::addColumn<QString>("setting");
        QTest::addColumn<int>("lockState");
        QTest::addColumn<QStringList>("dialogs");
        QTest::addColumn<QStringList>("shown");
        const QStringList deadlock{info(QStringLiteral("IDS_CARDLOCKDLG_DEADLOCK"))};
        QTest::newRow("support unlock, locked: code entry")
            << "0" << 1 << QStringList{kPinDlg} << QStringList();
        QTest::newRow("support unlock, locked for good: reminder") << "0" << 3 << QStringList() << deadlock;
        QTest::newRow("no reminder") << "2" << 1 << QStringList() << QStringList();
        QTest::newRow("card usable: nothing, whatever the setting")
            << "0" << 2 << QStringList() << QStringList();
    }
    void cardLockByCustomisation()
    {
        QFETCH(QString, setting);
        QFETCH(int, lockState);
        customisation(setting);
        cardLock(lockState);
        start();
        QVERIFY(handle(ZELK_EVENT_DEV_CARD_LOCK));
        QTEST(openDialogs(), "dialogs");
        QTEST(messages(), "shown");
        QCOMPARE(m_service->cardState(), lockState);
        QCOMPARE(svc::sent(), QStringList());
    }

    // The card word of the network-lock message: the product type's, or the user's own.
    void cardWordInNetworkLockMessage_data()
    {
        QTest::addColumn<int>("productType");
        QTest::addColumn<QString>("setting"); // "-": none in the user's settings file
        QTest::addColumn<QString>("word");
        // clang-format off
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
        customisation(QStringLiteral("1"));
        zelk::sim::Device d = activeDevice();
        d.productType = productType;
        d.cardLock.state = 1;
        QVERIFY(zelk::sim::updateDevice(d));
        QVERIFY(Change::LoadLanguage(QStringLiteral("en")));
        start();
        QVERIFY(handle(ZELK_EVENT_DEV_CARD_LOCK));
        const auto boxes = HostFramework::messageRecords();
        QCOMPARE(boxes.size(), 1);
        QCOMPARE(boxes.first().text,
                 Change::tr(QStringLiteral("IDS_CARDLOCKDLG_DEADLOCK")).replace("%s", word));
    }

    // ---- regressions -----------------------------------------------------------------------------

    // Another plugin's IDeviceMgr call while a SIM dialog is open opens its own beside it.
    void deviceMgrOperationOverAnotherSimDialog_data()
    {
        QTest::addColumn<QString>("other");
        QTest::addColumn<Operation>("operation");
        QTest::addColumn<QString>("opened");
        QTest::addColumn<int>("job");
        QTest::newRow("EnablePIN over start-up") << "verify" << &IDeviceMgr::EnablePIN << kPinDlg << 2;
        QTest::newRow("DisablePIN over PUK") << "puk" << &IDeviceMgr::DisablePIN << kPinDlg << 3;
        QTest::newRow("ModifyPIN over unlock code")
            << "cardlock" << &IDeviceMgr::ModifyPIN << kModifyDlg << 6;
        QTest::newRow("UnlockPIN over change") << "change" << &IDeviceMgr::UnlockPIN << kPukDlg << 6;
        QTest::newRow("VerifyPIN over enable") << "enable" << &IDeviceMgr::VerifyPIN << kVerifyDlg << 2;
    }
    void deviceMgrOperationOverAnotherSimDialog()
    {
        QFETCH(QString, other);
        QFETCH(Operation, operation);
        QFETCH(QString, opened);
        const QString name = openTyped(other);
        IDeviceMgr* api = m_service;
        (api->*operation)();
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
        QCOMPARE(messages(), QStringList{question(opened)});
        QCOMPARE(openDialogs(), both);
    }

    // The last PIN attempt fails where the switch to the PUK cannot be made: the PIN dialog stays.
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

    // A scenario file's number beyond 64 bits is named as the file holds it; a negative one too, which
    // a check of the size alone would pass on to an overflowing cast.
    void scenarioNumberOutOfRangeNamesFileValue()
    {
        QString error;
        const QByteArray json = R"({ "devices": [ { "name": "M", "port": -2.5e30 } ] })";
        QVERIFY(!zelk::sim::loadScenarioText(json, QStringLiteral("x.json"), &error));
        QCOMPARE(error, QStringLiteral("x.json: devices[0].port: must be 0 to 2147483647 (got -2.5e+30)"));
    }

    // Kept last: ending the application's event loop is done once per process.
    void cardLockExitEndsTheApplication()
    {
        customisation(QStringLiteral("3"));
        cardLock(1);
        start();
        QTimer fallback;
        fallback.setSingleShot(true);
        connect(&fallback, &QTimer::timeout, [] { QCoreApplication::exit(99); });
        fallback.start(10000);
        QTimer::singleShot(0, this, [] { svc::inject(ZELK_EVENT_DEV_CARD_LOCK); });
        const int rc = QCoreApplication::exec();
        fallback.stop();
        QCOMPARE(rc, 0);
        QCOMPARE(messages(), QStringList{info(QStringLiteral("IDS_CARDLOCKDLG_FORCE_EXIT"))});
        QCOMPARE(openDialogs(), QStringList());
        QCOMPARE(svc::sent(), QStringList());
    }
};

QTEST_MAIN(tst_SimDialogs)
#include "tst_simdialogs.moc"
