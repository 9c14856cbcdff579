// Device manager service: life cycle and the IDeviceMgr face.
#include "DeviceMgrService.h"

#include "DeviceMgrLog.h"
#include "ZelkSdk.h"

CDeviceMgrService* CDeviceMgrService::m_pInstance = nullptr;

CDeviceMgrService::CDeviceMgrService()
    : QObject(nullptr)
{
    DM_LOG("%s : %s : %s : constructor called");
}

CDeviceMgrService::~CDeviceMgrService() = default;

CDeviceMgrService* CDeviceMgrService::instance()
{
    if (!m_pInstance)
        m_pInstance = new CDeviceMgrService;
    return m_pInstance;
}

void CDeviceMgrService::Destroy()
{
    if (!m_pInstance)
        return;
    m_pInstance->OnDestroy();
    delete m_pInstance;
    m_pInstance = nullptr;
}

bool CDeviceMgrService::Init()
{
    DM_LOG("%s : %s : %s : called");
    // The SDK callbacks are static and reach the service only through this pointer.
    m_pInstance = this;
    // Neither the logic layer nor the SDK event registrations exist yet in this build, so start-up
    // cannot succeed; the host shows the plugin as loaded with an incomplete start-up.
    return false;
}

void CDeviceMgrService::OnDestroy()
{
    releaseData();
}

void CDeviceMgrService::releaseData()
{
    DM_LOG("%s : %s : %s : destructor called");
    disconnect();
    DM_LOG("%s : %s : %s : destructor exit");
}

void CDeviceMgrService::unSDKRegisterEvent()
{
    DM_LOG2("%s: %s called");
    // Results are not checked: at shut-down there is nothing left to do about a refusal.
    ZELK_DevSrv_UnRegisterDevInitEventCallback(OnDeviceMgrInitEvent);
    ZELK_DevSrv_UnRegisterDevMgrCallback(OnDevMgrEventsCB);
    ZELK_DevSrv_UnRegisterMultiDeviceEventCallback(OnDevMgrEventsCB);
    DM_LOG2("%s: %s exit");
}

int CDeviceMgrService::Notify(unsigned int code, unsigned int, unsigned int)
{
    DM_LOG("%s: %s: %s: called");
    Q_UNUSED(code)
    return 0;
}

// The service has no window of its own; its dialogs open on demand.
bool CDeviceMgrService::ShowWindow(QWidget*, QRect&)
{
    return true;
}

// Not registered with the SDK yet (see Init); kept so that unregistration names the right callbacks.
int CDeviceMgrService::OnDeviceMgrInitEvent(int, void*)
{
    return 1;
}

int CDeviceMgrService::OnDevMgrEventsCB(int, void*)
{
    return 1;
}

// The SIM dialogs, radio commands, chooser and activation are not part of this build yet: each
// operation below is a no-op until its dialog or command exists.
void CDeviceMgrService::VerifyPIN()
{
}
void CDeviceMgrService::EnablePIN()
{
}
void CDeviceMgrService::DisablePIN()
{
}
void CDeviceMgrService::UnlockPIN()
{
}
void CDeviceMgrService::ModifyPIN()
{
}

int CDeviceMgrService::EnableRF()
{
    DM_LOG("%s : %s : %s : , entered");
    if (!m_pUILogic) {
        DM_LOG("%s : %s : %s : pre-conditions failed");
        return 13;
    }
    return 13;
}

int CDeviceMgrService::DisableRF()
{
    DM_LOG("%s : %s : %s : , entered");
    if (!m_pUILogic) {
        DM_LOG("%s : %s : %s : pre-conditions failed");
        return 13;
    }
    return 13;
}

void CDeviceMgrService::SetOffline()
{
}
void CDeviceMgrService::DetatchGPRS()
{
}
void CDeviceMgrService::ShowChooseDevice()
{
}

bool CDeviceMgrService::IsDeviceAvialable()
{
    _ZELK_EN_DEVICE_STATUS status{};
    const bool available =
        ZELK_DevSrv_GetDevStatus(&status) == ZELK_ERROR_SUCCESS && (status == 1 || status == 3);
    m_bDeviceAvialable = available;
    return available;
}

bool CDeviceMgrService::IsValidSim()
{
    if (!IsDeviceAvialable())
        return false;
    return m_pUILogic && m_enCardState == 2 && m_bValidSim && m_bValidPinState;
}

void CDeviceMgrService::ActivateDevice()
{
}
void CDeviceMgrService::StartDetectDevice()
{
}

QString CDeviceMgrService::GetLastUsedDeviceName()
{
    return QString();
}

bool CDeviceMgrService::IsGIDMatched(QString)
{
    return false;
}
