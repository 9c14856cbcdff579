// Simulated data card: the rules of its codes (PIN, PUK, unlock code, activation codes), attempts and
// blocking, forced results, masked call records and what its queries report.
#include "SdkTestSupport.h"

#include <QtTest/QtTest>

using namespace zelk::sim;

namespace {

const int kFail = -1; // ZELK_ERROR_FAILURE read as signed
const int kBad = 1;   // ZELK_ERROR_BAD_PARAM
const int kUntouched = 99;

int signedResult(ZELK_RESULT r)
{
    return static_cast<int>(r);
}

Device gsm(bool pinEnabled, int pinAttempts = 3, int pukAttempts = 10)
{
    Device d = sdktest::device("m", "USB Modem", 3);
    d.sim.pinEnabled = pinEnabled;
    d.sim.pinAttempts = pinAttempts;
    d.sim.pukAttempts = pukAttempts;
    return d;
}

int pinStatus(int* remaining = nullptr, int* indicator = nullptr)
{
    int status = 0;
    unsigned char ind = 0, reserved = 0, rem = 0;
    if (ZELK_DevSrv_GetPinStatus(0, &status, &ind, &reserved, &rem) != ZELK_ERROR_SUCCESS) {
        return -1;
    }
    if (remaining) {
        *remaining = rem;
    }
    if (indicator) {
        *indicator = ind;
    }
    return status;
}

} // namespace

class tst_SimCard : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void verifyPin_data();
    void verifyPin();
    void unblockPin_data();
    void unblockPin();
    void pinRequest_data();
    void pinRequest();
    void cardLock_data();
    void cardLock();
    void activationCodes_data();
    void activationCodes();
    void pinCheckPendingSetsIndicator();
    void forcedResults();
    void forcedResultCanRunTheCall();
    void typedCodesAreMaskedInTheCallRecord();
    void deviceNameIsCutToTwentyFourBytes();
    void rejectedDeviceLeavesTheList();
    void manualChangeNeedsNameAndPort();
    void simFilesStayClosedUntilThePinIsEntered();
    void gidIsHexTextWithByteLengths();
    void radioSwitchRules();
    void bandsTellLte_data();
    void bandsTellLte();
    void userDataDirectoryEndsWithSeparator();
    void noDeviceMeansFailure();
};

void tst_SimCard::init()
{
    reset();
}

void tst_SimCard::verifyPin_data()
{
    QTest::addColumn<int>("attempts");
    QTest::addColumn<QStringList>("typed");
    QTest::addColumn<QList<int>>("results");
    QTest::addColumn<QList<int>>("remaining");
    QTest::addColumn<int>("finalStatus");

    QTest::newRow("right PIN") << 3 << QStringList{"1234"} << QList<int>{0} << QList<int>{3} << 1;
    QTest::newRow("wrong then right restores the count")
        << 3 << QStringList{"0000", "1234"} << QList<int>{kFail, 0} << QList<int>{2, 3} << 1;
    QTest::newRow("three wrong require the PUK")
        << 3 << QStringList{"0000", "1111", "2222"} << QList<int>{kFail, kFail, kFail} << QList<int>{2, 1, 0}
        << 3;
    QTest::newRow("last attempt wrong")
        << 1 << QStringList{"9999"} << QList<int>{kFail} << QList<int>{0} << 3;
    QTest::newRow("no attempts left refuses the right PIN")
        << 0 << QStringList{"1234"} << QList<int>{kFail} << QList<int>{0} << 3;
    QTest::newRow("three digits are not counted")
        << 3 << QStringList{"123"} << QList<int>{kBad} << QList<int>{kUntouched} << 2;
    QTest::newRow("nine digits are not counted")
        << 3 << QStringList{"123456789"} << QList<int>{kBad} << QList<int>{kUntouched} << 2;
    QTest::newRow("letters are not counted")
        << 3 << QStringList{"12a4"} << QList<int>{kBad} << QList<int>{kUntouched} << 2;
    QTest::newRow("longer PIN is no match")
        << 3 << QStringList{"12345"} << QList<int>{kFail} << QList<int>{2} << 2;
}

void tst_SimCard::verifyPin()
{
    QFETCH(int, attempts);
    QFETCH(QStringList, typed);
    QFETCH(QList<int>, results);
    QFETCH(QList<int>, remaining);
    QFETCH(int, finalStatus);

    sdktest::setDevices({gsm(true, attempts)}, "m");
    for (int i = 0; i < typed.size(); ++i) {
        unsigned char rem = kUntouched;
        QCOMPARE(signedResult(ZELK_DevSrv_VerifyPin(0, typed[i].toLatin1().constData(), &rem)), results[i]);
        QCOMPARE(int(rem), remaining[i]);
    }
    QCOMPARE(pinStatus(), finalStatus);
}

void tst_SimCard::unblockPin_data()
{
    QTest::addColumn<int>("pukAttempts");
    QTest::addColumn<bool>("allowed");
    QTest::addColumn<QString>("puk");
    QTest::addColumn<QString>("newPin");
    QTest::addColumn<int>("result");
    QTest::addColumn<int>("remaining");
    QTest::addColumn<int>("finalStatus");
    QTest::addColumn<bool>("newPinWorks");

    QTest::newRow("right PUK sets the new PIN") << 10 << true << "12345678"
                                                << "4321" << 0 << 10 << 1 << true;
    QTest::newRow("wrong PUK counts down") << 10 << true << "87654321"
                                           << "4321" << kFail << 9 << 3 << false;
    QTest::newRow("last PUK attempt blocks the SIM") << 1 << true << "87654321"
                                                     << "4321" << kFail << 0 << 4 << false;
    QTest::newRow("blocked SIM refuses the right PUK") << 0 << true << "12345678"
                                                       << "4321" << kFail << 0 << 4 << false;
    QTest::newRow("seven-digit PUK is a bad parameter") << 10 << true << "1234567"
                                                        << "4321" << kBad << kUntouched << 3 << false;
    QTest::newRow("new PIN too short is a bad parameter") << 10 << true << "12345678"
                                                          << "432" << kBad << kUntouched << 3 << false;
    QTest::newRow("unblock without privilege answers 6000") << 10 << false << "12345678"
                                                            << "4321" << 6000 << 10 << 3 << false;
}

void tst_SimCard::unblockPin()
{
    QFETCH(int, pukAttempts);
    QFETCH(bool, allowed);
    QFETCH(QString, puk);
    QFETCH(QString, newPin);
    QFETCH(int, result);
    QFETCH(int, remaining);
    QFETCH(int, finalStatus);
    QFETCH(bool, newPinWorks);

    Device d = gsm(true, 0, pukAttempts);
    d.sim.unblockAllowed = allowed;
    sdktest::setDevices({d}, "m");
    unsigned char rem = kUntouched;
    // The new PIN comes before the PUK.
    QCOMPARE(signedResult(
                 ZELK_DevSrv_UnblockPin(0, newPin.toLatin1().constData(), puk.toLatin1().constData(), &rem)),
             result);
    QCOMPARE(int(rem), remaining);
    QCOMPARE(pinStatus(), finalStatus);
    if (newPinWorks) {
        QVERIFY(findDevice("m", &d));
        QCOMPARE(QString::fromStdString(d.sim.pin), newPin);
        QVERIFY(d.sim.pinEnabled);
    }
}

void tst_SimCard::pinRequest_data()
{
    QTest::addColumn<bool>("pinEnabled");
    QTest::addColumn<QString>("operation");
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    QTest::addColumn<int>("result");
    QTest::addColumn<int>("finalStatus");
    QTest::addColumn<int>("attemptsLeft");

    QTest::newRow("enable with the right PIN") << false << "enable"
                                               << "1234"
                                               << "" << 0 << 1 << 3;
    QTest::newRow("enable with a wrong PIN") << false << "enable"
                                             << "0000"
                                             << "" << kFail << 8 << 2;
    QTest::newRow("enable when already on costs nothing") << true << "enable"
                                                          << "1234"
                                                          << "" << kFail << 2 << 3;
    QTest::newRow("disable with the right PIN") << true << "disable"
                                                << "1234"
                                                << "" << 0 << 8 << 3;
    QTest::newRow("disable with a wrong PIN") << true << "disable"
                                              << "0000"
                                              << "" << kFail << 2 << 2;
    QTest::newRow("disable when already off costs nothing") << false << "disable"
                                                            << "1234"
                                                            << "" << kFail << 8 << 3;
    QTest::newRow("change with the right old PIN") << true << "change"
                                                   << "1234"
                                                   << "5678" << 0 << 1 << 3;
    QTest::newRow("change with a wrong old PIN") << true << "change"
                                                 << "0000"
                                                 << "5678" << kFail << 2 << 2;
    QTest::newRow("change while the request is off") << false << "change"
                                                     << "1234"
                                                     << "5678" << kFail << 8 << 3;
    QTest::newRow("change to a three-digit PIN") << true << "change"
                                                 << "1234"
                                                 << "567" << kBad << 2 << 3;
}

void tst_SimCard::pinRequest()
{
    QFETCH(bool, pinEnabled);
    QFETCH(QString, operation);
    QFETCH(QString, first);
    QFETCH(QString, second);
    QFETCH(int, result);
    QFETCH(int, finalStatus);
    QFETCH(int, attemptsLeft);

    sdktest::setDevices({gsm(pinEnabled)}, "m");
    const QByteArray a = first.toLatin1();
    const QByteArray b = second.toLatin1();
    ZELK_RESULT r = 0;
    if (operation == "enable") {
        r = ZELK_DevSrv_EnablePin(0, a.constData());
    } else if (operation == "disable") {
        r = ZELK_DevSrv_DisablePin(0, a.constData());
    } else {
        r = ZELK_DevSrv_ChangePin(0, a.constData(), b.constData());
    }
    QCOMPARE(signedResult(r), result);
    int remaining = 0;
    QCOMPARE(pinStatus(&remaining), finalStatus);
    QCOMPARE(remaining, attemptsLeft);
    if (operation == "change" && result == 0) {
        unsigned char rem = 0;
        QCOMPARE(ZELK_DevSrv_VerifyPin(0, b.constData(), &rem), ZELK_ERROR_SUCCESS);
        QCOMPARE(signedResult(ZELK_DevSrv_VerifyPin(0, a.constData(), &rem)), kFail);
    }
}

void tst_SimCard::cardLock_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<int>("attempts");
    QTest::addColumn<QStringList>("codes");
    QTest::addColumn<QList<int>>("results");
    QTest::addColumn<QList<int>>("remaining");
    QTest::addColumn<int>("finalState");

    QTest::newRow("right code unlocks")
        << 1 << 5 << QStringList{"12345678"} << QList<int>{0} << QList<int>{5} << 2;
    QTest::newRow("wrong code counts down")
        << 1 << 5 << QStringList{"11112222"} << QList<int>{kFail} << QList<int>{4} << 1;
    QTest::newRow("used-up attempts lock for good")
        << 1 << 1 << QStringList{"11112222", "12345678"} << QList<int>{kFail, kFail} << QList<int>{0, 0} << 3;
    QTest::newRow("an unlocked card has nothing to unlock")
        << 2 << 5 << QStringList{"12345678"} << QList<int>{kFail} << QList<int>{5} << 2;
    QTest::newRow("three-digit code is a bad parameter")
        << 1 << 5 << QStringList{"123"} << QList<int>{kBad} << QList<int>{kUntouched} << 1;
}

void tst_SimCard::cardLock()
{
    QFETCH(int, state);
    QFETCH(int, attempts);
    QFETCH(QStringList, codes);
    QFETCH(QList<int>, results);
    QFETCH(QList<int>, remaining);
    QFETCH(int, finalState);

    Device d = gsm(false);
    d.cardLock.state = state;
    d.cardLock.attempts = attempts;
    sdktest::setDevices({d}, "m");
    for (int i = 0; i < codes.size(); ++i) {
        int rem = kUntouched;
        QCOMPARE(signedResult(ZELK_DevSrv_VerifyCardLock(codes[i].toLatin1().constData(), &rem)), results[i]);
        QCOMPARE(rem, remaining[i]);
    }
    unsigned char st = 0, rem = 0;
    unsigned int word = 1;
    QCOMPARE(ZELK_DevSrv_GetCardLockStatus(&st, &rem, &word), ZELK_ERROR_SUCCESS);
    QCOMPARE(int(st), finalState);
    QCOMPARE(word, 0u);
}

void tst_SimCard::activationCodes_data()
{
    QTest::addColumn<int>("lockStatus");
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("code");
    QTest::addColumn<int>("result");
    QTest::addColumn<int>("statusAfter");
    QTest::addColumn<int>("attemptsAfter");
    QTest::addColumn<bool>("numbersAccepted");

    QTest::newRow("one-time code right") << 1 << "otksl"
                                         << "654321" << 0 << 0 << 3 << true;
    QTest::newRow("one-time code wrong") << 1 << "otksl"
                                         << "111111" << kFail << 1 << 2 << false;
    QTest::newRow("one-time code of five digits") << 1 << "otksl"
                                                  << "65432" << kBad << 1 << 3 << false;
    QTest::newRow("MSL right") << 2 << "msl"
                               << "123456" << 0 << 0 << 3 << true;
    QTest::newRow("MSL wrong") << 2 << "msl"
                               << "000000" << kFail << 2 << 3 << false;
    QTest::newRow("MSL when the card wants the one-time code") << 1 << "msl"
                                                               << "123456" << kFail << 1 << 3 << false;
    QTest::newRow("no lock: numbers straight away") << 0 << "none"
                                                    << "" << 0 << 0 << 3 << true;
}

void tst_SimCard::activationCodes()
{
    QFETCH(int, lockStatus);
    QFETCH(QString, kind);
    QFETCH(QString, code);
    QFETCH(int, result);
    QFETCH(int, statusAfter);
    QFETCH(int, attemptsAfter);
    QFETCH(bool, numbersAccepted);

    Device d = gsm(false);
    d.productType = ZELK_PRODUCT_TYPE_CDMA;
    d.cdma.activated = false;
    d.cdma.lockStatus = lockStatus;
    sdktest::setDevices({d}, "m");
    const QByteArray bytes = code.toLatin1();
    if (kind == "otksl") {
        unsigned char rem = 0;
        QCOMPARE(signedResult(ZELK_DevSrv_VerifyOTKSL(bytes.constData(), &rem)), result);
    } else if (kind == "msl") {
        QCOMPARE(signedResult(ZELK_DevSrv_VerifyMSL(bytes.constData())), result);
    }
    int status = -1;
    unsigned char rem = 0;
    QCOMPARE(ZELK_DevSrv_GetOTKSLStatus(&status, &rem), ZELK_ERROR_SUCCESS);
    QCOMPARE(status, statusAfter);
    QCOMPARE(int(rem), attemptsAfter);

    _ZELK_ST_SERVICE_NUMBER numbers;
    std::memset(&numbers, 0, sizeof numbers);
    std::strcpy(numbers.szMDN, "5551234567");
    std::strcpy(numbers.szMIN, "5551234567");
    std::strcpy(numbers.szSID, "4139");
    QCOMPARE(ZELK_DevSrv_ManualCHKOTKSLActive(&numbers) == ZELK_ERROR_SUCCESS, numbersAccepted);
    int act = -1;
    QCOMPARE(ZELK_DevSrv_GetOTAActStatus(&act), ZELK_ERROR_SUCCESS);
    QCOMPARE(act, numbersAccepted ? ZELK_OTA_ACTIVATED : ZELK_OTA_NOT_ACTIVATED);
}

void tst_SimCard::pinCheckPendingSetsIndicator()
{
    Device d = gsm(true);
    d.sim.pinCheckPending = true;
    sdktest::setDevices({d}, "m");
    int indicator = 0;
    QCOMPARE(pinStatus(nullptr, &indicator), 2);
    QCOMPARE(indicator, 1);
    unsigned char rem = 0;
    QCOMPARE(ZELK_DevSrv_VerifyPin(0, "1234", &rem), ZELK_ERROR_SUCCESS);
    QCOMPARE(pinStatus(nullptr, &indicator), 1);
    QCOMPARE(indicator, 0);
}

void tst_SimCard::forcedResults()
{
    sdktest::setDevices({gsm(true, 0)}, "m");
    forceResult("ZELK_DevSrv_UnblockPin", 1, 6000);
    failNext("ZELK_DevSrv_ChangePin", 2);
    unsigned char rem = kUntouched;
    QCOMPARE(ZELK_DevSrv_UnblockPin(0, "4321", "12345678", &rem), ZELK_RESULT(6000));
    QCOMPARE(int(rem), kUntouched); // the call did not run
    QCOMPARE(pinStatus(), 3);
    QCOMPARE(signedResult(ZELK_DevSrv_ChangePin(0, "1234", "5678")), -1);
    QCOMPARE(signedResult(ZELK_DevSrv_ChangePin(0, "1234", "5678")), -1);
    // Used up: the card answers again.
    QCOMPARE(ZELK_DevSrv_UnblockPin(0, "4321", "12345678", &rem), ZELK_ERROR_SUCCESS);
    QCOMPARE(ZELK_DevSrv_ChangePin(0, "4321", "5678"), ZELK_ERROR_SUCCESS);

    const std::vector<CallRecord> unblocks = calls("ZELK_DevSrv_UnblockPin");
    QCOMPARE(unblocks.size(), std::size_t(2));
    QVERIFY(unblocks[0].forced);
    QVERIFY(!unblocks[1].forced);

    failNext("ZELK_DevSrv_GetDevStatus");
    clearForcedResults();
    _ZELK_EN_DEVICE_STATUS status;
    QCOMPARE(ZELK_DevSrv_GetDevStatus(&status), ZELK_ERROR_SUCCESS);
}

void tst_SimCard::forcedResultCanRunTheCall()
{
    sdktest::setDevices({gsm(true)}, "m");
    forceResult("ZELK_DevSrv_VerifyPin", 1, ZELK_ERROR_FAILURE, true);
    unsigned char rem = 0;
    QCOMPARE(ZELK_DevSrv_VerifyPin(0, "1234", &rem), ZELK_ERROR_FAILURE);
    QCOMPARE(int(rem), 3);
    QCOMPARE(pinStatus(), 1); // the PIN was taken all the same
}

void tst_SimCard::typedCodesAreMaskedInTheCallRecord()
{
    Device d = gsm(true);
    d.sim.pin = "97531";
    d.cardLock.state = 1;
    sdktest::setDevices({d}, "m");
    unsigned char rem = 0;
    int remaining = 0;
    const char* typed[] = {"97531", "86420", "24681357", "13572468", "424242", "717171"};
    ZELK_DevSrv_VerifyPin(0, typed[0], &rem);
    ZELK_DevSrv_ChangePin(0, typed[0], typed[1]);
    ZELK_DevSrv_EnablePin(0, typed[1]);
    ZELK_DevSrv_DisablePin(0, typed[1]);
    ZELK_DevSrv_UnblockPin(0, typed[1], typed[2], &rem);
    ZELK_DevSrv_VerifyCardLock(typed[3], &remaining);
    ZELK_DevSrv_VerifyMSL(typed[4]);
    ZELK_DevSrv_VerifyOTKSL(typed[5], &rem);
    ZELK_DevSrv_VerifyPin(0, nullptr, &rem);

    const std::vector<CallRecord> all = calls();
    QCOMPARE(all.size(), std::size_t(9));
    int masked = 0;
    for (const CallRecord& r : all) {
        for (const std::string& arg : r.args) {
            for (const char* code : typed) {
                QVERIFY2(arg.find(code) == std::string::npos, (r.function + " " + arg).c_str());
            }
            masked += arg == "****" ? 1 : 0;
        }
    }
    QCOMPARE(masked, 10);
    QCOMPARE(all.back().args[1], std::string("null"));
    QCOMPARE(all.front().args[0], std::string("0"));
}

void tst_SimCard::deviceNameIsCutToTwentyFourBytes()
{
    sdktest::setDevices({sdktest::device("long", std::string(40, 'N'), 3)}, "long");
    char buffer[64];
    std::memset(buffer, 'x', sizeof buffer);
    QCOMPARE(ZELK_DevSrv_GetDeviceName(buffer), ZELK_ERROR_SUCCESS);
    QCOMPARE(std::strlen(buffer), std::size_t(23));
    QCOMPARE(buffer[24], 'x');
}

void tst_SimCard::rejectedDeviceLeavesTheList()
{
    sdktest::setDevices({sdktest::device("a", "Modem A", 3), sdktest::device("b", "Modem B", 4)}, "a");
    _ZELK_ST_MULTI_DEVICE_INFO list;
    QCOMPARE(ZELK_DevSrv_GetAvailableDeviceList(&list), ZELK_ERROR_SUCCESS);
    QCOMPARE(list.nDevNum, 2);
    QCOMPARE(QByteArray(list.stDevInfo[1].szName), QByteArray("Modem B"));
    QCOMPARE(list.stDevInfo[1].nPort, 4);
    QVERIFY(rejectDevice("a"));
    QCOMPARE(ZELK_DevSrv_GetAvailableDeviceList(&list), ZELK_ERROR_SUCCESS);
    QCOMPARE(list.nDevNum, 1);
    QCOMPARE(QByteArray(list.stDevInfo[0].szName), QByteArray("Modem B"));
    _ZELK_EN_DEVICE_STATUS status;
    QCOMPARE(ZELK_DevSrv_GetDevStatus(&status), ZELK_ERROR_SUCCESS);
    QCOMPARE(status, DEVICE_STATUS_NO_DEVICE);
    waitForIdle();
}

void tst_SimCard::manualChangeNeedsNameAndPort()
{
    sdktest::setDevices({sdktest::device("a", "Modem A", 3), sdktest::device("b", "Modem B", 4)}, "a");
    QCOMPARE(ZELK_DevSrv_ManualChangeDevice("Modem B", "", 3), ZELK_ERROR_FAILURE);
    QCOMPARE(activeDeviceId(), std::string("a"));
    QCOMPARE(ZELK_DevSrv_ManualChangeDevice("Modem B", "", 4), ZELK_ERROR_SUCCESS);
    QCOMPARE(activeDeviceId(), std::string("b"));
    int port = 0;
    QCOMPARE(ZELK_DevSrv_GetDevicePort(&port), ZELK_ERROR_SUCCESS);
    QCOMPARE(port, 4);
    waitForIdle();
}

void tst_SimCard::simFilesStayClosedUntilThePinIsEntered()
{
    sdktest::setDevices({gsm(true)}, "m");
    _ZELK_ST_IMSI_INFO imsi;
    std::memset(&imsi, 0, sizeof imsi);
    imsi.nReserved = 0xDEADBEEF;
    QCOMPARE(ZELK_DevSrv_GetImsiInfo(&imsi), ZELK_ERROR_FAILURE);
    unsigned char rem = 0;
    QCOMPARE(ZELK_DevSrv_VerifyPin(0, "1234", &rem), ZELK_ERROR_SUCCESS);
    QCOMPARE(ZELK_DevSrv_GetImsiInfo(&imsi), ZELK_ERROR_SUCCESS);
    QCOMPARE(QByteArray(imsi.szImsi), QByteArray("001010123456789"));
    QCOMPARE(imsi.nReserved, 0xDEADBEEFu); // a 20-byte buffer is enough
}

void tst_SimCard::gidIsHexTextWithByteLengths()
{
    Device d = gsm(false);
    d.sim.gid1 = "0A81";
    d.sim.gid2 = "FFEE01";
    sdktest::setDevices({d}, "m");
    _ZELK_ST_GID_INFO gid;
    QCOMPARE(ZELK_DevSrv_GetGID(&gid), ZELK_ERROR_SUCCESS);
    QCOMPARE(QByteArray(gid.szGID1, 4), QByteArray("0A81"));
    QCOMPARE(gid.nGID1Len, 2u);
    QCOMPARE(QByteArray(gid.szGID2, 6), QByteArray("FFEE01"));
    QCOMPARE(gid.nGID2Len, 3u);
}

void tst_SimCard::radioSwitchRules()
{
    Device d = gsm(false);
    d.radio.switchable = false;
    sdktest::setDevices({d}, "m");
    _ZELK_ST_RF_SWITCH rf{9, 9};
    QCOMPARE(ZELK_DevSrv_GetRFSwitch(&rf), ZELK_ERROR_SUCCESS);
    QCOMPARE(rf.nRFState, 1u);
    QCOMPARE(rf.nSupport, 0u);
    QCOMPARE(ZELK_DevSrv_SetRFSwitch(0), ZELK_ERROR_FAILURE);

    d.radio.switchable = true;
    QVERIFY(updateDevice(d));
    QVERIFY(setHardwareRadio(false));
    QCOMPARE(ZELK_DevSrv_GetRFSwitch(&rf), ZELK_ERROR_SUCCESS);
    QCOMPARE(rf.nRFState, 0u);
    QCOMPARE(ZELK_DevSrv_SetRFSwitch(1), ZELK_ERROR_FAILURE); // the hardware switch wins
    QVERIFY(setHardwareRadio(true));
    QCOMPARE(ZELK_DevSrv_SetRFSwitch(0), ZELK_ERROR_SUCCESS);
    QCOMPARE(ZELK_DevSrv_GetRFSwitch(&rf), ZELK_ERROR_SUCCESS);
    QCOMPARE(rf.nRFState, 0u);
    QCOMPARE(ZELK_DevSrv_SetOffline(), ZELK_ERROR_SUCCESS);
    QCOMPARE(ZELK_NetSrv_SetPSState(ZELK_PS_ATTACH), ZELK_ERROR_FAILURE);
    QCOMPARE(ZELK_NetSrv_SetPSState(7), ZELK_ERROR_BAD_PARAM);
    QCOMPARE(ZELK_NetSrv_SetPSState(ZELK_PS_DETACH), ZELK_ERROR_SUCCESS);
    waitForIdle();
}

void tst_SimCard::bandsTellLte_data()
{
    QTest::addColumn<bool>("lte");
    QTest::newRow("LTE device") << true;
    QTest::newRow("3G device") << false;
}

void tst_SimCard::bandsTellLte()
{
    QFETCH(bool, lte);
    Device d = gsm(false);
    d.radio.lte = lte;
    sdktest::setDevices({d}, "m");
    unsigned char a[8], b[8], c[8];
    QCOMPARE(ZELK_NetSrv_GetBandListAndOrderEx(a, b, c), ZELK_ERROR_SUCCESS);
    uint16_t first = 0;
    std::memcpy(&first, b, sizeof first);
    QCOMPARE(first != 0, lte);
}

void tst_SimCard::userDataDirectoryEndsWithSeparator()
{
    QTemporaryDir dir;
    Platform p;
    p.userDataDirectory = dir.path().toStdString();
    setPlatform(p);
    char buffer[ZELK_MAX_PATH];
    QCOMPARE(ZELK_GetUserDataDirectory(buffer, sizeof buffer), ZELK_ERROR_SUCCESS);
    QCOMPARE(QString::fromLocal8Bit(buffer), dir.path() + "/");
    QCOMPARE(ZELK_GetUserDataDirectory(buffer, 4), ZELK_ERROR_BAD_PARAM);
}

void tst_SimCard::noDeviceMeansFailure()
{
    sdktest::setDevices({}, "");
    char name[24];
    int port = 0;
    unsigned int sim = 0;
    _ZELK_EN_DEVICE_STATUS status = DEVICE_STATUS_AVAILABLE;
    QCOMPARE(ZELK_DevSrv_GetDevStatus(&status), ZELK_ERROR_SUCCESS);
    QCOMPARE(status, DEVICE_STATUS_NO_DEVICE);
    QCOMPARE(ZELK_DevSrv_GetDeviceName(name), ZELK_ERROR_FAILURE);
    QCOMPARE(ZELK_DevSrv_GetDevicePort(&port), ZELK_ERROR_FAILURE);
    QCOMPARE(ZELK_DevSrv_GetSimStatus(&sim), ZELK_ERROR_FAILURE);
    QCOMPARE(ZELK_DevSrv_GetDevStatus(nullptr), ZELK_ERROR_BAD_PARAM);
}

QTEST_GUILESS_MAIN(tst_SimCard)
#include "tst_simcard.moc"
