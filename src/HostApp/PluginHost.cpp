// Plugin life cycle as the host runs it: load, Init, frame shown, language change, shut-down.
#include "PluginHost.h"

#include "Change.h"
#include "HostFramework.h"
#include "HostIds.h"
#include "HostServices.h"
#include "IDeviceMgr.h"
#include "PluginContainer.h"
#include "PluginInterfaces.h"

PluginHost::PluginHost(PluginContainer* container, QObject* parent)
    : QObject(parent)
    , m_pContainer(container)
{
    // ---- plugins reloaded for another device ----
    // The container only loads; starting a plugin that a reload brought back is the host's part.
    if (container) {
        connect(container, &PluginContainer::pluginLoaded, this, [this](const QString& name, QObject* root) {
            if (name == m_name || m_shutDown)
                return;
            if (auto* plugin = qobject_cast<IBasePlugin*>(root))
                plugin->Init();
        });
    }
}

PluginHost::~PluginHost()
{
    shutdown();
}

bool PluginHost::load(const QString& name)
{
    m_name = name;
    if (!m_pContainer) {
        m_error = QStringLiteral("no plugin container");
        return false;
    }
    m_pRoot = m_pContainer->LoadPlugin(name);
    if (!m_pRoot) {
        m_error = QStringLiteral("cannot load plugin %1: %2").arg(name, m_pContainer->lastError());
        return false;
    }
    m_pUIPlugin = qobject_cast<IUIPlugin*>(m_pRoot.data());
    if (!m_pUIPlugin) {
        m_error = QStringLiteral("plugin %1 does not offer %2").arg(name, QStringLiteral(IUIPlugin_iid));
        return false;
    }
    m_initResult = m_pUIPlugin->Init();
    QObject* service = nullptr;
    if (m_pUIPlugin->QueryInterface(PLUGIN_IID_DEVICEMGR, &service) && service)
        m_pDeviceMgr = qobject_cast<IDeviceMgr*>(service);
    return true;
}

void PluginHost::frameShown()
{
    if (NotifyService* notify = HostFramework::notifyService())
        notify->Broadcast(NTF_FRAME_SHOWN, 0, 0);
    // The host's other plugins ask for device detection once the frame is up; nobody has to pick
    // Device > Detect devices for a card that is already plugged in.
    if (m_pDeviceMgr)
        m_pDeviceMgr->StartDetectDevice();
}

void PluginHost::changeLanguage(const QString& lang)
{
    Change::LoadLanguage(lang);
    if (m_pUIPlugin)
        m_pUIPlugin->ChangeLang(lang);
    if (NotifyService* notify = HostFramework::notifyService())
        notify->Broadcast(NTF_LANGUAGE_CHANGED, 0, 0);
    emit languageChanged(lang);
}

void PluginHost::shutdown()
{
    if (m_shutDown || !m_pUIPlugin)
        return;
    m_shutDown = true;
    m_pUIPlugin->UnSDKRegisterEvent();
    m_pUIPlugin->OnDestroy();
    m_pDeviceMgr = nullptr;
    m_pUIPlugin = nullptr;
    if (m_pContainer && m_pRoot)
        m_pContainer->UnloadPlugin(m_name);
}
