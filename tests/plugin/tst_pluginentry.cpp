// The plugin object: interface casts, the service it hands out and gives back, device availability.
#include "DeviceMgrService.h"
#include "DeviceMgrUIPlugin.h"
#include "HostFixture.h"
#include "SimControl.h"

#include <QtCore/QPointer>
#include <QtTest/QtTest>

class tst_PluginEntry : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { m_host.init(); }
    void init()
    {
        m_host.beginTest();
        zelk::sim::reset();
    }
    void cleanup()
    {
        delete m_plugin.data();
        CDeviceMgrService::Destroy();
        QVERIFY2(m_host.endTest(), qPrintable(m_host.lastError()));
    }
    void cleanupTestCase() { m_host.shutdown(); }

    // The host casts with both plugin identifiers interchangeably: one pointer, the INotify part another
    // sub-object; the service's interface and names in the wrong case give nothing.
    void metacast()
    {
        m_plugin = qt_plugin_instance();
        QCOMPARE(qt_plugin_instance(), m_plugin.data()); // one object until the host deletes it
        auto* plugin = static_cast<CDeviceMgrUI*>(m_plugin.data());
        void* notify = static_cast<INotify*>(plugin);
        void* none = nullptr;
        QCOMPARE(plugin->qt_metacast("INotify"), notify);
        QCOMPARE(plugin->qt_metacast("com.qorvex.tessaro.plugin.INotify"), notify);
        QCOMPARE(plugin->qt_metacast("com.qorvex.tessaro.plugin.IUIPlugin"),
                 static_cast<void*>(static_cast<IUIPlugin*>(plugin)));
        QCOMPARE(plugin->qt_metacast("com.qorvex.tessaro.plugin.IDeviceMgr"), none);
        QCOMPARE(plugin->qt_metacast("com.qorvex.tessaro.plugin.iuiplugin"), none);
    }

    // Only IDeviceMgr's number hands out the service. OnDestroy destroys it (a second time is
    // harmless) and a later query builds a fresh one; deleting the plugin object leaves it alone.
    void queryInterface()
    {
        m_plugin = qt_plugin_instance();
        auto* plugin = static_cast<CDeviceMgrUI*>(m_plugin.data());
        QObject sentinel;
        QObject* out = &sentinel;
        QVERIFY(!plugin->QueryInterface(4096, &out));
        QCOMPARE(out, &sentinel);
        QCOMPARE(plugin->service(), static_cast<CDeviceMgrService*>(nullptr));
        QVERIFY(plugin->QueryInterface(4097, &out));
        QCOMPARE(out, static_cast<QObject*>(CDeviceMgrService::instance()));
        QCOMPARE(plugin->service(), CDeviceMgrService::instance());
        // Other plugins reach the interface by its identifier.
        auto* mgr = qobject_cast<IDeviceMgr*>(out);
        QVERIFY(mgr);
        QCOMPARE(out->qt_metacast("com.qorvex.tessaro.plugin.IDeviceMgr"), static_cast<void*>(mgr));

        QPointer<QObject> service(out);
        plugin->OnDestroy();
        QVERIFY(service.isNull());
        QCOMPARE(plugin->service(), static_cast<CDeviceMgrService*>(nullptr));
        plugin->OnDestroy();
        QVERIFY(plugin->QueryInterface(4097, &out));
        service = out;
        delete m_plugin.data();
        QVERIFY(!service.isNull());
        QCOMPARE(static_cast<QObject*>(CDeviceMgrService::instance()), service.data());
    }

    // The host may unregister before it ever called Init(): the service is created on demand and
    // the three callbacks are withdrawn without any of them having been registered.
    void unSDKRegisterEventBeforeInit()
    {
        m_plugin = qt_plugin_instance();
        zelk::sim::clearCalls();
        qobject_cast<IUIPlugin*>(m_plugin.data())->UnSDKRegisterEvent();
        QStringList unregistered;
        for (const auto& call : zelk::sim::calls())
            if (QString::fromStdString(call.function).contains(QLatin1String("UnRegister")))
                unregistered << QString::fromStdString(call.function);
        QCOMPARE(unregistered,
                 QStringList({QStringLiteral("ZELK_DevSrv_UnRegisterDevInitEventCallback"),
                              QStringLiteral("ZELK_DevSrv_UnRegisterDevMgrCallback"),
                              QStringLiteral("ZELK_DevSrv_UnRegisterMultiDeviceEventCallback")}));
    }

    // The device is available only when the SDK answers and the status is 1 or 3.
    void isDeviceAvialable_data()
    {
        QTest::addColumn<int>("status");
        QTest::addColumn<bool>("fail");
        QTest::addColumn<bool>("available");
        QTest::newRow("ready") << 1 << false << true;
        QTest::newRow("available") << 3 << false << true;
        QTest::newRow("rejected") << 4 << false << false;
        QTest::newRow("SDK error") << 3 << true << false;
    }
    void isDeviceAvialable()
    {
        QFETCH(int, status);
        QFETCH(bool, fail);
        QFETCH(bool, available);
        zelk::sim::Device device = zelk::sim::defaultDevice();
        device.status = status;
        QVERIFY(zelk::sim::updateDevice(device));
        if (fail)
            zelk::sim::failNext("ZELK_DevSrv_GetDevStatus");
        QCOMPARE(CDeviceMgrService::instance()->IsDeviceAvialable(), available);
        // Without a usable device there is no usable SIM either.
        if (!available)
            QCOMPARE(CDeviceMgrService::instance()->IsValidSim(), false);
    }

private:
    HostFixture m_host;
    QPointer<QObject> m_plugin;
};

QTEST_MAIN(tst_PluginEntry)
#include "tst_pluginentry.moc"
