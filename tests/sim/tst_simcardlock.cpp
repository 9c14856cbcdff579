// The data card's network lock as the user meets it: by the operator's customisation a code entry, a
// reminder, silence, or the end of the application; and the unlock code typed into the PIN dialog.
#include "SimTestSupport.h"

#include "Change.h"
#include "HostFixture.h"

#include <QtCore/QTimer>

using namespace simtest;
using svc::bc;

namespace {

const QString kCardBlockedFallback =
    QStringLiteral("The Data card is permanently blocked. Please contact your Operator");

} // namespace

class tst_SimCardLock : public QObject
{
    Q_OBJECT

private:
    HostFixture m_host;
    CDeviceMgrService* m_service = nullptr;

    void customisation(const QString& value)
    {
        m_host.setSetting(QStringLiteral("support"), QStringLiteral("type"), value);
    }

    void start(bool frameShown = true)
    {
        m_service = startService(frameShown);
        QVERIFY(m_service);
    }

    // The card's lock event (6013), as the card sends it after the PIN step.
    bool lockEvent()
    {
        svc::inject(ZELK_EVENT_DEV_CARD_LOCK);
        return svc::settle(svc::g_handled.load() + 1);
    }

    void openUnlockDialog(int attempts)
    {
        customisation(QStringLiteral("0"));
        cardLock(1, attempts);
        start();
        QVERIFY(lockEvent());
        QCOMPARE(openDialogs(), QStringList{kPinDlg});
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
        m_host.setSetting(QStringLiteral("customize"), QStringLiteral("simtype"), QStringLiteral("Nano SIM"));
    }
    void cleanup()
    {
        svc::stopService();
        m_service = nullptr;
        Change::LoadLanguage(QStringLiteral("none"));
        QVERIFY2(m_host.endTest(), qPrintable(m_host.lastError()));
    }
    void cleanupTestCase() { m_host.shutdown(); }

    void byCustomisation_data()
    {
        QTest::addColumn<QString>("setting");
        QTest::addColumn<int>("lockState");
        QTest::addColumn<QStringList>("dialogs");
        QTest::addColumn<QStringList>("shown");
        const QStringList deadlock{info(QStringLiteral("IDS_CARDLOCKDLG_DEADLOCK"))};
        QTest::newRow("support unlock, locked: code entry")
            << "0" << 1 << QStringList{kPinDlg} << QStringList();
        QTest::newRow("support unlock, locked for good: reminder") << "0" << 3 << QStringList() << deadlock;
        QTest::newRow("only reminder") << "1" << 1 << QStringList() << deadlock;
        QTest::newRow("no reminder") << "2" << 1 << QStringList() << QStringList();
        QTest::newRow("card usable: nothing, whatever the setting")
            << "0" << 2 << QStringList() << QStringList();
        QTest::newRow("card usable with the exit setting: nothing")
            << "3" << 2 << QStringList() << QStringList();
    }
    void byCustomisation()
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

    void nothingBeforeTheFrame()
    {
        customisation(QStringLiteral("0"));
        cardLock(1);
        start(false);
        QVERIFY(lockEvent());
        QCOMPARE(openDialogs(), QStringList());
        QCOMPARE(messages(), QStringList());
    }

    void reminderNamesTheCard()
    {
        QVERIFY(Change::LoadLanguage(QStringLiteral("en")));
        customisation(QStringLiteral("1"));
        cardLock(1);
        start();
        QVERIFY(lockEvent());
        const auto records = HostFramework::messageRecords();
        QCOMPARE(records.size(), 1);
        QString expected = Change::tr(QStringLiteral("IDS_CARDLOCKDLG_DEADLOCK"));
        QVERIFY(expected.contains(QLatin1String("%s")));
        expected.replace(QStringLiteral("%s"), QStringLiteral("Nano SIM"));
        QCOMPARE(records.first().text, expected);
        QCOMPARE(records.first().icon, 1);
        QVERIFY(!records.first().parent);
    }

    void unlockDialogLooksAsDescribed()
    {
        openUnlockDialog(5);
        SimDlg* dlg = dialog(kPinDlg);
        QCOMPARE(dlg->windowTitle(), QStringLiteral("IDS_MAINFRM_CARDLOCKDLG_CAPTION"));
        QCOMPARE(dlg->size(), QSize(260, 170));
        QVERIFY(dlg->m_bAskOnClose);
        QCOMPARE(labelText(kPinDlg, QStringLiteral("DeviceMgrUI_m_plabelPINTimes")),
                 QStringLiteral("IDS_MAINFRM_PIN_REMAIN_PROMPT5"));
        QStringList labels;
        const auto all = dlg->findChildren<QLabel*>();
        for (QLabel* l : all)
            labels << l->text();
        QVERIFY2(labels.contains(QStringLiteral("IDS_MAINFRM_CARDLOCKDLG_INPUTPLEASE")),
                 qPrintable(labels.join('|')));
    }

    void typingTheUnlockCode_data()
    {
        QTest::addColumn<int>("attempts");
        QTest::addColumn<QString>("code");
        QTest::addColumn<QString>("language");
        QTest::addColumn<QStringList>("dialogs");
        QTest::addColumn<QStringList>("notifications");
        QTest::addColumn<int>("cardState");
        QTest::addColumn<QString>("shownText");
        QTest::newRow("right code") << 5 << "12345678"
                                    << "none" << QStringList() << QStringList{bc(578)} << 2 << QString();
        QTest::newRow("wrong code, attempts left")
            << 5 << "11112222"
            << "none" << QStringList{kPinDlg} << QStringList() << 1 << QString();
        QTest::newRow("wrong code on the last attempt: built-in text")
            << 1 << "11112222"
            << "none" << QStringList() << QStringList() << 1 << kCardBlockedFallback;
        QTest::newRow("wrong code on the last attempt: translated")
            << 1 << "11112222"
            << "en" << QStringList() << QStringList() << 1 << "IDS_MSG_CARD_BLOCKED";
    }
    void typingTheUnlockCode()
    {
        QFETCH(int, attempts);
        QFETCH(QString, code);
        QFETCH(QString, language);
        QFETCH(QStringList, dialogs);
        QFETCH(QStringList, notifications);
        QFETCH(int, cardState);
        QFETCH(QString, shownText);
        QVERIFY(Change::LoadLanguage(language));
        openUnlockDialog(attempts);
        HostFramework::clearNotificationRecords();
        type(field(kPinDlg), code);
        click(button(kPinDlg, Change::tr(QStringLiteral("IDS_MAINFRM_OK_PROMPT"))));
        QCOMPARE(openDialogs(), dialogs);
        QCOMPARE(svc::sent(), notifications);
        QCOMPARE(m_service->cardState(), cardState);
        QCOMPARE(svc::callCount("ZELK_DevSrv_VerifyCardLock"), 1);
        const auto records = HostFramework::messageRecords();
        if (shownText.isEmpty()) {
            QCOMPARE(records.size(), 0);
        } else {
            QCOMPARE(records.size(), 1);
            QCOMPARE(records.first().text,
                     shownText.startsWith(QLatin1String("IDS_")) ? Change::tr(shownText) : shownText);
            QVERIFY(records.first().text != QLatin1String("IDS_MSG_CARD_BLOCKED"));
            QCOMPARE(records.first().parentName, QStringLiteral("TestMainWindow"));
            QCOMPARE(records.first().icon, 1);
        }
        if (dialogs == QStringList{kPinDlg}) {
            QCOMPARE(labelText(kPinDlg, QStringLiteral("DeviceMgrUI_m_plabelPINTimes")),
                     Change::tr(QStringLiteral("IDS_MAINFRM_PIN_REMAIN_PROMPT")) +
                         QString::number(attempts - 1));
            QCOMPARE(field(kPinDlg)->text(), QString());
        }
    }

    void cancelAsksWithTheCardLockText()
    {
        openUnlockDialog(5);
        type(field(kPinDlg), QStringLiteral("1111"));
        click(button(kPinDlg, QStringLiteral("IDS_MAINFRM_CANCEL_PROMPT")));
        QCOMPARE(messages(),
                 QStringList{QStringLiteral("ShowMessage 4 %1 | IDS_MAINFRM_PROMPT | "
                                            "IDS_MAINFRM_CARDLOCKDLG_CANCELPROMPT | IDS_YES,IDS_NO")
                                 .arg(kPinDlg)});
        QCOMPARE(openDialogs(), QStringList{kPinDlg});
        QCOMPARE(field(kPinDlg)->text(), QStringLiteral("1111"));
        HostFramework::pushNextAnswer(1024);
        click(button(kPinDlg, QStringLiteral("IDS_MAINFRM_CANCEL_PROMPT")));
        QCOMPARE(openDialogs(), QStringList());
        QCOMPARE(svc::callCount("ZELK_DevSrv_VerifyCardLock"), 0);
    }

    // Kept last: ending the application's event loop is done once per process.
    void exitEndsTheApplication()
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

QTEST_MAIN(tst_SimCardLock)
#include "tst_simcardlock.moc"
