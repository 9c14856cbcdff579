/* Device SDK: the functions of the device, network and call services, with C linkage. */
#ifndef ZELK_API_H
#define ZELK_API_H

#include "ZelkTypes.h"

#if defined(__GNUC__)
#define ZELK_API __attribute__((visibility("default")))
#else
#define ZELK_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* Outputs are pointers to the caller's storage; a null output pointer is refused with
 * ZELK_ERROR_BAD_PARAM. Outputs of a failed call are left as the caller set them. Codes typed by the
 * user are NUL-terminated ASCII; PIN, PUK and unlock codes at most 8 characters (9-byte buffer),
 * MSL and one-time codes at most 6 (7-byte buffer). `btType` 0 is the SIM PIN. */

/* ---- Event registration ----
 * Registering the same callback twice in one registry is accepted and keeps one entry. After an
 * unregistration returns, no call of that callback starts any more (a call already running on an SDK
 * thread may still finish); unregistering from inside the callback itself is allowed. */
ZELK_API ZELK_RESULT ZELK_DevSrv_RegisterDevMgrCallback(ZELK_EVENT_CALLBACK pfnCallback);
ZELK_API ZELK_RESULT ZELK_DevSrv_UnRegisterDevMgrCallback(ZELK_EVENT_CALLBACK pfnCallback);
ZELK_API ZELK_RESULT ZELK_DevSrv_RegisterDevInitEventCallback(ZELK_EVENT_CALLBACK pfnCallback);
ZELK_API ZELK_RESULT ZELK_DevSrv_UnRegisterDevInitEventCallback(ZELK_EVENT_CALLBACK pfnCallback);
ZELK_API ZELK_RESULT ZELK_DevSrv_RegisterMultiDeviceEventCallback(ZELK_EVENT_CALLBACK pfnCallback);
ZELK_API ZELK_RESULT ZELK_DevSrv_UnRegisterMultiDeviceEventCallback(ZELK_EVENT_CALLBACK pfnCallback);
ZELK_API ZELK_RESULT ZELK_CallSrv_RegisterCallEventHandler(ZELK_EVENT_CALLBACK pfnCallback);
ZELK_API ZELK_RESULT ZELK_CallSrv_UnRegisterCallEventHandler(ZELK_EVENT_CALLBACK pfnCallback);

/* ---- Devices ---- */
ZELK_API ZELK_RESULT ZELK_DevSrv_GetDevStatus(_ZELK_EN_DEVICE_STATUS* penStatus);
/* Writes the active device's name, cut to ZELK_DEVICE_NAME_OUT_SIZE bytes with its terminator. */
ZELK_API ZELK_RESULT ZELK_DevSrv_GetDeviceName(char* pszName);
ZELK_API ZELK_RESULT ZELK_DevSrv_GetDevicePort(int* pnPort);
ZELK_API ZELK_RESULT ZELK_DevSrv_GetAvailableDeviceList(_ZELK_ST_MULTI_DEVICE_INFO* pstDevices);
/* Makes the device with this name and port the active one. `pszSecondName` is unused (pass ""). */
ZELK_API ZELK_RESULT ZELK_DevSrv_ManualChangeDevice(const char* pszName, const char* pszSecondName,
                                                    int nPort);
/* Starts detection; the result is reported by events on SDK threads. */
ZELK_API ZELK_RESULT ZELK_DevSrv_DetectDevice(void);
/* Product record: one signed 32-bit word, ZELK_PRODUCT_TYPE_*. */
ZELK_API ZELK_RESULT ZELK_DevSrv_GetProductType(int* pnProductType);
ZELK_API ZELK_RESULT ZELK_DevSrv_ResetMs(void);

/* ---- SIM, PIN and card lock ---- */
ZELK_API ZELK_RESULT ZELK_DevSrv_GetSimStatus(unsigned int* pnSimStatus);
/* Status ZELK_PIN_STATUS_*; `pbtRemaining` holds the attempts left of the code currently asked for
 * (the PUK when the status is 3). `pbtReserved` is filled with 0. */
ZELK_API ZELK_RESULT ZELK_DevSrv_GetPinStatus(unsigned char btType, int* pnStatus,
                                              unsigned char* pbtIndicator, unsigned char* pbtReserved,
                                              unsigned char* pbtRemaining);
/* `pbtRemaining` receives the PIN attempts left after the check (0: the PUK is required now). */
ZELK_API ZELK_RESULT ZELK_DevSrv_VerifyPin(unsigned char btType, const char* pszPin,
                                           unsigned char* pbtRemaining);
ZELK_API ZELK_RESULT ZELK_DevSrv_EnablePin(unsigned char btType, const char* pszPin);
ZELK_API ZELK_RESULT ZELK_DevSrv_DisablePin(unsigned char btType, const char* pszPin);
/* Note the order: the new PIN comes before the PUK. Answers ZELK_ERROR_SUCCESS,
 * ZELK_ERROR_FAILURE (-1: wrong PUK), ZELK_ERROR_BAD_PARAM (1) or ZELK_ERROR_UNBLOCK_NOT_ALLOWED
 * (6000). `pbtRemaining` receives the PUK attempts left. */
ZELK_API ZELK_RESULT ZELK_DevSrv_UnblockPin(unsigned char btType, const char* pszNewPin, const char* pszPuk,
                                            unsigned char* pbtRemaining);
/* Answers ZELK_ERROR_SUCCESS, ZELK_ERROR_FAILURE (-1: wrong old PIN) or ZELK_ERROR_BAD_PARAM (1). */
ZELK_API ZELK_RESULT ZELK_DevSrv_ChangePin(unsigned char btType, const char* pszOldPin,
                                           const char* pszNewPin);
/* State byte ZELK_CARD_LOCK_*, attempts left of the unlock code, and a word that is filled with 0. */
ZELK_API ZELK_RESULT ZELK_DevSrv_GetCardLockStatus(unsigned char* pbtState, unsigned char* pbtRemaining,
                                                   unsigned int* pnReserved);
/* `pnRemaining` receives the unlock attempts left after the check. */
ZELK_API ZELK_RESULT ZELK_DevSrv_VerifyCardLock(const char* pszCode, int* pnRemaining);
ZELK_API ZELK_RESULT ZELK_DevSrv_GetImsiInfo(_ZELK_ST_IMSI_INFO* pstImsi);
ZELK_API ZELK_RESULT ZELK_DevSrv_GetGID(_ZELK_ST_GID_INFO* pstGid);

/* ---- Radio, offline, packet service, bands ---- */
ZELK_API ZELK_RESULT ZELK_DevSrv_GetRFSwitch(_ZELK_ST_RF_SWITCH* pstRFSwitch);
/* `bOn`: non-zero switches the radio on. */
ZELK_API ZELK_RESULT ZELK_DevSrv_SetRFSwitch(int bOn);
ZELK_API ZELK_RESULT ZELK_DevSrv_SetOffline(void);
/* `nState`: ZELK_PS_DETACH or ZELK_PS_ATTACH. */
ZELK_API ZELK_RESULT ZELK_NetSrv_SetPSState(int nState);
/* Three areas of ZELK_BAND_AREA_SIZE bytes each: GSM/UMTS bands, LTE bands (its first 16-bit unit
 * is non-zero when the device supports LTE), band order. */
ZELK_API ZELK_RESULT ZELK_NetSrv_GetBandListAndOrderEx(unsigned char* pbtBandList,
                                                       unsigned char* pbtLteBandList,
                                                       unsigned char* pbtBandOrder);

/* ---- Platform WWAN service ----
 * These three answer 0 for "yes". ZELK_DevSrv_IsWWanServiceActive is the one function whose result
 * is signed: it answers -1 when the platform has no WWAN service at all, 0 when the service runs and
 * 1 when it exists but is not running yet. */
ZELK_API ZELK_RESULT ZELK_DevSrv_IsWin7(void);
ZELK_API ZELK_RESULT ZELK_DevSrv_IsWWanReady(void);
#define ZELK_WWAN_SERVICE_ABSENT (-1)
ZELK_API int ZELK_DevSrv_IsWWanServiceActive(void);

/* ---- CDMA activation ---- */
ZELK_API ZELK_RESULT ZELK_DevSrv_GetESN(_ZELK_ST_ESN_INFO* pstEsn);
/* ZELK_OTA_NOT_ACTIVATED or ZELK_OTA_ACTIVATED. */
ZELK_API ZELK_RESULT ZELK_DevSrv_GetOTAActStatus(int* pnStatus);
/* Starts over-the-air activation by dialling `pszDialString`; progress comes as events 6617 and the
 * end of the call as 6618. */
ZELK_API ZELK_RESULT ZELK_DevSrv_AutoCHKOTKSLActive(const char* pszDialString);
/* Ends the over-the-air procedure started with that dial string. */
ZELK_API ZELK_RESULT ZELK_DevSrv_OTAAutoActClear(const char* pszDialString);
/* Status ZELK_OTKSL_*; `pbtRemaining` holds the one-time code's attempts left. */
ZELK_API ZELK_RESULT ZELK_DevSrv_GetOTKSLStatus(int* pnStatus, unsigned char* pbtRemaining);
ZELK_API ZELK_RESULT ZELK_DevSrv_VerifyOTKSL(const char* pszCode, unsigned char* pbtRemaining);
ZELK_API ZELK_RESULT ZELK_DevSrv_VerifyMSL(const char* pszCode);
ZELK_API ZELK_RESULT ZELK_DevSrv_ManualCHKOTKSLActive(const _ZELK_ST_SERVICE_NUMBER* pstNumbers);
ZELK_API ZELK_RESULT ZELK_DevSrv_UpdatePRL(const void* pData, unsigned long nSize);

/* ---- Files ----
 * Writes the user data directory, ending with its own separator, into a buffer of `nSize` bytes
 * (ZELK_MAX_PATH is always enough). */
ZELK_API ZELK_RESULT ZELK_GetUserDataDirectory(char* pszDirectory, unsigned int nSize);

#ifdef __cplusplus
} /* extern "C" */
#endif

#endif /* ZELK_API_H */
