// The host framework: the plugin container loading fixture plugins (and refusing broken ones) and
// its plugin sets; the notification service's delivery to plugins' INotify (send, broadcast, raise to
// subscribers) and its record; sends and message boxes off the GUI thread, a missing language file and
// the bounded wait for a thread. Lookups of the host's services are played by every plugin suite that
// reaches the dial-up or frame service.
#include "HostFixture.h"

#include "Change.h"
#include "CommonUtils.h"
#include "HostFramework.h"
#include "HostIds.h"
#include "HostServices.h"
#include "PluginContainer.h"
#include "PluginInterfaces.h"
#include "Startup.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtCore/QSemaphore>
#include <QtCore/QThread>
#include <QtTest/QSignalSpy>
#include <QtTest/QtTest>
#include <QtWidgets/QMessageBox>

#include <memory>
#include <vector>

namespace {

const QString kAlphaClsid = QStringLiteral("0A1F0000-0000-4000-8000-00000000A1FA");
const int kAlphaKind = 0x5001;
const QString kBetaClsid = QStringLiteral("0B2F0000-0000-4000-8000-00000000B2FB");
const QString kCallSrvClsid = QStringLiteral(CALLSRV_PLUGIN_CLSID);
// The fixture subscribes to the call service's code `wparam` when it receives this.
const unsigned int kSubscribeRequest = 900;
// ... and hands the host its own string literals (send, message, setting, registration).
const unsigned int kUseHostRequest = 901;
// Host services that take notifications: dial-up, main frame, main menu, mini frame.
const int kHostReceivers = 4;

INotifyService* notifyService()
{
    IPluginContainer* container = Startup::GetPluginContainer();
    QObject* object =
        container ? container->GetPlugin(QStringLiteral(NOTIFY_PLUGIN_CLSID), NOTIFY_PLUGIN_ID) : nullptr;
    return qobject_cast<INotifyService*>(object);
}

// A SIM dialog text present in every language file.
const QString kSimKey = QStringLiteral("IDS_PIN_CHECK_FAILED");

} // namespace

class tst_HostFramework : public QObject
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
        // Fresh plugins for every test: subscriptions die with the host.
        HostFramework::destroyHost();
        PluginContainer* container = HostFramework::createHost(m_host.mainWindow());
        QVERIFY2(container->LoadPlugin(QStringLiteral("FixtureAlpha")) &&
                     container->LoadPlugin(QStringLiteral("FixtureBeta")),
                 qPrintable(container->lastError()));
        clearFixtureEvents();
        HostFramework::clearNotificationRecords();
    }
    void cleanup()
    {
        HostFramework::container()->unloadAll();
        HostFramework::setNonInteractive(true);
        Change::LoadLanguage(QString());
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
        container->unloadAll();
        clearFixtureEvents();
        QSignalSpy loaded(container, &PluginContainer::pluginLoaded);
        QSignalSpy unloaded(container, &PluginContainer::pluginUnloaded);

        QPointer<QObject> root = container->LoadPlugin(QStringLiteral("FixtureAlpha"));
        QVERIFY2(root, qPrintable(container->lastError()));
        QVERIFY(qobject_cast<IUIPlugin*>(root.data()));
        QCOMPARE(loaded.count(), 1);
        // A plugin with a class identifier can be looked up like the host's services.
        QCOMPARE(container->GetPlugin(kAlphaClsid, kAlphaKind), root.data());
        // The container leaves Init to the host.
        QVERIFY(!fixtureEvents().contains(QStringLiteral("FixtureAlpha:Init")));
        // Loading what is loaded hands back the same object.
        QCOMPARE(container->LoadPlugin(QStringLiteral("FixtureAlpha")), root.data());

        QVERIFY(container->UnloadPlugin(QStringLiteral("FixtureAlpha")));
        QVERIFY(!root);
        QCOMPARE(fixtureEvents(), QStringList({"FixtureAlpha:OnDestroy", "FixtureAlpha:deleted"}));
        QCOMPARE(unloaded.count(), 1);
        QVERIFY(!container->GetPlugin(kAlphaClsid, kAlphaKind));
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
        const QStringList before = container->loadedPluginNames();
        QSignalSpy loaded(container, &PluginContainer::pluginLoaded);
        QVERIFY(!container->LoadPlugin(name));
        QVERIFY2(container->lastError().contains(error), qPrintable(container->lastError()));
        QCOMPARE(container->loadedPluginNames(), before);
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
        // The fresh container of init() reads its start-up (default) set on first use, i.e. here.
        PluginContainer* container = HostFramework::container();
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

    void sendReachesOnlyTheTarget_data()
    {
        QTest::addColumn<QString>("target");
        QTest::addColumn<int>("result");
        QTest::addColumn<QStringList>("events");
        QTest::addColumn<int>("dialupCount");

        QTest::newRow("to a plugin") << kAlphaClsid << 0 << QStringList{"FixtureAlpha:Notify 578 1 2"} << 0;
        QTest::newRow("to the dial-up service") << DIALUP_PLUGIN_CLSID << 0 << QStringList() << 1;
        QTest::newRow("clsid in other case") << kAlphaClsid.toLower() << -1 << QStringList() << 0;
        QTest::newRow("nobody of that clsid") << CALLSRV_PLUGIN_CLSID << -1 << QStringList() << 0;
    }
    void sendReachesOnlyTheTarget()
    {
        QFETCH(QString, target);
        QFETCH(int, result);

        QCOMPARE(notifyService()->SendNotify(target, NTF_SIM_READY, 1, 2), result);
        QTEST(fixtureEvents(), "events");
        QTEST(HostFramework::dialupService()->notifyCount(), "dialupCount");
        const auto records = HostFramework::notificationRecords();
        QCOMPARE(records.size(), 1);
        QCOMPARE(records.at(0).clsid, target);
        QCOMPARE(records.at(0).delivered, result == 0 ? 1 : 0);
    }
    void broadcastReachesEveryRegisteredReceiver()
    {
        INotifyService* notify = notifyService();
        QCOMPARE(notify->Broadcast(NTF_PLUGINS_RELOADED, 7, 8), 2 + kHostReceivers);
        QCOMPARE(fixtureEvents(), QStringList({"FixtureAlpha:Notify 585 7 8", "FixtureBeta:Notify 585 7 8"}));
        QCOMPARE(HostFramework::dialupService()->lastNotifyCode(), 585u);

        // An unregistered plugin is out of the host's tables: it hears nothing until loaded again.
        clearFixtureEvents();
        QVERIFY(HostFramework::container()->UnRegisterPlugin(QStringLiteral("FixtureBeta")));
        QCOMPARE(notify->Broadcast(NTF_FRAME_SHOWN, 0, 0), 1 + kHostReceivers);
        QCOMPARE(fixtureEvents(), QStringList{"FixtureAlpha:Notify 258 0 0"});

        const auto records = HostFramework::notificationRecords();
        QCOMPARE(records.size(), 2);
        QCOMPARE(records.at(1).delivered, 1 + kHostReceivers);
    }
    // Alpha subscribes to the call service's 784 while the host is talking to it: the subscription
    // is Alpha's own, and no one else's unsubscribing ends it.
    void raiseReachesOwnSubscribersOnly()
    {
        INotifyService* notify = notifyService();
        QCOMPARE(notify->SendNotify(kAlphaClsid, kSubscribeRequest, NTF_CALL_DLG_SHOWN_1, 0), 0);
        clearFixtureEvents();

        QCOMPARE(notify->RaiseNotify(kCallSrvClsid, NTF_CALL_DLG_SHOWN_1, 3, 4), 1);
        QCOMPARE(fixtureEvents(), QStringList{"FixtureAlpha:Notify 784 3 4"});
        QCOMPARE(HostFramework::dialupService()->notifyCount(), 0);

        // Another code of the same sender, and the same code of another sender, reach nobody.
        clearFixtureEvents();
        QCOMPARE(notify->RaiseNotify(kCallSrvClsid, NTF_CALL_DLG_CLOSED, 0, 0), 0);
        QCOMPARE(notify->RaiseNotify(kBetaClsid, NTF_CALL_DLG_SHOWN_1, 0, 0), 0);
        QVERIFY(fixtureEvents().isEmpty());

        const auto records = HostFramework::notificationRecords();
        QStringList kinds;
        for (const auto& r : records)
            kinds << r.kind;
        // A delivery's own effects are recorded before the delivery itself.
        QCOMPARE(kinds, QStringList({"subscribe", "send", "raise", "raise", "raise"}));
        QCOMPARE(records.at(0).clsid, kCallSrvClsid);
        QCOMPARE(records.at(0).code, 784u);
        QCOMPARE(records.at(2).delivered, 1);

        QCOMPARE(notify->Unsubscribe(kCallSrvClsid, NTF_CALL_DLG_SHOWN_1), -1);
        QCOMPARE(notify->RaiseNotify(kCallSrvClsid, NTF_CALL_DLG_SHOWN_1, 0, 0), 1);
    }
    // Regression: the host kept a plugin's QStringLiteral data (subscription sender, record texts) and
    // read it after the library was unloaded.
    void hostKeepsNoPluginStringsAfterUnload()
    {
        INotifyService* notify = notifyService();
        const QString registered = QStringLiteral("F1F1F1F1-0000-4000-8000-000000000001");
        QCOMPARE(notify->SendNotify(kAlphaClsid, kSubscribeRequest, NTF_CALL_DLG_SHOWN_1, 0), 0);
        HostFramework::pushNextAnswer(MSGBOX_ACCEPTED);
        QCOMPARE(notify->SendNotify(kAlphaClsid, kUseHostRequest, 0, 0), 0);
        QVERIFY(HostFramework::container()->GetPlugin(registered, 0x5101));
        QVERIFY(HostFramework::container()->UnloadPlugin(QStringLiteral("FixtureAlpha")));
        QVERIFY(!HostFramework::container()->GetPlugin(registered, 0x5101));

        // Everything the host kept is still readable with the library gone.
        QStringList clsids;
        for (const auto& r : HostFramework::notificationRecords())
            clsids << r.clsid;
        QVERIFY(clsids.contains(kCallSrvClsid));
        QVERIFY(clsids.contains(QStringLiteral(DIALUP_PLUGIN_CLSID)));
        const auto messages = HostFramework::messageRecords();
        QCOMPARE(messages.size(), 1);
        QCOMPARE(messages.first().title + " | " + messages.first().text + " | " +
                     messages.first().buttons.join(','),
                 QStringLiteral("fixture title | fixture text | IDS_YES,IDS_NO"));
        QCOMPARE(CommonUtils::GetSettings(QStringLiteral("fixture"), QStringLiteral("literal")),
                 QStringLiteral("fixture value"));
        // A plugin that dies takes its subscriptions with it.
        QCOMPARE(notify->RaiseNotify(kCallSrvClsid, NTF_CALL_DLG_SHOWN_1, 0, 0), 0);
        // Dropping the subscriptions with the host reads their senders once more.
        HostFramework::destroyHost();
        HostFramework::createHost(m_host.mainWindow());
    }
    void sendsFromWorkerThreadsAreAllRecorded()
    {
        const int threads = 4;
        const int perThread = 50;
        // QSignalSpy records in the emitting thread; count here, through queued delivery, instead.
        int received = 0;
        QObject receiver;
        connect(
            HostFramework::Monitor::instance(), &HostFramework::Monitor::notificationRecorded, &receiver,
            [&received] { ++received; }, Qt::QueuedConnection);
        std::vector<std::unique_ptr<QThread>> workers;
        for (int t = 0; t < threads; ++t) {
            workers.emplace_back(QThread::create([t] {
                INotifyService* notify = notifyService();
                for (int i = 0; i < perThread; ++i)
                    notify->SendNotify(QStringLiteral(DIALUP_PLUGIN_CLSID), NTF_DEVICE_INIT_FINISH, t, i);
            }));
            workers.back()->start();
        }
        for (auto& w : workers)
            QVERIFY(w->wait(10000));
        QCOMPARE(HostFramework::dialupService()->notifyCount(), threads * perThread);
        QCOMPARE(HostFramework::notificationRecords().size(), threads * perThread);
        QTRY_COMPARE(received, threads * perThread);
    }
    void boxOffTheGuiThreadNeverBlocks()
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
    // A failed load leaves the language that was loaded, not English or none.
    void missingLanguageKeepsCurrent()
    {
        QVERIFY(Change::LoadLanguage(QStringLiteral("de")));
        const QString german = Change::tr(kSimKey);
        QVERIFY(german != kSimKey);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("no tessaro_xx.qm")));
        QVERIFY(!Change::LoadLanguage(QStringLiteral("xx")));
        QCOMPARE(Change::CurrentLanguage(), QStringLiteral("de"));
        QCOMPARE(Change::tr(kSimKey), german);
    }
    // Bounded: a thread still busy is given up after about the second asked for, never waited on forever.
    void waitForBusyThreadIsBounded()
    {
        QSemaphore go;
        std::unique_ptr<QThread> thread(QThread::create([&go] { go.acquire(); }));
        thread->start();
        QElapsedTimer timer;
        timer.start();
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("still running after 1 s")));
        QVERIFY(!CommonUtils::WaitForThreadToStop(thread.get(), 1));
        QVERIFY2(timer.elapsed() >= 900 && timer.elapsed() < 5000,
                 qPrintable(QString::number(timer.elapsed())));
        QVERIFY(thread->isRunning());
        go.release();
        QVERIFY(CommonUtils::WaitForThreadToStop(thread.get(), 5));
        QVERIFY(thread->isFinished());
    }

private:
    HostFixture m_host;
};

QTEST_MAIN(tst_HostFramework)
#include "tst_hostframework.moc"
