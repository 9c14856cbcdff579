// Event dispatch: how fast SDK events cross from SDK threads to the service's GUI-thread handler,
// next to bare queued signals between two plain QObjects measured in the same run.
#include "DeviceMgrService.h"
#include "HostFramework.h"

#include <QtCore/QEventLoop>
#include <QtCore/QLoggingCategory>
#include <QtCore/QTimer>
#include <QtWidgets/QApplication>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <thread>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kEvents = 100000;
// Event codes nobody handles, carrying the sending thread and its sequence number.
constexpr int kTagBase = 1000000;
constexpr int kTagStride = 200000;

struct Run
{
    int threads = 1;
    std::vector<std::vector<Clock::time_point>> sentAt; // per thread, per sequence number
    std::vector<double> latencyUs;
    int received = 0;
    Clock::time_point start;
    Clock::time_point end;
    QEventLoop* loop = nullptr;
};

Run* g_run = nullptr;

// Handler entry, on the GUI thread.
void arrived(int event)
{
    Run& run = *g_run;
    const Clock::time_point now = Clock::now();
    const int t = (event - kTagBase) / kTagStride;
    const int seq = (event - kTagBase) % kTagStride;
    run.latencyUs.push_back(std::chrono::duration<double, std::micro>(now - run.sentAt[t][seq]).count());
    if (++run.received == kEvents) {
        run.end = now;
        run.loop->quit();
    }
}

class Sender : public QObject
{
    Q_OBJECT
signals:
    void ping(qint32 event);
};

class Receiver : public QObject
{
    Q_OBJECT
public slots:
    void onPing(qint32 event) { arrived(event); }
};

struct Figures
{
    double eventsPerSecond = 0;
    double medianUs = 0;
    double p99Us = 0;
};

// `emitOne(event)` is what one SDK thread does per event.
template<typename Emit>
Figures measure(int threads, Emit emitOne)
{
    Run run;
    run.threads = threads;
    run.sentAt.assign(threads, std::vector<Clock::time_point>(kEvents / threads + 1));
    run.latencyUs.reserve(kEvents);
    QEventLoop loop;
    run.loop = &loop;
    g_run = &run;

    std::atomic<bool> go{false};
    std::vector<std::thread> workers;
    for (int t = 0; t < threads; ++t) {
        workers.emplace_back([t, threads, &go, &run, emitOne] {
            while (!go.load())
                std::this_thread::yield();
            const int count = kEvents / threads + (t < kEvents % threads ? 1 : 0);
            for (int i = 0; i < count; ++i) {
                run.sentAt[t][i] = Clock::now();
                emitOne(kTagBase + t * kTagStride + i);
            }
        });
    }
    run.start = Clock::now();
    go.store(true);
    loop.exec();
    for (auto& w : workers)
        w.join();
    g_run = nullptr;

    Figures f;
    f.eventsPerSecond = kEvents / std::chrono::duration<double>(run.end - run.start).count();
    std::sort(run.latencyUs.begin(), run.latencyUs.end());
    f.medianUs = run.latencyUs[run.latencyUs.size() / 2];
    f.p99Us = run.latencyUs[static_cast<size_t>(run.latencyUs.size() * 0.99)];
    return f;
}

void print(const char* what, int threads, const Figures& f)
{
    std::printf("%-26s %2d thread(s): %10.0f events/s   median %9.1f us   p99 %9.1f us\n", what, threads,
                f.eventsPerSecond, f.medianUs, f.p99Us);
}

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    // The service logs every event; printing 500 000 lines would measure the terminal, not the
    // dispatch. The texts are still formatted, as in the product.
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    HostFramework::setNonInteractive(true);
    HostFramework::createHost();

    CDeviceMgrService* service = CDeviceMgrService::instance();
    service->Init();
    service->unSDKRegisterEvent(); // the benchmark's own threads play the SDK's
    CDeviceMgrService::setHandlerProbe(&arrived);

    Sender sender;
    Receiver receiver;
    QObject::connect(&sender, &Sender::ping, &receiver, &Receiver::onPing);

    std::printf("%d events per run; latency from the SDK callback to the GUI-thread handler\n", kEvents);
    for (int threads : {1, 4}) {
        // Warm-up of both paths, not reported.
        measure(threads, [&sender](int e) { emit sender.ping(e); });
        measure(threads, [](int e) { CDeviceMgrService::OnDevMgrEventsCB(e, nullptr); });

        const Figures base = measure(threads, [&sender](int e) { emit sender.ping(e); });
        const Figures svc = measure(threads, [](int e) { CDeviceMgrService::OnDevMgrEventsCB(e, nullptr); });
        print("baseline queued signal", threads, base);
        print("service OnDevMgrEventsCB", threads, svc);
        std::printf("%-26s %2d thread(s): throughput %.2fx slower, median latency %.2fx, p99 %.2fx\n\n",
                    "ratio service/baseline", threads, base.eventsPerSecond / svc.eventsPerSecond,
                    svc.medianUs / base.medianUs, svc.p99Us / base.p99Us);
    }

    CDeviceMgrService::setHandlerProbe(nullptr);
    CDeviceMgrService::Destroy();
    HostFramework::destroyHost();
    return 0;
}

#include "bench_event_dispatch.moc"
