// Device SDK: holder of the active backend.
#include "Backend.h"

#include <atomic>

namespace zelk {

Backend::~Backend() = default;

namespace {

// Answers every call with a failure until the simulated card lands.
class UnavailableBackend final : public Backend
{
public:
    ZELK_RESULT registerCallback(Registry, ZELK_EVENT_CALLBACK) override { return ZELK_ERROR_NO_DEVICE; }
    ZELK_RESULT unregisterCallback(Registry, ZELK_EVENT_CALLBACK) override { return ZELK_ERROR_NO_DEVICE; }
    ZELK_RESULT getDevStatus(_ZELK_EN_DEVICE_STATUS*) override { return ZELK_ERROR_NO_DEVICE; }
    ZELK_RESULT getDeviceName(char*) override { return ZELK_ERROR_NO_DEVICE; }
    ZELK_RESULT getDevicePort(int*) override { return ZELK_ERROR_NO_DEVICE; }
    ZELK_RESULT getAvailableDeviceList(_ZELK_ST_MULTI_DEVICE_INFO*) override { return ZELK_ERROR_NO_DEVICE; }
    ZELK_RESULT manualChangeDevice(const char*, const char*, int) override { return ZELK_ERROR_NO_DEVICE; }
    ZELK_RESULT detectDevice() override { return ZELK_ERROR_NO_DEVICE; }
    ZELK_RESULT getProductType(int*) override { return ZELK_ERROR_NO_DEVICE; }
    ZELK_RESULT resetMs() override { return ZELK_ERROR_NO_DEVICE; }
    ZELK_RESULT getSimStatus(unsigned int*) override { return ZELK_ERROR_NO_DEVICE; }
    ZELK_RESULT getPinStatus(unsigned char, int*, unsigned char*, unsigned char*, unsigned char*) override
    {
        return ZELK_ERROR_NO_DEVICE;
    }
    ZELK_RESULT verifyPin(unsigned char, const char*, unsigned char*) override
    {
        return ZELK_ERROR_NO_DEVICE;
    }
    ZELK_RESULT enablePin(unsigned char, const char*) override { return ZELK_ERROR_NO_DEVICE; }
    ZELK_RESULT disablePin(unsigned char, const char*) override { return ZELK_ERROR_NO_DEVICE; }
    ZELK_RESULT unblockPin(unsigned char, const char*, const char*, unsigned char*) override
    {
        return ZELK_ERROR_NO_DEVICE;
    }
    ZELK_RESULT changePin(unsigned char, const char*, const char*) override { return ZELK_ERROR_NO_DEVICE; }
    ZELK_RESULT getCardLockStatus(unsigned char*, unsigned char*, unsigned int*) override
    {
        return ZELK_ERROR_NO_DEVICE;
    }
    ZELK_RESULT verifyCardLock(const char*, int*) override { return ZELK_ERROR_NO_DEVICE; }
    ZELK_RESULT getImsiInfo(_ZELK_ST_IMSI_INFO*) override { return ZELK_ERROR_NO_DEVICE; }
    ZELK_RESULT getGID(_ZELK_ST_GID_INFO*) override { return ZELK_ERROR_NO_DEVICE; }
    ZELK_RESULT getRFSwitch(_ZELK_ST_RF_SWITCH*) override { return ZELK_ERROR_NO_DEVICE; }
    ZELK_RESULT setRFSwitch(int) override { return ZELK_ERROR_NO_DEVICE; }
    ZELK_RESULT setOffline() override { return ZELK_ERROR_NO_DEVICE; }
    ZELK_RESULT setPSState(int) override { return ZELK_ERROR_NO_DEVICE; }
    ZELK_RESULT getBandListAndOrderEx(unsigned char*, unsigned char*, unsigned char*) override
    {
        return ZELK_ERROR_NO_DEVICE;
    }
    ZELK_RESULT isWin7() override { return ZELK_ERROR_NO_DEVICE; }
    ZELK_RESULT isWWanReady() override { return ZELK_ERROR_NO_DEVICE; }
    int isWWanServiceActive() override { return ZELK_WWAN_SERVICE_ABSENT; }
    ZELK_RESULT getESN(_ZELK_ST_ESN_INFO*) override { return ZELK_ERROR_NO_DEVICE; }
    ZELK_RESULT getOTAActStatus(int*) override { return ZELK_ERROR_NO_DEVICE; }
    ZELK_RESULT autoCHKOTKSLActive(const char*) override { return ZELK_ERROR_NO_DEVICE; }
    ZELK_RESULT otaAutoActClear(const char*) override { return ZELK_ERROR_NO_DEVICE; }
    ZELK_RESULT getOTKSLStatus(int*, unsigned char*) override { return ZELK_ERROR_NO_DEVICE; }
    ZELK_RESULT verifyOTKSL(const char*, unsigned char*) override { return ZELK_ERROR_NO_DEVICE; }
    ZELK_RESULT verifyMSL(const char*) override { return ZELK_ERROR_NO_DEVICE; }
    ZELK_RESULT manualCHKOTKSLActive(const _ZELK_ST_SERVICE_NUMBER*) override { return ZELK_ERROR_NO_DEVICE; }
    ZELK_RESULT updatePRL(const void*, unsigned long) override { return ZELK_ERROR_NO_DEVICE; }
    ZELK_RESULT getUserDataDirectory(char*, unsigned int) override { return ZELK_ERROR_NO_DEVICE; }
};

std::shared_ptr<Backend> g_backend;

std::shared_ptr<Backend> defaultBackend()
{
    static const std::shared_ptr<Backend> backend = std::make_shared<UnavailableBackend>();
    return backend;
}

} // namespace

void setBackend(std::shared_ptr<Backend> backend)
{
    std::atomic_store(&g_backend, std::move(backend));
}

std::shared_ptr<Backend> activeBackend()
{
    std::shared_ptr<Backend> backend = std::atomic_load(&g_backend);
    return backend ? backend : defaultBackend();
}

} // namespace zelk
