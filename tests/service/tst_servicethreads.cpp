// The service under events from several SDK threads at once: per-thread order, the quit flag in the
// middle of a storm, and tear-down while callbacks are still being called. Run under ThreadSanitizer
// as well.
#include "ServiceTestSupport.h"

#include "CommonUtils.h"
#include "HostFixture.h"

#include <QtWidgets/QApplication>
#include <QtWidgets/QMainWindow>

#include <thread>

namespace {

constexpr int kThreads = 4;
// Event codes nobody handles, carrying the sending thread and a sequence number: the handler's
// "unknown event" path, which lets the test read the order in which they arrived.
constexpr int kTagBase = 1000000;
constexpr int kTagStride = 100000;

int tag(int thread, int seq)
{
    return kTagBase + thread * kTagStride + seq;
}

// Counts log lines by fragment from any thread without keeping them.
std::atomic<int> g_quitDrops{0};
std::atomic<int> g_handlerDrops{0};

void countDrops(QtMsgType, const QMessageLogContext&, const QString& message)
{
    if (message.contains(QLatin1String("Events ignored: App Shutting down ")))
        g_quitDrops.fetch_add(1);
    if (message.contains(QLatin1String("signals ignored: App Shutting down ")))
        g_handlerDrops.fetch_add(1);
}

// One SDK thread: a mix of the first `kinds` kinds of event the callbacks take (8: all), each with
// its data. Kind 0 is the tagged unknown event.
void storm(int thread, int count, int kinds, const std::atomic<bool>* go)
{
    while (!go->load())
        std::this_thread::yield();
    const std::vector<unsigned char> list = svc::deviceList(1 + thread % 2);
    for (int i = 0; i < count; ++i) {
        uint32_t words[2] = {uint32_t(i % 2), 1u};
        switch (i % kinds) {
        case 0:
            CDeviceMgrService::OnDevMgrEventsCB(tag(thread, i), nullptr);
            break;
        case 1:
            CDeviceMgrService::OnDevMgrEventsCB(ZELK_EVENT_DEV_SIM_STATE_CHANGE, words);
            break;
        case 2:
            CDeviceMgrService::OnDevMgrEventsCB(ZELK_EVENT_DEV_RF_SWITCH, words);
            break;
        case 3:
            CDeviceMgrService::OnDevMgrEventsCB(ZELK_EVENT_DEV_DETECTED,
                                                const_cast<unsigned char*>(list.data()));
            break;
        case 4:
            CDeviceMgrService::OnDeviceMgrInitEvent(ZELK_EVENT_DEV_INIT_START, nullptr);
            break;
        case 5:
            CDeviceMgrService::OnDevMgrEventsCB(ZELK_EVENT_DEV_FP_VERIFY, words);
            break;
        case 6:
            CDeviceMgrService::OnDeviceMgrInitEvent(ZELK_EVENT_DEV_DEVICE_INIT_FINISH, nullptr);
            break;
        default:
            CDeviceMgrService::OnDevMgrEventsCB(ZELK_EVENT_DEV_POWER, words);
            break;
        }
    }
}

} // namespace

class tst_ServiceThreads : public QObject
{
    Q_OBJECT

private:
    HostFixture m_host;
    CDeviceMgrService* m_service = nullptr;

private slots:
    void initTestCase() { m_host.init(); }
    void init()
    {
        m_host.beginTest();
        zelk::sim::reset();
        svc::resetHandled();
        g_quitDrops.store(0);
        g_handlerDrops.store(0);
        qInstallMessageHandler(&countDrops);
        // Started, with the frame shown: every event has a handler that acts on it.
        m_service = CDeviceMgrService::instance();
        QVERIFY(m_service->Init());
        m_service->Notify(NTF_FRAME_SHOWN, 0, 0);
    }
    void cleanup()
    {
        svc::stopService();
        qInstallMessageHandler(nullptr);
        QVERIFY2(m_host.endTest(), qPrintable(m_host.lastError()));
    }
    void cleanupTestCase() { m_host.shutdown(); }

    void eventsKeepTheirOrderPerThread()
    {
        constexpr int perThread = 400;
        std::atomic<bool> go{false};
        std::vector<std::thread> threads;
        for (int t = 0; t < kThreads; ++t)
            threads.emplace_back(storm, t, perThread, 1, &go);
        // The simulated card's own delivery thread joins in.
        for (int i = 0; i < perThread; ++i)
            svc::inject(tag(kThreads, i));
        go.store(true);
        for (auto& t : threads)
            t.join();
        QVERIFY(svc::settle((kThreads + 1) * perThread));
        QVector<int> next(kThreads + 1, 0);
        for (int event : qAsConst(svc::g_handledEvents)) {
            const int t = (event - kTagBase) / kTagStride;
            const int seq = (event - kTagBase) % kTagStride;
            QVERIFY(t >= 0 && t <= kThreads);
            QCOMPARE(seq, next[t]);
            ++next[t];
        }
    }

    void stormWithQuitInTheMiddle()
    {
        constexpr int perThread = 2000;
        std::atomic<bool> go{false};
        std::vector<std::thread> threads;
        for (int t = 0; t < kThreads; ++t)
            threads.emplace_back(storm, t, perThread, 8, &go);
        for (int i = 0; i < 200; ++i)
            svc::inject(ZELK_EVENT_DEV_SIM_STATE_CHANGE, {uint32_t(i % 3)});
        go.store(true);
        // Let part of the storm through the GUI thread, then quit while it still rages.
        QTRY_VERIFY_WITH_TIMEOUT(svc::g_handled.load() > 200, 10000);
        m_service->appQuitStop();
        QVERIFY(m_service->isAppQuit());
        QVERIFY(CommonUtils::IsShuttingDown());
        const int sentAtQuit = HostFramework::notificationRecords().size();
        const int handledAtQuit = svc::g_handled.load();
        for (auto& t : threads)
            t.join();
        QVERIFY(zelk::sim::waitForIdle(5000));
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
        // Whatever was still queued reached the two event handlers and was dropped there: the only
        // notifications after the quit come from radio and power signals emitted before it, whose
        // slots do not look at the quit flag.
        const auto records = HostFramework::notificationRecords();
        for (int i = sentAtQuit; i < records.size(); ++i) {
            const unsigned int code = records.at(i).code;
            QVERIFY2(code == NTF_RADIO_OFF || code == NTF_RADIO_ON || code == NTF_RADIO_FOUND_OFF ||
                         code == NTF_POWER_EVENT,
                     qPrintable(QString::number(code)));
        }
        QVERIFY(svc::g_handled.load() >= handledAtQuit);
        QVERIFY(g_quitDrops.load() > 0);
        // From now on the device-manager callback emits nothing at all.
        const int handled = svc::g_handled.load();
        const int drops = g_quitDrops.load();
        CDeviceMgrService::OnDevMgrEventsCB(ZELK_EVENT_DEV_SIM_STATE_CHANGE, nullptr);
        CDeviceMgrService::OnDevMgrEventsCB(tag(0, 0), nullptr);
        QCoreApplication::sendPostedEvents();
        QCOMPARE(svc::g_handled.load(), handled);
        QCOMPARE(g_quitDrops.load(), drops + 2);
        // Init events are still emitted, and dropped by their handler.
        const int handlerDrops = g_handlerDrops.load();
        CDeviceMgrService::OnDeviceMgrInitEvent(ZELK_EVENT_DEV_INIT_START, nullptr);
        QTRY_COMPARE(svc::g_handled.load(), handled + 1);
        QCOMPARE(g_handlerDrops.load(), handlerDrops + 1);
        QCOMPARE(HostFixture::visibleTopLevels().size(), 0);
    }

    void destroyWhileCallbacksRun()
    {
        std::atomic<bool> go{false};
        std::vector<std::thread> threads;
        for (int t = 0; t < kThreads; ++t)
            threads.emplace_back(storm, t, 3000, 8, &go);
        go.store(true);
        QTRY_VERIFY_WITH_TIMEOUT(svc::g_handled.load() > 100, 10000);
        // The host's order at unload: callbacks withdrawn, then the service destroyed, while the
        // SDK threads are still calling in.
        m_service->unSDKRegisterEvent();
        CDeviceMgrService::Destroy();
        const int handled = svc::g_handled.load();
        for (auto& t : threads)
            t.join();
        // The threads may all have ended before the tear-down: late callbacks, played once more.
        CDeviceMgrService::OnDevMgrEventsCB(ZELK_EVENT_DEV_SIM_STATE_CHANGE, nullptr);
        CDeviceMgrService::OnDeviceMgrInitEvent(ZELK_EVENT_DEV_DEVICE_INIT_FINISH, nullptr);
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
        QCOMPARE(svc::g_handled.load(), handled);
        QCOMPARE(HostFixture::visibleTopLevels().size(), 0);
        // A second tear-down is harmless.
        CDeviceMgrService::Destroy();
    }
};

QTEST_MAIN(tst_ServiceThreads)
#include "tst_servicethreads.moc"
