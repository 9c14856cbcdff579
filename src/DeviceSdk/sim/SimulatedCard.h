// Simulated data card: the default backend of the SDK, with the state it models.
#pragma once

#include "EventDispatcher.h"

#include <condition_variable>
#include <map>
#include <memory>
#include <mutex>

namespace zelk::sim {

// Checks a device's fields the way the scenario reader does. On a fault, `field` names it (a path
// below the device such as "sim.pin") and `what` says what is wrong; no code is quoted.
bool validateDevice(const Device& device, std::string* field, std::string* what);

// The card. Every SDK call and every control operation holds one lock for its whole length, so the
// card answers each call from one consistent state; events it causes are queued under that lock
// (hence in a consistent order) and delivered later by the dispatcher's thread.
class SimulatedCard final : public Backend
{
public:
    static SimulatedCard& instance();
    // The card as the backend the entry points use by default (not owned).
    static std::shared_ptr<Backend> asBackend();

    SimulatedCard();
    ~SimulatedCard() override;

    // ---- Backend ----
    ZELK_RESULT registerCallback(Registry registry, ZELK_EVENT_CALLBACK callback) override;
    ZELK_RESULT unregisterCallback(Registry registry, ZELK_EVENT_CALLBACK callback) override;
    ZELK_RESULT getDevStatus(_ZELK_EN_DEVICE_STATUS* status) override;
    ZELK_RESULT getDeviceName(char* name) override;
    ZELK_RESULT getDevicePort(int* port) override;
    ZELK_RESULT getAvailableDeviceList(_ZELK_ST_MULTI_DEVICE_INFO* list) override;
    ZELK_RESULT manualChangeDevice(const char* name, const char* secondName, int port) override;
    ZELK_RESULT detectDevice() override;
    ZELK_RESULT getProductType(int* productType) override;
    ZELK_RESULT resetMs() override;
    ZELK_RESULT getSimStatus(unsigned int* simStatus) override;
    ZELK_RESULT getPinStatus(unsigned char btType, int* status, unsigned char* indicator,
                             unsigned char* reserved, unsigned char* remaining) override;
    ZELK_RESULT verifyPin(unsigned char btType, const char* pin, unsigned char* remaining) override;
    ZELK_RESULT enablePin(unsigned char btType, const char* pin) override;
    ZELK_RESULT disablePin(unsigned char btType, const char* pin) override;
    ZELK_RESULT unblockPin(unsigned char btType, const char* newPin, const char* puk,
                           unsigned char* remaining) override;
    ZELK_RESULT changePin(unsigned char btType, const char* oldPin, const char* newPin) override;
    ZELK_RESULT getCardLockStatus(unsigned char* state, unsigned char* remaining,
                                  unsigned int* reserved) override;
    ZELK_RESULT verifyCardLock(const char* code, int* remaining) override;
    ZELK_RESULT getImsiInfo(_ZELK_ST_IMSI_INFO* imsi) override;
    ZELK_RESULT getGID(_ZELK_ST_GID_INFO* gid) override;
    ZELK_RESULT getRFSwitch(_ZELK_ST_RF_SWITCH* rf) override;
    ZELK_RESULT setRFSwitch(int on) override;
    ZELK_RESULT setOffline() override;
    ZELK_RESULT setPSState(int state) override;
    ZELK_RESULT getBandListAndOrderEx(unsigned char* bands, unsigned char* lteBands,
                                      unsigned char* order) override;
    ZELK_RESULT isWin7() override;
    ZELK_RESULT isWWanReady() override;
    int isWWanServiceActive() override;
    ZELK_RESULT getESN(_ZELK_ST_ESN_INFO* esn) override;
    ZELK_RESULT getOTAActStatus(int* status) override;
    ZELK_RESULT autoCHKOTKSLActive(const char* dialString) override;
    ZELK_RESULT otaAutoActClear(const char* dialString) override;
    ZELK_RESULT getOTKSLStatus(int* status, unsigned char* remaining) override;
    ZELK_RESULT verifyOTKSL(const char* code, unsigned char* remaining) override;
    ZELK_RESULT verifyMSL(const char* code) override;
    ZELK_RESULT manualCHKOTKSLActive(const _ZELK_ST_SERVICE_NUMBER* numbers) override;
    ZELK_RESULT updatePRL(const void* data, unsigned long size) override;
    ZELK_RESULT getUserDataDirectory(char* directory, unsigned int size) override;

    // ---- Control (see SimControl.h) ----
    bool attachDevice(const Device& device, std::string* error);
    bool removeDevice(const std::string& id);
    bool updateDevice(const Device& device);
    bool findDevice(const std::string& id, Device* out);
    std::vector<Device> devices();
    std::string activeDeviceId();
    bool selectDevice(const std::string& id);
    bool rejectDevice(const std::string& id);
    bool setSimPresent(const std::string& id, bool present);
    bool setHardwareRadio(bool on);
    void sendPowerEvent(int state);
    void sendFingerprintState(int state);
    void sendOtaspState(int state);
    void sendCallEnd();
    Platform platform();
    void setPlatform(const Platform& platform);
    void injectEvent(Registry registry, int event, const void* data, std::size_t size);
    void forceResult(const std::string& function, int count, ZELK_RESULT value, bool runCall);
    void clearForcedResults();
    std::vector<CallRecord> calls(const std::string& function);
    void clearCalls();
    // Replaces the whole card state without events (scenario load and reset).
    void replaceState(const std::vector<Device>& devices, const std::string& activeId,
                      const Platform& platform);
    // Back to the default device and platform; forced results, call and event records cleared.
    void resetCard();
    EventDispatcher& dispatcher() { return *m_dispatcher; }

private:
    ZELK_RESULT setPinRequest(const char* function, unsigned char btType, const char* pin, bool on);
    class Call;
    struct Forced
    {
        int count;
        ZELK_RESULT value;
        bool runCall;
    };

    Device* findLocked(const std::string& id);
    Device* activeLocked();
    std::vector<unsigned char> deviceListLocked() const;
    void postLocked(int event, std::vector<unsigned char> data = {});
    void postWordLocked(int event, uint32_t word);
    void sendInitSequenceLocked(Device& device);
    void activateLocked(Device& device);
    // Writes localdeviceinfo.xml with the active device marked as the one used last.
    void rememberLastUsedLocked();
    void afterActiveGoneLocked();

    std::mutex m_mutex;
    std::vector<Device> m_devices; // attach order
    std::string m_activeId;
    Platform m_platform;
    int m_wwanPolls = 0;
    // Counts platform changes; a hanging WWAN poll ends when it moves.
    unsigned m_platformGeneration = 0;
    std::condition_variable m_platformChanged;
    std::map<std::string, std::vector<Forced>> m_forced;
    std::vector<CallRecord> m_calls;
    std::unique_ptr<EventDispatcher> m_dispatcher;
};

} // namespace zelk::sim
