// The logic layer's PIN, PUK and card-lock operations against the simulated card.
#include "DeviceMgrUILogic.h"
#include "HostFixture.h"
#include "LogicTestSupport.h"
#include <QtWidgets/QMainWindow> // HostFixture keeps a QPointer to one

#include <QtTest/QSignalSpy>
#include <QtTest/QtTest>

using namespace logictest;
namespace sim = zelk::sim;

Q_DECLARE_METATYPE(sim::SimCard)

namespace {

// A state GetPinStatus never produces, to see whether it was written.
const E_DEVMGR_PIN_STATE kUntouched = DEVMGR_CARD_LOCK;

// Card states the tests start from.
sim::SimCard pinDisabledCard(int pinAttempts = 3)
{
    sim::SimCard card;
    card.pinEnabled = false;
    card.pinAttempts = pinAttempts;
    return card;
}

sim::SimCard pinEnabledCard(int pinAttempts = 3, bool verified = false)
{
    sim::SimCard card;
    card.pinEnabled = true;
    card.pinVerified = verified;
    card.pinAttempts = pinAttempts;
    return card;
}

sim::SimCard pukRequiredCard(int pukAttempts = 10)
{
    sim::SimCard card;
    card.pinEnabled = true;
    card.pinAttempts = 0;
    card.pukAttempts = pukAttempts;
    return card;
}

void setCard(const sim::SimCard& card)
{
    const bool changed = changeActiveDevice([&](sim::Device& d) { d.sim = card; });
    if (!changed)
        qWarning("could not set the SIM card of the active device");
}

} // namespace

class tst_LogicPin : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        m_host.init(false);
        m_logic = DeviceMgrUILogic::GetInstance();
        QVERIFY(m_logic);
        QCOMPARE(DeviceMgrUILogic::GetInstance(), m_logic);
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

    void codeLengths_data();
    void codeLengths();
    void validatePins_data();
    void validatePins();

    void pinStatusMapping_data();
    void pinStatusMapping();
    void pinStatusFromCard_data();
    void pinStatusFromCard();
    void pinStatusNullPointer();
    void pinStatusSdkFailure();

    void retryQueries_data();
    void retryQueries();
    void cardRetryTimes_data();
    void cardRetryTimes();
    void cardLockedState_data();
    void cardLockedState();
    void cardCustomization_data();
    void cardCustomization();

    void processPinDispatch_data();
    void processPinDispatch();
    void verifyPin_data();
    void verifyPin();
    void enableDisablePin_data();
    void enableDisablePin();
    void enableDisableStatusReadFails();
    void pinStateChangedQueued();
    void verifyCardLock_data();
    void verifyCardLock();
    void unlockPin_data();
    void unlockPin();
    void unlockPinPassesNewPinBeforePuk();
    void unlockPinWithoutValidSimReportsUnknown();
    void modifyPin_data();
    void modifyPin();
    void enableDisableErrorBookkeeping_data();
    void enableDisableErrorBookkeeping();

private:
    HostFixture m_host;
    DeviceMgrUILogic* m_logic = nullptr;
};

void tst_LogicPin::codeLengths_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<bool>("pinValid");
    QTest::addColumn<bool>("pukValid");
    QTest::newRow("empty") << QString() << false << false;
    QTest::newRow("3 digits") << QStringLiteral("123") << false << false;
    QTest::newRow("4 digits") << QStringLiteral("1234") << true << false;
    QTest::newRow("5 digits") << QStringLiteral("12345") << true << false;
    QTest::newRow("7 digits") << QStringLiteral("1234567") << true << false;
    QTest::newRow("8 digits") << QStringLiteral("12345678") << true << true;
    QTest::newRow("9 digits") << QStringLiteral("123456789") << false << false;
    // Only the length is checked here; the input fields restrict the characters.
    QTest::newRow("4 letters") << QStringLiteral("abcd") << true << false;
    QTest::newRow("8 letters") << QStringLiteral("abcdefgh") << true << true;
}

void tst_LogicPin::codeLengths()
{
    QFETCH(QString, code);
    QFETCH(bool, pinValid);
    QFETCH(bool, pukValid);
    QCOMPARE(m_logic->isPINValid(code), pinValid);
    QCOMPARE(m_logic->isPUKValid(code), pukValid);
}

void tst_LogicPin::validatePins_data()
{
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    QTest::addColumn<int>("expected");
    QTest::newRow("equal 4") << QStringLiteral("1234") << QStringLiteral("1234") << 0;
    QTest::newRow("equal 8") << QStringLiteral("12345678") << QStringLiteral("12345678") << 0;
    QTest::newRow("differ in last digit") << QStringLiteral("12345678") << QStringLiteral("12345679") << 15;
    QTest::newRow("prefix") << QStringLiteral("1234") << QStringLiteral("12345") << 15;
    QTest::newRow("both too short") << QStringLiteral("123") << QStringLiteral("123") << 15;
    QTest::newRow("both too long") << QStringLiteral("123456789") << QStringLiteral("123456789") << 15;
    QTest::newRow("first invalid") << QString() << QStringLiteral("1234") << 15;
}

void tst_LogicPin::validatePins()
{
    QFETCH(QString, first);
    QFETCH(QString, second);
    QFETCH(int, expected);
    QCOMPARE(m_logic->ValidatePINs(first, second), expected);
}

void tst_LogicPin::pinStatusMapping_data()
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
    QTest::newRow("5") << 5 << false << int(kUntouched);
    QTest::newRow("6") << 6 << false << int(kUntouched);
    QTest::newRow("7") << 7 << false << int(kUntouched);
    QTest::newRow("8 ready") << 8 << false << int(DEVMGR_PIN_READY);
    QTest::newRow("9") << 9 << false << int(kUntouched);
}

void tst_LogicPin::pinStatusMapping()
{
    QFETCH(int, status);
    QFETCH(bool, checkPending);
    QFETCH(int, expected);
    sim::SimCard card = pinEnabledCard();
    card.pinCheckPending = checkPending;
    card.pinStatusOverride = status;
    setCard(card);
    sim::clearCalls();

    E_DEVMGR_PIN_STATE state = kUntouched;
    QCOMPARE(m_logic->GetPinStatus(&state), 0);
    QCOMPARE(int(state), expected);
    QCOMPARE(m_logic->GetStoredPinStatus(), status);
    QCOMPARE(callCount("ZELK_DevSrv_GetPinStatus"), 1);
    QCOMPARE(sim::calls("ZELK_DevSrv_GetPinStatus").front().args.front(), std::string("0"));
}

void tst_LogicPin::pinStatusFromCard_data()
{
    QTest::addColumn<sim::SimCard>("card");
    QTest::addColumn<int>("expected");
    QTest::addColumn<int>("retryTimes");
    QTest::newRow("PIN off") << pinDisabledCard(3) << int(DEVMGR_PIN_READY) << 3;
    QTest::newRow("PIN on, not entered") << pinEnabledCard(2) << int(DEVMGR_PIN_VERIFY) << 2;
    QTest::newRow("PIN on, entered") << pinEnabledCard(3, true) << int(DEVMGR_PIN_READY) << 3;
    QTest::newRow("PUK required") << pukRequiredCard(7) << int(DEVMGR_UNLOCK_PIN) << 7;
    QTest::newRow("PUK used up") << pukRequiredCard(0) << int(DEVMGR_PIN_BLOCKED) << 0;
}

void tst_LogicPin::pinStatusFromCard()
{
    QFETCH(sim::SimCard, card);
    QFETCH(int, expected);
    QFETCH(int, retryTimes);
    setCard(card);
    m_logic->m_iRetryTimes = 99;

    E_DEVMGR_PIN_STATE state = kUntouched;
    QCOMPARE(m_logic->GetPinStatus(&state), 0);
    QCOMPARE(int(state), expected);
    QCOMPARE(m_logic->m_iRetryTimes, retryTimes);
}

void tst_LogicPin::pinStatusNullPointer()
{
    sim::clearCalls();
    QCOMPARE(m_logic->GetPinStatus(nullptr), 23);
    QCOMPARE(allCallCount(), 0);
}

void tst_LogicPin::pinStatusSdkFailure()
{
    setCard(pukRequiredCard(7));
    m_logic->m_iRetryTimes = 5;
    const int storedBefore = m_logic->GetStoredPinStatus();
    sim::failNext("ZELK_DevSrv_GetPinStatus");

    E_DEVMGR_PIN_STATE state = kUntouched;
    QCOMPARE(m_logic->GetPinStatus(&state), 1);
    QCOMPARE(int(state), int(kUntouched));
    QCOMPARE(m_logic->m_iRetryTimes, -1);
    QCOMPARE(m_logic->GetStoredPinStatus(), storedBefore);
}

void tst_LogicPin::retryQueries_data()
{
    QTest::addColumn<sim::SimCard>("card");
    QTest::addColumn<int>("failures");
    QTest::addColumn<int>("pinResult");
    QTest::addColumn<int>("pukResult");
    QTest::addColumn<int>("sdkCalls");
    QTest::addColumn<int>("storedStatus"); // -1: left as it was
    QTest::addColumn<int>("retryTimes");   // -99: left as it was

    // Each query answers only for the code that is asked for now.
    QTest::newRow("PIN asked") << pinEnabledCard(2) << 0 << 2 << 0 << 1 << 2 << 2;
    QTest::newRow("PIN off") << pinDisabledCard(3) << 0 << 3 << 0 << 1 << 8 << 3;
    QTest::newRow("PUK asked") << pukRequiredCard(6) << 0 << 0 << 6 << 1 << 3 << 6;
    QTest::newRow("PIN asked, 1 failure") << pinEnabledCard(2) << 1 << 2 << 0 << 2 << 2 << 2;
    QTest::newRow("PUK asked, 2 failures") << pukRequiredCard(6) << 2 << 0 << 6 << 3 << 3 << 6;
    QTest::newRow("3 failures") << pinEnabledCard(2) << 3 << -1 << -1 << 3 << -1 << -99;
    QTest::newRow("5 failures") << pukRequiredCard(6) << 5 << -1 << -1 << 3 << -1 << -99;
}

void tst_LogicPin::retryQueries()
{
    QFETCH(sim::SimCard, card);
    QFETCH(int, failures);
    QFETCH(int, pinResult);
    QFETCH(int, pukResult);
    QFETCH(int, sdkCalls);
    QFETCH(int, storedStatus);
    QFETCH(int, retryTimes);
    setCard(card);

    for (int puk = 0; puk < 2; ++puk) {
        m_logic->init();
        m_logic->m_iRetryTimes = -99;
        sim::clearForcedResults();
        sim::clearCalls();
        if (failures > 0)
            sim::failNext("ZELK_DevSrv_GetPinStatus", failures);

        const int result = puk ? m_logic->GetPUKRetryTimes() : m_logic->GetPINRetryTimes();
        QCOMPARE(result, puk ? pukResult : pinResult);
        QCOMPARE(callCount("ZELK_DevSrv_GetPinStatus"), sdkCalls);
        QCOMPARE(m_logic->GetStoredPinStatus(), storedStatus == -1 ? 0 : storedStatus);
        QCOMPARE(m_logic->m_iRetryTimes, retryTimes);
    }
}

void tst_LogicPin::cardRetryTimes_data()
{
    QTest::addColumn<int>("attempts");
    QTest::addColumn<int>("failures");
    QTest::addColumn<int>("expected");
    QTest::addColumn<int>("sdkCalls");
    QTest::newRow("answers at once") << 7 << 0 << 7 << 1;
    QTest::newRow("none left") << 0 << 0 << 0 << 1;
    QTest::newRow("second try") << 5 << 1 << 5 << 2;
    QTest::newRow("third try") << 5 << 2 << 5 << 3;
    QTest::newRow("three failures") << 5 << 3 << -1 << 3;
    QTest::newRow("more failures than tries") << 5 << 4 << -1 << 3;
}

void tst_LogicPin::cardRetryTimes()
{
    QFETCH(int, attempts);
    QFETCH(int, failures);
    QFETCH(int, expected);
    QFETCH(int, sdkCalls);
    QVERIFY(changeActiveDevice([&](sim::Device& d) {
        d.cardLock.state = ZELK_CARD_LOCK_LOCKED;
        d.cardLock.attempts = attempts;
    }));
    sim::clearCalls();
    if (failures > 0)
        sim::failNext("ZELK_DevSrv_GetCardLockStatus", failures);

    QCOMPARE(m_logic->GetCardRetryTimes(), expected);
    QCOMPARE(callCount("ZELK_DevSrv_GetCardLockStatus"), sdkCalls);
}

void tst_LogicPin::cardLockedState_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<bool>("fail");
    QTest::addColumn<int>("expected");
    QTest::newRow("locked") << 1 << false << 1;
    QTest::newRow("usable") << 2 << false << 2;
    QTest::newRow("locked otherwise") << 3 << false << 3;
    QTest::newRow("query fails") << 2 << true << 4;
}

void tst_LogicPin::cardLockedState()
{
    QFETCH(int, state);
    QFETCH(bool, fail);
    QFETCH(int, expected);
    QVERIFY(changeActiveDevice([&](sim::Device& d) { d.cardLock.state = state; }));
    sim::clearCalls();
    if (fail)
        sim::failNext("ZELK_DevSrv_GetCardLockStatus", 3);

    QCOMPARE(m_logic->GetCardLockedState(), expected);
    // One query only: the state is not worth a retry.
    QCOMPARE(callCount("ZELK_DevSrv_GetCardLockStatus"), 1);
}

void tst_LogicPin::cardCustomization_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<bool>("write");
    QTest::addColumn<int>("expected");
    // A fresh settings file: the key is not there yet.
    QTest::newRow("missing") << QString() << false << 3;
    QTest::newRow("0 support unlock") << QStringLiteral("0") << true << 0;
    QTest::newRow("1 only reminder") << QStringLiteral("1") << true << 1;
    QTest::newRow("2 no reminder") << QStringLiteral("2") << true << 2;
    QTest::newRow("3 exit") << QStringLiteral("3") << true << 3;
    QTest::newRow("7") << QStringLiteral("7") << true << 3;
    QTest::newRow("text") << QStringLiteral("unlock") << true << 3;
    QTest::newRow("padded 1") << QStringLiteral(" 1") << true << 3;
    QTest::newRow("empty") << QString() << true << 3;
}

void tst_LogicPin::cardCustomization()
{
    QFETCH(QString, value);
    QFETCH(bool, write);
    QFETCH(int, expected);
    if (write)
        m_host.setSetting(QStringLiteral("support"), QStringLiteral("type"), value);
    QCOMPARE(m_logic->GetCardCustomization(), expected);
}

void tst_LogicPin::processPinDispatch_data()
{
    QTest::addColumn<int>("request");
    QTest::addColumn<QString>("code");
    QTest::addColumn<int>("expected");
    QTest::addColumn<QString>("sdkFunction"); // the one code-taking SDK call expected, or empty

    QTest::newRow("verify") << int(DEVMGR_PIN_VERIFY) << QStringLiteral("1234") << 0
                            << QStringLiteral("ZELK_DevSrv_VerifyPin");
    QTest::newRow("enable") << int(DEVMGR_PIN_ENABLE) << QStringLiteral("1234") << 0
                            << QStringLiteral("ZELK_DevSrv_EnablePin");
    QTest::newRow("disable") << int(DEVMGR_PIN_DISABLE) << QStringLiteral("1234") << 0
                             << QStringLiteral("ZELK_DevSrv_DisablePin");
    QTest::newRow("card lock") << int(DEVMGR_CARD_LOCK) << QStringLiteral("12345678") << 0
                               << QStringLiteral("ZELK_DevSrv_VerifyCardLock");
    QTest::newRow("verify, wrong PIN")
        << int(DEVMGR_PIN_VERIFY) << QStringLiteral("9999") << 1 << QStringLiteral("ZELK_DevSrv_VerifyPin");
    QTest::newRow("card lock, wrong code") << int(DEVMGR_CARD_LOCK) << QStringLiteral("87654321") << 1
                                           << QStringLiteral("ZELK_DevSrv_VerifyCardLock");
    QTest::newRow("verify, short") << int(DEVMGR_PIN_VERIFY) << QStringLiteral("123") << 1 << QString();
    QTest::newRow("enable, long") << int(DEVMGR_PIN_ENABLE) << QStringLiteral("123456789") << 1 << QString();
    QTest::newRow("card lock, short") << int(DEVMGR_CARD_LOCK) << QStringLiteral("123") << 1 << QString();
    QTest::newRow("ready") << int(DEVMGR_PIN_READY) << QStringLiteral("1234") << 1 << QString();
    QTest::newRow("unlock PIN") << int(DEVMGR_UNLOCK_PIN) << QStringLiteral("1234") << 1 << QString();
    QTest::newRow("blocked") << int(DEVMGR_PIN_BLOCKED) << QStringLiteral("1234") << 1 << QString();
    QTest::newRow("change PIN") << int(DEVMGR_CHANGE_PIN) << QStringLiteral("1234") << 1 << QString();
}

void tst_LogicPin::processPinDispatch()
{
    QFETCH(int, request);
    QFETCH(QString, code);
    QFETCH(int, expected);
    QFETCH(QString, sdkFunction);
    // PIN on and entered: each request has something to do on this card.
    sim::SimCard card = pinEnabledCard(3, request != DEVMGR_PIN_ENABLE);
    if (request == DEVMGR_PIN_ENABLE)
        card.pinEnabled = false;
    setCard(card);
    QVERIFY(changeActiveDevice([](sim::Device& d) { d.cardLock.state = ZELK_CARD_LOCK_LOCKED; }));
    sim::clearCalls();

    int retries = 0;
    QCOMPARE(m_logic->ProcessPIN(code, retries, E_DEVMGR_PIN_STATE(request)), expected);

    const char* codeFunctions[] = {"ZELK_DevSrv_VerifyPin",  "ZELK_DevSrv_EnablePin",
                                   "ZELK_DevSrv_DisablePin", "ZELK_DevSrv_VerifyCardLock",
                                   "ZELK_DevSrv_UnblockPin", "ZELK_DevSrv_ChangePin"};
    for (const char* function : codeFunctions) {
        const int want = sdkFunction == QLatin1String(function) ? 1 : 0;
        QVERIFY2(callCount(function) == want, function);
    }
    if (sdkFunction.isEmpty())
        QCOMPARE(allCallCount(), 0);
}

void tst_LogicPin::verifyPin_data()
{
    QTest::addColumn<int>("attempts");
    QTest::addColumn<QString>("pin");
    QTest::addColumn<int>("expected");
    QTest::addColumn<int>("retries");
    QTest::addColumn<int>("storedStatus");
    QTest::addColumn<bool>("sdkCalled");

    QTest::newRow("right PIN") << 2 << QStringLiteral("1234") << 0 << 3 << 0 << true;
    QTest::newRow("wrong PIN, 3 left") << 3 << QStringLiteral("4321") << -1 << 2 << 0 << true;
    QTest::newRow("wrong PIN, last one") << 1 << QStringLiteral("4321") << -1 << 0 << 3 << true;
    QTest::newRow("3 characters") << 3 << QStringLiteral("123") << -1 << -7 << 0 << false;
    QTest::newRow("9 characters") << 3 << QStringLiteral("123456789") << -1 << -7 << 0 << false;
}

void tst_LogicPin::verifyPin()
{
    QFETCH(int, attempts);
    QFETCH(QString, pin);
    QFETCH(int, expected);
    QFETCH(int, retries);
    QFETCH(int, storedStatus);
    QFETCH(bool, sdkCalled);
    setCard(pinEnabledCard(attempts));
    sim::clearCalls();

    int out = -7;
    QCOMPARE(m_logic->processVerifyPIN(out, pin), expected);
    QCOMPARE(out, retries);
    QCOMPARE(m_logic->GetStoredPinStatus(), storedStatus);
    QCOMPARE(callCount("ZELK_DevSrv_VerifyPin"), sdkCalled ? 1 : 0);
    if (sdkCalled) {
        const sim::CallRecord record = sim::calls("ZELK_DevSrv_VerifyPin").front();
        QCOMPARE(record.args.front(), std::string("0"));
        QVERIFY2(!joinedArgs(record).contains(pin), qPrintable(joinedArgs(record)));
    }
}

void tst_LogicPin::enableDisablePin_data()
{
    QTest::addColumn<bool>("enable");
    QTest::addColumn<sim::SimCard>("card");
    QTest::addColumn<QString>("pin");
    QTest::addColumn<int>("expected");
    QTest::addColumn<int>("retries");
    QTest::addColumn<int>("retryTimes");
    QTest::addColumn<int>("signalState"); // -1: no signal
    QTest::addColumn<int>("storedStatus");
    QTest::addColumn<bool>("pinEnabledAfter");

    const int failure = int(static_cast<int32_t>(ZELK_ERROR_FAILURE));
    QTest::newRow("enable") << true << pinDisabledCard(3) << QStringLiteral("1234") << 0 << -7 << 0 << -1 << 0
                            << true;
    // With the PIN request off the card reports status 8 (ready, no PIN).
    QTest::newRow("enable, wrong PIN") << true << pinDisabledCard(3) << QStringLiteral("4321") << failure << 2
                                       << 2 << int(DEVMGR_PIN_READY) << 8 << false;
    QTest::newRow("enable, last attempt wrong") << true << pinDisabledCard(1) << QStringLiteral("4321")
                                                << failure << 0 << 0 << int(DEVMGR_UNLOCK_PIN) << 3 << false;
    QTest::newRow("enable, short PIN")
        << true << pinDisabledCard(3) << QStringLiteral("123") << -1 << -7 << 41 << -1 << 0 << false;
    QTest::newRow("disable") << false << pinEnabledCard(3, true) << QStringLiteral("1234") << 0 << -7 << 0
                             << -1 << 0 << false;
    QTest::newRow("disable, wrong PIN") << false << pinEnabledCard(3, true) << QStringLiteral("4321")
                                        << failure << 2 << 2 << int(DEVMGR_PIN_READY) << 1 << true;
    QTest::newRow("disable, last attempt wrong") << false << pinEnabledCard(1, true) << QStringLiteral("4321")
                                                 << failure << 0 << 0 << int(DEVMGR_UNLOCK_PIN) << 3 << true;
    QTest::newRow("disable, long PIN") << false << pinEnabledCard(3, true) << QStringLiteral("123456789")
                                       << -1 << -7 << 41 << -1 << 0 << true;
}

void tst_LogicPin::enableDisablePin()
{
    QFETCH(bool, enable);
    QFETCH(sim::SimCard, card);
    QFETCH(QString, pin);
    QFETCH(int, expected);
    QFETCH(int, retries);
    QFETCH(int, retryTimes);
    QFETCH(int, signalState);
    QFETCH(int, storedStatus);
    QFETCH(bool, pinEnabledAfter);
    setCard(card);
    m_logic->m_iRetryTimes = 41;
    sim::clearCalls();
    QSignalSpy spy(m_logic, &DeviceMgrUILogic::PinStateChanged);

    int out = -7;
    const int result = enable ? m_logic->processEnablePIN(out, pin) : m_logic->processDisablePIN(out, pin);
    QCOMPARE(result, expected);
    QCOMPARE(out, retries);
    QCOMPARE(m_logic->m_iRetryTimes, retryTimes);
    QCOMPARE(m_logic->GetStoredPinStatus(), storedStatus);
    QCOMPARE(activeDevice().sim.pinEnabled, pinEnabledAfter);
    if (signalState < 0) {
        QCOMPARE(spy.count(), 0);
    } else {
        QCOMPARE(spy.count(), 1);
        QCOMPARE(spy.at(0).at(0).value<E_DEVMGR_PIN_STATE>(), E_DEVMGR_PIN_STATE(signalState));
    }
    const char* function = enable ? "ZELK_DevSrv_EnablePin" : "ZELK_DevSrv_DisablePin";
    const bool valid = m_logic->isPINValid(pin);
    QCOMPARE(callCount(function), valid ? 1 : 0);
    // The state read after a failure comes from a fresh status query, and only then.
    QCOMPARE(callCount("ZELK_DevSrv_GetPinStatus"), expected != 0 && valid ? 1 : 0);
}

void tst_LogicPin::enableDisableStatusReadFails()
{
    setCard(pinDisabledCard(3));
    sim::failNext("ZELK_DevSrv_EnablePin");
    sim::failNext("ZELK_DevSrv_GetPinStatus");
    QSignalSpy spy(m_logic, &DeviceMgrUILogic::PinStateChanged);

    int out = 5;
    QCOMPARE(m_logic->ProcessPIN(QStringLiteral("1234"), out, DEVMGR_PIN_ENABLE), 1);
    // Nothing is known about the attempts left nor about the state: the service hears "not read".
    QCOMPARE(out, -1);
    QCOMPARE(m_logic->m_iRetryTimes, -1);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(int(spy.at(0).at(0).value<E_DEVMGR_PIN_STATE>()), 8);
}

void tst_LogicPin::pinStateChangedQueued()
{
    // The service receives the signal through a queued connection from wherever it is raised.
    setCard(pinEnabledCard(1, true));
    QObject receiver;
    QList<E_DEVMGR_PIN_STATE> received;
    connect(
        m_logic, &DeviceMgrUILogic::PinStateChanged, &receiver,
        [&](E_DEVMGR_PIN_STATE state) { received << state; }, Qt::QueuedConnection);
    QVERIFY(QMetaType::type("E_DEVMGR_PIN_STATE") != QMetaType::UnknownType);

    int out = 0;
    QCOMPARE(m_logic->ModifyPIN(QStringLiteral("4321"), QStringLiteral("5678"), out), 1);
    QVERIFY(received.isEmpty());
    QTRY_COMPARE(received.size(), 1);
    QCOMPARE(received.front(), DEVMGR_UNLOCK_PIN);
}

void tst_LogicPin::verifyCardLock_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<int>("expected");
    QTest::addColumn<int>("out");
    QTest::addColumn<int>("stateAfter");
    QTest::addColumn<bool>("sdkCalled");
    QTest::newRow("right code") << QStringLiteral("12345678") << 0 << 5 << 2 << true;
    QTest::newRow("wrong code") << QStringLiteral("1111") << 1 << 4 << 1 << true;
    QTest::newRow("3 characters") << QStringLiteral("123") << 23 << -7 << 1 << false;
    QTest::newRow("9 characters") << QStringLiteral("123456789") << 23 << -7 << 1 << false;
}

void tst_LogicPin::verifyCardLock()
{
    QFETCH(QString, code);
    QFETCH(int, expected);
    QFETCH(int, out);
    QFETCH(int, stateAfter);
    QFETCH(bool, sdkCalled);
    QVERIFY(changeActiveDevice([](sim::Device& d) {
        d.cardLock.state = ZELK_CARD_LOCK_LOCKED;
        d.cardLock.attempts = 5;
        d.cardLock.code = "12345678";
    }));
    sim::clearCalls();

    int retries = -7;
    QCOMPARE(m_logic->VerifyCardLock(code, retries), expected);
    QCOMPARE(retries, out);
    QCOMPARE(activeDevice().cardLock.state, stateAfter);
    QCOMPARE(callCount("ZELK_DevSrv_VerifyCardLock"), sdkCalled ? 1 : 0);
}

void tst_LogicPin::unlockPin_data()
{
    QTest::addColumn<QString>("puk");
    QTest::addColumn<QString>("newPin");
    QTest::addColumn<int>("forced");     // 0: the card answers itself
    QTest::addColumn<bool>("runForced"); // the forced call runs first
    QTest::addColumn<int>("expected");
    QTest::addColumn<int>("retries");      // -7: untouched
    QTest::addColumn<int>("retryTimes");   // 41: untouched
    QTest::addColumn<int>("storedStatus"); // 9: untouched
    QTest::addColumn<int>("sdkCalls");

    const QString puk = QStringLiteral("12345678");
    const QString pin = QStringLiteral("2468");
    QTest::newRow("right PUK") << puk << pin << 0 << false << 0 << 10 << 0 << 0 << 1;
    QTest::newRow("wrong PUK") << QStringLiteral("87654321") << pin << 0 << false << 1 << 5 << 5 << 3 << 1;
    // An answer without a count leaves the attempts unknown.
    QTest::newRow("answer -1") << puk << pin << -1 << false << 1 << -1 << -1 << 3 << 1;
    QTest::newRow("answer 1") << puk << pin << 1 << false << 23 << -1 << 41 << 9 << 1;
    QTest::newRow("answer 6000") << puk << pin << 6000 << false << 14 << -1 << 0 << 0 << 1;
    QTest::newRow("answer 7") << puk << pin << 7 << false << 0 << -1 << 41 << 9 << 1;
    QTest::newRow("PUK of 7") << QStringLiteral("1234567") << pin << 0 << false << 23 << -7 << 41 << 9 << 0;
    QTest::newRow("PUK of 9") << QStringLiteral("123456789") << pin << 0 << false << 23 << -7 << 41 << 9 << 0;
    QTest::newRow("PIN of 3") << puk << QStringLiteral("246") << 0 << false << 23 << -7 << 41 << 9 << 0;
    QTest::newRow("PIN of 9") << puk << QStringLiteral("246824682") << 0 << false << 23 << -7 << 41 << 9 << 0;
}

void tst_LogicPin::unlockPin()
{
    QFETCH(QString, puk);
    QFETCH(QString, newPin);
    QFETCH(int, forced);
    QFETCH(bool, runForced);
    QFETCH(int, expected);
    QFETCH(int, retries);
    QFETCH(int, retryTimes);
    QFETCH(int, storedStatus);
    QFETCH(int, sdkCalls);
    setCard(pukRequiredCard(6));
    // A status query leaves the stored PIN status at 9 (a value no operation here writes).
    sim::SimCard marker = pukRequiredCard(6);
    marker.pinStatusOverride = 9;
    setCard(marker);
    E_DEVMGR_PIN_STATE state = kUntouched;
    QCOMPARE(m_logic->GetPinStatus(&state), 0);
    setCard(pukRequiredCard(6));
    m_logic->m_iRetryTimes = 41;
    sim::clearCalls();
    if (forced != 0)
        sim::forceResult("ZELK_DevSrv_UnblockPin", 1, ZELK_RESULT(forced), runForced);

    int out = -7;
    QCOMPARE(m_logic->UnlockPIN(puk, newPin, out), expected);
    QCOMPARE(out, retries);
    QCOMPARE(m_logic->m_iRetryTimes, retryTimes);
    QCOMPARE(m_logic->GetStoredPinStatus(), storedStatus);
    QCOMPARE(callCount("ZELK_DevSrv_UnblockPin"), sdkCalls);
}

void tst_LogicPin::unlockPinPassesNewPinBeforePuk()
{
    setCard(pukRequiredCard(6));
    int out = 0;
    QCOMPARE(m_logic->UnlockPIN(QStringLiteral("12345678"), QStringLiteral("97531"), out), 0);
    const sim::Device device = activeDevice();
    QCOMPARE(device.sim.pin, std::string("97531"));
    QCOMPARE(device.sim.pukAttempts, 10);
    // The card now takes the new PIN.
    QCOMPARE(m_logic->processVerifyPIN(out, QStringLiteral("97531")), 0);
}

void tst_LogicPin::unlockPinWithoutValidSimReportsUnknown()
{
    // Without a valid SIM the count the card gives back means nothing.
    setCard(pukRequiredCard(6));
    QVERIFY(changeActiveDevice([](sim::Device& d) { d.sim.status = ZELK_SIM_STATUS_INVALID; }));
    m_logic->m_iRetryTimes = 41;
    sim::clearCalls();
    sim::forceResult("ZELK_DevSrv_UnblockPin", 1, ZELK_ERROR_FAILURE, true);

    int out = -7;
    QCOMPARE(m_logic->UnlockPIN(QStringLiteral("87654321"), QStringLiteral("2468"), out), 1);
    QCOMPARE(out, -1);
    QCOMPARE(m_logic->m_iRetryTimes, 41);
    QCOMPARE(m_logic->GetStoredPinStatus(), 3);
    QCOMPARE(callCount("ZELK_DevSrv_GetSimStatus"), 1);
}

void tst_LogicPin::modifyPin_data()
{
    QTest::addColumn<int>("attempts");
    QTest::addColumn<QString>("oldPin");
    QTest::addColumn<QString>("newPin");
    QTest::addColumn<int>("forced"); // 0: the card answers itself
    QTest::addColumn<int>("expected");
    QTest::addColumn<int>("retries");
    QTest::addColumn<int>("signalState"); // -1: no signal
    QTest::addColumn<QString>("pinAfter");

    const QString oldPin = QStringLiteral("1234");
    const QString newPin = QStringLiteral("8642");
    QTest::newRow("changed") << 3 << oldPin << newPin << 0 << 0 << 0 << -1 << newPin;
    QTest::newRow("wrong old PIN") << 3 << QStringLiteral("4321") << newPin << 0 << 1 << 2
                                   << int(DEVMGR_PIN_READY) << oldPin;
    QTest::newRow("wrong old PIN, last attempt")
        << 1 << QStringLiteral("4321") << newPin << 0 << 1 << 0 << int(DEVMGR_UNLOCK_PIN) << oldPin;
    QTest::newRow("answer 1") << 3 << oldPin << newPin << 1 << 23 << 41 << -1 << oldPin;
    QTest::newRow("answer 5") << 3 << oldPin << newPin << 5 << 0 << 41 << -1 << oldPin;
    QTest::newRow("old PIN of 3") << 3 << QStringLiteral("123") << newPin << 0 << 23 << -7 << -1 << oldPin;
    QTest::newRow("new PIN of 9") << 3 << oldPin << QStringLiteral("123456789") << 0 << 23 << -7 << -1
                                  << oldPin;
}

void tst_LogicPin::modifyPin()
{
    QFETCH(int, attempts);
    QFETCH(QString, oldPin);
    QFETCH(QString, newPin);
    QFETCH(int, forced);
    QFETCH(int, expected);
    QFETCH(int, retries);
    QFETCH(int, signalState);
    QFETCH(QString, pinAfter);
    setCard(pinEnabledCard(attempts, true));
    m_logic->m_iRetryTimes = 41;
    sim::clearCalls();
    if (forced != 0)
        sim::forceResult("ZELK_DevSrv_ChangePin", 1, ZELK_RESULT(forced));
    QSignalSpy spy(m_logic, &DeviceMgrUILogic::PinStateChanged);

    int out = -7;
    QCOMPARE(m_logic->ModifyPIN(oldPin, newPin, out), expected);
    QCOMPARE(out, retries);
    if (retries != -7)
        QCOMPARE(m_logic->m_iRetryTimes, retries);
    QCOMPARE(QString::fromStdString(activeDevice().sim.pin), pinAfter);
    if (signalState < 0) {
        QCOMPARE(spy.count(), 0);
    } else {
        QCOMPARE(spy.count(), 1);
        QCOMPARE(spy.at(0).at(0).value<E_DEVMGR_PIN_STATE>(), E_DEVMGR_PIN_STATE(signalState));
    }
    if (signalState == int(DEVMGR_UNLOCK_PIN))
        QCOMPARE(m_logic->GetStoredPinStatus(), 3);
    const bool valid = m_logic->isPINValid(oldPin) && m_logic->isPINValid(newPin);
    QCOMPARE(callCount("ZELK_DevSrv_ChangePin"), valid ? 1 : 0);
}

void tst_LogicPin::enableDisableErrorBookkeeping_data()
{
    QTest::addColumn<int>("before");
    QTest::addColumn<int>("after");
    QTest::addColumn<int>("storedStatus");
    QTest::newRow("3 left") << 3 << 2 << 0;
    QTest::newRow("last one") << 1 << 0 << 3;
    QTest::newRow("none left") << 0 << -1 << 0;
}

void tst_LogicPin::enableDisableErrorBookkeeping()
{
    QFETCH(int, before);
    QFETCH(int, after);
    QFETCH(int, storedStatus);
    m_logic->m_iRetryTimes = before;
    sim::clearCalls();
    m_logic->handleEnableDisableErrorCondition();
    QCOMPARE(m_logic->m_iRetryTimes, after);
    QCOMPARE(m_logic->GetStoredPinStatus(), storedStatus);
    QCOMPARE(allCallCount(), 0);
}

QTEST_MAIN(tst_LogicPin)
#include "tst_LogicPin.moc"
