// The host application from the outside: what a person sees on the command line, and the offscreen
// demo playing the shipped scenarios, typing into the SIM dialogs' fields and pressing their buttons
// as a person would (a field or button missing from the screen fails the demo; the messages the user
// got are read from its report).
#include "Change.h"
#include "HostFramework.h"

#include <QtCore/QDir>
#include <QtCore/QProcess>
#include <QtCore/QRegularExpression>
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

// Runs the application; `support` is the host's card-lock customisation ("" for none), written to
// the settings under a fresh user configuration folder.
Run runApp(const QStringList& args, const QString& support = QString())
{
    QTemporaryDir config;
    QDir(config.path()).mkpath(QStringLiteral("Tessaro"));
    QFile ini(config.filePath(QStringLiteral("Tessaro/tessaro.ini")));
    if (ini.open(QIODevice::WriteOnly) && !support.isEmpty())
        ini.write(QStringLiteral("[support]\ntype=%1\n").arg(support).toLatin1());
    ini.close();
    QProcess process;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    env.insert(QStringLiteral("XDG_CONFIG_HOME"), config.path());
    process.setProcessEnvironment(env);
    process.start(QStringLiteral(TESSARO_APP), args);
    Run run;
    run.finished = process.waitForFinished(180000);
    if (!run.finished)
        process.kill();
    run.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    run.out = QString::fromLocal8Bit(process.readAllStandardOutput());
    run.err = QString::fromLocal8Bit(process.readAllStandardError());
    return run;
}

QString scenario(const QString& name)
{
    return QStringLiteral(TESSARO_SOURCE_DIR "/scenarios/") + name;
}

// How the non-interactive host reports a message box it answered (title and text, in English).
QString box(const char* textKey)
{
    return QStringLiteral("\"%1\" / \"%2\"")
        .arg(Change::tr(QStringLiteral("IDS_MAINFRM_PROMPT")), Change::tr(QLatin1String(textKey)));
}

} // namespace

class tst_App : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        HostFramework::setLanguageDir(QStringLiteral(TESSARO_LANG_DIR));
        QVERIFY(Change::LoadLanguage(QStringLiteral("en")));
    }

    // Bad arguments and a malformed scenario stop the application before anything starts, naming
    // what is wrong; good ones start it with the plugin loaded, and it quits cleanly on its own.
    void commandLine_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("message");
        QTest::newRow("unknown option") << QStringList{"--bogus"} << 2 << "bogus";
        QTest::newRow("missing scenario")
            << QStringList{"--scenario", "/nonexistent/s.json"} << 2 << "/nonexistent/s.json";
        QTest::newRow("language") << QStringList{"--lang", "fr"} << 2 << "fr";
        QTest::newRow("plugin root") << QStringList{"--plugin-root", "/"} << 2 << "plugins";
        QTest::newRow("malformed scenario")
            << QStringList{"--scenario", "broken.json"} << 1 << "broken.json: devices[0]";
        QTest::newRow("starts and quits")
            << QStringList{"--scenario", scenario("default.json"), "--quit-after", "1500"} << 0 << "";
    }
    void commandLine()
    {
        QFETCH(QStringList, args);
        QFETCH(QString, message);
        QTemporaryDir dir;
        QFile broken(dir.filePath(QStringLiteral("broken.json")));
        QVERIFY(broken.open(QIODevice::WriteOnly));
        broken.write(R"({"name": "broken", "devices": [{"name": 5}]})");
        broken.close();
        args.replaceInStrings(QRegularExpression(QStringLiteral("^broken.json$")), broken.fileName());
        const Run run = runApp(args);
        QVERIFY(run.finished);
        QTEST(run.exitCode, "exitCode");
        QVERIFY2(run.err.contains(message), qPrintable(run.err));
        QVERIFY2(!run.err.contains(QLatin1String("cannot load plugin")), qPrintable(run.err));
        QVERIFY(run.out.isEmpty());
    }

    // The demo writes the opening picture and one per step, and an index naming them.
    void demoPlaysTheScenario_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("support");
        QTest::addColumn<int>("steps"); // -1: as many as the scenario has
        QTest::addColumn<QStringList>("boxes");
        const QString none;
        QTest::newRow("tour") << "demo.json" << none << -1 << QStringList();
        QTest::newRow("PUK asked at start-up")
            << "puk-locked.json" << none << 3
            << QStringList{box("IDS_PIN_PUK_FAILED"), box("IDS_MAINFRM_UNLOCKPIN_SUCCESS")};
        QTest::newRow("PIN dialogs from the menu")
            << "sim-dialogs.json" << none << 8
            << QStringList{box("IDS_MAINFRM_ENABLEPIN_SUCCESS"), box("IDS_MAINFRM_CHANGEPIN_SUCCESS"),
                           box("IDS_MAINFRM_DISABLEPIN_SUCCESS")};
        QTest::newRow("network-locked card, unlock allowed") << "network-locked.json"
                                                             << "0" << 3 << QStringList();
    }
    void demoPlaysTheScenario()
    {
        QFETCH(QString, file);
        QFETCH(QString, support);
        QFETCH(int, steps);
        QFETCH(QStringList, boxes);
        QTemporaryDir dir;
        const QString out = dir.filePath(QStringLiteral("demo"));
        const Run run =
            runApp({QStringLiteral("--scenario"), scenario(file), QStringLiteral("--demo"), out}, support);
        QVERIFY(run.finished);
        QVERIFY2(run.exitCode == 0, qPrintable(run.err.right(2000)));
        QFile index(QDir(out).filePath(QStringLiteral("index.txt")));
        QVERIFY(index.open(QIODevice::ReadOnly));
        const QStringList lines =
            QString::fromUtf8(index.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        QVERIFY(steps < 0 ? lines.size() >= 2 : lines.size() == steps + 1);
        for (const QString& line : lines) {
            const QString picture = line.section(QLatin1Char('\t'), 0, 0);
            const QImage image(QDir(out).filePath(picture));
            QVERIFY2(image.width() >= 400 && image.height() >= 300, qPrintable(picture));
            QVERIFY(run.out.contains(picture));
        }
        for (const QString& expected : boxes)
            QVERIFY2(run.err.contains(expected), qPrintable(expected));
        // The codes typed in the demo never show in its output.
        for (const char* code : {"87654321", "11112222"})
            QVERIFY2(!run.err.contains(QLatin1String(code)) && !run.out.contains(QLatin1String(code)), code);
    }
};

QTEST_MAIN(tst_App)
#include "tst_app.moc"
