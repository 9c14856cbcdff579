// Device SDK: the backend interface behind the C entry points, and the swap of the active backend.
#pragma once

#include "ZelkSdk.h"

#include <memory>

namespace zelk {

// The four callback registries of the SDK.
enum class Registry { DevMgr = 0, DevInit = 1, MultiDevice = 2, Call = 3 };
constexpr int kRegistryCount = 4;

// One implementation of every SDK function. The C entry points check nothing themselves: each
// forwards its arguments unchanged to the active backend, which answers exactly as the SDK would.
// Methods may be called from any thread at the same time.
class ZELK_API Backend
{
public:
    virtual ~Backend();

    virtual ZELK_RESULT registerCallback(Registry registry, ZELK_EVENT_CALLBACK callback) = 0;
    virtual ZELK_RESULT unregisterCallback(Registry registry, ZELK_EVENT_CALLBACK callback) = 0;

    virtual ZELK_RESULT getDevStatus(_ZELK_EN_DEVICE_STATUS* status) = 0;
    virtual ZELK_RESULT getDeviceName(char* name) = 0;
    virtual ZELK_RESULT getDevicePort(int* port) = 0;
    virtual ZELK_RESULT getAvailableDeviceList(_ZELK_ST_MULTI_DEVICE_INFO* list) = 0;
    virtual ZELK_RESULT manualChangeDevice(const char* name, const char* secondName, int port) = 0;
    virtual ZELK_RESULT detectDevice() = 0;
    virtual ZELK_RESULT getProductType(int* productType) = 0;
    virtual ZELK_RESULT resetMs() = 0;

    virtual ZELK_RESULT getSimStatus(unsigned int* simStatus) = 0;
    virtual ZELK_RESULT getPinStatus(unsigned char btType, int* status, unsigned char* indicator,
                                     unsigned char* reserved, unsigned char* remaining) = 0;
    virtual ZELK_RESULT verifyPin(unsigned char btType, const char* pin, unsigned char* remaining) = 0;
    virtual ZELK_RESULT enablePin(unsigned char btType, const char* pin) = 0;
    virtual ZELK_RESULT disablePin(unsigned char btType, const char* pin) = 0;
    virtual ZELK_RESULT unblockPin(unsigned char btType, const char* newPin, const char* puk,
                                   unsigned char* remaining) = 0;
    virtual ZELK_RESULT changePin(unsigned char btType, const char* oldPin, const char* newPin) = 0;
    virtual ZELK_RESULT getCardLockStatus(unsigned char* state, unsigned char* remaining,
                                          unsigned int* reserved) = 0;
    virtual ZELK_RESULT verifyCardLock(const char* code, int* remaining) = 0;
    virtual ZELK_RESULT getImsiInfo(_ZELK_ST_IMSI_INFO* imsi) = 0;
    virtual ZELK_RESULT getGID(_ZELK_ST_GID_INFO* gid) = 0;

    virtual ZELK_RESULT getRFSwitch(_ZELK_ST_RF_SWITCH* rf) = 0;
    virtual ZELK_RESULT setRFSwitch(int on) = 0;
    virtual ZELK_RESULT setOffline() = 0;
    virtual ZELK_RESULT setPSState(int state) = 0;
    virtual ZELK_RESULT getBandListAndOrderEx(unsigned char* bands, unsigned char* lteBands,
                                              unsigned char* order) = 0;

    virtual ZELK_RESULT isWin7() = 0;
    virtual ZELK_RESULT isWWanReady() = 0;
    virtual int isWWanServiceActive() = 0;

    virtual ZELK_RESULT getESN(_ZELK_ST_ESN_INFO* esn) = 0;
    virtual ZELK_RESULT getOTAActStatus(int* status) = 0;
    virtual ZELK_RESULT autoCHKOTKSLActive(const char* dialString) = 0;
    virtual ZELK_RESULT otaAutoActClear(const char* dialString) = 0;
    virtual ZELK_RESULT getOTKSLStatus(int* status, unsigned char* remaining) = 0;
    virtual ZELK_RESULT verifyOTKSL(const char* code, unsigned char* remaining) = 0;
    virtual ZELK_RESULT verifyMSL(const char* code) = 0;
    virtual ZELK_RESULT manualCHKOTKSLActive(const _ZELK_ST_SERVICE_NUMBER* numbers) = 0;
    virtual ZELK_RESULT updatePRL(const void* data, unsigned long size) = 0;

    virtual ZELK_RESULT getUserDataDirectory(char* directory, unsigned int size) = 0;
};

// Makes `backend` the one every SDK function forwards to; null restores the simulated data card.
// Calls already running finish on the backend they started on.
ZELK_API void setBackend(std::shared_ptr<Backend> backend);
// The active backend (never null).
ZELK_API std::shared_ptr<Backend> activeBackend();

} // namespace zelk
