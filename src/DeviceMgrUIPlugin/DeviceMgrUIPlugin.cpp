// The plugin object and the library's export pair.
#include "DeviceMgrUIPlugin.h"

#include "DeviceMgrLog.h"
#include "DeviceMgrService.h"

#include <QtCore/QPointer>

CDeviceMgrUI::CDeviceMgrUI()
    : QObject(nullptr)
    , m_pDeviceMgrService(nullptr)
{
}

// The service outlives the plugin object: the host tears it down through OnDestroy().
CDeviceMgrUI::~CDeviceMgrUI() = default;

void CDeviceMgrUI::Release()
{
}

unsigned int CDeviceMgrUI::GetLastError()
{
    return 0;
}

void CDeviceMgrUI::OnDestroy()
{
    CDeviceMgrService::Destroy();
    m_pDeviceMgrService = nullptr;
}

void CDeviceMgrUI::UnSDKRegisterEvent()
{
    DM_LOG2("%s: %s called");
    // instance() creates the service when the host never called Init(); unregistering callbacks
    // that were never registered is harmless, and the host relies on this call never failing.
    CDeviceMgrService* service = CDeviceMgrService::instance();
    if (service)
        service->unSDKRegisterEvent();
    DM_LOG2("%s: %s exit");
}

bool CDeviceMgrUI::Init()
{
    m_pDeviceMgrService = CDeviceMgrService::instance();
    return m_pDeviceMgrService->Init();
}

unsigned int CDeviceMgrUI::GetPluginType()
{
    return 1;
}

// The host knows this plugin by its name; it announces no class identifier.
QString CDeviceMgrUI::GetCLSID()
{
    return QString();
}

unsigned int CDeviceMgrUI::GetVersion()
{
    return 0;
}

QString CDeviceMgrUI::GetPluginName()
{
    return QStringLiteral("DeviceMgrUI");
}

bool CDeviceMgrUI::IsAllowRelease()
{
    return false;
}

bool CDeviceMgrUI::QueryInterface(int iid, QObject** object)
{
    DM_LOG2("%s: %s called");
    if (iid != PLUGIN_IID_DEVICEMGR)
        return false;
    m_pDeviceMgrService = CDeviceMgrService::instance();
    *object = m_pDeviceMgrService;
    return true;
}

bool CDeviceMgrUI::ShowWindow(QWidget* parent, QRect& rect)
{
    return CDeviceMgrService::instance()->ShowWindow(parent, rect);
}

int CDeviceMgrUI::DoModal()
{
    return 0;
}

void CDeviceMgrUI::Hide()
{
}

void CDeviceMgrUI::FitSize(QRect&)
{
}

bool CDeviceMgrUI::IsReady()
{
    return true;
}

// Every dialog retranslates itself on the host's language notification; nothing to do here.
bool CDeviceMgrUI::ChangeLang(const QString& lang)
{
    return !lang.isEmpty();
}

int CDeviceMgrUI::Notify(unsigned int code, unsigned int wparam, unsigned int lparam)
{
    return CDeviceMgrService::instance()->Notify(code, wparam, lparam);
}

extern "C" Q_DECL_EXPORT QObject* qt_plugin_instance()
{
    // Cleared by QPointer when the host deletes the object, so the next call builds a new one.
    static QPointer<QObject> instance;
    if (!instance)
        instance = new CDeviceMgrUI;
    return instance;
}

extern "C" Q_DECL_EXPORT const char* qt_plugin_query_verification_data()
{
    // clang-format off
    static const char verificationData[] = "pattern=QT_PLUGIN_VERIFICATION_DATA\nversion=4.6.2\ndebug=false\nbuildkey=macosx macx g++-4 full-config";
    // clang-format on
    return verificationData;
}
