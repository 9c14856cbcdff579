// Plugin container: lookups, registration, loading fixture plugins, plugin sets and GID names.
#include "HostFixture.h"

#include "CommonUtils.h"
#include "HostFramework.h"
#include "HostIds.h"
#include "HostServices.h"
#include "PluginContainer.h"
#include "PluginInterfaces.h"
#include "Startup.h"

#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtCore/QTemporaryDir>
#include <QtTest/QSignalSpy>
#include <QtTest/QtTest>
#include <QtWidgets/QMainWindow>

namespace {

const char kAlphaClsid[] = "0A1F0000-0000-4000-8000-00000000A1FA";
const int kAlphaKind = 0x5001;

QStringList fixtureEvents()
{
    return qApp->property("tessaroFixtureEvents").toStringList();
}

void clearFixtureEvents()
{
    qApp->setProperty("tessaroFixtureEvents", QStringList());
}

} // namespace

class tst_HostContainer : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

    void lookupByClsidAndKind_data();
    void lookupByClsidAndKind();
    void registrationCollisions_data();
    void registrationCollisions();
    void mainFrameServiceHandsOutMainWindow();
    void startupContainerFollowsHostLifetime();

    void loadAndUnloadFixturePlugin();
    void refusedLibraries_data();
    void refusedLibraries();
    void unregisterDropsLookupButKeepsLibrary();

    void pluginSets_data();
    void pluginSets();
    void reloadSequenceReplacesPluginObject();
    void gidNames_data();
    void gidNames();

private:
    void restartHost();
    void unloadEverything();

    HostFixture m_host;
};

void tst_HostContainer::initTestCase()
{
    m_host.init();
    HostFramework::setPluginLibraryPath(QStringLiteral(HOSTFW_TEST_PLUGIN_ROOT));
    // A damaged install: a file of the right name that is no shared library.
    QDir().mkpath(QStringLiteral(HOSTFW_TEST_PLUGIN_ROOT "/plugins/FixtureGarbage"));
    QFile garbage(QStringLiteral(HOSTFW_TEST_PLUGIN_ROOT "/plugins/FixtureGarbage/libFixtureGarbage.so"));
    QVERIFY(garbage.open(QIODevice::WriteOnly | QIODevice::Truncate));
    garbage.write("this is not an ELF file\n");
}

void tst_HostContainer::init()
{
    m_host.beginTest();
    clearFixtureEvents();
}

void tst_HostContainer::cleanup()
{
    unloadEverything();
    QVERIFY2(m_host.endTest(), qPrintable(m_host.lastError()));
}

void tst_HostContainer::cleanupTestCase()
{
    m_host.shutdown();
    HostFramework::setPluginLibraryPath(QString());
}

void tst_HostContainer::restartHost()
{
    HostFramework::destroyHost();
    HostFramework::createHost(m_host.mainWindow());
}

void tst_HostContainer::unloadEverything()
{
    if (PluginContainer* c = HostFramework::container())
        c->unloadAll();
}

void tst_HostContainer::lookupByClsidAndKind_data()
{
    QTest::addColumn<QString>("clsid");
    QTest::addColumn<int>("kind");
    QTest::addColumn<QByteArray>("iid"); // empty: the lookup must fail

    QTest::newRow("notification service")
        << NOTIFY_PLUGIN_CLSID << int(NOTIFY_PLUGIN_ID) << QByteArray(INotifyService_iid);
    QTest::newRow("dial-up") << DIALUP_PLUGIN_CLSID << int(DIALUP_PLUGIN_ID)
                             << QByteArray(IDialupUIService_iid);
    QTest::newRow("main frame") << MAINFRAME_PLUGIN_CLSID << int(MAINFRAME_PLUGIN_ID)
                                << QByteArray(IMainFrameUIService_iid);
    QTest::newRow("main menu") << MAINMENU_PLUGIN_CLSID << int(MAINMENU_PLUGIN_ID)
                               << QByteArray(IMainMenuUI_iid);
    QTest::newRow("mini frame") << MINIFRAME_PLUGIN_CLSID << int(MINIFRAME_PLUGIN_ID)
                                << QByteArray(IMiniFrameUIService_iid);
    QTest::newRow("right clsid, wrong kind") << NOTIFY_PLUGIN_CLSID << int(DIALUP_PLUGIN_ID) << QByteArray();
    QTest::newRow("main frame clsid with mini frame kind")
        << MAINFRAME_PLUGIN_CLSID << int(MINIFRAME_PLUGIN_ID) << QByteArray();
    QTest::newRow("lower-case groups upper-cased")
        << QStringLiteral(MAINFRAME_PLUGIN_CLSID).toUpper() << int(MAINFRAME_PLUGIN_ID) << QByteArray();
    QTest::newRow("upper-case clsid lower-cased")
        << QStringLiteral(NOTIFY_PLUGIN_CLSID).toLower() << int(NOTIFY_PLUGIN_ID) << QByteArray();
    QTest::newRow("call service is never registered") << CALLSRV_PLUGIN_CLSID << 0 << QByteArray();
    QTest::newRow("empty clsid") << QString() << int(NOTIFY_PLUGIN_ID) << QByteArray();
}

void tst_HostContainer::lookupByClsidAndKind()
{
    QFETCH(QString, clsid);
    QFETCH(int, kind);
    QFETCH(QByteArray, iid);

    IPluginContainer* container = Startup::GetPluginContainer();
    QVERIFY(container);
    // Every lookup leaves a trace in the log, found or not.
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression(QStringLiteral("GetPlugin")));
    QObject* plugin = container->GetPlugin(clsid, kind);
    if (iid.isEmpty()) {
        QVERIFY(!plugin);
        return;
    }
    QVERIFY(plugin);
    QVERIFY2(plugin->qt_metacast(iid.constData()), iid.constData());
}

void tst_HostContainer::registrationCollisions_data()
{
    QTest::addColumn<QString>("clsid");
    QTest::addColumn<int>("kind");
    QTest::addColumn<bool>("withObject");
    QTest::addColumn<bool>("accepted");

    QTest::newRow("pair taken by the notification service")
        << NOTIFY_PLUGIN_CLSID << int(NOTIFY_PLUGIN_ID) << true << false;
    QTest::newRow("same clsid, another kind") << NOTIFY_PLUGIN_CLSID << 0x7777 << true << true;
    QTest::newRow("same kind, clsid in other case")
        << QStringLiteral(NOTIFY_PLUGIN_CLSID).toLower() << int(NOTIFY_PLUGIN_ID) << true << true;
    QTest::newRow("new pair") << "11111111-2222-3333-4444-555555555555" << 0x10 << true << true;
    QTest::newRow("null object") << "11111111-2222-3333-4444-555555555555" << 0x11 << false << false;
    QTest::newRow("empty clsid") << QString() << 0x12 << true << false;
}

void tst_HostContainer::registrationCollisions()
{
    QFETCH(QString, clsid);
    QFETCH(int, kind);
    QFETCH(bool, withObject);
    QFETCH(bool, accepted);

    restartHost();
    PluginContainer* container = HostFramework::container();
    QObject* before = container->GetPlugin(clsid, kind);
    QObject intruder;
    intruder.setObjectName(QStringLiteral("Intruder"));
    QCOMPARE(container->RegisterPlugin(clsid, kind, withObject ? &intruder : nullptr), accepted);
    QObject* after = container->GetPlugin(clsid, kind);
    if (accepted) {
        QCOMPARE(after, &intruder);
        QVERIFY(container->UnRegisterPlugin(QStringLiteral("Intruder")));
        QVERIFY(!container->GetPlugin(clsid, kind));
    } else {
        // A refused registration never displaces what was there.
        QCOMPARE(after, before);
        QVERIFY(!container->lastError().isEmpty());
    }
    // The services are untouched either way.
    QVERIFY(container->GetPlugin(QStringLiteral(NOTIFY_PLUGIN_CLSID), NOTIFY_PLUGIN_ID) ==
            HostFramework::notifyService());
}

void tst_HostContainer::mainFrameServiceHandsOutMainWindow()
{
    QObject* object =
        Startup::GetPluginContainer()->GetPlugin(QStringLiteral(MAINFRAME_PLUGIN_CLSID), MAINFRAME_PLUGIN_ID);
    auto* frame = qobject_cast<IMainFrameUIService*>(object);
    QVERIFY(frame);
    QVERIFY(m_host.mainWindow());
    QCOMPARE(frame->GetMainWindow(), static_cast<QWidget*>(m_host.mainWindow()));
}

void tst_HostContainer::startupContainerFollowsHostLifetime()
{
    QVERIFY(Startup::GetPluginContainer());
    QCOMPARE(Startup::GetPluginContainer(), static_cast<IPluginContainer*>(HostFramework::container()));
    QVERIFY(HostFramework::container()->LoadPlugin(QStringLiteral("FixtureAlpha")));

    HostFramework::destroyHost();
    QVERIFY(!Startup::GetPluginContainer());
    QVERIFY(!HostFramework::notifyService());
    // Tearing the host down unloads its plugins the regular way.
    QCOMPARE(fixtureEvents(), QStringList({"FixtureAlpha:OnDestroy", "FixtureAlpha:deleted"}));

    PluginContainer* again = HostFramework::createHost(m_host.mainWindow());
    QVERIFY(again);
    QCOMPARE(HostFramework::createHost(), again); // idempotent
    QCOMPARE(Startup::GetPluginContainer(), static_cast<IPluginContainer*>(again));
}

void tst_HostContainer::loadAndUnloadFixturePlugin()
{
    PluginContainer* container = HostFramework::container();
    QSignalSpy loaded(container, &PluginContainer::pluginLoaded);
    QSignalSpy unloaded(container, &PluginContainer::pluginUnloaded);

    QPointer<QObject> root = container->LoadPlugin(QStringLiteral("FixtureAlpha"));
    QVERIFY2(root, qPrintable(container->lastError()));
    auto* ui = qobject_cast<IUIPlugin*>(root.data());
    QVERIFY(ui);
    QCOMPARE(ui->GetPluginName(), QStringLiteral("FixtureAlpha"));
    QCOMPARE(static_cast<void*>(root->qt_metacast(IBasePlugin_iid)), static_cast<void*>(ui));
    QCOMPARE(loaded.count(), 1);
    QCOMPARE(loaded.at(0).at(0).toString(), QStringLiteral("FixtureAlpha"));
    QCOMPARE(container->loadedPluginNames(), QStringList{"FixtureAlpha"});
    QCOMPARE(container->loadedPlugins().value(QStringLiteral("FixtureAlpha")), root.data());
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
    QVERIFY(container->loadedPluginNames().isEmpty());
    QVERIFY(!container->GetPlugin(QString::fromLatin1(kAlphaClsid), kAlphaKind));
    QVERIFY(!container->UnloadPlugin(QStringLiteral("FixtureAlpha")));

    // The library really went away and comes back fresh.
    QPointer<QObject> second = container->LoadPlugin(QStringLiteral("FixtureAlpha"));
    QVERIFY(second);
    QCOMPARE(container->GetPlugin(QString::fromLatin1(kAlphaClsid), kAlphaKind), second.data());
}

void tst_HostContainer::refusedLibraries_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("error");

    QTest::newRow("no such plugin") << "NoSuchPlugin"
                                    << "no plugin library at";
    QTest::newRow("library without the export pair") << "FixtureNotAPlugin"
                                                     << "qt_plugin_query_verification_data is missing";
    QTest::newRow("wrong verification text") << "FixtureBadVerification"
                                             << "verification data does not start";
    QTest::newRow("not a shared library") << "FixtureGarbage"
                                          << "cannot load";
    QTest::newRow("path outside the plugin folder") << "../FixtureAlpha"
                                                    << "invalid plugin name";
    QTest::newRow("empty name") << ""
                                << "invalid plugin name";
}

void tst_HostContainer::refusedLibraries()
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

void tst_HostContainer::unregisterDropsLookupButKeepsLibrary()
{
    PluginContainer* container = HostFramework::container();
    QPointer<QObject> root = container->LoadPlugin(QStringLiteral("FixtureAlpha"));
    QVERIFY(root);

    QVERIFY(container->UnRegisterPlugin(QStringLiteral("FixtureAlpha")));
    QVERIFY(!container->GetPlugin(QString::fromLatin1(kAlphaClsid), kAlphaKind));
    QVERIFY(!container->isRegistered(QStringLiteral("FixtureAlpha")));
    QVERIFY(!container->notifyReceivers().contains(root.data()));
    QCOMPARE(container->loadedPlugin(QStringLiteral("FixtureAlpha")), root.data());
    QVERIFY(!fixtureEvents().contains(QStringLiteral("FixtureAlpha:OnDestroy")));
    QVERIFY(!container->UnRegisterPlugin(QStringLiteral("FixtureAlpha")));
    QVERIFY(!container->UnRegisterPlugin(QStringLiteral("NeverLoaded")));

    // Loading it again puts the same object back.
    QCOMPARE(container->LoadPlugin(QStringLiteral("FixtureAlpha")), root.data());
    QVERIFY(container->isRegistered(QStringLiteral("FixtureAlpha")));
    QVERIFY(container->notifyReceivers().contains(root.data()));
}

void tst_HostContainer::pluginSets_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("configured"); // empty: no set for the key
    QTest::addColumn<bool>("changed");
    QTest::addColumn<QStringList>("newPlugins");
    QTest::addColumn<QStringList>("replaced");

    // The host starts with FixtureAlpha and FixtureBeta loaded, the default set.
    QTest::newRow("same set") << "DeviceOne"
                              << "FixtureAlpha,FixtureBeta" << false
                              << QStringList{"FixtureAlpha", "FixtureBeta"}
                              << QStringList{"FixtureAlpha", "FixtureBeta"};
    QTest::newRow("same set, other order and spaces")
        << "DeviceTwo"
        << " FixtureBeta , FixtureAlpha" << false << QStringList{"FixtureBeta", "FixtureAlpha"}
        << QStringList{"FixtureBeta", "FixtureAlpha"};
    QTest::newRow("smaller set for an IMSI")
        << "IMSI262011234567890"
        << "FixtureBeta" << true << QStringList{"FixtureBeta"} << QStringList{"FixtureBeta"};
    QTest::newRow("GID set with a plugin not loaded")
        << "GIDGroupA"
        << "FixtureBeta,FixtureGamma" << true << QStringList{"FixtureBeta", "FixtureGamma"}
        << QStringList{"FixtureBeta"};
    QTest::newRow("key without a set keeps the current one")
        << "UnknownDevice" << QString() << false << QStringList{"FixtureAlpha", "FixtureBeta"}
        << QStringList{"FixtureAlpha", "FixtureBeta"};
}

void tst_HostContainer::pluginSets()
{
    QFETCH(QString, key);
    QFETCH(QString, configured);
    QFETCH(bool, changed);
    QFETCH(QStringList, newPlugins);
    QFETCH(QStringList, replaced);

    m_host.setSetting(QStringLiteral("pluginsets"), QStringLiteral("default"),
                      QStringLiteral("FixtureAlpha,FixtureBeta"));
    if (!configured.isEmpty())
        m_host.setSetting(QStringLiteral("pluginsets"), key, configured);
    restartHost(); // a fresh container starts from the default set
    PluginContainer* container = HostFramework::container();
    QVERIFY(container->LoadPlugin(QStringLiteral("FixtureAlpha")));
    QVERIFY(container->LoadPlugin(QStringLiteral("FixtureBeta")));

    QCOMPARE(container->IsPluginSetChanged(key), changed);
    QStringList gotNew{"stale"};
    QStringList gotReplaced{"stale"};
    container->GetReloadPluginLists(key, gotNew, gotReplaced);
    QCOMPARE(gotNew, newPlugins);
    QCOMPARE(gotReplaced, replaced);
    // Once the lists were handed out the set is the current one.
    QVERIFY(!container->IsPluginSetChanged(key));
    QCOMPARE(container->currentPluginSet(), newPlugins);
}

void tst_HostContainer::reloadSequenceReplacesPluginObject()
{
    m_host.setSetting(QStringLiteral("pluginsets"), QStringLiteral("default"),
                      QStringLiteral("FixtureAlpha"));
    m_host.setSetting(QStringLiteral("pluginsets"), QStringLiteral("IMSI001010123456789"),
                      QStringLiteral("FixtureAlpha,FixtureBeta"));
    restartHost();
    PluginContainer* container = HostFramework::container();
    QPointer<QObject> old = container->LoadPlugin(QStringLiteral("FixtureAlpha"));
    QVERIFY(old);

    // The device chooser's sequence: compare, lists, unregister all, then unload and load each.
    const QString key = QStringLiteral("IMSI001010123456789");
    QVERIFY(container->IsPluginSetChanged(key));
    QStringList newPlugins, replaced;
    container->GetReloadPluginLists(key, newPlugins, replaced);
    QCOMPARE(newPlugins, QStringList({"FixtureAlpha", "FixtureBeta"}));
    QCOMPARE(replaced, QStringList{"FixtureAlpha"});
    for (const QString& name : qAsConst(replaced))
        QVERIFY(container->UnRegisterPlugin(name));
    for (const QString& name : qAsConst(replaced)) {
        QVERIFY(container->UnloadPlugin(name));
        QVERIFY(container->LoadPlugin(name));
    }

    QVERIFY(!old);
    QObject* fresh = container->loadedPlugin(QStringLiteral("FixtureAlpha"));
    QVERIFY(fresh);
    QCOMPARE(container->GetPlugin(QString::fromLatin1(kAlphaClsid), kAlphaKind), fresh);
    QCOMPARE(fixtureEvents(), QStringList({"FixtureAlpha:OnDestroy", "FixtureAlpha:deleted"}));
    QVERIFY(!container->IsPluginSetChanged(key));
}

void tst_HostContainer::gidNames_data()
{
    QTest::addColumn<QByteArray>("iniLine"); // written into a fresh settings file as it stands
    QTest::addColumn<QStringList>("names");

    QTest::newRow("quoted list, as SetSettings writes it")
        << QByteArray("names=\"GroupA,GroupB\"") << QStringList{"GroupA", "GroupB"};
    QTest::newRow("hand-written INI list")
        << QByteArray("names=GroupB, GroupA, GroupC") << QStringList{"GroupB", "GroupA", "GroupC"};
    QTest::newRow("one name") << QByteArray("names=Operator") << QStringList{"Operator"};
    QTest::newRow("empty value") << QByteArray("names=") << QStringList();
    QTest::newRow("no key") << QByteArray("other=GroupA") << QStringList();
}

void tst_HostContainer::gidNames()
{
    QFETCH(QByteArray, iniLine);
    QFETCH(QStringList, names);

    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    const QString path = dir.filePath(QStringLiteral("gid.ini"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("[gid]\n" + iniLine + "\n");
    file.close();

    const QString previous = HostFramework::settingsFile();
    HostFramework::setSettingsFile(path);
    const QStringList got = HostFramework::container()->GetGIDNameList();
    HostFramework::setSettingsFile(previous);
    QCOMPARE(got, names);
}

QTEST_MAIN(tst_HostContainer)
#include "tst_hostcontainer.moc"
