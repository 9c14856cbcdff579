// Simulated data card: typed codes never reach its call record in clear, and queries fail cleanly on
// bad input. Its PIN, PUK and card-lock rules are exercised through the logic and dialog suites.
#include "SdkTestSupport.h"

#include <QtTest/QtTest>

using namespace zelk::sim;

namespace {

Device gsm(bool pinEnabled)
{
    Device d = sdktest::device("m", "USB Modem", 3);
    d.sim.pinEnabled = pinEnabled;
    return d;
}

} // namespace

class tst_SimCard : public QObject
{
    Q_OBJECT

private slots:
    void init() { reset(); }
    void typedCodesAreMaskedInTheCallRecord();
    void badInputFailsCleanly();
};

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

void tst_SimCard::badInputFailsCleanly()
{
    // A name longer than the record's field is cut, never written past it.
    sdktest::setDevices({sdktest::device("long", std::string(40, 'N'), 3)}, "long");
    char buffer[64];
    std::memset(buffer, 'x', sizeof buffer);
    QCOMPARE(ZELK_DevSrv_GetDeviceName(buffer), ZELK_ERROR_SUCCESS);
    QCOMPARE(std::strlen(buffer), std::size_t(23));
    QCOMPARE(buffer[24], 'x');
    QCOMPARE(ZELK_GetUserDataDirectory(buffer, 4), ZELK_ERROR_BAD_PARAM);
    QCOMPARE(ZELK_DevSrv_GetDevStatus(nullptr), ZELK_ERROR_BAD_PARAM);

    sdktest::setDevices({}, "");
    int port = 0;
    unsigned int sim = 0;
    _ZELK_EN_DEVICE_STATUS status = DEVICE_STATUS_AVAILABLE;
    QCOMPARE(ZELK_DevSrv_GetDevStatus(&status), ZELK_ERROR_SUCCESS);
    QCOMPARE(status, DEVICE_STATUS_NO_DEVICE);
    QCOMPARE(ZELK_DevSrv_GetDeviceName(buffer), ZELK_ERROR_FAILURE);
    QCOMPARE(ZELK_DevSrv_GetDevicePort(&port), ZELK_ERROR_FAILURE);
    QCOMPARE(ZELK_DevSrv_GetSimStatus(&sim), ZELK_ERROR_FAILURE);
}

QTEST_GUILESS_MAIN(tst_SimCard)
#include "tst_simcard.moc"
