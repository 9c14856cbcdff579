// The built plugin file, as the host finds it: with dlopen, and through the host's plugin container,
// which checks its verification text and instance function before it takes it.
#include "HostFixture.h"
#include "HostFramework.h"
#include "PluginContainer.h"
#include "PluginInterfaces.h"

#include <QtCore/QPointer>
#include <QtTest/QtTest>

#include <dlfcn.h>

static const char kPluginFile[] = TESSARO_PLUGIN_DIR "/libDeviceMgrUIPlugin.so";

class tst_PluginLibrary : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        m_host.init();
        HostFramework::setPluginLibraryPath(QStringLiteral(TESSARO_BUILD_DIR));
    }
    void init() { m_host.beginTest(); }
    void cleanup() { QVERIFY2(m_host.endTest(), qPrintable(m_host.lastError())); }
    void cleanupTestCase() { m_host.shutdown(); }

    // Only the two C entry points leave the library: its classes are hidden, so a second plugin
    // with classes of the same names cannot bind to ours.
    void exportsOnlyTheEntryPoints_data()
    {
        QTest::addColumn<QByteArray>("symbol");
        QTest::addColumn<bool>("exported");
        QTest::newRow("instance") << QByteArray("qt_plugin_instance") << true;
        QTest::newRow("verification") << QByteArray("qt_plugin_query_verification_data") << true;
        QTest::newRow("service instance") << QByteArray("_ZN17CDeviceMgrService8instanceEv") << false;
        QTest::newRow("sdk function") << QByteArray("ZELK_DevSrv_GetDevStatus") << false;
    }
    void exportsOnlyTheEntryPoints()
    {
        QFETCH(QByteArray, symbol);
        void* handle = dlopen(kPluginFile, RTLD_NOW | RTLD_LOCAL);
        QVERIFY2(handle, dlerror());
        // dlsym on a handle searches the library and its dependencies; ask where the symbol lives.
        void* address = dlsym(handle, symbol.constData());
        bool inPlugin = false;
        if (address) {
            Dl_info info{};
            if (dladdr(address, &info) && info.dli_fname)
                inPlugin = QByteArray(info.dli_fname).endsWith("libDeviceMgrUIPlugin.so");
        }
        QTEST(inPlugin, "exported");
        dlclose(handle);
    }

    void loadsThroughTheContainer()
    {
        PluginContainer* container = HostFramework::container();
        QVERIFY(container);
        QPointer<QObject> root = container->LoadPlugin(QStringLiteral("DeviceMgrUIPlugin"));
        QVERIFY2(root, qPrintable(container->lastError()));
        auto* ui = qobject_cast<IUIPlugin*>(root.data());
        QVERIFY(ui);
        QCOMPARE(ui->GetPluginType(), 1u);
        QVERIFY(ui->ChangeLang(QStringLiteral("de")));
        QVERIFY(container->UnloadPlugin(QStringLiteral("DeviceMgrUIPlugin")));
        QVERIFY(root.isNull());
    }

private:
    HostFixture m_host;
};

QTEST_MAIN(tst_PluginLibrary)
#include "tst_pluginlibrary.moc"
