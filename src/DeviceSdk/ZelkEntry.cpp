// Device SDK: the exported C entry points; each forwards to the active backend.
#include "Backend.h"

extern "C" {

ZELK_API ZELK_RESULT ZELK_DevSrv_RegisterDevMgrCallback(ZELK_EVENT_CALLBACK pfnCallback)
{
    return zelk::activeBackend()->registerCallback(zelk::Registry::DevMgr, pfnCallback);
}

ZELK_API ZELK_RESULT ZELK_DevSrv_UnRegisterDevMgrCallback(ZELK_EVENT_CALLBACK pfnCallback)
{
    return zelk::activeBackend()->unregisterCallback(zelk::Registry::DevMgr, pfnCallback);
}

ZELK_API ZELK_RESULT ZELK_DevSrv_RegisterDevInitEventCallback(ZELK_EVENT_CALLBACK pfnCallback)
{
    return zelk::activeBackend()->registerCallback(zelk::Registry::DevInit, pfnCallback);
}

ZELK_API ZELK_RESULT ZELK_DevSrv_UnRegisterDevInitEventCallback(ZELK_EVENT_CALLBACK pfnCallback)
{
    return zelk::activeBackend()->unregisterCallback(zelk::Registry::DevInit, pfnCallback);
}

ZELK_API ZELK_RESULT ZELK_DevSrv_RegisterMultiDeviceEventCallback(ZELK_EVENT_CALLBACK pfnCallback)
{
    return zelk::activeBackend()->registerCallback(zelk::Registry::MultiDevice, pfnCallback);
}

ZELK_API ZELK_RESULT ZELK_DevSrv_UnRegisterMultiDeviceEventCallback(ZELK_EVENT_CALLBACK pfnCallback)
{
    return zelk::activeBackend()->unregisterCallback(zelk::Registry::MultiDevice, pfnCallback);
}

ZELK_API ZELK_RESULT ZELK_CallSrv_RegisterCallEventHandler(ZELK_EVENT_CALLBACK pfnCallback)
{
    return zelk::activeBackend()->registerCallback(zelk::Registry::Call, pfnCallback);
}

ZELK_API ZELK_RESULT ZELK_CallSrv_UnRegisterCallEventHandler(ZELK_EVENT_CALLBACK pfnCallback)
{
    return zelk::activeBackend()->unregisterCallback(zelk::Registry::Call, pfnCallback);
}

ZELK_API ZELK_RESULT ZELK_DevSrv_GetDevStatus(_ZELK_EN_DEVICE_STATUS* penStatus)
{
    return zelk::activeBackend()->getDevStatus(penStatus);
}

ZELK_API ZELK_RESULT ZELK_DevSrv_GetDeviceName(char* pszName)
{
    return zelk::activeBackend()->getDeviceName(pszName);
}

ZELK_API ZELK_RESULT ZELK_DevSrv_GetDevicePort(int* pnPort)
{
    return zelk::activeBackend()->getDevicePort(pnPort);
}

ZELK_API ZELK_RESULT ZELK_DevSrv_GetAvailableDeviceList(_ZELK_ST_MULTI_DEVICE_INFO* pstDevices)
{
    return zelk::activeBackend()->getAvailableDeviceList(pstDevices);
}

ZELK_API ZELK_RESULT ZELK_DevSrv_ManualChangeDevice(const char* pszName, const char* pszSecondName, int nPort)
{
    return zelk::activeBackend()->manualChangeDevice(pszName, pszSecondName, nPort);
}

ZELK_API ZELK_RESULT ZELK_DevSrv_DetectDevice(void)
{
    return zelk::activeBackend()->detectDevice();
}

ZELK_API ZELK_RESULT ZELK_DevSrv_GetProductType(int* pnProductType)
{
    return zelk::activeBackend()->getProductType(pnProductType);
}

ZELK_API ZELK_RESULT ZELK_DevSrv_ResetMs(void)
{
    return zelk::activeBackend()->resetMs();
}

ZELK_API ZELK_RESULT ZELK_DevSrv_GetSimStatus(unsigned int* pnSimStatus)
{
    return zelk::activeBackend()->getSimStatus(pnSimStatus);
}

ZELK_API ZELK_RESULT ZELK_DevSrv_GetPinStatus(unsigned char btType, int* pnStatus,
                                              unsigned char* pbtIndicator, unsigned char* pbtReserved,
                                              unsigned char* pbtRemaining)
{
    return zelk::activeBackend()->getPinStatus(btType, pnStatus, pbtIndicator, pbtReserved, pbtRemaining);
}

ZELK_API ZELK_RESULT ZELK_DevSrv_VerifyPin(unsigned char btType, const char* pszPin,
                                           unsigned char* pbtRemaining)
{
    return zelk::activeBackend()->verifyPin(btType, pszPin, pbtRemaining);
}

ZELK_API ZELK_RESULT ZELK_DevSrv_EnablePin(unsigned char btType, const char* pszPin)
{
    return zelk::activeBackend()->enablePin(btType, pszPin);
}

ZELK_API ZELK_RESULT ZELK_DevSrv_DisablePin(unsigned char btType, const char* pszPin)
{
    return zelk::activeBackend()->disablePin(btType, pszPin);
}

ZELK_API ZELK_RESULT ZELK_DevSrv_UnblockPin(unsigned char btType, const char* pszNewPin, const char* pszPuk,
                                            unsigned char* pbtRemaining)
{
    return zelk::activeBackend()->unblockPin(btType, pszNewPin, pszPuk, pbtRemaining);
}

ZELK_API ZELK_RESULT ZELK_DevSrv_ChangePin(unsigned char btType, const char* pszOldPin, const char* pszNewPin)
{
    return zelk::activeBackend()->changePin(btType, pszOldPin, pszNewPin);
}

ZELK_API ZELK_RESULT ZELK_DevSrv_GetCardLockStatus(unsigned char* pbtState, unsigned char* pbtRemaining,
                                                   unsigned int* pnReserved)
{
    return zelk::activeBackend()->getCardLockStatus(pbtState, pbtRemaining, pnReserved);
}

ZELK_API ZELK_RESULT ZELK_DevSrv_VerifyCardLock(const char* pszCode, int* pnRemaining)
{
    return zelk::activeBackend()->verifyCardLock(pszCode, pnRemaining);
}

ZELK_API ZELK_RESULT ZELK_DevSrv_GetImsiInfo(_ZELK_ST_IMSI_INFO* pstImsi)
{
    return zelk::activeBackend()->getImsiInfo(pstImsi);
}

ZELK_API ZELK_RESULT ZELK_DevSrv_GetGID(_ZELK_ST_GID_INFO* pstGid)
{
    return zelk::activeBackend()->getGID(pstGid);
}

ZELK_API ZELK_RESULT ZELK_DevSrv_GetRFSwitch(_ZELK_ST_RF_SWITCH* pstRFSwitch)
{
    return zelk::activeBackend()->getRFSwitch(pstRFSwitch);
}

ZELK_API ZELK_RESULT ZELK_DevSrv_SetRFSwitch(int bOn)
{
    return zelk::activeBackend()->setRFSwitch(bOn);
}

ZELK_API ZELK_RESULT ZELK_DevSrv_SetOffline(void)
{
    return zelk::activeBackend()->setOffline();
}

ZELK_API ZELK_RESULT ZELK_NetSrv_SetPSState(int nState)
{
    return zelk::activeBackend()->setPSState(nState);
}

ZELK_API ZELK_RESULT ZELK_NetSrv_GetBandListAndOrderEx(unsigned char* pbtBandList,
                                                       unsigned char* pbtLteBandList,
                                                       unsigned char* pbtBandOrder)
{
    return zelk::activeBackend()->getBandListAndOrderEx(pbtBandList, pbtLteBandList, pbtBandOrder);
}

ZELK_API ZELK_RESULT ZELK_DevSrv_IsWin7(void)
{
    return zelk::activeBackend()->isWin7();
}

ZELK_API ZELK_RESULT ZELK_DevSrv_IsWWanReady(void)
{
    return zelk::activeBackend()->isWWanReady();
}

ZELK_API int ZELK_DevSrv_IsWWanServiceActive(void)
{
    return zelk::activeBackend()->isWWanServiceActive();
}

ZELK_API ZELK_RESULT ZELK_DevSrv_GetESN(_ZELK_ST_ESN_INFO* pstEsn)
{
    return zelk::activeBackend()->getESN(pstEsn);
}

ZELK_API ZELK_RESULT ZELK_DevSrv_GetOTAActStatus(int* pnStatus)
{
    return zelk::activeBackend()->getOTAActStatus(pnStatus);
}

ZELK_API ZELK_RESULT ZELK_DevSrv_AutoCHKOTKSLActive(const char* pszDialString)
{
    return zelk::activeBackend()->autoCHKOTKSLActive(pszDialString);
}

ZELK_API ZELK_RESULT ZELK_DevSrv_OTAAutoActClear(const char* pszDialString)
{
    return zelk::activeBackend()->otaAutoActClear(pszDialString);
}

ZELK_API ZELK_RESULT ZELK_DevSrv_GetOTKSLStatus(int* pnStatus, unsigned char* pbtRemaining)
{
    return zelk::activeBackend()->getOTKSLStatus(pnStatus, pbtRemaining);
}

ZELK_API ZELK_RESULT ZELK_DevSrv_VerifyOTKSL(const char* pszCode, unsigned char* pbtRemaining)
{
    return zelk::activeBackend()->verifyOTKSL(pszCode, pbtRemaining);
}

ZELK_API ZELK_RESULT ZELK_DevSrv_VerifyMSL(const char* pszCode)
{
    return zelk::activeBackend()->verifyMSL(pszCode);
}

ZELK_API ZELK_RESULT ZELK_DevSrv_ManualCHKOTKSLActive(const _ZELK_ST_SERVICE_NUMBER* pstNumbers)
{
    return zelk::activeBackend()->manualCHKOTKSLActive(pstNumbers);
}

ZELK_API ZELK_RESULT ZELK_DevSrv_UpdatePRL(const void* pData, unsigned long nSize)
{
    return zelk::activeBackend()->updatePRL(pData, nSize);
}

ZELK_API ZELK_RESULT ZELK_GetUserDataDirectory(char* pszDirectory, unsigned int nSize)
{
    return zelk::activeBackend()->getUserDataDirectory(pszDirectory, nSize);
}

} // extern "C"
