// CommonUtils and Change: settings and thread counts from several threads, recorded message boxes
// that never block, a missing language file, the bounded wait for a thread.
#include "HostFixture.h"

#include "Change.h"
#include "CommonUtils.h"
#include "HostFramework.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QRegularExpression>
#include <QtCore/QSemaphore>
#include <QtCore/QThread>
#include <QtTest/QSignalSpy>
#include <QtTest/QtTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QMessageBox>

#include <memory>
#include <vector>

namespace {

// A SIM dialog text present in every language file.
const char kSimKey[] = "IDS_PIN_CHECK_FAILED";

int callBox(const QString& function, int icon, QWidget* parent, const QString& title, const QString& text,
            const QString& button1, const QString& button2)
{
    if (function == QLatin1String("ShowMessageCustomize"))
        return CommonUtils::ShowMessageCustomize(icon, parent, title, text, button1, button2);
    return CommonUtils::ShowMessage(icon, parent, title, text, button1, button2);
}

} // namespace

class tst_HostCommon : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { m_host.init(); }
    void init() { m_host.beginTest(); }
    void cleanup();
    void cleanupTestCase() { m_host.shutdown(); }

    void settingsFromSeveralThreads();

    void queuedAnswerIsRecordedNotShown_data();
    void queuedAnswerIsRecordedNotShown();
    void boxOffTheGuiThreadNeverBlocks();

    void missingLanguageKeepsCurrent();

    void waitForThreadToStop_data();
    void waitForThreadToStop();
    void threadCountFromSeveralThreads();

private:
    HostFixture m_host;
};

void tst_HostCommon::cleanup()
{
    HostFramework::setNonInteractive(true);
    Change::LoadLanguage(QString());
    QVERIFY2(m_host.endTest(), qPrintable(m_host.lastError()));
}

// --- settings -----------------------------------------------------------------------------------

void tst_HostCommon::settingsFromSeveralThreads()
{
    const int threads = 4;
    const int rounds = 40;
    std::vector<std::unique_ptr<QThread>> workers;
    QAtomicInt mismatches;
    for (int t = 0; t < threads; ++t) {
        workers.emplace_back(QThread::create([t, &mismatches] {
            const QString section = QStringLiteral("worker%1").arg(t);
            for (int i = 0; i < rounds; ++i) {
                const QString value = QString::number(i);
                CommonUtils::SetSettings(section, QStringLiteral("round"), value);
                if (CommonUtils::GetSettings(section, QStringLiteral("round")) != value)
                    mismatches.ref();
            }
        }));
        workers.back()->start();
    }
    for (auto& w : workers)
        QVERIFY(w->wait(30000));
    QCOMPARE(mismatches.loadRelaxed(), 0);
    for (int t = 0; t < threads; ++t)
        QCOMPARE(CommonUtils::GetSettings(QStringLiteral("worker%1").arg(t), QStringLiteral("round")),
                 QString::number(rounds - 1));
}

// --- message boxes ------------------------------------------------------------------------------

void tst_HostCommon::queuedAnswerIsRecordedNotShown_data()
{
    QTest::addColumn<QString>("function");
    QTest::addColumn<int>("icon");
    QTest::addColumn<bool>("withParent");
    QTest::addColumn<QString>("button1");
    QTest::addColumn<QString>("button2");
    QTest::addColumn<int>("answer");

    QTest::newRow("question, first button")
        << "ShowMessage" << int(QMessageBox::Question) << true << "IDS_YES"
        << "IDS_NO" << int(MSGBOX_ACCEPTED);
    QTest::newRow("warning, one button, no parent")
        << "ShowMessage" << int(QMessageBox::Warning) << false << "IDS_OK"
        << "" << int(MSGBOX_ACCEPTED);
}

void tst_HostCommon::queuedAnswerIsRecordedNotShown()
{
    QFETCH(QString, function);
    QFETCH(int, icon);
    QFETCH(bool, withParent);
    QFETCH(QString, button1);
    QFETCH(QString, button2);
    QFETCH(int, answer);

    QWidget* parent = withParent ? m_host.mainWindow() : nullptr;
    QSignalSpy spy(HostFramework::Monitor::instance(), &HostFramework::Monitor::messageRecorded);
    HostFramework::pushNextAnswer(answer);
    QCOMPARE(callBox(function, icon, parent, QStringLiteral("IDS_PROMPT_CAPTION"), QStringLiteral("IDS_TEXT"),
                     button1, button2),
             answer);
    QCOMPARE(HostFramework::pendingAnswers(), 0);
    QVERIFY(!QApplication::activeModalWidget());

    const auto records = HostFramework::messageRecords();
    QCOMPARE(records.size(), 1);
    const HostFramework::MessageRecord& r = records.first();
    QCOMPARE(r.function, function);
    QCOMPARE(r.icon, icon);
    QCOMPARE(r.parent.data(), parent);
    QCOMPARE(r.parentName, withParent ? QStringLiteral("TestMainWindow") : QString());
    QCOMPARE(r.title, QStringLiteral("IDS_PROMPT_CAPTION"));
    QCOMPARE(r.text, QStringLiteral("IDS_TEXT"));
    QCOMPARE(r.buttons, button2.isEmpty() ? QStringList{button1} : QStringList({button1, button2}));
    QCOMPARE(r.answer, answer);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).value<HostFramework::MessageRecord>().title,
             QStringLiteral("IDS_PROMPT_CAPTION"));
}

void tst_HostCommon::boxOffTheGuiThreadNeverBlocks()
{
    HostFramework::setNonInteractive(false);
    int withoutAnswer = -1;
    int withAnswer = -1;
    HostFramework::pushNextAnswer(MSGBOX_ACCEPTED);
    std::unique_ptr<QThread> worker(QThread::create([&] {
        withAnswer = CommonUtils::ShowMessage(QMessageBox::Information, nullptr, QStringLiteral("queued"),
                                              QString(), QStringLiteral("IDS_OK"));
        withoutAnswer =
            CommonUtils::ShowMessage(QMessageBox::Information, nullptr, QStringLiteral("not queued"),
                                     QString(), QStringLiteral("IDS_OK"));
    }));
    worker->start();
    QVERIFY(worker->wait(10000));
    QCOMPARE(withAnswer, int(MSGBOX_ACCEPTED));
    QCOMPARE(withoutAnswer, 0);
    QCOMPARE(HostFramework::messageRecords().size(), 2);
}

// --- translations -------------------------------------------------------------------------------

void tst_HostCommon::missingLanguageKeepsCurrent()
{
    QVERIFY(Change::LoadLanguage(QStringLiteral("de")));
    const QString german = Change::tr(QString::fromLatin1(kSimKey));
    QVERIFY(Change::LoadLanguage(QStringLiteral("en")));
    QVERIFY(Change::tr(QString::fromLatin1(kSimKey)) != german);
    QVERIFY(Change::LoadLanguage(QStringLiteral("de")));

    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("no tessaro_xx.qm")));
    QVERIFY(!Change::LoadLanguage(QStringLiteral("xx")));
    QCOMPARE(Change::CurrentLanguage(), QStringLiteral("de"));
    QCOMPARE(Change::tr(QString::fromLatin1(kSimKey)), german);

    // A language folder without the file: nothing loads.
    QTemporaryDir empty;
    HostFramework::setLanguageDir(empty.path());
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("no tessaro_en.qm")));
    const bool loaded = Change::LoadLanguage(QStringLiteral("en"));
    HostFramework::setLanguageDir(QStringLiteral(TESSARO_LANG_DIR));
    QVERIFY(!loaded);
    QCOMPARE(Change::tr(QString::fromLatin1(kSimKey)), german);
}

// --- threads and flags --------------------------------------------------------------------------

void tst_HostCommon::waitForThreadToStop_data()
{
    QTest::addColumn<bool>("releaseFirst");
    QTest::addColumn<bool>("stopped");

    QTest::newRow("stops in time") << true << true;
    QTest::newRow("still busy after the wait") << false << false;
}

void tst_HostCommon::waitForThreadToStop()
{
    QFETCH(bool, releaseFirst);
    QFETCH(bool, stopped);

    QSemaphore go;
    std::unique_ptr<QThread> thread(QThread::create([&go] { go.acquire(); }));
    thread->start();
    if (releaseFirst)
        go.release();
    QElapsedTimer timer;
    timer.start();
    if (!stopped)
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("still running after 1 s")));
    QCOMPARE(CommonUtils::WaitForThreadToStop(thread.get(), 1), stopped);
    const qint64 waited = timer.elapsed();
    if (!stopped) {
        // Bounded: about the second asked for, never indefinitely.
        QVERIFY2(waited >= 900 && waited < 5000, qPrintable(QString::number(waited)));
        QVERIFY(thread->isRunning());
        go.release();
        QVERIFY(CommonUtils::WaitForThreadToStop(thread.get(), 5));
    }
    QVERIFY(thread->isFinished());
}

void tst_HostCommon::threadCountFromSeveralThreads()
{
    const int threads = 6;
    const int rounds = 200;
    std::vector<std::unique_ptr<QThread>> workers;
    for (int t = 0; t < threads; ++t) {
        workers.emplace_back(QThread::create([t] {
            const QString who = QStringLiteral("worker%1").arg(t);
            for (int i = 0; i < rounds; ++i)
                CommonUtils::ThreadCountInc(who);
            for (int i = 0; i < rounds / 2; ++i)
                CommonUtils::ThreadCountDec(who);
        }));
    }
    // Counting logs a line per call; keep the test output readable.
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    for (auto& w : workers)
        w->start();
    bool allStopped = true;
    for (auto& w : workers)
        allStopped = CommonUtils::WaitForThreadToStop(w.get(), 30) && allStopped;
    QLoggingCategory::setFilterRules(QString());
    QVERIFY(allStopped);
    QCOMPARE(CommonUtils::ThreadCount(), threads * rounds / 2);
    QVERIFY(CommonUtils::WaitForThreadToStop(nullptr, 1));
}

QTEST_MAIN(tst_HostCommon)
#include "tst_hostcommon.moc"
