// Simulated data card: the C++ control API used by tests, the host application's simulator panel and
// the scenario player. Every function acts on the card behind the SDK's C entry points.
#pragma once

#include "Backend.h"

#include <QtCore/QJsonObject>
#include <QtCore/QString>

#include <cstdint>
#include <string>
#include <thread>
#include <vector>

namespace zelk::sim {

// The SIM (or UIM) card in a device. Codes are ASCII digits.
struct SimCard
{
    bool present = true;
    // SIM status reported while present: 1 to 254 valid, 0 or 255 and above invalid.
    unsigned int status = ZELK_SIM_STATUS_VALID;
    std::string pin = "1234";
    bool pinEnabled = false;  // the PIN request is on
    bool pinVerified = false; // the PIN was entered since the card was powered
    int pinAttempts = 3;      // 0: the PUK is required
    std::string puk = "12345678";
    int pukAttempts = 10; // 0: the SIM is blocked for good
    // With the PIN request on and not yet verified: the card still runs its own PIN check, so the
    // indicator byte is non-zero and callers treat the SIM as ready.
    bool pinCheckPending = false;
    // False: the card answers ZELK_ERROR_UNBLOCK_NOT_ALLOWED to an unblock request.
    bool unblockAllowed = true;
    // A PIN status reported instead of the one derived from the fields above (-1: derived).
    int pinStatusOverride = -1;
    std::string imsi = "001010123456789";
    std::string gid1 = "0A81"; // hexadecimal text, two digits a byte
    std::string gid2;
};

// The data card's network (subsidy) lock.
struct CardLock
{
    int state = ZELK_CARD_LOCK_UNLOCKED; // 1 or 3 locked, 2 usable
    int attempts = 10;
    std::string code = "12345678";
};

struct Radio
{
    bool softwareOn = true;
    bool hardwareOn = true; // the switch on the device itself
    bool switchable = true; // the device can switch its radio on request
    bool lte = false;
};

// Manual activation lock of a CDMA card and the over-the-air procedure.
struct Cdma
{
    std::string esn = "1A2B3C4D";
    std::string meid = "A0000012345678";
    bool activated = true;
    int lockStatus = ZELK_OTKSL_NONE; // 0 none, 1 one-time code, 2 MSL, others unknown
    std::string msl = "123456";
    std::string otksl = "654321";
    int otkslAttempts = 3;
    // States the network pushes once over-the-air activation starts, followed by the call end
    // when otaspCallEnd is set. Empty: nothing happens until the states are sent by hand.
    std::vector<int> otaspStates = {1, 2, 3, 4, 5, 6, 7};
    bool otaspCallEnd = true;
    // False: the card refuses every MDN, MIN and SID written by hand.
    bool acceptNumbers = true;
    // What the device holds after programming.
    std::string mdn, min, sid;
    unsigned long prlSize = 0;
    unsigned long prlMaxSize = 65536;
    std::string lastDialString;
};

struct Device
{
    std::string id; // scenario and control handle; the name when left empty
    std::string name = "USB Modem";
    int port = 3;
    int protocol = 1;
    int productType = ZELK_PRODUCT_TYPE_GSM; // 1 CDMA, anything else GSM/UMTS
    int status = DEVICE_STATUS_AVAILABLE;    // 4 (rejected) keeps it out of the device list
    SimCard sim;
    CardLock cardLock;
    Radio radio;
    Cdma cdma;
    bool offline = false;
    bool packetAttached = true;
    bool fingerprintLocked = false;
    bool initialised = false; // the initialisation events were sent since it became active
};

// Answers about the platform's mobile-broadband service, and the user data directory.
struct Platform
{
    ZELK_RESULT isWin7 = 1;      // 0 would mean "wait for the WWAN service"
    bool wwanReady = true;       // ZELK_DevSrv_IsWWanReady answers 0 when set
    int wwanReadyAfterPolls = 0; // > 0: becomes ready after this many IsWWanReady calls
    int wwanService = 0;         // -1 absent, 0 running, 1 present but not running
    // > 0: ZELK_DevSrv_IsWWanReady answers only after this long, or as soon as the platform is
    // set again: a platform service that hangs. Not in scenario files (the demo must not hang).
    int wwanPollDelayMs = 0;
    std::string userDataDirectory; // empty: a folder in the temporary directory
};

// One SDK call as the card saw it. Codes the user types appear as "****".
struct CallRecord
{
    std::string function;
    std::vector<std::string> args;
    ZELK_RESULT result = 0;
    bool forced = false; // the result came from forceResult()
};

// One event handed to a registry's callbacks.
struct DeliveredEvent
{
    Registry registry = Registry::DevMgr;
    int event = 0;
    std::vector<unsigned char> data;
    std::thread::id thread;
    int callbacks = 0; // how many callbacks were called with it
};

// The masked form of every code in call records.
inline const char* maskedCode()
{
    return "****";
}

// ---- Devices --------------------------------------------------------------------------------------
// Plugs a device in, with the events a real one sends. False when the id is taken, 64 devices are
// attached already or the device is malformed (message in `error`).
ZELK_API bool attachDevice(const Device& device, std::string* error = nullptr);
// Unplugs a device, with its events.
ZELK_API bool removeDevice(const std::string& id);
// Replaces the whole state of an attached device (same id) without sending any event.
ZELK_API bool updateDevice(const Device& device);
// Copies an attached device's state; false when there is none with that id.
ZELK_API bool findDevice(const std::string& id, Device* out);
ZELK_API std::vector<Device> devices();
// Id of the active device; empty when none is active.
ZELK_API std::string activeDeviceId();
// Makes another device the active one, as a manual change does.
ZELK_API bool selectDevice(const std::string& id);
// The device refuses service (unsupported card): it leaves the device list.
ZELK_API bool rejectDevice(const std::string& id);
ZELK_API bool insertSim(const std::string& id);
ZELK_API bool removeSim(const std::string& id);
// The hardware radio switch of the active device.
ZELK_API bool setHardwareRadio(bool on);
ZELK_API void sendPowerEvent(int state);
// A fingerprint verification indication; state 0 ends the active device's fingerprint lock.
ZELK_API void sendFingerprintState(int state);
// An OTASP progress state of the active device (7 and 8 activate a CDMA card), and the call end.
ZELK_API void sendOtaspState(int state);
ZELK_API void sendCallEnd();
ZELK_API Platform platform();
ZELK_API void setPlatform(const Platform& platform);

// ---- Raw events -----------------------------------------------------------------------------------
// Queues any event with any data for a registry's callbacks.
ZELK_API void injectEvent(Registry registry, int event, const void* data, std::size_t size);
ZELK_API void injectEvent(Registry registry, int event, const std::vector<uint32_t>& words);
// The registry an event number normally goes to.
ZELK_API Registry registryOf(int event);
// Blocks until every queued event was delivered and no callback runs; false on timeout or when
// called from inside a callback.
ZELK_API bool waitForIdle(int timeoutMs = 5000);
ZELK_API std::vector<DeliveredEvent> deliveredEvents();
ZELK_API void clearDeliveredEvents();
ZELK_API int callbackCount(Registry registry);
ZELK_API std::thread::id deliveryThread();

// ---- Calls ----------------------------------------------------------------------------------------
// The next `count` calls of `function` (its SDK name) answer `value` instead of running. With
// `runCall` set they run first (state and outputs change) and only the result is replaced.
ZELK_API void forceResult(const std::string& function, int count, ZELK_RESULT value, bool runCall = false);
ZELK_API void failNext(const std::string& function, int count = 1);
ZELK_API void clearForcedResults();
ZELK_API std::vector<CallRecord> calls();
ZELK_API std::vector<CallRecord> calls(const std::string& function);
ZELK_API void clearCalls();

// ---- Whole card -----------------------------------------------------------------------------------
// Back to the defaults: one GSM card, PIN off, ready and active; no forced results, no call or
// event records, the default platform. Registered callbacks stay registered; queued events are
// delivered first.
ZELK_API void reset();
// The device reset() attaches.
ZELK_API Device defaultDevice();

// ---- Scenarios ------------------------------------------------------------------------------------
// Loads a scenario file: refuses a malformed one with "<file>: <field path>: <what is wrong>" and
// leaves the card as it was; otherwise resets the card to the scenario's devices (without events:
// the devices were there before anyone listened) and keeps its timeline.
ZELK_API bool loadScenario(const QString& path, QString* error);
ZELK_API bool loadScenarioText(const QByteArray& json, const QString& name, QString* error);
ZELK_API QString scenarioName();
ZELK_API QString scenarioDescription();
ZELK_API int scenarioStepCount();
ZELK_API QString scenarioStepCaption(int index);
// The step's "user" object: what the person (or the demo) does in the interface; the card ignores it.
ZELK_API QJsonObject scenarioStepUser(int index);
ZELK_API int scenarioStepDelayMs(int index);
// Applies the actions of one timeline step; false with a message when an action cannot apply.
ZELK_API bool runScenarioStep(int index, QString* error = nullptr);

} // namespace zelk::sim
