// The SIM dialogs in the real application: the offscreen demo plays the shipped scenarios, typing
// into the dialogs' fields and pressing their buttons as a person would. A field or button missing
// from the screen fails the demo; the messages the user got are read from its report.
#include "Change.h"
#include "HostFramework.h"

#include <QtCore/QDir>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#include <QtGui/QImage>
#include <QtTest/QtTest>

namespace {

struct Run
{
    int exitCode = -1;
    QString err;
    QStringList index;
};

// Runs the demo of `scenario`; `support` is the host's card-lock customisation ("" for none).
Run runDemo(const QString& scenario, const QString& outDir, const QString& support = QString())
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
    // The host keeps its settings under the user's configuration folder.
    env.insert(QStringLiteral("XDG_CONFIG_HOME"), config.path());
    process.setProcessEnvironment(env);
    process.start(QStringLiteral(TESSARO_APP),
                  {QStringLiteral("--scenario"), QStringLiteral(TESSARO_SOURCE_DIR "/scenarios/") + scenario,
                   QStringLiteral("--demo"), outDir});
    Run run;
    if (!process.waitForFinished(180000)) {
        process.kill();
        process.waitForFinished();
        return run;
    }
    run.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    run.err = QString::fromLocal8Bit(process.readAllStandardError());
    QFile index(QDir(outDir).filePath(QStringLiteral("index.txt")));
    if (index.open(QIODevice::ReadOnly))
        run.index = QString::fromUtf8(index.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    return run;
}

// How the non-interactive host reports a message box it answered (title and text, in English).
QString box(const char* textKey)
{
    return QStringLiteral("\"%1\" / \"%2\"")
        .arg(Change::tr(QStringLiteral("IDS_MAINFRM_PROMPT")), Change::tr(QLatin1String(textKey)));
}

} // namespace

class tst_SimDemo : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        HostFramework::setLanguageDir(QStringLiteral(TESSARO_LANG_DIR));
        QVERIFY(Change::LoadLanguage(QStringLiteral("en")));
    }

    void demoDrivesTheDialogs_data()
    {
        QTest::addColumn<QString>("scenario");
        QTest::addColumn<QString>("support");
        QTest::addColumn<int>("steps");
        QTest::addColumn<QStringList>("boxes");
        QTest::newRow("PIN asked at start-up") << "gsm-pin.json"
                                               << "" << 3 << QStringList{box("IDS_PIN_CHECK_FAILED")};
        QTest::newRow("PUK asked at start-up")
            << "puk-locked.json"
            << "" << 3 << QStringList{box("IDS_PIN_PUK_FAILED"), box("IDS_MAINFRM_UNLOCKPIN_SUCCESS")};
        QTest::newRow("PIN dialogs from the menu")
            << "sim-dialogs.json"
            << "" << 8
            << QStringList{box("IDS_MAINFRM_ENABLEPIN_SUCCESS"), box("IDS_MAINFRM_CHANGEPIN_SUCCESS"),
                           box("IDS_MAINFRM_DISABLEPIN_SUCCESS")};
        QTest::newRow("network-locked card, unlock allowed") << "network-locked.json"
                                                             << "0" << 3 << QStringList();
    }
    void demoDrivesTheDialogs()
    {
        QFETCH(QString, scenario);
        QFETCH(QString, support);
        QFETCH(int, steps);
        QFETCH(QStringList, boxes);
        QTemporaryDir out;
        const Run run = runDemo(scenario, out.path(), support);
        QVERIFY2(run.exitCode == 0, qPrintable(run.err.right(2000)));
        QCOMPARE(run.index.size(), steps + 1);
        for (const QString& line : run.index) {
            const QImage image(QDir(out.path()).filePath(line.section(QLatin1Char('\t'), 0, 0)));
            QVERIFY2(!image.isNull(), qPrintable(line));
        }
        for (const QString& expected : boxes)
            QVERIFY2(run.err.contains(expected), qPrintable(expected));
        // The codes typed in the demo never show in its output.
        for (const char* code : {"87654321", "11112222"})
            QVERIFY2(!run.err.contains(QLatin1String(code)), code);
    }
};

QTEST_MAIN(tst_SimDemo)
#include "tst_simdemo.moc"
