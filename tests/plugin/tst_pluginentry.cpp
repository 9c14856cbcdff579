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
    // sub-object; names in the wrong case or no name at all give nothing.
    void metacast_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<QString>("expected");
        QTest::newRow("INotify") << QByteArray("INotify") << "notify";
        QTest::newRow("INotify id") << QByteArray("com.qorvex.tessaro.plugin.INotify") << "notify";
        QTest::newRow("IUIPlugin id") << QByteArray("com.qorvex.tessaro.plugin.IUIPlugin") << "ui";
        QTest::newRow("IDeviceMgr id") << QByteArray("com.qorvex.tessaro.plugin.IDeviceMgr") << "null";
        QTest::newRow("wrong case") << QByteArray("com.qorvex.tessaro.plugin.iuiplugin") << "null";
    }
    void metacast()
    {
        QFETCH(QByteArray, name);
        QFETCH(QString, expected);
        m_plugin = qt_plugin_instance();
        auto* plugin = static_cast<CDeviceMgrUI*>(m_plugin.data());
        void* expectedPointer = nullptr;
        if (expected == QLatin1String("object"))
            expectedPointer = static_cast<QObject*>(plugin);
        else if (expected == QLatin1String("ui"))
            expectedPointer = static_cast<IUIPlugin*>(plugin);
        else if (expected == QLatin1String("notify"))
            expectedPointer = static_cast<INotify*>(plugin);
        QCOMPARE(plugin->qt_metacast(name.isNull() ? nullptr : name.constData()), expectedPointer);
    }

    void queryInterface_data()
    {
        QTest::addColumn<int>("iid");
        QTest::addColumn<bool>("result");
        QTest::newRow("4096") << 4096 << false;
        QTest::newRow("4097") << 4097 << true;
    }
    void queryInterface()
    {
        QFETCH(int, iid);
        QFETCH(bool, result);
        m_plugin = qt_plugin_instance();
        auto* plugin = static_cast<CDeviceMgrUI*>(m_plugin.data());
        QObject sentinel;
        QObject* out = &sentinel;
        QCOMPARE(plugin->QueryInterface(iid, &out), result);
        if (!result) {
            QCOMPARE(out, &sentinel);
            QCOMPARE(plugin->service(), static_cast<CDeviceMgrService*>(nullptr));
            return;
        }
        QCOMPARE(out, static_cast<QObject*>(CDeviceMgrService::instance()));
        QCOMPARE(plugin->service(), CDeviceMgrService::instance());
        // Other plugins reach the interface by its identifier.
        auto* mgr = qobject_cast<IDeviceMgr*>(out);
        QVERIFY(mgr);
        QCOMPARE(out->qt_metacast("com.qorvex.tessaro.plugin.IDeviceMgr"), static_cast<void*>(mgr));
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

    void onDestroyReleasesService()
    {
        m_plugin = qt_plugin_instance();
        auto* plugin = static_cast<CDeviceMgrUI*>(m_plugin.data());
        QObject* out = nullptr;
        QVERIFY(plugin->QueryInterface(4097, &out));
        QPointer<QObject> service(out);
        plugin->OnDestroy();
        QVERIFY(service.isNull());
        QCOMPARE(plugin->service(), static_cast<CDeviceMgrService*>(nullptr));
        // A second unload is harmless.
        plugin->OnDestroy();
        // And a later query builds a fresh service.
        QVERIFY(plugin->QueryInterface(4097, &out));
        QVERIFY(out);
    }

    // Deleting the plugin object leaves the service alone: the host destroys it with OnDestroy().
    void deletingPluginKeepsService()
    {
        m_plugin = qt_plugin_instance();
        QObject* out = nullptr;
        static_cast<CDeviceMgrUI*>(m_plugin.data())->QueryInterface(4097, &out);
        QPointer<QObject> service(out);
        delete m_plugin.data();
        QVERIFY(!service.isNull());
        QCOMPARE(static_cast<QObject*>(CDeviceMgrService::instance()), service.data());
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
