// Device SDK: another library with the same C functions replaces libDeviceSdk.so by library path, so
// every entry point must be exported under its plain C name. Record layouts are checked at compile
// time in ZelkTypes.h.
#include <QtCore/QLibrary>
#include <QtCore/QProcess>
#include <QtCore/QRegularExpression>
#include <QtTest/QtTest>

class tst_SdkReplace : public QObject
{
    Q_OBJECT

private slots:
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

    // A plain C client prints the active device's name and status from whichever library comes first.
    void clientRunsOnEitherLibrary_data()
    {
        QTest::addColumn<QString>("libraryPath");
        QTest::addColumn<QString>("expected");
        QTest::newRow("simulated card") << QString() << "USB Modem|3";
        QTest::newRow("replacement first in the path")
            << QStringLiteral(ALT_SDK_DIR) << "Replacement Modem|1";
    }
    void clientRunsOnEitherLibrary()
    {
        QFETCH(QString, libraryPath);
        QProcess client;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        if (!libraryPath.isEmpty())
            env.insert("LD_LIBRARY_PATH", libraryPath);
        client.setProcessEnvironment(env);
        client.start(QStringLiteral(SDK_CLIENT), QStringList());
        QVERIFY(client.waitForFinished(30000));
        QCOMPARE(client.exitCode(), 0);
        QTEST(QString::fromLatin1(client.readAllStandardOutput()).trimmed(), "expected");
    }
};

QTEST_GUILESS_MAIN(tst_SdkReplace)
#include "tst_sdkreplace.moc"
