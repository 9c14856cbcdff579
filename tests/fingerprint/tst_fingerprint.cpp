// The fingerprint lock through the simulated card: start-up events held while the finger is awaited
// and replayed afterwards, the reader's texts on the prompt, and shut-down at any point of the lock.
#include "SimTestSupport.h"

#include "DevCheckFPThread.h"
#include "HostFixture.h"

#include <QtCore/QElapsedTimer>

using namespace simtest;

static const QString kPrompt = QStringLiteral("DeviceMgrUI_fplockInfoDlg");
static const QString kGeneral = QStringLiteral("IDS_FPLOCK_PROMPT");
static QList<int> g_seen; // events reaching a GUI-thread handler, and when
static QList<qint64> g_at;

class tst_Fingerprint : public QObject
{
    Q_OBJECT

    HostFixture m_host;
    CDeviceMgrService* m_service = nullptr;

    static void record(int event) { g_seen << event, g_at << QDateTime::currentMSecsSinceEpoch(); }
    static QString prompt() { return labelText(kPrompt, QStringLiteral("DeviceMgrUI_fplabelInfoLabel")); }
    DevCheckFPThread* thread() const { return m_service->fpThread(); }

    // The card's lock event and the start-up events behind it; the prompt is on screen.
    void lock(const QVector<int>& held = {})
    {
        for (int event : QVector<int>{ZELK_EVENT_DEV_FP_LOCK} + held)
            svc::inject(event);
        QTRY_VERIFY(window(kPrompt));
        QVERIFY(zelk::sim::waitForIdle(5000));
        QCOMPARE(thread()->notifyList(), held);
    }

    void state(int value)
    {
        const int before = g_seen.size();
        svc::inject(ZELK_EVENT_DEV_FP_VERIFY, {static_cast<uint32_t>(value)});
        QTRY_VERIFY(g_seen.size() > before);
    }

private slots:
    void initTestCase() { m_host.init(); }
    void init()
    {
        m_host.beginTest();
        zelk::sim::reset();
        g_seen.clear(), g_at.clear();
        svc::startLogCapture();
        QVERIFY((m_service = startService()));
        CDeviceMgrService::setHandlerProbe(&record);
    }
    void cleanup()
    {
        svc::stopService();
        qInstallMessageHandler(nullptr);
        QVERIFY2(m_host.endTest(), qPrintable(m_host.lastError()));
    }
    void cleanupTestCase() { m_host.shutdown(); }

    void heldEventsFollowTheFingerInArrivalOrderOneASecond()
    {
        lock({ZELK_EVENT_DEV_INIT_START, ZELK_EVENT_DEV_DEVICE_NO_PIN});
        QCOMPARE(g_seen, QList<int>{ZELK_EVENT_DEV_FP_LOCK});
        state(ZELK_VERIFYIND_GOOD_IMAGE);
        QTRY_COMPARE_WITH_TIMEOUT(
            g_seen.mid(2), (QList<int>{ZELK_EVENT_DEV_INIT_START, ZELK_EVENT_DEV_DEVICE_NO_PIN}), 4000);
        QVERIFY2(g_at[2] - g_at[1] >= 900 && g_at[3] - g_at[2] >= 900, "replays are not a second apart");
    }

    void shutDownEndsTheThreadAndDropsWhatIsHeld_data()
    {
        QTest::addColumn<int>("replayed"); // -1: still locked at the quit; 2: the thread has ended
        QTest::newRow("locked") << -1;
        QTest::newRow("replaying") << 1;
        QTest::newRow("idle") << 2;
    }
    void shutDownEndsTheThreadAndDropsWhatIsHeld()
    {
        QFETCH(int, replayed);
        const bool idle = replayed == 2;
        lock(idle ? QVector<int>() : QVector<int>{ZELK_EVENT_DEV_INIT_START, ZELK_EVENT_DEV_DEVICE_NO_PIN});
        if (replayed >= 0) {
            state(ZELK_VERIFYIND_GOOD_IMAGE);
            QTRY_VERIFY_WITH_TIMEOUT(g_seen.size() >= 2 + (idle ? 0 : replayed), 4000);
        }
        // With nothing held, the run ends a second after the finger.
        QTRY_COMPARE(thread()->isRunning(), !idle);
        const int delivered = g_seen.size();
        m_service->appQuitStop();
        QTRY_VERIFY_WITH_TIMEOUT(!thread()->isRunning(), 1000);
        QVERIFY(thread()->notifyList().isEmpty());
        QCoreApplication::sendPostedEvents();
        QCOMPARE(g_seen.size(), delivered);
        QCOMPARE(svc::logCount(QStringLiteral("Events ignored: App Shutting down ")) > 0, !idle);
    }

    void readerStatesShowTheirText_data()
    {
        QTest::addColumn<int>("value");
        QTest::addColumn<QString>("key");
        // clang-format off
        const QList<QPair<int, const char*>> rows = {
            {0, "IDS_GUIMSG_GOOD_IMAGE"}, {1, "IDS_GUIMSG_NO_FINGER"}, {7, "IDS_GUIMSG_TOO_LEFT"},
            {40, "IDS_GUIMSG_ENROLL_PROGRESS"}, {255, "IDS_GUIMSG_NO_MATCH"}, {41, "IDS_FPLOCK_PROMPT"},
            {256, "IDS_FPLOCK_PROMPT"}};
        // clang-format on
        for (const auto& row : rows)
            QTest::newRow(qPrintable(QString::number(row.first)))
                << row.first << QString::fromLatin1(row.second);
    }
    void readerStatesShowTheirText()
    {
        QFETCH(int, value);
        QFETCH(QString, key);
        lock();
        QCOMPARE(prompt(), kGeneral);
        // State 0 ends the lock before any text is chosen; its text is asked for directly.
        if (value == 0)
            m_service->ChangePrompt(ZELK_VERIFYIND_GOOD_IMAGE);
        else
            state(value);
        QCOMPARE(prompt(), key);
        QVERIFY(thread()->isFPLocked());
    }

    void secondQuickStateReplacesTheFirstAndGetsItsFullSecond()
    {
        lock();
        state(ZELK_VERIFYIND_TOO_LEFT);
        QTest::qWait(500); // the second state comes half-way through the first one's second
        state(ZELK_VERIFYIND_NO_MATCH);
        QElapsedTimer shown;
        shown.start();
        QCOMPARE(prompt(), QStringLiteral("IDS_GUIMSG_NO_MATCH"));
        QTRY_COMPARE_WITH_TIMEOUT(prompt(), kGeneral, 3000);
        QVERIFY2(shown.elapsed() >= 900, qPrintable(QString::number(shown.elapsed())));
    }

    void verifiedAfterFrameShownDropsOnePinCheckAndDoesTheFrameWorkOnce()
    {
        svc::stopService(); // the frame comes up during the lock here
        QVERIFY((m_service = startService(false)));
        CDeviceMgrService::setHandlerProbe(&record);
        pinRequired();
        for (int event : {ZELK_EVENT_DEV_FP_LOCK, ZELK_EVENT_DEV_PIN_CHECK, ZELK_EVENT_DEV_PIN_CHECK})
            svc::inject(event);
        QTRY_VERIFY(m_service->isFPLockPending());
        m_service->Notify(NTF_FRAME_SHOWN, 0, 0);
        QVERIFY(window(kPrompt) && m_service->isFPPromptOnLaunch() && openDialogs().isEmpty());
        zelk::sim::clearCalls();
        state(ZELK_VERIFYIND_GOOD_IMAGE);
        QTRY_COMPARE(openDialogs(), QStringList{kVerifyDlg});
        QCOMPARE(thread()->notifyList(), QVector<int>{ZELK_EVENT_DEV_PIN_CHECK});
        QCOMPARE(svc::callCount("ZELK_DevSrv_GetProductType"), 1);
        QVERIFY(!window(kPrompt) && !m_service->isFPLockPending() && !m_service->isFPPromptOnLaunch());
    }

    void switchOrRejectDuringTheLockClosesThePromptAndUnlocks_data()
    {
        QTest::addColumn<int>("event");
        QTest::newRow("switch") << ZELK_EVENT_DEV_SWITCH;
        QTest::newRow("reject") << ZELK_EVENT_DEV_REJECT;
    }
    void switchOrRejectDuringTheLockClosesThePromptAndUnlocks()
    {
        QFETCH(int, event);
        lock({ZELK_EVENT_DEV_INIT_START});
        svc::injectList(event, 1);
        QTRY_VERIFY(!window(kPrompt));
        QVERIFY(!thread()->isFPLocked() && !m_service->isFPLockPending());
    }
};

QTEST_MAIN(tst_Fingerprint)
#include "tst_fingerprint.moc"
