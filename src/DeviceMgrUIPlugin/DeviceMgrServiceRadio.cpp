// Device manager service: radio on and off, radio and power events, offline and packet detach, and
// the host objects these need (main menu, main window).
#include "DeviceMgrService.h"

#include "CommonUtils.h"
#include "DeviceMgrLog.h"
#include "HostIds.h"
#include "HostServices.h"
#include "Startup.h"

#include <cstring>

int CDeviceMgrService::EnableRF()
{
    DM_LOG("%s : %s : %s : , entered");
    if (!m_pUILogic) {
        DM_LOG("%s : %s : %s : pre-conditions failed");
        return 13;
    }
    const int result = m_pUILogic->SwitchRFMode(true);
    if (result == 0) {
        DM_LOG("%s : %s : %s : , SwitchRFMode returned Success");
        initMainMenuObj();
        if (m_pMainMenu) {
            m_pMainMenu->RefreshRadioMenu();
            sendNotification(NTF_RADIO_ON);
        } else {
            DM_LOG("%s : %s : %s : , Main menu initialization failed");
        }
    } else {
        DM_LOG("%s : %s : %s : , SwitchRFMode returned Error");
    }
    return result;
}

int CDeviceMgrService::DisableRF()
{
    DM_LOG("%s : %s : %s : , entered");
    if (!m_pUILogic) {
        DM_LOG("%s : %s : %s : pre-conditions failed");
        return 13;
    }
    const int result = m_pUILogic->SwitchRFMode(false);
    if (result == 0) {
        DM_LOG("%s : %s : %s : ,  returned SwitchRFMode Success");
        initMainMenuObj();
        if (m_pMainMenu) {
            m_pMainMenu->RefreshRadioMenu();
            sendNotification(NTF_RADIO_OFF);
        } else {
            DM_LOG("%s : %s : %s : , initialization Main menu  failed");
        }
    } else {
        DM_LOG("%s : %s : %s : ,  returned SwitchRFMode Error");
    }
    return result;
}

void CDeviceMgrService::onSignalRFSwitch(uint hwstate, uint swstate)
{
    DM_LOG("%s : %s : %s : called ");
    if (hwstate == 0 || swstate == 0) {
        sendNotification(NTF_RADIO_OFF);
        sendNotification(NTF_RADIO_FOUND_OFF);
    } else {
        sendNotification(NTF_RADIO_ON);
    }
    if (m_pMainMenu) {
        DM_LOG("%s : %s : %s : update radio menu on  ZELK_EVENT_DEV_RF_SWITCH event ");
        m_pMainMenu->RefreshRadioMenu();
    }
    int previous = m_iLastSwRFState;
    if (previous == -1 && swstate == 0)
        previous = 0;
    // Radio held off by software while the hardware switch is on: the receivers of 580 need to
    // hear it once more, after the radio-off pair above.
    if (previous == 0 && hwstate == 1 && swstate == 0)
        sendNotification(NTF_RADIO_FOUND_OFF);
    m_iLastSwRFState = static_cast<int>(swstate);
}

void CDeviceMgrService::OnPowerMgr(int iStatus)
{
    IPluginContainer* container = Startup::GetPluginContainer();
    INotifyService* notify = notifyServiceOf(container);
    if (!notify)
        return;
    notify->Broadcast(NTF_POWER_EVENT, static_cast<unsigned int>(iStatus), 0);
    DM_LOG("%s : %s : %s :POWER MGR %d", iStatus);
}

void CDeviceMgrService::DetatchGPRS()
{
    if (!m_pUILogic) {
        DM_LOG("%s: %s: %s: m_pUILogic is NULL");
        return;
    }
    if (!m_pUILogic->IsGPRSDetachEnabled()) {
        DM_LOG("%s: %s: %s: m_pUILogic->IsGPRSDetachEnabled() returned false");
        return;
    }
    if (m_pUILogic->DetachGPRS() == 0)
        DM_LOG("%s: %s: %s: m_pUILogic->DetachGPRS() Success");
    else
        DM_LOG("%s: %s: %s: m_pUILogic->DetachGPRS() returned error");
}

void CDeviceMgrService::SetOffline()
{
    DM_LOG("%s: %s: %s: called");
    if (!m_pUILogic) {
        DM_LOG("%s: %s: %s: m_pUILogic is NULL");
        return;
    }
    if (!m_pUILogic->IsIMSIDetachEnabled()) {
        DM_LOG("%s: %s: %s: m_pUILogic->IsIMSIDetachEnabled() returned false");
        return;
    }
    if (m_pUILogic->SetOffline() == 0)
        DM_LOG("%s: %s: %s: m_pUILogic->SetOffline() Success");
    else
        DM_LOG("%s: %s: %s: m_pUILogic->SetOffline() returned error");
}

void CDeviceMgrService::initMainMenuObj()
{
    DM_LOG("%s: %s: %s: entered");
    if (!m_pMainMenu) {
        IPluginContainer* container = Startup::GetPluginContainer();
        if (!container) {
            DM_WARN("%s: %s: %s: Startup::GetPluginContainer failed");
            return;
        }
        QObject* plugin = container->GetPlugin(QStringLiteral(MAINMENU_PLUGIN_CLSID), MAINMENU_PLUGIN_ID);
        m_pMainMenu = plugin ? qobject_cast<IMainMenuUI*>(plugin) : nullptr;
        if (!m_pMainMenu)
            DM_LOG("%s: %s: %s: MainMenuBar::GetInstance() failed");
    }
    DM_LOG("%s: %s: %s: exit");
}

bool CDeviceMgrService::DevIsSupportLTE()
{
    unsigned char bands[ZELK_BAND_AREA_SIZE];
    unsigned char lteBands[ZELK_BAND_AREA_SIZE];
    unsigned char order[ZELK_BAND_AREA_SIZE];
    std::memset(bands, 0, sizeof(bands));
    std::memset(lteBands, 0, sizeof(lteBands));
    std::memset(order, 0, sizeof(order));
    if (ZELK_NetSrv_GetBandListAndOrderEx(bands, lteBands, order) != ZELK_ERROR_SUCCESS) {
        DM_LOG("<======== %s : %s : %s : ZELK_NetSrv_GetBandListAndOrderEx returned error");
        return false;
    }
    quint16 firstUnit = 0;
    std::memcpy(&firstUnit, lteBands, sizeof(firstUnit));
    return firstUnit != 0;
}

void CDeviceMgrService::getParentWidget()
{
    IPluginContainer* container = Startup::GetPluginContainer();
    if (!container) {
        DM_LOG2("%s: %s: GetPluginContainer failed");
        return;
    }
    QObject* plugin = container->GetPlugin(QStringLiteral(MAINFRAME_PLUGIN_CLSID), MAINFRAME_PLUGIN_ID);
    IMainFrameUIService* frame = plugin ? qobject_cast<IMainFrameUIService*>(plugin) : nullptr;
    if (!frame) {
        DM_LOG2("%s: %s: GetPlugin failed");
        return;
    }
    m_pParentWidget = frame->GetMainWindow();
}

void CDeviceMgrService::subscribeCallNotification()
{
    DM_LOG("Start: %s: %s: %s %d", __LINE__);
    IPluginContainer* container = Startup::GetPluginContainer();
    if (!container) {
        DM_LOG2("%s: %s: Plugin container is null");
        return;
    }
    // While the call service shows a dialog of its own, ours must not pop up over it (784 to 786
    // open, 787 closed; see Notify).
    if (INotifyService* notify = notifyServiceOf(container)) {
        for (unsigned int code = NTF_CALL_DLG_SHOWN_1; code <= NTF_CALL_DLG_CLOSED; ++code)
            notify->Subscribe(QStringLiteral(CALLSRV_PLUGIN_CLSID), code);
    }
    DM_LOG("End: %s: %s: %s %d", __LINE__);
}
