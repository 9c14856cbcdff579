// Device SDK: another library with the same C functions replaces libDeviceSdk.so by library path, so
// every entry point must be exported under its plain C name. Record layouts are checked at compile
// time in ZelkTypes.h.
#include <QtCore/QFile>
#include <QtCore/QLibrary>
#include <QtCore/QProcess>
#include <QtCore/QRegularExpression>
#include <QtTest/QtTest>

class tst_SdkReplace : public QObject
{
    Q_OBJECT

private slots:
    // Every function the plugin's copy of the SDK header declares, so a new one cannot be forgotten.
    void everyFunctionIsExported()
    {
        QFile header(QStringLiteral(TESSARO_SOURCE_DIR "/src/DeviceMgrUIPlugin/sdk/ZelkApi.h"));
        QVERIFY(header.open(QIODevice::ReadOnly));
        static const QRegularExpression declaration(QStringLiteral("ZELK_API\\s+\\w+\\s+(ZELK_\\w+)\\s*\\("));
        QLibrary library(QStringLiteral(SDK_LIBRARY_PATH));
        QVERIFY2(library.load(), qPrintable(library.errorString()));
        QStringList names;
        for (auto it = declaration.globalMatch(QString::fromLatin1(header.readAll())); it.hasNext();)
            names << it.next().captured(1);
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
