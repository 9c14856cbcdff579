// Device SDK binding: record layouts at the boundary and the exported entry points, which another
// implementation of the library must match.
#include "ZelkSdk.h"

#include <QtCore/QLibrary>
#include <QtCore/QRegularExpression>
#include <QtTest/QtTest>

#include <cstddef>

class tst_SdkBinding : public QObject
{
    Q_OBJECT

private slots:
    // Sizes, and the offsets a reordered or repacked field would move.
    void recordLayout_data()
    {
        QTest::addColumn<int>("actual");
        QTest::addColumn<int>("expected");
        const auto row = [](const char* name, std::size_t actual, std::size_t expected) {
            QTest::newRow(name) << int(actual) << int(expected);
        };
        row("DEVICE_INFO size", sizeof(_ZELK_ST_DEVICE_INFO), 136);
        row("DEVICE_INFO port", offsetof(_ZELK_ST_DEVICE_INFO, nPort), 0);
        row("DEVICE_INFO name", offsetof(_ZELK_ST_DEVICE_INFO, szName), 8);
        row("MULTI_DEVICE_INFO size", sizeof(_ZELK_ST_MULTI_DEVICE_INFO), 4 + 64 * 136);
        row("MULTI_DEVICE_INFO second device", offsetof(_ZELK_ST_MULTI_DEVICE_INFO, stDevInfo[1]), 140);
        row("GID size", sizeof(_ZELK_ST_GID_INFO), 1032);
        row("GID gid2 text", offsetof(_ZELK_ST_GID_INFO, szGID2), 516);
        row("GID gid2 length", offsetof(_ZELK_ST_GID_INFO, nGID2Len), 1028);
        row("RF_SWITCH size", sizeof(_ZELK_ST_RF_SWITCH), 8);
        row("RF_SWITCH support", offsetof(_ZELK_ST_RF_SWITCH, nSupport), 4);
        row("RF event software word", offsetof(_ZELK_ST_RF_SWITCH_EVENT, nSwState), 0);
        row("RF event hardware word", offsetof(_ZELK_ST_RF_SWITCH_EVENT, nHwState), 4);
        row("ESN size", sizeof(_ZELK_ST_ESN_INFO), 64);
        row("ESN meid", offsetof(_ZELK_ST_ESN_INFO, szMEID), 32);
        row("SERVICE_NUMBER size", sizeof(_ZELK_ST_SERVICE_NUMBER), 46);
        row("SERVICE_NUMBER min", offsetof(_ZELK_ST_SERVICE_NUMBER, szMIN), 17);
        row("SERVICE_NUMBER sid", offsetof(_ZELK_ST_SERVICE_NUMBER, szSID), 40);
        row("IMSI size (six words)", sizeof(_ZELK_ST_IMSI_INFO), 24);
        row("result", sizeof(ZELK_RESULT), 4);
        row("device status is one word", sizeof(_ZELK_EN_DEVICE_STATUS), 4);
        row("verification state is one word", sizeof(_ZELK_EN_VERIFYINDSTATE), 4);
        row("GID type is one word", sizeof(_ZELK_EN_GIDTYPE), 4);
    }
    void recordLayout()
    {
        QFETCH(int, actual);
        QTEST(actual, "expected");
    }
    // Another implementation replaces the library by path, so every function must be found by its plain
    // C name in the library file itself.
    void everyFunctionIsExported()
    {
        const QStringList names = QString::fromLatin1(R"(
    ZELK_DevSrv_GetDevStatus ZELK_DevSrv_GetDeviceName ZELK_DevSrv_GetDevicePort
    ZELK_DevSrv_GetAvailableDeviceList ZELK_DevSrv_ManualChangeDevice ZELK_DevSrv_DetectDevice
    ZELK_DevSrv_GetSimStatus ZELK_DevSrv_GetPinStatus ZELK_DevSrv_VerifyPin ZELK_DevSrv_EnablePin
    ZELK_DevSrv_DisablePin ZELK_DevSrv_UnblockPin ZELK_DevSrv_ChangePin ZELK_DevSrv_GetCardLockStatus
    ZELK_DevSrv_VerifyCardLock ZELK_DevSrv_GetProductType ZELK_DevSrv_GetRFSwitch
    ZELK_DevSrv_SetRFSwitch ZELK_DevSrv_SetOffline ZELK_DevSrv_ResetMs ZELK_DevSrv_GetImsiInfo
    ZELK_DevSrv_GetGID ZELK_DevSrv_IsWin7 ZELK_DevSrv_IsWWanReady ZELK_DevSrv_IsWWanServiceActive ZELK_DevSrv_GetESN
    ZELK_DevSrv_GetOTAActStatus ZELK_DevSrv_OTAAutoActClear ZELK_DevSrv_AutoCHKOTKSLActive
    ZELK_DevSrv_GetOTKSLStatus ZELK_DevSrv_VerifyOTKSL ZELK_DevSrv_VerifyMSL
    ZELK_DevSrv_ManualCHKOTKSLActive ZELK_DevSrv_UpdatePRL ZELK_NetSrv_SetPSState
    ZELK_NetSrv_GetBandListAndOrderEx ZELK_GetUserDataDirectory ZELK_DevSrv_RegisterDevMgrCallback
    ZELK_DevSrv_UnRegisterDevMgrCallback ZELK_DevSrv_RegisterDevInitEventCallback
    ZELK_DevSrv_UnRegisterDevInitEventCallback ZELK_DevSrv_RegisterMultiDeviceEventCallback
    ZELK_DevSrv_UnRegisterMultiDeviceEventCallback ZELK_CallSrv_RegisterCallEventHandler
    ZELK_CallSrv_UnRegisterCallEventHandler)")
                                      .split(QRegularExpression(QStringLiteral("\\s+")), Qt::SkipEmptyParts);
        QLibrary library(QStringLiteral(SDK_LIBRARY_PATH));
        QVERIFY2(library.load(), qPrintable(library.errorString()));
        QVERIFY(names.size() > 40);
        for (const QString& name : names)
            QVERIFY2(library.resolve(name.toLatin1().constData()) != nullptr, qPrintable(name));
    }
};

QTEST_GUILESS_MAIN(tst_SdkBinding)
#include "tst_sdkbinding.moc"
