// Device SDK: another library with the same C functions replaces libDeviceSdk.so by library path.
#include <QtCore/QProcess>
#include <QtTest/QtTest>

class tst_SdkReplace : public QObject
{
    Q_OBJECT

private slots:
    void clientRunsOnEitherLibrary_data();
    void clientRunsOnEitherLibrary();
};

void tst_SdkReplace::clientRunsOnEitherLibrary_data()
{
    QTest::addColumn<QString>("libraryPath");
    QTest::addColumn<QString>("expected");
    QTest::newRow("simulated card") << QString() << "USB Modem|3";
    QTest::newRow("replacement first in the path") << QStringLiteral(ALT_SDK_DIR) << "Replacement Modem|1";
}

void tst_SdkReplace::clientRunsOnEitherLibrary()
{
    QFETCH(QString, libraryPath);
    QFETCH(QString, expected);
    QProcess client;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    if (!libraryPath.isEmpty()) {
        env.insert("LD_LIBRARY_PATH", libraryPath);
    }
    client.setProcessEnvironment(env);
    client.start(QStringLiteral(SDK_CLIENT), QStringList());
    QVERIFY(client.waitForFinished(30000));
    QCOMPARE(client.exitCode(), 0);
    QCOMPARE(QString::fromLatin1(client.readAllStandardOutput()).trimmed(), expected);
}

QTEST_GUILESS_MAIN(tst_SdkReplace)
#include "tst_sdkreplace.moc"
