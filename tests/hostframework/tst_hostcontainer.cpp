// Plugin container: loading fixture plugins (and refusing broken ones), plugin sets. Lookups of the
// host's services are played by every plugin suite that reaches the dial-up or frame service.
#include "HostFixture.h"

#include "CommonUtils.h"
#include "HostFramework.h"
#include "HostIds.h"
#include "HostServices.h"
#include "PluginContainer.h"
#include "PluginInterfaces.h"

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtTest/QSignalSpy>
#include <QtTest/QtTest>
#include <QtWidgets/QMainWindow>

namespace {

const char kAlphaClsid[] = "0A1F0000-0000-4000-8000-00000000A1FA";
const int kAlphaKind = 0x5001;

} // namespace

class tst_HostContainer : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        m_host.init();
        HostFramework::setPluginLibraryPath(QStringLiteral(HOSTFW_TEST_PLUGIN_ROOT));
        // A damaged install: a file of the right name that is no shared library.
        QDir().mkpath(QStringLiteral(HOSTFW_TEST_PLUGIN_ROOT "/plugins/FixtureGarbage"));
        QFile garbage(QStringLiteral(HOSTFW_TEST_PLUGIN_ROOT "/plugins/FixtureGarbage/libFixtureGarbage.so"));
        QVERIFY(garbage.open(QIODevice::WriteOnly | QIODevice::Truncate));
        garbage.write("this is not an ELF file\n");
    }
    void init()
    {
        m_host.beginTest();
        clearFixtureEvents();
    }
    void cleanup()
    {
        unloadEverything();
        QVERIFY2(m_host.endTest(), qPrintable(m_host.lastError()));
    }
    void cleanupTestCase()
    {
        m_host.shutdown();
        HostFramework::setPluginLibraryPath(QString());
    }

    void loadAndUnloadFixturePlugin()
    {
        PluginContainer* container = HostFramework::container();
        QSignalSpy loaded(container, &PluginContainer::pluginLoaded);
        QSignalSpy unloaded(container, &PluginContainer::pluginUnloaded);

        QPointer<QObject> root = container->LoadPlugin(QStringLiteral("FixtureAlpha"));
        QVERIFY2(root, qPrintable(container->lastError()));
        auto* ui = qobject_cast<IUIPlugin*>(root.data());
        QVERIFY(ui);
        QCOMPARE(loaded.count(), 1);
        // A plugin with a class identifier can be looked up like the host's services.
        QCOMPARE(container->GetPlugin(QString::fromLatin1(kAlphaClsid), kAlphaKind), root.data());
        // The container leaves Init to the host.
        QVERIFY(!fixtureEvents().contains(QStringLiteral("FixtureAlpha:Init")));
        // Loading what is loaded hands back the same object.
        QCOMPARE(container->LoadPlugin(QStringLiteral("FixtureAlpha")), root.data());

        QVERIFY(container->UnloadPlugin(QStringLiteral("FixtureAlpha")));
        QVERIFY(!root);
        QCOMPARE(fixtureEvents(), QStringList({"FixtureAlpha:OnDestroy", "FixtureAlpha:deleted"}));
        QCOMPARE(unloaded.count(), 1);
        QVERIFY(!container->GetPlugin(QString::fromLatin1(kAlphaClsid), kAlphaKind));
        QVERIFY(!container->UnloadPlugin(QStringLiteral("FixtureAlpha")));
    }
    void refusedLibraries_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("error");

        const auto row = [](const char* name, const char* plugin, const char* error) {
            QTest::newRow(name) << QString::fromLatin1(plugin) << QString::fromLatin1(error);
        };
        row("no such plugin", "NoSuchPlugin", "no plugin library at");
        row("wrong verification text", "FixtureBadVerification", "verification data does not start");
        row("not a shared library", "FixtureGarbage", "cannot load");
        row("path outside the plugin folder", "../FixtureAlpha", "invalid plugin name");
        row("empty name", "", "invalid plugin name");
    }
    void refusedLibraries()
    {
        QFETCH(QString, name);
        QFETCH(QString, error);

        PluginContainer* container = HostFramework::container();
        QSignalSpy loaded(container, &PluginContainer::pluginLoaded);
        QVERIFY(!container->LoadPlugin(name));
        QVERIFY2(container->lastError().contains(error), qPrintable(container->lastError()));
        QVERIFY(container->loadedPluginNames().isEmpty());
        QCOMPARE(loaded.count(), 0);
    }

    // The host starts with FixtureAlpha and FixtureBeta loaded, the default set.
    void pluginSets_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("configured");
        QTest::addColumn<QStringList>("newPlugins");
        QTest::addColumn<QStringList>("replaced");
        const QStringList beta{"FixtureBeta"};
        QTest::newRow("smaller set for an IMSI")
            << QStringLiteral("IMSI262011234567890") << beta.first() << beta << beta;
        QTest::newRow("GID set with a plugin not loaded")
            << QStringLiteral("GIDGroupA") << QStringLiteral("FixtureBeta,FixtureGamma")
            << QStringList{"FixtureBeta", "FixtureGamma"} << beta;
    }
    void pluginSets()
    {
        QFETCH(QString, key);
        QFETCH(QString, configured);
        QFETCH(QStringList, newPlugins);

        m_host.setSetting(QStringLiteral("pluginsets"), QStringLiteral("default"),
                          QStringLiteral("FixtureAlpha,FixtureBeta"));
        m_host.setSetting(QStringLiteral("pluginsets"), key, configured);
        restartHost(); // a fresh container starts from the default set
        PluginContainer* container = HostFramework::container();
        QVERIFY(container->LoadPlugin(QStringLiteral("FixtureAlpha")));
        QVERIFY(container->LoadPlugin(QStringLiteral("FixtureBeta")));

        QVERIFY(container->IsPluginSetChanged(key));
        QStringList gotNew{"stale"};
        QStringList gotReplaced{"stale"};
        container->GetReloadPluginLists(key, gotNew, gotReplaced);
        QCOMPARE(gotNew, newPlugins);
        QTEST(gotReplaced, "replaced");
        // Once the lists were handed out the set is the current one.
        QVERIFY(!container->IsPluginSetChanged(key));
        QCOMPARE(container->currentPluginSet(), newPlugins);
    }

private:
    void restartHost()
    {
        HostFramework::destroyHost();
        HostFramework::createHost(m_host.mainWindow());
    }
    void unloadEverything()
    {
        if (PluginContainer* c = HostFramework::container())
            c->unloadAll();
    }

    HostFixture m_host;
};

QTEST_MAIN(tst_HostContainer)
#include "tst_hostcontainer.moc"
