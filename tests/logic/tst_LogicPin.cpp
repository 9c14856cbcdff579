// The logic layer's PIN, PUK and card-lock operations against the simulated card: the results and
// counts the dialogs act on, the SDK calls made, and no typed code in the logs or the call record.
// The dialogs' own suites play the usual right/wrong/last-attempt stories through this layer; here
// are the answers a dialog cannot provoke (forced SDK results, failed queries, bad lengths).
#include "DeviceMgrUILogic.h"
#include "HostFixture.h"
#include "LogicTestSupport.h"
#include <QtWidgets/QMainWindow> // HostFixture keeps a QPointer to one

#include <QtTest/QSignalSpy>
#include <QtTest/QtTest>

using namespace logictest;
namespace sim = zelk::sim;

namespace {

// A state GetPinStatus never produces, to see whether it was written.
const E_DEVMGR_PIN_STATE kUntouched = DEVMGR_CARD_LOCK;

sim::SimCard card(bool pinEnabled, int pinAttempts = 3, bool verified = false, int pukAttempts = 10)
{
    sim::SimCard c;
    c.pinEnabled = pinEnabled;
    c.pinVerified = verified;
    c.pinAttempts = pinAttempts;
    c.pukAttempts = pukAttempts;
    return c;
}

void setCard(const sim::SimCard& c)
{
    QVERIFY(changeActiveDevice([&](sim::Device& d) { d.sim = c; }));
}

struct Forced
{
    QString code1, code2;
    int forced;         // 0: the card answers itself
    int expected;       // result of the operation
    int retries;        // out value (-7: untouched)
    int stored;         // stored PIN status afterwards (9: untouched)
    int calls;          // SDK calls of the operation
    bool noSim = false; // the SIM is invalid; a forced answer comes after the card counted
};

} // namespace

Q_DECLARE_METATYPE(Forced)

class tst_LogicPin : public QObject
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
    }
    void cleanup() { QVERIFY2(m_host.endTest(), qPrintable(m_host.lastError())); }
    void cleanupTestCase()
    {
        delete m_logic;
        QVERIFY(DeviceMgrUILogic::m_pDeviceMgrUILogic == nullptr);
        m_host.shutdown();
    }

    void pinStatusMapping_data()
    {
        QTest::addColumn<int>("status");
        QTest::addColumn<bool>("checkPending"); // the indicator byte is non-zero
        QTest::addColumn<int>("expected");
        QTest::newRow("0 unknown") << 0 << false << int(kUntouched);
        QTest::newRow("1 ready") << 1 << false << int(DEVMGR_PIN_READY);
        QTest::newRow("2 PIN required") << 2 << false << int(DEVMGR_PIN_VERIFY);
        QTest::newRow("2 PIN check pending") << 2 << true << int(DEVMGR_PIN_READY);
        QTest::newRow("3 PUK required") << 3 << false << int(DEVMGR_UNLOCK_PIN);
        QTest::newRow("4 PUK blocked") << 4 << false << int(DEVMGR_PIN_BLOCKED);
        QTest::newRow("8 ready") << 8 << false << int(DEVMGR_PIN_READY);
    }
    void pinStatusMapping()
    {
        QFETCH(int, status);
        QFETCH(bool, checkPending);
        sim::SimCard c = card(true);
        c.pinCheckPending = checkPending;
        c.pinStatusOverride = status;
        setCard(c);
        sim::clearCalls();

        E_DEVMGR_PIN_STATE state = kUntouched;
        QCOMPARE(m_logic->GetPinStatus(&state), 0);
        QTEST(int(state), "expected");
        QCOMPARE(m_logic->GetStoredPinStatus(), status);
        QCOMPARE(callCount("ZELK_DevSrv_GetPinStatus"), 1);
        QCOMPARE(sim::calls("ZELK_DevSrv_GetPinStatus").front().args.front(), std::string("0"));
    }
    // A failed status read leaves the state and the stored status as they were and the attempts unknown.
    void statusReadFails()
    {
        sim::clearCalls();
        QCOMPARE(m_logic->GetPinStatus(nullptr), 23);
        QCOMPARE(allCallCount(), 0);

        setCard(card(false));
        m_logic->m_iRetryTimes = 5;
        const int storedBefore = m_logic->GetStoredPinStatus();
        sim::failNext("ZELK_DevSrv_GetPinStatus");
        E_DEVMGR_PIN_STATE state = kUntouched;
        QCOMPARE(m_logic->GetPinStatus(&state), 1);
        QCOMPARE(int(state), int(kUntouched));
        QCOMPARE(m_logic->m_iRetryTimes, -1);
        QCOMPARE(m_logic->GetStoredPinStatus(), storedBefore);

        // So after a failed enable too, and the service hears "not read" (8).
        sim::failNext("ZELK_DevSrv_EnablePin");
        sim::failNext("ZELK_DevSrv_GetPinStatus");
        m_logic->m_iRetryTimes = 5;
        QSignalSpy spy(m_logic, &DeviceMgrUILogic::PinStateChanged);
        int out = 5;
        QCOMPARE(m_logic->ProcessPIN(QStringLiteral("1234"), out, DEVMGR_PIN_ENABLE), 1);
        QCOMPARE(out, -1);
        QCOMPARE(m_logic->m_iRetryTimes, -1);
        QCOMPARE(spy.count(), 1);
        QCOMPARE(int(spy.at(0).at(0).value<E_DEVMGR_PIN_STATE>()), 8);
    }
    void retryQueries_data()
    {
        QTest::addColumn<bool>("pukAsked");
        QTest::addColumn<int>("failures");
        QTest::addColumn<int>("pinResult");
        QTest::addColumn<int>("pukResult");
        QTest::addColumn<int>("sdkCalls");
        // Each query answers only for the code that is asked for now; three failed reads give up.
        QTest::newRow("PUK asked") << true << 0 << 0 << 6 << 1;
        QTest::newRow("PIN asked, 1 failure") << false << 1 << 2 << 0 << 2;
        QTest::newRow("PUK asked, 2 failures") << true << 2 << 0 << 6 << 3;
        QTest::newRow("3 failures") << false << 3 << -1 << -1 << 3;
    }
    void retryQueries()
    {
        QFETCH(bool, pukAsked);
        QFETCH(int, failures);
        QFETCH(int, pinResult);
        QFETCH(int, pukResult);
        setCard(pukAsked ? card(true, 0, false, 6) : card(true, 2));
        for (int puk = 0; puk < 2; ++puk) {
            m_logic->init();
            m_logic->m_iRetryTimes = -99;
            sim::clearForcedResults();
            sim::clearCalls();
            if (failures > 0)
                sim::failNext("ZELK_DevSrv_GetPinStatus", failures);
            QCOMPARE(puk ? m_logic->GetPUKRetryTimes() : m_logic->GetPINRetryTimes(),
                     puk ? pukResult : pinResult);
            QTEST(callCount("ZELK_DevSrv_GetPinStatus"), "sdkCalls");
            QCOMPARE(m_logic->GetStoredPinStatus(), failures >= 3 ? 0 : (pukAsked ? 3 : 2));
            QCOMPARE(m_logic->m_iRetryTimes, failures >= 3 ? -99 : (pukAsked ? 6 : 2));
        }
    }
    // The attempts are worth up to three queries; the lock state one query only (4: not read).
    void cardLockQueries_data()
    {
        QTest::addColumn<int>("state");
        QTest::addColumn<int>("failures");
        QTest::addColumn<int>("retryTimes");
        QTest::addColumn<int>("retryCalls");
        QTest::addColumn<int>("lockedState");
        QTest::newRow("locked, answers at once") << 1 << 0 << 7 << 1 << 1;
        QTest::newRow("usable, second try") << 2 << 1 << 7 << 2 << 2;
        QTest::newRow("three failures") << 3 << 3 << -1 << 3 << 4;
    }
    void cardLockQueries()
    {
        QFETCH(int, state);
        QFETCH(int, failures);
        QVERIFY(changeActiveDevice([&](sim::Device& d) {
            d.cardLock.state = ZELK_CARD_LOCK_LOCKED;
            d.cardLock.attempts = 7;
        }));
        sim::clearCalls();
        if (failures > 0)
            sim::failNext("ZELK_DevSrv_GetCardLockStatus", failures);
        QTEST(m_logic->GetCardRetryTimes(), "retryTimes");
        QTEST(callCount("ZELK_DevSrv_GetCardLockStatus"), "retryCalls");
        QVERIFY(changeActiveDevice([&](sim::Device& d) { d.cardLock.state = state; }));
        sim::clearCalls();
        sim::clearForcedResults();
        if (failures >= 3)
            sim::failNext("ZELK_DevSrv_GetCardLockStatus", 3);
        QTEST(m_logic->GetCardLockedState(), "lockedState");
        QCOMPARE(callCount("ZELK_DevSrv_GetCardLockStatus"), 1);
    }
    // Right and wrong codes are played through the dialogs; here each request reaches its own SDK
    // function with the SIM index (the unlock code masked in the record), and bad lengths none.
    void processPinDispatch_data()
    {
        QTest::addColumn<int>("request");
        QTest::addColumn<QString>("code");
        QTest::addColumn<int>("expected");
        QTest::addColumn<QString>("sdkFunction"); // the one code-taking SDK call expected, or empty
        QTest::newRow("verify") << int(DEVMGR_PIN_VERIFY) << "1234" << 0 << "ZELK_DevSrv_VerifyPin";
        QTest::newRow("disable") << int(DEVMGR_PIN_DISABLE) << "1234" << 0 << "ZELK_DevSrv_DisablePin";
        QTest::newRow("enable") << int(DEVMGR_PIN_ENABLE) << "1234" << 0 << "ZELK_DevSrv_EnablePin";
        QTest::newRow("card lock") << int(DEVMGR_CARD_LOCK) << "12345678" << 0
                                   << "ZELK_DevSrv_VerifyCardLock";
        QTest::newRow("verify, short") << int(DEVMGR_PIN_VERIFY) << "123" << 1 << "";
        QTest::newRow("enable, long") << int(DEVMGR_PIN_ENABLE) << "123456789" << 1 << "";
        QTest::newRow("disable, long") << int(DEVMGR_PIN_DISABLE) << "123456789" << 1 << "";
        QTest::newRow("card lock, long") << int(DEVMGR_CARD_LOCK) << "123456789" << 1 << "";
        QTest::newRow("ready") << int(DEVMGR_PIN_READY) << "1234" << 1 << "";
    }
    void processPinDispatch()
    {
        QFETCH(int, request);
        QFETCH(QString, code);
        QFETCH(QString, sdkFunction);
        // PIN on and entered: each request has something to do on this card.
        setCard(card(request != DEVMGR_PIN_ENABLE, 3, request != DEVMGR_PIN_ENABLE));
        QVERIFY(changeActiveDevice([](sim::Device& d) { d.cardLock.state = ZELK_CARD_LOCK_LOCKED; }));
        sim::clearCalls();

        int retries = 0;
        QTEST(m_logic->ProcessPIN(code, retries, E_DEVMGR_PIN_STATE(request)), "expected");
        for (const char* function :
             {"ZELK_DevSrv_VerifyPin", "ZELK_DevSrv_EnablePin", "ZELK_DevSrv_DisablePin",
              "ZELK_DevSrv_VerifyCardLock", "ZELK_DevSrv_UnblockPin", "ZELK_DevSrv_ChangePin"})
            QVERIFY2(callCount(function) == (sdkFunction == QLatin1String(function) ? 1 : 0), function);
        if (sdkFunction.isEmpty())
            QCOMPARE(allCallCount(), 0);
        else
            QCOMPARE(sim::calls(sdkFunction.toStdString()).front().args.front(),
                     std::string(request == DEVMGR_CARD_LOCK ? "****" : "0"));
    }
    void unlockPin_data()
    {
        QTest::addColumn<Forced>("f");
        const QString puk = QStringLiteral("12345678"), pin = QStringLiteral("2468");
        QTest::newRow("right PUK") << Forced{puk, pin, 0, 0, 10, 0, 1};
        QTest::newRow("wrong PUK") << Forced{QStringLiteral("87654321"), pin, 0, 1, 5, 3, 1};
        // An answer without a count leaves the attempts unknown.
        QTest::newRow("answer -1") << Forced{puk, pin, -1, 1, -1, 3, 1};
        QTest::newRow("no valid SIM: count ignored") << Forced{puk, pin, -1, 1, -1, 3, 1, true};
        QTest::newRow("answer 1") << Forced{puk, pin, 1, 23, -1, 9, 1};
        QTest::newRow("answer 6000") << Forced{puk, pin, 6000, 14, -1, 0, 1};
        QTest::newRow("answer 7") << Forced{puk, pin, 7, 0, -1, 9, 1};
        QTest::newRow("PUK of 7") << Forced{QStringLiteral("1234567"), pin, 0, 23, -7, 9, 0};
        QTest::newRow("PIN of 9") << Forced{puk, QStringLiteral("246824682"), 0, 23, -7, 9, 0};
    }
    void unlockPin()
    {
        QFETCH(Forced, f);
        // A status query leaves the stored PIN status at 9, a value no operation here writes.
        sim::SimCard marker = card(true, 0, false, 6);
        marker.pinStatusOverride = 9;
        setCard(marker);
        E_DEVMGR_PIN_STATE state = kUntouched;
        QCOMPARE(m_logic->GetPinStatus(&state), 0);
        setCard(card(true, 0, false, 6));
        if (f.noSim)
            QVERIFY(changeActiveDevice([](sim::Device& d) { d.sim.status = ZELK_SIM_STATUS_INVALID; }));
        m_logic->m_iRetryTimes = 41;
        sim::clearCalls();
        if (f.forced != 0)
            sim::forceResult("ZELK_DevSrv_UnblockPin", 1, ZELK_RESULT(f.forced), f.noSim);
        int out = -7;
        QCOMPARE(m_logic->UnlockPIN(f.code1, f.code2, out), f.expected);
        QCOMPARE(out, f.retries);
        if (f.forced <= 0 && f.expected == 1)
            QCOMPARE(m_logic->m_iRetryTimes, f.noSim ? 41 : f.retries);
        QCOMPARE(m_logic->GetStoredPinStatus(), f.stored);
        QCOMPARE(callCount("ZELK_DevSrv_UnblockPin"), f.calls);
        // The new PIN goes to the card in its own argument, not swapped with the PUK.
        if (f.forced == 0 && f.expected == 0)
            QCOMPARE(activeDevice().sim.pin, f.code2.toStdString());
    }
    void modifyPin_data()
    {
        QTest::addColumn<Forced>("f"); // stored: the PIN state signalled, -1 none
        const QString oldPin = QStringLiteral("1234"), newPin = QStringLiteral("8642");
        QTest::newRow("changed") << Forced{oldPin, newPin, 0, 0, 0, -1, 1};
        QTest::newRow("wrong old PIN")
            << Forced{QStringLiteral("4321"), newPin, 0, 1, 2, int(DEVMGR_PIN_READY), 1};
        QTest::newRow("answer 1") << Forced{oldPin, newPin, 1, 23, 41, -1, 1};
        QTest::newRow("answer 5") << Forced{oldPin, newPin, 5, 0, 41, -1, 1};
        QTest::newRow("old PIN of 3") << Forced{QStringLiteral("123"), newPin, 0, 23, -7, -1, 0};
        QTest::newRow("new PIN of 9") << Forced{oldPin, QStringLiteral("123456789"), 0, 23, -7, -1, 0};
    }
    void modifyPin()
    {
        QFETCH(Forced, f);
        setCard(card(true, 3, true));
        m_logic->m_iRetryTimes = 41;
        sim::clearCalls();
        if (f.forced != 0)
            sim::forceResult("ZELK_DevSrv_ChangePin", 1, ZELK_RESULT(f.forced));
        QSignalSpy spy(m_logic, &DeviceMgrUILogic::PinStateChanged);
        int out = -7;
        QCOMPARE(m_logic->ModifyPIN(f.code1, f.code2, out), f.expected);
        QCOMPARE(out, f.retries);
        if (f.retries != -7)
            QCOMPARE(m_logic->m_iRetryTimes, f.retries);
        const bool changed = f.expected == 0 && f.forced == 0;
        QCOMPARE(QString::fromStdString(activeDevice().sim.pin), changed ? f.code2 : QStringLiteral("1234"));
        QCOMPARE(spy.count(), f.stored < 0 ? 0 : 1);
        if (f.stored >= 0)
            QCOMPARE(spy.at(0).at(0).value<E_DEVMGR_PIN_STATE>(), E_DEVMGR_PIN_STATE(f.stored));
        QCOMPARE(callCount("ZELK_DevSrv_ChangePin"), f.calls);
    }
    void codesStayOutOfLogs_data()
    {
        QTest::addColumn<QString>("operation");
        QTest::addColumn<bool>("right"); // the card holds the first code: the success path
        for (const char* op : {"verify", "enable", "disable", "unblock", "change", "cardlock", "compare"})
            for (const bool right : {true, false})
                QTest::addRow("%s, %s", op, right ? "right" : "wrong") << QString::fromLatin1(op) << right;
    }
    void codesStayOutOfLogs()
    {
        QFETCH(QString, operation);
        QFETCH(bool, right);
        const auto is = [&](const char* op) { return operation == QLatin1String(op); };
        // Distinctive codes that no time stamp, port or count could spell by chance.
        const QString first =
            is("unblock") || is("cardlock") ? QStringLiteral("86420975") : QStringLiteral("7391586");
        const QString second = is("compare")                   ? first
                               : is("unblock") || is("change") ? QStringLiteral("5927318")
                                                               : QString();
        const std::string other = "24681357";
        QVERIFY(changeActiveDevice([&](sim::Device& d) {
            d.sim.pinEnabled = !is("enable");
            d.sim.pinVerified = !is("verify");
            d.sim.pinAttempts = is("unblock") ? 0 : 3;
            d.sim.pin = right && !is("unblock") && !is("cardlock") ? first.toStdString() : other.substr(0, 7);
            d.sim.puk = right && is("unblock") ? first.toStdString() : other;
            d.cardLock.code = right && is("cardlock") ? first.toStdString() : other;
            d.cardLock.state = ZELK_CARD_LOCK_LOCKED;
        }));
        sim::clearCalls();
        svc::startLogCapture();
        int retries = 0;
        if (is("unblock"))
            m_logic->UnlockPIN(first, second, retries);
        else if (is("change"))
            m_logic->ModifyPIN(first, second, retries);
        else if (is("compare"))
            QCOMPARE(m_logic->ValidatePINs(first, second), 0);
        else
            m_logic->ProcessPIN(first, retries,
                                is("verify")    ? DEVMGR_PIN_VERIFY
                                : is("enable")  ? DEVMGR_PIN_ENABLE
                                : is("disable") ? DEVMGR_PIN_DISABLE
                                                : DEVMGR_CARD_LOCK);
        qInstallMessageHandler(nullptr);

        const QString log = svc::g_log.join(QLatin1Char('\n'));
        // The handler really saw the operation's log lines.
        QVERIFY2(log.contains(QStringLiteral(" : Entered")), qPrintable(log));
        for (const QString& code : second.isEmpty() ? QStringList{first} : QStringList{first, second}) {
            QVERIFY2(!log.contains(code), qPrintable(log));
            QVERIFY2(!allRecordedArgs().contains(code), qPrintable(allRecordedArgs()));
        }
        if (is("verify"))
            QVERIFY2(log.contains(QStringLiteral("szPinCode = ********")), qPrintable(log));
        if (!is("compare"))
            QVERIFY(allCallCount() > 0);
    }

private:
    HostFixture m_host;
    DeviceMgrUILogic* m_logic = nullptr;
};

QTEST_MAIN(tst_LogicPin)
#include "tst_LogicPin.moc"
