// The host application from the outside: what a person sees on the command line and on screen.
#include <QtCore/QDir>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#include <QtGui/QImage>
#include <QtTest/QtTest>

namespace {

struct Run
{
    int exitCode = -1;
    QString out;
    QString err;
    bool finished = false;
};

Run runApp(const QStringList& args, int timeoutMs = 120000)
{
    QProcess process;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    process.setProcessEnvironment(env);
    process.start(QStringLiteral(TESSARO_APP), args);
    Run run;
    run.finished = process.waitForFinished(timeoutMs);
    if (!run.finished)
        process.kill();
    run.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    run.out = QString::fromLocal8Bit(process.readAllStandardOutput());
    run.err = QString::fromLocal8Bit(process.readAllStandardError());
    return run;
}

QString scenario(const char* name)
{
    return QStringLiteral(TESSARO_SOURCE_DIR "/scenarios/") + QLatin1String(name);
}

} // namespace

class tst_App : public QObject
{
    Q_OBJECT

private slots:
    void help()
    {
        const Run run = runApp({QStringLiteral("--help")});
        QVERIFY(run.finished);
        QCOMPARE(run.exitCode, 0);
        QVERIFY(run.out.contains(QLatin1String("--scenario")));
        QVERIFY(run.out.contains(QLatin1String("--demo")));
    }

    void badArguments_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("message");
        QTest::newRow("unknown option") << QStringList{QStringLiteral("--bogus")} << 2 << "bogus";
        QTest::newRow("stray argument") << QStringList{QStringLiteral("extra")} << 2 << "extra";
        QTest::newRow("missing scenario")
            << QStringList{QStringLiteral("--scenario"), QStringLiteral("/nonexistent/s.json")} << 2
            << "/nonexistent/s.json";
        QTest::newRow("scenario without file")
            << QStringList{QStringLiteral("--scenario")} << 2 << "scenario";
        QTest::newRow("language") << QStringList{QStringLiteral("--lang"), QStringLiteral("fr")} << 2 << "fr";
        QTest::newRow("quit-after") << QStringList{QStringLiteral("--quit-after"), QStringLiteral("soon")}
                                    << 2 << "soon";
        QTest::newRow("plugin root") << QStringList{QStringLiteral("--plugin-root"), QStringLiteral("/")} << 2
                                     << "plugins";
    }
    void badArguments()
    {
        QFETCH(QStringList, args);
        QFETCH(int, exitCode);
        QFETCH(QString, message);
        const Run run = runApp(args);
        QVERIFY(run.finished);
        QCOMPARE(run.exitCode, exitCode);
        QVERIFY2(run.err.contains(message), qPrintable(run.err));
        QVERIFY(run.out.isEmpty());
    }

    // A malformed scenario stops the application before anything starts, naming file and field.
    void malformedScenario()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("broken.json"));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(R"({"name": "broken", "devices": [{"name": 5}]})");
        file.close();
        const Run run = runApp({QStringLiteral("--scenario"), path});
        QVERIFY(run.finished);
        QCOMPARE(run.exitCode, 1);
        QVERIFY2(run.err.contains(QLatin1String("broken.json")), qPrintable(run.err));
        QVERIFY2(run.err.contains(QLatin1String("devices[0]")), qPrintable(run.err));
    }

    // The application starts with the plugin loaded, and quits cleanly on its own.
    void startsAndQuits()
    {
        const Run run = runApp({QStringLiteral("--scenario"), scenario("default.json"),
                                QStringLiteral("--quit-after"), QStringLiteral("1500")});
        QVERIFY(run.finished);
        QCOMPARE(run.exitCode, 0);
        QVERIFY2(!run.err.contains(QLatin1String("cannot load plugin")), qPrintable(run.err));
    }

    // The demo writes the opening picture and one per step, and an index naming them.
    void demoWritesOnePicturePerStep()
    {
        QTemporaryDir dir;
        const QString out = dir.filePath(QStringLiteral("demo"));
        const Run run =
            runApp({QStringLiteral("--scenario"), scenario("demo.json"), QStringLiteral("--demo"), out});
        QVERIFY(run.finished);
        QVERIFY2(run.exitCode == 0, qPrintable(run.err));
        QFile index(QDir(out).filePath(QStringLiteral("index.txt")));
        QVERIFY(index.open(QIODevice::ReadOnly));
        const QStringList lines =
            QString::fromUtf8(index.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        QVERIFY(lines.size() >= 2);
        for (const QString& line : lines) {
            const QString file = line.section(QLatin1Char('\t'), 0, 0);
            QImage image(QDir(out).filePath(file));
            QVERIFY2(!image.isNull(), qPrintable(file));
            QVERIFY(image.width() >= 400 && image.height() >= 300);
            QVERIFY(run.out.contains(file));
        }
    }
};

QTEST_GUILESS_MAIN(tst_App)
#include "tst_app.moc"
