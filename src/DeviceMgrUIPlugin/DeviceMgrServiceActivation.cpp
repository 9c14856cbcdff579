// Device manager service: CDMA service activation. The wizard opened on request, and once per
// attached device when a CDMA card reports that it is not activated yet.
#include "DeviceMgrService.h"

#include "ActivationConfigParse.h"
#include "ActivationWizard.h"
#include "DeviceMgrLog.h"

#include <QtCore/QTimer>

namespace {

// How long the automatic launch waits for the information dialog to go before it tries again.
constexpr int kActivationRetryMs = 10000;

} // namespace

void CDeviceMgrService::AutolaunchActivation()
{
    // Running: the main frame is on screen (the wizard needs it as parent) and the host is not
    // quitting.
    if (!m_bFrameShown || m_bAppQuit.load())
        return;
    if (m_pInfoDlg && m_pInfoDlg->isVisible()) {
        // The wizard would open under a notice that is about to vanish; come back when it has.
        if (!m_pActivationRetryTimer) {
            m_pActivationRetryTimer = new QTimer(this);
            m_pActivationRetryTimer->setSingleShot(true);
            connect(m_pActivationRetryTimer, &QTimer::timeout, this,
                    &CDeviceMgrService::AutolaunchActivation);
        }
        m_pActivationRetryTimer->start(kActivationRetryMs);
        return;
    }
    if (m_bActivationLaunched)
        return;
    m_bActivationLaunched = true;
    if (!m_bDeviceAvialable || readProductType() != ZELK_PRODUCT_TYPE_CDMA)
        return;
    DM_LOG("%s : %s : %s :m-DeviceAviable is TRUE");
    // Read once per process: a carrier's file does not change while the host runs, and a failed
    // first read is not retried until the host restarts.
    static bool s_ok = false;
    static const ActivationInfo s_info = [] {
        bool ok = false;
        const ActivationInfo info = ActivationConfigParse::GetInstance()->GetActivationInfo(ok);
        s_ok = ok;
        return info;
    }();
    ActivationConfigParse::Release(ActivationConfigParse::GetInstance());
    if (!s_ok) {
        DM_LOG("%s : %s : %s : Failed to read Config data");
        return;
    }
    DM_LOG("%s : %s : %s : ActivationInfoInstance.strActiveType is %d", s_info.strActiveType);
    // Other numbers still let a user who opens the wizard choose, but never open it unasked.
    if (s_info.strActiveType < 0 || s_info.strActiveType > 2)
        return;
    DM_LOG("%s : %s : %s : calling GetOTAActStatus");
    int status = ZELK_OTA_UNKNOWN;
    if (ZELK_DevSrv_GetOTAActStatus(&status) != ZELK_ERROR_SUCCESS)
        return;
    DM_LOG("%s : %s : %s : ZELK_DevSrv_GetOTAActStatus returned SUCCESS");
    if (status == ZELK_OTA_NOT_ACTIVATED) {
        DM_LOG("%s : %s : %s :OTK status is unactivated");
        ActivateDevice();
    }
}

void CDeviceMgrService::ActivateDevice()
{
    if (!m_pActivationWizard)
        m_pActivationWizard = ActivationWizard::Instance();
    if (m_pParentWidget)
        m_pActivationWizard->showActivationDlg(m_pParentWidget);
}

bool CDeviceMgrService::activationWindowShown() const
{
    return m_pActivationWizard && m_pActivationWizard->IsActivationWindowShown();
}

void CDeviceMgrService::destroyActivationWizard()
{
    ActivationWizard::Destroy(m_pActivationWizard);
    m_pActivationWizard = nullptr;
}
