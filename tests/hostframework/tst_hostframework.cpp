// The host framework's services: the notification service's delivery to plugins' INotify (send,
// broadcast, raise to subscribers) and its record; sends and message boxes off the GUI thread, a
// missing language file and the bounded wait for a thread.
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
#include <QtCore/QRegularExpression>
#include <QtCore/QSemaphore>
#include <QtCore/QThread>
#include <QtTest/QSignalSpy>
#include <QtTest/QtTest>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QMessageBox>

#include <memory>
#include <vector>

namespace {

const char kAlphaClsid[] = "0A1F0000-0000-4000-8000-00000000A1FA";
const char kBetaClsid[] = "0B2F0000-0000-4000-8000-00000000B2FB";
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
const char kSimKey[] = "IDS_PIN_CHECK_FAILED";

} // namespace

class tst_HostNotify : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        m_host.init();
        HostFramework::setPluginLibraryPath(QStringLiteral(HOSTFW_TEST_PLUGIN_ROOT));
    }
    void init()
    {
        m_host.beginTest();
        // Fresh plugins for every test: subscriptions die with the host.
        HostFramework::destroyHost();
        HostFramework::createHost(m_host.mainWindow());
        m_alpha = HostFramework::container()->LoadPlugin(QStringLiteral("FixtureAlpha"));
        m_beta = HostFramework::container()->LoadPlugin(QStringLiteral("FixtureBeta"));
        QVERIFY2(m_alpha && m_beta, qPrintable(HostFramework::container()->lastError()));
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

    void sendReachesOnlyTheTarget_data()
    {
        QTest::addColumn<QString>("target");
        QTest::addColumn<int>("result");
        QTest::addColumn<QStringList>("events");
        QTest::addColumn<int>("dialupCount");

        QTest::newRow("to a plugin") << kAlphaClsid << 0 << QStringList{"FixtureAlpha:Notify 578 1 2"} << 0;
        QTest::newRow("to the dial-up service") << DIALUP_PLUGIN_CLSID << 0 << QStringList() << 1;
        QTest::newRow("clsid in other case")
            << QString::fromLatin1(kAlphaClsid).toLower() << -1 << QStringList() << 0;
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
    void raiseReachesOwnSubscribersOnly()
    {
        INotifyService* notify = notifyService();
        // Alpha subscribes to the call service's 784 while the host is talking to it.
        QCOMPARE(
            notify->SendNotify(QString::fromLatin1(kAlphaClsid), kSubscribeRequest, NTF_CALL_DLG_SHOWN_1, 0),
            0);
        clearFixtureEvents();

        QCOMPARE(notify->RaiseNotify(QStringLiteral(CALLSRV_PLUGIN_CLSID), NTF_CALL_DLG_SHOWN_1, 3, 4), 1);
        QCOMPARE(fixtureEvents(), QStringList{"FixtureAlpha:Notify 784 3 4"});
        QCOMPARE(HostFramework::dialupService()->notifyCount(), 0);

        // Another code of the same sender, and the same code of another sender, reach nobody.
        clearFixtureEvents();
        QCOMPARE(notify->RaiseNotify(QStringLiteral(CALLSRV_PLUGIN_CLSID), NTF_CALL_DLG_CLOSED, 0, 0), 0);
        QCOMPARE(notify->RaiseNotify(QString::fromLatin1(kBetaClsid), NTF_CALL_DLG_SHOWN_1, 0, 0), 0);
        QVERIFY(fixtureEvents().isEmpty());

        const auto records = HostFramework::notificationRecords();
        QStringList kinds;
        for (const auto& r : records)
            kinds << r.kind;
        // A delivery's own effects are recorded before the delivery itself.
        QCOMPARE(kinds, QStringList({"subscribe", "send", "raise", "raise", "raise"}));
        QCOMPARE(records.at(0).clsid, QStringLiteral(CALLSRV_PLUGIN_CLSID));
        QCOMPARE(records.at(0).code, 784u);
        QCOMPARE(records.at(2).delivered, 1);
    }
    void unsubscribeStopsDelivery()
    {
        INotifyService* notify = notifyService();
        const QString callsrv = QStringLiteral(CALLSRV_PLUGIN_CLSID);
        notify->SendNotify(QString::fromLatin1(kBetaClsid), kSubscribeRequest, NTF_CALL_DLG_SHOWN_2, 0);
        QCOMPARE(notify->RaiseNotify(callsrv, NTF_CALL_DLG_SHOWN_2, 0, 0), 1);

        // Unsubscribing outside Beta's delivery does not touch Beta's own subscription.
        QCOMPARE(notify->Unsubscribe(callsrv, NTF_CALL_DLG_SHOWN_2), -1);
        QCOMPARE(notify->RaiseNotify(callsrv, NTF_CALL_DLG_SHOWN_2, 0, 0), 1);

        // A plugin that dies takes its subscriptions with it.
        HostFramework::container()->UnloadPlugin(QStringLiteral("FixtureBeta"));
        QCOMPARE(notify->RaiseNotify(callsrv, NTF_CALL_DLG_SHOWN_2, 0, 0), 0);
    }
    // Regression: the host kept a plugin's QStringLiteral data (subscription sender, record texts) and
    // read it after the library was unloaded.
    void hostKeepsNoPluginStringsAfterUnload()
    {
        INotifyService* notify = notifyService();
        QCOMPARE(
            notify->SendNotify(QString::fromLatin1(kAlphaClsid), kSubscribeRequest, NTF_CALL_DLG_SHOWN_1, 0),
            0);
        HostFramework::pushNextAnswer(MSGBOX_ACCEPTED);
        QCOMPARE(notify->SendNotify(QString::fromLatin1(kAlphaClsid), kUseHostRequest, 0, 0), 0);
        QVERIFY(HostFramework::container()->GetPlugin(QStringLiteral("F1F1F1F1-0000-4000-8000-000000000001"),
                                                      0x5101));
        QVERIFY(HostFramework::container()->UnloadPlugin(QStringLiteral("FixtureAlpha")));
        QVERIFY(!HostFramework::container()->GetPlugin(QStringLiteral("F1F1F1F1-0000-4000-8000-000000000001"),
                                                       0x5101));

        // Everything the host kept is still readable with the library gone.
        QStringList clsids;
        for (const auto& r : HostFramework::notificationRecords())
            clsids << r.clsid;
        QVERIFY(clsids.contains(QStringLiteral(CALLSRV_PLUGIN_CLSID)));
        QVERIFY(clsids.contains(QStringLiteral(DIALUP_PLUGIN_CLSID)));
        const auto messages = HostFramework::messageRecords();
        QCOMPARE(messages.size(), 1);
        QCOMPARE(messages.first().title, QStringLiteral("fixture title"));
        QCOMPARE(messages.first().text, QStringLiteral("fixture text"));
        QCOMPARE(messages.first().buttons, QStringList({"IDS_YES", "IDS_NO"}));
        QCOMPARE(CommonUtils::GetSettings(QStringLiteral("fixture"), QStringLiteral("literal")),
                 QStringLiteral("fixture value"));
        QCOMPARE(notify->RaiseNotify(QStringLiteral(CALLSRV_PLUGIN_CLSID), NTF_CALL_DLG_SHOWN_1, 0, 0), 0);
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
    void missingLanguageKeepsCurrent()
    {
        QVERIFY(Change::LoadLanguage(QStringLiteral("de")));
        const QString german = Change::tr(QString::fromLatin1(kSimKey));
        QVERIFY(Change::LoadLanguage(QStringLiteral("en")));
        QVERIFY(Change::tr(QString::fromLatin1(kSimKey)) != german);
        QVERIFY(Change::LoadLanguage(QStringLiteral("de")));

        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("no tessaro_xx.qm")));
        QVERIFY(!Change::LoadLanguage(QStringLiteral("xx")));
        QCOMPARE(Change::CurrentLanguage(), QStringLiteral("de"));
        QCOMPARE(Change::tr(QString::fromLatin1(kSimKey)), german);
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
    QPointer<QObject> m_alpha;
    QPointer<QObject> m_beta;
};

QTEST_MAIN(tst_HostNotify)
#include "tst_hostnotify.moc"
