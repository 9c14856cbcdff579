// A tiny host plugin for the container tests, exported by hand the way the device manager is.
// Every call the host makes is appended to the application property "tessaroFixtureEvents", which
// outlives the plugin so that tests can see OnDestroy after the library is gone.
#include "CommonUtils.h"
#include "HostIds.h"
#include "HostServices.h"
#include "PluginInterfaces.h"
#include "Startup.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QStringList>
#include <QtCore/QVariant>

#ifndef FIXTURE_NAME
#error FIXTURE_NAME must name the fixture plugin
#endif
// 0: the plugin refuses its release, as the device manager does.
#ifndef FIXTURE_ALLOW_RELEASE
#define FIXTURE_ALLOW_RELEASE 1
#endif

namespace {

// Notifications that ask the fixture to act (not codes the host uses): subscribe, and hand the
// host its own literals in every way a plugin does.
const unsigned int kSubscribeRequest = 900;
const unsigned int kUseHostRequest = 901;

void note(const QString& event)
{
    QCoreApplication* app = QCoreApplication::instance();
    if (!app)
        return;
    QStringList events = app->property("tessaroFixtureEvents").toStringList();
    events << QStringLiteral(FIXTURE_NAME ":") + event;
    app->setProperty("tessaroFixtureEvents", events);
}

} // namespace

class FixturePlugin : public QObject, public IUIPlugin, public INotify
{
    Q_OBJECT
    Q_INTERFACES(IBasePlugin IUIPlugin INotify)
public:
    FixturePlugin() { setObjectName(QStringLiteral(FIXTURE_NAME)); }
    ~FixturePlugin() override { note(QStringLiteral("deleted")); }

    void Release() override {}
    unsigned int GetLastError() override { return 0; }
    void OnDestroy() override { note(QStringLiteral("OnDestroy")); }
    void UnSDKRegisterEvent() override { note(QStringLiteral("UnSDKRegisterEvent")); }

    bool Init() override
    {
        note(QStringLiteral("Init"));
        return true;
    }
    unsigned int GetPluginType() override { return FIXTURE_KIND; }
    QString GetCLSID() override { return QStringLiteral(FIXTURE_CLSID); }
    unsigned int GetVersion() override { return 0; }
    QString GetPluginName() override { return QStringLiteral(FIXTURE_NAME); }
    bool IsAllowRelease() override { return FIXTURE_ALLOW_RELEASE; }
    bool QueryInterface(int, QObject**) override { return false; }

    bool ShowWindow(QWidget*, QRect&) override { return false; }
    int DoModal() override { return 0; }
    void Hide() override {}
    void FitSize(QRect&) override {}
    bool IsReady() override { return true; }
    bool ChangeLang(const QString& lang) override { return !lang.isEmpty(); }

    int Notify(unsigned int code, unsigned int wparam, unsigned int lparam) override
    {
        note(QStringLiteral("Notify %1 %2 %3").arg(code).arg(wparam).arg(lparam));
        if (code != kSubscribeRequest && code != kUseHostRequest)
            return 0;
        IPluginContainer* container = Startup::GetPluginContainer();
        auto* notify = qobject_cast<INotifyService*>(
            container->GetPlugin(QStringLiteral(NOTIFY_PLUGIN_CLSID), NOTIFY_PLUGIN_ID));
        // Told to, it subscribes to the call service's code `wparam`, as the device manager does
        // while it handles the frame-shown notification: the subscription is its own.
        if (code == kSubscribeRequest) {
            notify->Subscribe(QStringLiteral(CALLSRV_PLUGIN_CLSID), wparam);
            return 0;
        }
        notify->SendNotify(QStringLiteral(DIALUP_PLUGIN_CLSID), NTF_DEVICE_INIT_FINISH, 0, 0);
        CommonUtils::ShowMessage(2, nullptr, QStringLiteral("fixture title"), QStringLiteral("fixture text"),
                                 QStringLiteral("IDS_YES"), QStringLiteral("IDS_NO"));
        CommonUtils::SetSettings(QStringLiteral("fixture"), QStringLiteral("literal"),
                                 QStringLiteral("fixture value"));
        container->RegisterPlugin(QStringLiteral("F1F1F1F1-0000-4000-8000-000000000001"), 0x5101, this);
        return 0;
    }
};

extern "C" Q_DECL_EXPORT QObject* qt_plugin_instance()
{
    static QPointer<QObject> instance;
    if (!instance)
        instance = new FixturePlugin;
    return instance.data();
}

extern "C" Q_DECL_EXPORT const char* qt_plugin_query_verification_data()
{
#if FIXTURE_EXPORTS == 2
    return "pattern=SOMETHING_ELSE\nversion=4.6.2\n";
#else
    return "pattern=QT_PLUGIN_VERIFICATION_DATA\nversion=4.6.2\ndebug=false\nbuildkey=fixture";
#endif
}

#include "FixturePlugin.moc"
