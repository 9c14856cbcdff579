// The SIM dialogs as the user meets them, driven through the simulated card: which dialog the start-up
// check opens for which SIM, what typing a code into each dialog does (messages, the next dialog,
// what the other plugins hear, the SDK calls), the card's network lock by the operator's setting,
// one dialog at a time, the question before an entry is abandoned, and language changes.
#include "SimTestSupport.h"

#include "Change.h"
#include "HostFixture.h"

#include <QtCore/QTimer>
#include <QtGui/QClipboard>
#include <QtWidgets/QAction>
#include <QtWidgets/QPushButton>

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
    QString forced; // SDK function that answers a plain failure (the count cannot be read), or empty
    QStringList shown;
    QStringList dialogs;
    QStringList notifications;
    int calls;     // calls of the dialog's SDK function
    QString label; // the attempts label of the dialog left on screen, when checked
    bool cleared;  // the dialog left on screen is emptied, its OK off; else the entry is kept
};

const char* jobFunction(const QString& which)
{
    if (which == QLatin1String("verify"))
        return "ZELK_DevSrv_VerifyPin";
    if (which == QLatin1String("enable"))
        return "ZELK_DevSrv_EnablePin";
    if (which == QLatin1String("disable"))
        return "ZELK_DevSrv_DisablePin";
    if (which == QLatin1String("puk"))
        return "ZELK_DevSrv_UnblockPin";
    if (which == QLatin1String("change"))
        return "ZELK_DevSrv_ChangePin";
    return "ZELK_DevSrv_VerifyCardLock";
}

QString attemptsLabel(const QString& dialogName)
{
    if (dialogName == kVerifyDlg)
        return QStringLiteral("DeviceMgrUI_VerifyPINTimes");
    if (dialogName == kPukDlg)
        return QStringLiteral("DeviceMgrUI_labelPUKTimes");
    if (dialogName == kModifyDlg)
        return QStringLiteral("DeviceMgrUI_labelModTimes");
    return QStringLiteral("DeviceMgrUI_m_plabelPINTimes");
}

const QString kCardBlockedFallback =
    QStringLiteral("The Data card is permanently blocked. Please contact your Operator");

} // namespace

Q_DECLARE_METATYPE(Submit)

class tst_SimDialogs : public QObject
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

    void pinOn(int attempts)
    {
        zelk::sim::Device d = activeDevice();
        d.sim.pinEnabled = true;
        d.sim.pinVerified = true;
        d.sim.pinAttempts = attempts;
        QVERIFY(zelk::sim::updateDevice(d));
    }

    void customisation(const QString& value)
    {
        m_host.setSetting(QStringLiteral("support"), QStringLiteral("type"), value);
    }

    // The card's lock event (6013), as the card sends it after the PIN step.
    bool lockEvent()
    {
        svc::inject(ZELK_EVENT_DEV_CARD_LOCK);
        return svc::settle(svc::g_handled.load() + 1);
    }

    // Brings up one SIM dialog the way the user meets it, `attempts` (-1: the card's default) left of
    // the code it asks for; returns its object name.
    QString open(const QString& which, int attempts = -1)
    {
        if (which == QLatin1String("verify") || which == QLatin1String("puk")) {
            const bool isPuk = which == QLatin1String("puk");
            pinRequired(isPuk ? 0 : (attempts < 0 ? 3 : attempts), isPuk && attempts >= 0 ? attempts : 10);
            start();
            startupPinCheck();
            return isPuk ? kPukDlg : kVerifyDlg;
        }
        if (which == QLatin1String("cardlock")) {
            customisation(QStringLiteral("0"));
            cardLock(1, attempts < 0 ? 5 : attempts);
            start();
            lockEvent();
            return kPinDlg;
        }
        if (which == QLatin1String("enable")) {
            zelk::sim::Device d = activeDevice();
            d.sim.pinAttempts = attempts < 0 ? 3 : attempts;
            zelk::sim::updateDevice(d);
            start();
            m_service->EnablePIN();
            return kPinDlg;
        }
        pinOn(attempts < 0 ? 3 : attempts);
        start();
        if (which == QLatin1String("disable")) {
            m_service->DisablePIN();
            return kPinDlg;
        }
        m_service->ModifyPIN();
        return kModifyDlg;
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

    // ---- the start-up check ----------------------------------------------------------------------

    void startupCheckOpensWhatTheSimAsksFor_data()
    {
        QTest::addColumn<int>("pinAttempts");
        QTest::addColumn<int>("pukAttempts");
        QTest::addColumn<bool>("pinEnabled");
        QTest::addColumn<QStringList>("dialogs");
        QTest::addColumn<QStringList>("notifications");
        QTest::addColumn<int>("pinState");
        QTest::newRow("PIN asked: verification")
            << 3 << 10 << true << QStringList{kVerifyDlg} << QStringList{bc(579)} << 1;
        QTest::newRow("PIN used up: PUK")
            << 0 << 10 << true << QStringList{kPukDlg} << QStringList{bc(579)} << 4;
        QTest::newRow("PUK used up: message only") << 0 << 0 << true << QStringList() << QStringList() << 5;
        QTest::newRow("no PIN, card usable: 578 once")
            << 3 << 10 << false << QStringList() << QStringList{bc(578)} << 0;
    }
    void startupCheckOpensWhatTheSimAsksFor()
    {
        QFETCH(int, pinAttempts);
        QFETCH(int, pukAttempts);
        QFETCH(bool, pinEnabled);
        QFETCH(QStringList, dialogs);
        QFETCH(QStringList, notifications);
        QFETCH(int, pinState);
        pinRequired(pinAttempts, pukAttempts);
        zelk::sim::Device d = activeDevice();
        d.sim.pinEnabled = pinEnabled;
        QVERIFY(zelk::sim::updateDevice(d));
        start();
        QVERIFY(startupPinCheck());
        QCOMPARE(openDialogs(), dialogs);
        QCOMPARE(svc::sent(), notifications);
        QCOMPARE(m_service->isValidPinState(), pinState == 0);
        QCOMPARE(m_service->pinState(), pinState);
        if (pinState == DEVMGR_PIN_BLOCKED)
            QCOMPARE(messages(), QStringList{info(QStringLiteral("IDS_PIN_SIM_LOCKED"), "TestMainWindow")});
        else
            QCOMPARE(messages(), QStringList());
        // The host's SIM, radio and device menu items were refreshed by the check.
        QVERIFY(HostFramework::mainMenuService()->deviceRefreshCount() >= 1);
    }

    // Before the frame, with the check suspended, or when the state cannot be read: nothing opens.
    void startupCheckShowsNothing_data()
    {
        QTest::addColumn<QString>("why");
        QTest::newRow("before the frame") << "frame";
        QTest::newRow("suspended") << "suspended";
        QTest::newRow("status read fails") << "fails";
    }
    void startupCheckShowsNothing()
    {
        QFETCH(QString, why);
        pinRequired();
        start(why != QLatin1String("frame"));
        if (why == QLatin1String("suspended"))
            m_service->setPinCheckSuspended(true);
        if (why == QLatin1String("fails"))
            zelk::sim::failNext("ZELK_DevSrv_GetPinStatus");
        QVERIFY(startupPinCheck());
        QCOMPARE(openDialogs(), QStringList());
        QCOMPARE(messages(), QStringList());
        if (why == QLatin1String("fails"))
            QCOMPARE(svc::sent(), QStringList());
        else
            QCOMPARE(m_service->pinState(), 1);
    }

    // States that name a job of the device, and states met before the frame, open no dialog.
    void dispatchWithoutDialog_data()
    {
        QTest::addColumn<bool>("frameShown");
        QTest::addColumn<int>("state");
        QTest::addColumn<QStringList>("notifications");
        QTest::addColumn<bool>("validPinState");
        QTest::newRow("2 enable") << true << 2 << QStringList() << false;
        QTest::newRow("before the frame: PIN asked") << false << 1 << QStringList{bc(579)} << false;
        QTest::newRow("before the frame: ready") << false << 0 << QStringList{bc(578)} << true;
    }
    void dispatchWithoutDialog()
    {
        QFETCH(bool, frameShown);
        QFETCH(int, state);
        QFETCH(QStringList, notifications);
        QFETCH(bool, validPinState);
        start(frameShown);
        m_service->launchPinDlg(static_cast<E_DEVMGR_PIN_STATE>(state));
        QCOMPARE(openDialogs(), QStringList());
        QCOMPARE(svc::sent(), notifications);
        QCOMPARE(m_service->isValidPinState(), validPinState);
        QCOMPARE(messages(), QStringList());
    }

    // ---- typing a code ---------------------------------------------------------------------------

    void okEnablement_data()
    {
        QTest::addColumn<QString>("which");
        QTest::addColumn<Entries>("entries");
        QTest::addColumn<bool>("enabled");
        QTest::newRow("verify, 3 digits") << "verify" << Entries{"=123"} << false;
        QTest::newRow("enable, 4 digits") << "enable" << Entries{"=1234"} << true;
        QTest::newRow("unlock code, 7 digits") << "cardlock" << Entries{"=1234567"} << false;
        QTest::newRow("unlock code, 8 digits") << "cardlock" << Entries{"=12345678"} << true;
        QTest::newRow("PUK, confirmation of 3") << "puk" << puk("12345678", "1234", "123") << false;
        QTest::newRow("PUK complete") << "puk" << puk("12345678", "1234", "1234") << true;
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

    void submit_data()
    {
        QTest::addColumn<Submit>("s");
        const QString main = QStringLiteral("TestMainWindow");
        const QStringList none;
        const QString verifyFailed =
            info(QStringLiteral("IDS_PIN_CHECK_FAILED"), kVerifyDlg, QStringLiteral("ShowMessageCustomize"));
        const QString locked = info(QStringLiteral("IDS_PIN_PIN_LOCKED"), kPinDlg);
        const QString pinLeft2 = QStringLiteral("IDS_MAINFRM_PIN_REMAIN_PROMPT2");
        const QString unknown = QStringLiteral("IDS_MAINFRM_UNKNOWN");
        const QString right = QStringLiteral("=1234"), wrong = QStringLiteral("=4321");
        const Entries goodPuk = puk("12345678", "4321", "4321"), badPuk = puk("87654321", "4321", "4321");
        QTest::newRow("verify, right PIN")
            << Submit{"verify", 3, {right}, "", none, none, {bc(578)}, 1, "", true};
        QTest::newRow("verify, wrong PIN")
            << Submit{"verify", 3, {wrong}, "", {verifyFailed}, {kVerifyDlg}, none, 1, pinLeft2, true};
        QTest::newRow("verify, last attempt wrong: PUK") << Submit{
            "verify", 1, {wrong}, "", {verifyFailed}, {kPukDlg}, none, 1, "IDS_MAINFRM_PUK_REMAIN_PROMPT10",
            true};
        QTest::newRow("verify, count unknown: no message, the dialog stays") << Submit{
            "verify", 3, {wrong}, "ZELK_DevSrv_VerifyPin", none, {kVerifyDlg}, none, 1, unknown, true};
        QTest::newRow("enable, right PIN") << Submit{
            "enable", 3, {right}, "", {info("IDS_MAINFRM_ENABLEPIN_SUCCESS", main)}, none, none, 1, "", true};
        QTest::newRow("enable, wrong PIN")
            << Submit{"enable",  3,    {wrong}, "",       {info("IDS_PIN_ENABLE_FAILED", kPinDlg)},
                      {kPinDlg}, none, 1,       pinLeft2, true};
        QTest::newRow("enable, last attempt wrong: PUK")
            << Submit{"enable",  1,         {wrong}, "", {locked, info("IDS_PIN_ENABLE_FAILED", kPinDlg)},
                      {kPukDlg}, {bc(579)}, 1,       "", true};
        QTest::newRow("disable, right PIN")
            << Submit{"disable", 3,    {right}, "", {info("IDS_MAINFRM_DISABLEPIN_SUCCESS", main)},
                      none,      none, 1,       "", true};
        QTest::newRow("disable, wrong PIN")
            << Submit{"disable", 3,    {wrong}, "",       {info("IDS_PIN_DISABLE_FAILED", kPinDlg)},
                      {kPinDlg}, none, 1,       pinLeft2, true};
        QTest::newRow("disable, last attempt wrong: PUK")
            << Submit{"disable", 1,         {wrong}, "", {locked, info("IDS_PIN_DISABLE_FAILED", kPinDlg)},
                      {kPukDlg}, {bc(579)}, 1,       "", true};
        // Differing new PINs never reach the SIM and leave the entry for the user to correct.
        QTest::newRow("PUK, new PINs differ") << Submit{"puk",
                                                        10,
                                                        puk("12345678", "1111", "2222"),
                                                        "",
                                                        {info("IDS_PIN_MSG_PIN_DIFFER", kPukDlg)},
                                                        {kPukDlg},
                                                        none,
                                                        0,
                                                        "IDS_MAINFRM_PUK_REMAIN_PROMPT10",
                                                        false};
        QTest::newRow("PUK, right") << Submit{
            "puk", 10, goodPuk, "", {info("IDS_MAINFRM_UNLOCKPIN_SUCCESS")}, none, {bc(578)}, 1, "", true};
        QTest::newRow("PUK, wrong") << Submit{"puk",
                                              10,
                                              badPuk,
                                              "",
                                              {info("IDS_PIN_PUK_FAILED", kPukDlg)},
                                              {kPukDlg},
                                              none,
                                              1,
                                              "IDS_MAINFRM_PUK_REMAIN_PROMPT9",
                                              true};
        QTest::newRow("PUK, last wrong: card blocked")
            << Submit{"puk", 1, badPuk, "", {info("IDS_MSG_CARD_BLOCKED")}, none, none, 1, "", true};
        QTest::newRow("PUK, count unknown: emptied, the dialog stays")
            << Submit{"puk", 10, badPuk, "ZELK_DevSrv_UnblockPin", none, {kPukDlg}, none, 1, unknown, true};
        QTest::newRow("change, right current PIN") << Submit{"change",
                                                             3,
                                                             change("1234", "5678", "5678"),
                                                             "",
                                                             {info("IDS_MAINFRM_CHANGEPIN_SUCCESS", main)},
                                                             none,
                                                             none,
                                                             1,
                                                             "",
                                                             true};
        QTest::newRow("change, new PINs differ: emptied")
            << Submit{"change",
                      3,
                      change("1234", "5678", "5679"),
                      "",
                      {info("IDS_PIN_MSG_PIN_DIFFER", kModifyDlg)},
                      {kModifyDlg},
                      none,
                      0,
                      "",
                      true};
        QTest::newRow("change, wrong current PIN") << Submit{"change",
                                                             3,
                                                             change("9999", "5678", "5678"),
                                                             "",
                                                             {info("IDS_PIN_CHANGE_FAILED", kModifyDlg)},
                                                             {kModifyDlg},
                                                             none,
                                                             1,
                                                             "",
                                                             true};
        QTest::newRow("change, last attempt wrong: PUK")
            << Submit{"change",
                      1,
                      change("9999", "5678", "5678"),
                      "",
                      {info("IDS_PIN_CHANGE_FAILED", kModifyDlg)},
                      {kPukDlg},
                      {bc(579)},
                      1,
                      "",
                      true};
        QTest::newRow("unlock code, right")
            << Submit{"cardlock", 5, {"=12345678"}, "", none, none, {bc(578)}, 1, "", true};
        QTest::newRow("unlock code, wrong") << Submit{
            "cardlock", 5, {"=11112222"}, "", none, {kPinDlg}, none, 1, "IDS_MAINFRM_PIN_REMAIN_PROMPT4",
            true};
        QTest::newRow("unlock code, last attempt wrong: built-in text") << Submit{
            "cardlock", 1, {"=11112222"}, "", {info(kCardBlockedFallback, main)}, none, none, 1, "", true};
    }
    void submit()
    {
        QFETCH(Submit, s);
        const QString name = open(s.which, s.attempts);
        QCOMPARE(openDialogs(), QStringList{name});
        HostFramework::clearNotificationRecords();
        zelk::sim::clearCalls();
        if (!s.forced.isEmpty())
            zelk::sim::forceResult(s.forced.toStdString(), 1, ZELK_ERROR_FAILURE);
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

    // A failure whose count cannot be read closes the dialog without a message.
    void enableWithUnknownCountClosesSilently()
    {
        open(QStringLiteral("enable"));
        type(field(kPinDlg), QStringLiteral("9999"));
        zelk::sim::forceResult("ZELK_DevSrv_EnablePin", 1, ZELK_ERROR_FAILURE);
        zelk::sim::failNext("ZELK_DevSrv_GetPinStatus");
        click(okButton(kPinDlg));
        QCOMPARE(openDialogs(), QStringList());
        QCOMPARE(messages(), QStringList());
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

    // A call on the line refuses every code: the message, the dialog closed, nothing sent to the SIM.
    void callInProgressRefusesEveryDialog_data()
    {
        QTest::addColumn<QString>("which");
        QTest::addColumn<Entries>("entries");
        QTest::newRow("verify") << "verify" << Entries{"=1234"};
        QTest::newRow("enable") << "enable" << Entries{"=1234"};
        QTest::newRow("PUK") << "puk" << puk("12345678", "1234", "1234");
        QTest::newRow("change") << "change" << change("1234", "5678", "5678");
    }
    void callInProgressRefusesEveryDialog()
    {
        QFETCH(QString, which);
        QFETCH(Entries, entries);
        const QString name = open(which);
        enter(name, entries);
        HostFramework::clearMessageRecords();
        m_service->Notify(which == QLatin1String("verify") ? NTF_CALL_DLG_SHOWN_1 : NTF_CALL_DLG_SHOWN_2, 0,
                          0);
        click(okButton(name));
        QCOMPARE(messages(), QStringList{QStringLiteral("ShowMessage 2 %1 | IDS_MAINFRM_PROMPT | "
                                                        "IDS_PROMPT_CALLING_DISABLE | IDS_OK")
                                             .arg(name)});
        QCOMPARE(openDialogs(), QStringList());
        QCOMPARE(svc::callCount(jobFunction(which)), 0);
        if (which == QLatin1String("verify"))
            QVERIFY(!m_service->isValidPinState());
    }

    // ---- leaving a dialog ------------------------------------------------------------------------

    void cancelAsksFirst_data()
    {
        QTest::addColumn<QString>("which");
        QTest::addColumn<QString>("question");
        QTest::addColumn<int>("answer");
        QTest::newRow("verify, No keeps the dialog and its digits") << "verify"
                                                                    << "IDS_MAINFRM_PIN_CANCELPROMPT" << 0;
        QTest::newRow("verify, Yes abandons the entry") << "verify"
                                                        << "IDS_MAINFRM_PIN_CANCELPROMPT" << 1024;
        QTest::newRow("unlock code, No") << "cardlock"
                                         << "IDS_MAINFRM_CARDLOCKDLG_CANCELPROMPT" << 0;
        QTest::newRow("unlock code, Yes") << "cardlock"
                                          << "IDS_MAINFRM_CARDLOCKDLG_CANCELPROMPT" << 1024;
    }
    void cancelAsksFirst()
    {
        QFETCH(QString, which);
        QFETCH(QString, question);
        QFETCH(int, answer);
        const QString name = open(which);
        zelk::sim::clearCalls();
        type(field(name), QStringLiteral("12"));
        HostFramework::pushNextAnswer(answer);
        click(button(name, QStringLiteral("IDS_MAINFRM_CANCEL_PROMPT")));
        QCOMPARE(messages(),
                 QStringList{QStringLiteral("ShowMessage 4 %1 | IDS_MAINFRM_PROMPT | %2 | IDS_YES,IDS_NO")
                                 .arg(name, question)});
        QCOMPARE(openDialogs(), answer ? QStringList() : QStringList{name});
        QCOMPARE(svc::callCount(jobFunction(which)), 0);
        if (!answer)
            QCOMPARE(field(name)->text(), QStringLiteral("12"));
        if (!answer && name == kVerifyDlg)
            QTRY_VERIFY(field(name)->hasFocus());
    }

    void cancelOfEnableClosesWithoutAsking()
    {
        open(QStringLiteral("enable"));
        type(field(kPinDlg), QStringLiteral("12"));
        click(button(kPinDlg, QStringLiteral("IDS_MAINFRM_CANCEL_PROMPT")));
        QCOMPARE(openDialogs(), QStringList());
        QCOMPARE(messages(), QStringList());
        QCOMPARE(svc::callCount("ZELK_DevSrv_EnablePin"), 0);
        // Opened again, it starts empty.
        m_service->EnablePIN();
        QCOMPARE(field(kPinDlg)->text(), QString());
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
        open(QStringLiteral("verify"));
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

    // ---- one dialog at a time --------------------------------------------------------------------

    // Each switch to the PUK builds the dialog anew; the old one is deleted by the event loop.
    void pukDialogIsRebuiltOnEachUse()
    {
        start();
        m_service->EnablePIN();
        m_service->processPINPUK();
        QPointer<SimDlg> first = dialog(kPukDlg);
        QVERIFY(first);
        type(field(kPukDlg, QStringLiteral("DeviceMgrUI_editPUKText")), QStringLiteral("1234"));
        // A pending PUK entry comes first: the menu's Enable PIN brings it to the front instead.
        m_service->EnablePIN();
        QCOMPARE(openDialogs(), QStringList{kPukDlg});
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

    void menuWaitsForAPendingEntry_data()
    {
        QTest::addColumn<QString>("pending");
        QTest::newRow("verification") << "verify";
        QTest::newRow("unlock code") << "cardlock";
    }
    void menuWaitsForAPendingEntry()
    {
        QFETCH(QString, pending);
        const QString name = open(pending);
        type(field(name), QStringLiteral("12"));
        m_service->EnablePIN();
        m_service->DisablePIN();
        m_service->ModifyPIN();
        QCOMPARE(openDialogs(), QStringList{name});
        QCOMPARE(field(name)->text(), QStringLiteral("12"));
    }

    void anotherMenuDialogReplacesTheOpenOne()
    {
        pinOn(3);
        start();
        m_service->EnablePIN();
        type(field(kPinDlg), QStringLiteral("12"));
        QPointer<QLineEdit> pin = field(kPinDlg);
        m_service->ModifyPIN();
        QCOMPARE(openDialogs(), QStringList{kModifyDlg});
        QCOMPARE(pin->text(), QString());
        QCOMPARE(messages(), QStringList());
    }

    // ---- language and privacy --------------------------------------------------------------------

    void languageChangeRetranslatesEveryDialog_data()
    {
        QTest::addColumn<QString>("which");
        QTest::addColumn<QString>("titleKey");
        QTest::addColumn<QString>("labelName");
        QTest::addColumn<QString>("labelText");
        QTest::newRow("verify") << "verify"
                                << "IDS_MAINFRM_PIN_VERIFY_WINDOWSTXT"
                                << "DeviceMgrUI_VerifyPINTimes"
                                << "IDS_MAINFRM_PIN_REMAIN_PROMPT|3";
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
        zelk::sim::clearCalls();
        QVERIFY(Change::LoadLanguage(QStringLiteral("de")));
        m_service->Notify(NTF_LANGUAGE_CHANGED, 0, 0);
        QCOMPARE(dialog(name)->windowTitle(), Change::tr(titleKey));
        QVERIFY(dialog(name)->windowTitle() != titleKey);
        QCOMPARE(simtest::labelText(name, labelName), Change::tr(labelText.section(QLatin1Char('|'), 0, 0)) +
                                                          labelText.section(QLatin1Char('|'), 1));
        QVERIFY(button(name, Change::tr(QStringLiteral("IDS_MAINFRM_CANCEL_PROMPT"))));
        // No new SDK reads: the count shown is the one already read.
        if (which == QLatin1String("verify"))
            QCOMPARE(svc::callCount("ZELK_DevSrv_GetPinStatus"), 0);
    }

    void noCodeInLogsOrClipboard()
    {
        QGuiApplication::clipboard()->setText(QStringLiteral("before"));
        open(QStringLiteral("verify"));
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
        QFETCH(QStringList, dialogs);
        QFETCH(QStringList, shown);
        customisation(setting);
        cardLock(lockState);
        start();
        QVERIFY(lockEvent());
        QCOMPARE(openDialogs(), dialogs);
        QCOMPARE(messages(), shown);
        QCOMPARE(m_service->cardState(), lockState);
        QCOMPARE(svc::sent(), QStringList());
    }

    // The reminder names the card with the operator's word for it.
    void cardLockReminderNamesTheCard()
    {
        m_host.setSetting(QStringLiteral("customize"), QStringLiteral("simtype"), QStringLiteral("Nano SIM"));
        QVERIFY(Change::LoadLanguage(QStringLiteral("en")));
        customisation(QStringLiteral("1"));
        cardLock(1);
        start();
        QVERIFY(lockEvent());
        QString expected = Change::tr(QStringLiteral("IDS_CARDLOCKDLG_DEADLOCK"));
        QVERIFY(expected.contains(QLatin1String("%s")));
        expected.replace(QStringLiteral("%s"), QStringLiteral("Nano SIM"));
        const auto records = HostFramework::messageRecords();
        QCOMPARE(records.size(), 1);
        QCOMPARE(records.first().text, expected);
        QVERIFY(!records.first().parent);
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
