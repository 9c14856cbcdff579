// The device list refreshed from the SDK's callback thread while the GUI thread reads it.
#include "DeviceMgrUILogic.h"
#include "HostFixture.h"
#include "LogicTestSupport.h"
#include <QtWidgets/QMainWindow> // HostFixture keeps a QPointer to one

#include <QtCore/QDeadlineTimer>
#include <QtTest/QtTest>

#include <atomic>
#include <cstring>
#include <thread>

namespace sim = zelk::sim;

namespace {

DeviceMgrUILogic* g_logic = nullptr;
std::atomic<int> g_refreshes{0};

// What the service does on the SDK thread for a new device list.
int onMultiDeviceEvent(int event, void* data)
{
    if (event == ZELK_EVENT_DEV_LIST_CHANGED || event == ZELK_EVENT_DEV_DETECTED ||
        event == ZELK_EVENT_DEV_REJECT) {
        g_logic->ClearDeviceInfo();
        g_logic->SetDeviceInfo(static_cast<_ZELK_ST_MULTI_DEVICE_INFO*>(data));
        ++g_refreshes;
    }
    return 1;
}

_ZELK_ST_MULTI_DEVICE_INFO listOf(int count)
{
    _ZELK_ST_MULTI_DEVICE_INFO list;
    std::memset(&list, 0, sizeof(list));
    list.nDevNum = count;
    for (int i = 0; i < count; ++i) {
        list.stDevInfo[i].nPort = 100 + i;
        list.stDevInfo[i].nProtocol = 200 + i;
        qsnprintf(list.stDevInfo[i].szName, sizeof(list.stDevInfo[i].szName), "Threaded Modem %d", i);
    }
    return list;
}

// A snapshot is one of the lists written, the cleared list between two writes, or the list as init()
// left it (count -1) before the first write.
bool consistent(const _ZELK_ST_MULTI_DEVICE_INFO& list, QString* why)
{
    if (list.nDevNum < -1 || list.nDevNum > 2) {
        *why = QStringLiteral("count %1").arg(list.nDevNum);
        return false;
    }
    for (int i = 0; i < list.nDevNum; ++i) {
        const _ZELK_ST_DEVICE_INFO& d = list.stDevInfo[i];
        if (d.nPort != 100 + i || d.nProtocol != 200 + i ||
            qstrcmp(d.szName, QByteArray("Threaded Modem ") + QByteArray::number(i)) != 0) {
            *why = QStringLiteral("entry %1 torn").arg(i);
            return false;
        }
    }
    return true;
}

} // namespace

class tst_LogicThreaded : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        m_host.init(false);
        g_logic = DeviceMgrUILogic::GetInstance();
        QVERIFY(g_logic);
        g_logic->init();
    }
    void init() { m_host.beginTest(); }
    void cleanup() { QVERIFY2(m_host.endTest(), qPrintable(m_host.lastError())); }
    void cleanupTestCase()
    {
        delete g_logic;
        g_logic = nullptr;
        m_host.shutdown();
    }

    void refreshFromSdkThread()
    {
        sim::reset();
        QCOMPARE(ZELK_DevSrv_RegisterMultiDeviceEventCallback(&onMultiDeviceEvent), ZELK_ERROR_SUCCESS);
        g_refreshes = 0;
        const int events = 200;
        for (int i = 0; i < events; ++i) {
            const _ZELK_ST_MULTI_DEVICE_INFO list = listOf(i % 2 + 1);
            sim::injectEvent(zelk::Registry::MultiDevice, ZELK_EVENT_DEV_LIST_CHANGED, &list, sizeof(list));
        }
        // Read on this thread while the SDK's thread writes. Only the SDK's thread logs here: the log
        // helper's time stamp runs through the C library's time-zone code, whose internal lock
        // ThreadSanitizer cannot see, so two threads logging at once are reported whatever the list does.
        QDeadlineTimer deadline(10000);
        QString why;
        while (g_refreshes.load() < events && !deadline.hasExpired()) {
            const _ZELK_ST_MULTI_DEVICE_INFO snapshot = g_logic->GetLocalDeviceInfo();
            QVERIFY2(consistent(snapshot, &why), qPrintable(why));
            const QString name = g_logic->GetLocalDeviceName();
            QVERIFY2(name.isEmpty() || name == QLatin1String("Threaded Modem 0"), qPrintable(name));
        }
        QCOMPARE(g_refreshes.load(), events);
        QVERIFY(sim::waitForIdle());
        QCOMPARE(ZELK_DevSrv_UnRegisterMultiDeviceEventCallback(&onMultiDeviceEvent), ZELK_ERROR_SUCCESS);
        QVERIFY(sim::deliveryThread() != std::this_thread::get_id());

        // The last list had two devices: nobody is current until the user chooses.
        QCOMPARE(g_logic->GetLocalDeviceInfo().nDevNum, 2);
        QCOMPARE(g_logic->GetLocalDeviceName(), QString());
    }

private:
    HostFixture m_host;
};

QTEST_MAIN(tst_LogicThreaded)
#include "tst_LogicThreaded.moc"
