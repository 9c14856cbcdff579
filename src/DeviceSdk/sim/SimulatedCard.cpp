// Simulated data card: the default backend of the SDK. It models the device list, the SIM and its
// codes, the network lock, the radio, CDMA activation and the fingerprint lock, answers every SDK
// call from that state and sends the events a real device would.
#include "SimulatedCard.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QSaveFile>
#include <QtCore/QXmlStreamWriter>

#include <algorithm>
#include <chrono>
#include <cstring>

// Order of events per situation (registry in brackets: init = device initialisation, multi =
// multi-device, mgr = device manager, call = call service). "Init sequence" is:
//   [init] 6000 start
//   [init] 6018 fingerprint lock               -- only while the device's fingerprint lock is on; the
//                                                 rest follows at once, the plugin holds it back
//   no valid SIM:            [init] 6002, 6008, 6014
//   a code is needed         [init] 6008, 6011 (PIN check), 6014
//   (PIN on, PUK, blocked):
//   no code needed (PIN off  [init] 6008, 6012 (no PIN), 6013 (only when network-locked), 6014
//   or already entered):
//
// Device plugged in, first usable device:  [multi] 6606 (list), [mgr] 6600, init sequence.
// Device plugged in, another one present:  [multi] 6606 (list); the user picks with a manual change.
// Device plugged in that the SDK refuses:   [multi] 6601 (list without it).
// Active device removed:                    [init] 6016, [multi] 6010 (list); then, when exactly one
//                                           device is left, [mgr] 6600 and its init sequence; when
//                                           several are left, [multi] 6606 (list) so one is chosen.
// Other device removed:                     [multi] 6010 (list).
// Manual change between two devices:        [multi] 6500, 6604, 6501, [mgr] 6600, init sequence of
//                                           the new device. From no active device: [mgr] 6600 and
//                                           the init sequence only.
// Detection (ZELK_DevSrv_DetectDevice):     [multi] 6606 (list); with an active device (or exactly
//                                           one present, which becomes active) [mgr] 6600 and the
//                                           init sequence.
// Reject:                                   [multi] 6601 (list without it); no device becomes active.
// SIM removed from the active device:       [mgr] 6619 (0).
// SIM inserted into the active device:      [mgr] 6619 (SIM status), then [init] 6011 when a code is
//                                           needed, else 6012 and (when network-locked) 6013.
// Radio switched (hardware switch or        [mgr] 6615 (software state, hardware state).
// ZELK_DevSrv_SetRFSwitch):
// Power:                                    [mgr] 6616 (state).
// Fingerprint verification:                 [mgr] 6620 (indication); indication 0 ends the lock.
// Over-the-air activation started:          [mgr] 6617 (state) for each state the network pushes,
//                                           then [call] 6618 (call end, no data).
// Modem reset (ZELK_DevSrv_ResetMs):        [init] 6016, [multi] 6606 (list), [mgr] 6600, init
//                                           sequence (the modem re-enumerates; the PIN is asked again).
// PIN, PUK, unlock-code and activation checks send no event: the caller acts on the result.

namespace zelk::sim {

namespace {

constexpr int kPinAttempts = 3;
constexpr int kPukAttempts = 10;

std::string num(long long value)
{
    return std::to_string(value);
}

std::string text(const char* s, std::size_t max = ZELK_DEVICE_NAME_SIZE)
{
    if (!s) {
        return "null";
    }
    return "\"" + std::string(s, strnlen(s, max)) + "\"";
}

// Codes typed by the user never enter a record, not even their length.
std::string code(const char* s)
{
    return s ? maskedCode() : "null";
}

std::string out(const void* p)
{
    return p ? "out" : "null";
}

std::string in(const void* p)
{
    return p ? "in" : "null";
}

std::string fn(ZELK_EVENT_CALLBACK callback)
{
    if (!callback) {
        return "null";
    }
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%p", reinterpret_cast<void*>(callback));
    return buffer;
}

void wipe(std::string& s)
{
    volatile char* p = s.empty() ? nullptr : &s[0];
    for (std::size_t i = 0; p && i < s.size(); ++i) {
        p[i] = 0;
    }
    s.clear();
}

bool allDigits(const std::string& s)
{
    return std::all_of(s.begin(), s.end(), [](char c) { return c >= '0' && c <= '9'; });
}

bool allHex(const std::string& s)
{
    return std::all_of(s.begin(), s.end(), [](char c) {
        return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
    });
}

// A code as the card reads it from the caller's buffer: NUL-terminated within the buffer, digits
// only, with a length the card accepts.
bool readCode(const char* buffer, std::size_t bufferSize, std::size_t minLength, std::size_t maxLength,
              std::string* code)
{
    const std::size_t length = strnlen(buffer, bufferSize);
    if (length == bufferSize || length < minLength || length > maxLength) {
        return false;
    }
    code->assign(buffer, length);
    if (!allDigits(*code)) {
        wipe(*code);
        return false;
    }
    return true;
}

void copyText(char* target, std::size_t size, const std::string& source)
{
    std::memset(target, 0, size);
    std::memcpy(target, source.data(), std::min(source.size(), size - 1));
}

unsigned char byteOf(int value)
{
    return static_cast<unsigned char>(std::clamp(value, 0, 255));
}

int pinStatusOf(const SimCard& sim)
{
    if (sim.pinStatusOverride >= 0) {
        return sim.pinStatusOverride;
    }
    if (sim.pukAttempts <= 0) {
        return ZELK_PIN_STATUS_PUK_BLOCKED;
    }
    if (sim.pinAttempts <= 0) {
        return ZELK_PIN_STATUS_PUK_REQUIRED;
    }
    if (sim.pinEnabled && !sim.pinVerified) {
        return ZELK_PIN_STATUS_PIN_REQUIRED;
    }
    return sim.pinEnabled ? ZELK_PIN_STATUS_READY : ZELK_PIN_STATUS_READY_NO_PIN;
}

bool codeNeeded(const SimCard& sim)
{
    const int status = pinStatusOf(sim);
    return status == ZELK_PIN_STATUS_PIN_REQUIRED || status == ZELK_PIN_STATUS_PUK_REQUIRED ||
           status == ZELK_PIN_STATUS_PUK_BLOCKED;
}

bool simValid(const SimCard& sim)
{
    return sim.present && sim.status >= 1 && sim.status <= 254;
}

bool usable(const Device& device)
{
    return device.status != DEVICE_STATUS_REJECTED;
}

std::vector<unsigned char> wordsData(std::initializer_list<uint32_t> words)
{
    std::vector<unsigned char> data(words.size() * sizeof(uint32_t));
    std::size_t offset = 0;
    for (uint32_t word : words) {
        std::memcpy(data.data() + offset, &word, sizeof word);
        offset += sizeof word;
    }
    return data;
}

bool fail(std::string* field, std::string* what, const char* f, const std::string& w)
{
    if (field) {
        *field = f;
    }
    if (what) {
        *what = w;
    }
    return false;
}

} // namespace

bool validateDevice(const Device& d, std::string* field, std::string* what)
{
    if (d.name.empty() || d.name.size() >= ZELK_DEVICE_NAME_SIZE) {
        return fail(field, what, "name", "must hold 1 to 127 characters");
    }
    if (d.id.size() > 127) {
        return fail(field, what, "id", "must hold at most 127 characters");
    }
    if (d.status < 0) {
        return fail(field, what, "status", "must not be negative");
    }
    if (d.sim.pin.size() < 4 || d.sim.pin.size() > 8 || !allDigits(d.sim.pin)) {
        return fail(field, what, "sim.pin", "must be 4 to 8 digits");
    }
    if (d.sim.puk.size() != 8 || !allDigits(d.sim.puk)) {
        return fail(field, what, "sim.puk", "must be 8 digits");
    }
    if (d.sim.pinAttempts < 0 || d.sim.pinAttempts > kPinAttempts) {
        return fail(field, what, "sim.pinAttempts", "must be 0 to 3");
    }
    if (d.sim.pukAttempts < 0 || d.sim.pukAttempts > kPukAttempts) {
        return fail(field, what, "sim.pukAttempts", "must be 0 to 10");
    }
    if (d.sim.pinStatusOverride < -1 || d.sim.pinStatusOverride > 255) {
        return fail(field, what, "sim.pinStatus", "must be 0 to 255");
    }
    if (d.sim.imsi.size() > 15 || !allDigits(d.sim.imsi)) {
        return fail(field, what, "sim.imsi", "must be at most 15 digits");
    }
    if (d.sim.gid1.size() > ZELK_GID_TEXT_SIZE || d.sim.gid1.size() % 2 != 0 || !allHex(d.sim.gid1)) {
        return fail(field, what, "sim.gid1", "must be hexadecimal text of whole bytes, at most 256 bytes");
    }
    if (d.sim.gid2.size() > ZELK_GID_TEXT_SIZE || d.sim.gid2.size() % 2 != 0 || !allHex(d.sim.gid2)) {
        return fail(field, what, "sim.gid2", "must be hexadecimal text of whole bytes, at most 256 bytes");
    }
    if (d.cardLock.state < 1 || d.cardLock.state > 3) {
        return fail(field, what, "cardLock.state", "must be 1, 2 or 3");
    }
    if (d.cardLock.attempts < 0 || d.cardLock.attempts > 255) {
        return fail(field, what, "cardLock.attempts", "must be 0 to 255");
    }
    if (d.cardLock.code.size() < 4 || d.cardLock.code.size() > 8 || !allDigits(d.cardLock.code)) {
        return fail(field, what, "cardLock.code", "must be 4 to 8 digits");
    }
    if (d.cdma.esn.size() != 8 || !allHex(d.cdma.esn)) {
        return fail(field, what, "cdma.esn", "must be 8 hexadecimal digits");
    }
    if (d.cdma.meid.size() != 14 || !allHex(d.cdma.meid)) {
        return fail(field, what, "cdma.meid", "must be 14 hexadecimal digits");
    }
    // Statuses above 2 are ones the wizard does not know; the card may still report them.
    if (d.cdma.lockStatus < 0 || d.cdma.lockStatus > 255) {
        return fail(field, what, "cdma.lockStatus", "must be 0 to 255");
    }
    if (d.cdma.msl.size() != 6 || !allDigits(d.cdma.msl)) {
        return fail(field, what, "cdma.msl", "must be 6 digits");
    }
    if (d.cdma.otksl.size() != 6 || !allDigits(d.cdma.otksl)) {
        return fail(field, what, "cdma.otksl", "must be 6 digits");
    }
    if (d.cdma.otkslAttempts < 0 || d.cdma.otkslAttempts > 255) {
        return fail(field, what, "cdma.otkslAttempts", "must be 0 to 255");
    }
    for (int state : d.cdma.otaspStates) {
        if (state < 0 || state > 9) {
            return fail(field, what, "cdma.otaspStates", "states must be 0 to 9");
        }
    }
    return true;
}

// Holds the card's lock for one SDK call, applies a forced result and records the call.
class SimulatedCard::Call
{
public:
    Call(SimulatedCard& card, const char* function, std::vector<std::string> args)
        : m_card(card)
        , m_lock(card.m_mutex)
    {
        m_record.function = function;
        m_record.args = std::move(args);
        auto it = m_card.m_forced.find(m_record.function);
        if (it != m_card.m_forced.end() && !it->second.empty()) {
            Forced& front = it->second.front();
            m_forced = true;
            m_value = front.value;
            m_runCall = front.runCall;
            if (--front.count <= 0) {
                it->second.erase(it->second.begin());
            }
        }
    }

    // True when the call must not run: its result is forced.
    bool skip() const { return m_forced && !m_runCall; }

    ZELK_RESULT done(ZELK_RESULT result)
    {
        if (!m_lock.owns_lock()) {
            m_lock.lock();
        }
        m_record.result = m_forced ? m_value : result;
        m_record.forced = m_forced;
        m_card.m_calls.push_back(m_record);
        return m_record.result;
    }

    // Lets other threads in while the call waits on the dispatcher.
    void unlock() { m_lock.unlock(); }
    std::unique_lock<std::mutex>& lock() { return m_lock; }

private:
    SimulatedCard& m_card;
    std::unique_lock<std::mutex> m_lock;
    CallRecord m_record;
    bool m_forced = false;
    bool m_runCall = false;
    ZELK_RESULT m_value = 0;
};

SimulatedCard& SimulatedCard::instance()
{
    static SimulatedCard card;
    return card;
}

std::shared_ptr<Backend> SimulatedCard::asBackend()
{
    return std::shared_ptr<Backend>(&instance(), [](Backend*) {});
}

SimulatedCard::SimulatedCard()
    : m_dispatcher(std::make_unique<EventDispatcher>())
{
    m_devices.push_back(defaultDevice());
    m_devices.back().id = m_devices.back().name;
    m_activeId = m_devices.back().id;
}

SimulatedCard::~SimulatedCard() = default;

Device* SimulatedCard::findLocked(const std::string& id)
{
    for (Device& d : m_devices) {
        if (d.id == id) {
            return &d;
        }
    }
    return nullptr;
}

Device* SimulatedCard::activeLocked()
{
    return m_activeId.empty() ? nullptr : findLocked(m_activeId);
}

std::vector<unsigned char> SimulatedCard::deviceListLocked() const
{
    _ZELK_ST_MULTI_DEVICE_INFO list;
    std::memset(&list, 0, sizeof list);
    for (const Device& d : m_devices) {
        if (!usable(d) || list.nDevNum >= MAX_DEVICE_COUNT) {
            continue;
        }
        _ZELK_ST_DEVICE_INFO& entry = list.stDevInfo[list.nDevNum++];
        entry.nPort = d.port;
        entry.nProtocol = d.protocol;
        copyText(entry.szName, sizeof entry.szName, d.name);
    }
    const auto* bytes = reinterpret_cast<const unsigned char*>(&list);
    return std::vector<unsigned char>(bytes, bytes + sizeof list);
}

void SimulatedCard::postLocked(int event, std::vector<unsigned char> data)
{
    m_dispatcher->post(registryOf(event), event, std::move(data));
}

void SimulatedCard::postWordLocked(int event, uint32_t word)
{
    postLocked(event, wordsData({word}));
}

void SimulatedCard::sendInitSequenceLocked(Device& d)
{
    postLocked(ZELK_EVENT_DEV_INIT_START);
    if (d.fingerprintLocked) {
        postLocked(ZELK_EVENT_DEV_FP_LOCK);
    }
    if (!simValid(d.sim)) {
        postLocked(ZELK_EVENT_DEV_SIM_INVALID);
        postLocked(ZELK_EVENT_DEV_INIT_SUCCESS);
    } else {
        postLocked(ZELK_EVENT_DEV_INIT_SUCCESS);
        if (codeNeeded(d.sim)) {
            postLocked(ZELK_EVENT_DEV_PIN_CHECK);
        } else {
            postLocked(ZELK_EVENT_DEV_DEVICE_NO_PIN);
            if (d.cardLock.state != ZELK_CARD_LOCK_UNLOCKED) {
                postLocked(ZELK_EVENT_DEV_CARD_LOCK);
            }
        }
    }
    postLocked(ZELK_EVENT_DEV_DEVICE_INIT_FINISH);
    d.initialised = true;
}

// ---- Last used device ------------------------------------------------------------------------------
// Like the maker's SDK, the card remembers the device used last in localdeviceinfo.xml in its user
// data folder: one "item" per attached device, named by its "id" attribute, with the text "1" on
// the active one. Written whole and renamed into place, so a reader never sees half a file.
void SimulatedCard::rememberLastUsedLocked()
{
    QString folder = QString::fromStdString(m_platform.userDataDirectory);
    if (folder.isEmpty()) {
        folder = QDir::tempPath() + QStringLiteral("/tessaro-sim-userdata");
    }
    if (!QDir().mkpath(folder)) {
        return;
    }
    QSaveFile file(QDir(folder).filePath(QStringLiteral("localdeviceinfo.xml")));
    if (!file.open(QIODevice::WriteOnly)) {
        return;
    }
    QXmlStreamWriter xml(&file);
    xml.setAutoFormatting(true);
    xml.writeStartDocument();
    xml.writeStartElement(QStringLiteral("localdeviceinfo"));
    for (const Device& d : m_devices) {
        xml.writeStartElement(QStringLiteral("item"));
        xml.writeAttribute(QStringLiteral("id"), QString::fromStdString(d.name));
        xml.writeCharacters(d.id == m_activeId ? QStringLiteral("1") : QStringLiteral("0"));
        xml.writeEndElement();
    }
    xml.writeEndElement();
    xml.writeEndDocument();
    file.commit();
}

void SimulatedCard::activateLocked(Device& d)
{
    m_activeId = d.id;
    rememberLastUsedLocked();
    postLocked(ZELK_EVENT_DEV_ACTIVE);
    sendInitSequenceLocked(d);
}

void SimulatedCard::afterActiveGoneLocked()
{
    std::vector<Device*> left;
    for (Device& d : m_devices) {
        if (usable(d)) {
            left.push_back(&d);
        }
    }
    if (left.size() == 1) {
        activateLocked(*left.front());
    } else if (left.size() > 1) {
        postLocked(ZELK_EVENT_DEV_DETECTED, deviceListLocked());
    }
}

// ---- Registration ----------------------------------------------------------------------------------

namespace {
const char* registerName(Registry registry, bool add)
{
    switch (registry) {
    case Registry::DevMgr:
        return add ? "ZELK_DevSrv_RegisterDevMgrCallback" : "ZELK_DevSrv_UnRegisterDevMgrCallback";
    case Registry::DevInit:
        return add ? "ZELK_DevSrv_RegisterDevInitEventCallback"
                   : "ZELK_DevSrv_UnRegisterDevInitEventCallback";
    case Registry::MultiDevice:
        return add ? "ZELK_DevSrv_RegisterMultiDeviceEventCallback"
                   : "ZELK_DevSrv_UnRegisterMultiDeviceEventCallback";
    case Registry::Call:
        return add ? "ZELK_CallSrv_RegisterCallEventHandler" : "ZELK_CallSrv_UnRegisterCallEventHandler";
    }
    return "";
}
} // namespace

ZELK_RESULT SimulatedCard::registerCallback(Registry registry, ZELK_EVENT_CALLBACK callback)
{
    Call call(*this, registerName(registry, true), {fn(callback)});
    if (call.skip()) {
        return call.done(0);
    }
    return call.done(m_dispatcher->add(registry, callback));
}

ZELK_RESULT SimulatedCard::unregisterCallback(Registry registry, ZELK_EVENT_CALLBACK callback)
{
    Call call(*this, registerName(registry, false), {fn(callback)});
    if (call.skip()) {
        return call.done(0);
    }
    // Waiting for a running call of the callback must not hold the card: that call may be asking
    // the card something right now.
    call.unlock();
    return call.done(m_dispatcher->remove(registry, callback));
}

// ---- Devices ---------------------------------------------------------------------------------------

ZELK_RESULT SimulatedCard::getDevStatus(_ZELK_EN_DEVICE_STATUS* status)
{
    Call call(*this, "ZELK_DevSrv_GetDevStatus", {out(status)});
    if (call.skip()) {
        return call.done(0);
    }
    if (!status) {
        return call.done(ZELK_ERROR_BAD_PARAM);
    }
    const Device* d = activeLocked();
    *status = static_cast<_ZELK_EN_DEVICE_STATUS>(d ? d->status : DEVICE_STATUS_NO_DEVICE);
    // ---- Fingerprint lock: a device waiting for its user's finger is still starting up, so no
    // one asks its SIM for anything before the finger is verified.
    if (d && d->fingerprintLocked && *status == DEVICE_STATUS_AVAILABLE) {
        *status = DEVICE_STATUS_INITIALIZING;
    }
    return call.done(ZELK_ERROR_SUCCESS);
}

ZELK_RESULT SimulatedCard::getDeviceName(char* name)
{
    Call call(*this, "ZELK_DevSrv_GetDeviceName", {out(name)});
    if (call.skip()) {
        return call.done(0);
    }
    if (!name) {
        return call.done(ZELK_ERROR_BAD_PARAM);
    }
    const Device* d = activeLocked();
    if (!d) {
        return call.done(ZELK_ERROR_FAILURE);
    }
    copyText(name, ZELK_DEVICE_NAME_OUT_SIZE, d->name);
    return call.done(ZELK_ERROR_SUCCESS);
}

ZELK_RESULT SimulatedCard::getDevicePort(int* port)
{
    Call call(*this, "ZELK_DevSrv_GetDevicePort", {out(port)});
    if (call.skip()) {
        return call.done(0);
    }
    if (!port) {
        return call.done(ZELK_ERROR_BAD_PARAM);
    }
    const Device* d = activeLocked();
    if (!d) {
        return call.done(ZELK_ERROR_FAILURE);
    }
    *port = d->port;
    return call.done(ZELK_ERROR_SUCCESS);
}

ZELK_RESULT SimulatedCard::getAvailableDeviceList(_ZELK_ST_MULTI_DEVICE_INFO* list)
{
    Call call(*this, "ZELK_DevSrv_GetAvailableDeviceList", {out(list)});
    if (call.skip()) {
        return call.done(0);
    }
    if (!list) {
        return call.done(ZELK_ERROR_BAD_PARAM);
    }
    const std::vector<unsigned char> bytes = deviceListLocked();
    std::memcpy(list, bytes.data(), sizeof *list);
    return call.done(ZELK_ERROR_SUCCESS);
}

bool SimulatedCard::selectDevice(const std::string& id)
{
    std::lock_guard<std::mutex> lock(m_mutex);
    Device* target = findLocked(id);
    if (!target || !usable(*target)) {
        return false;
    }
    if (id == m_activeId) {
        return true;
    }
    if (!m_activeId.empty()) {
        postLocked(ZELK_EVENT_DEV_BEFORE_CHANGE);
        postLocked(ZELK_EVENT_DEV_SWITCH);
        m_activeId = id;
        postLocked(ZELK_EVENT_DEV_CHANGED);
    }
    activateLocked(*target);
    return true;
}

ZELK_RESULT SimulatedCard::manualChangeDevice(const char* name, const char* secondName, int port)
{
    Call call(*this, "ZELK_DevSrv_ManualChangeDevice", {text(name), text(secondName), num(port)});
    if (call.skip()) {
        return call.done(0);
    }
    if (!name || !secondName) {
        return call.done(ZELK_ERROR_BAD_PARAM);
    }
    const std::string wanted(name, strnlen(name, ZELK_DEVICE_NAME_SIZE));
    Device* target = nullptr;
    for (Device& d : m_devices) {
        if (d.name == wanted && d.port == port && usable(d)) {
            target = &d;
            break;
        }
    }
    if (!target) {
        return call.done(ZELK_ERROR_FAILURE);
    }
    if (target->id != m_activeId) {
        if (!m_activeId.empty()) {
            postLocked(ZELK_EVENT_DEV_BEFORE_CHANGE);
            postLocked(ZELK_EVENT_DEV_SWITCH);
            m_activeId = target->id;
            postLocked(ZELK_EVENT_DEV_CHANGED);
        }
        activateLocked(*target);
    }
    return call.done(ZELK_ERROR_SUCCESS);
}

ZELK_RESULT SimulatedCard::detectDevice()
{
    Call call(*this, "ZELK_DevSrv_DetectDevice", {});
    if (call.skip()) {
        return call.done(0);
    }
    std::vector<Device*> present;
    for (Device& d : m_devices) {
        if (usable(d)) {
            present.push_back(&d);
        }
    }
    if (present.empty()) {
        return call.done(ZELK_ERROR_SUCCESS);
    }
    postLocked(ZELK_EVENT_DEV_DETECTED, deviceListLocked());
    if (Device* active = activeLocked()) {
        activateLocked(*active);
    } else if (present.size() == 1) {
        activateLocked(*present.front());
    }
    return call.done(ZELK_ERROR_SUCCESS);
}

ZELK_RESULT SimulatedCard::getProductType(int* productType)
{
    Call call(*this, "ZELK_DevSrv_GetProductType", {out(productType)});
    if (call.skip()) {
        return call.done(0);
    }
    if (!productType) {
        return call.done(ZELK_ERROR_BAD_PARAM);
    }
    const Device* d = activeLocked();
    if (!d) {
        return call.done(ZELK_ERROR_FAILURE);
    }
    *productType = d->productType;
    return call.done(ZELK_ERROR_SUCCESS);
}

ZELK_RESULT SimulatedCard::resetMs()
{
    Call call(*this, "ZELK_DevSrv_ResetMs", {});
    if (call.skip()) {
        return call.done(0);
    }
    Device* d = activeLocked();
    if (!d) {
        return call.done(ZELK_ERROR_FAILURE);
    }
    d->sim.pinVerified = false;
    postLocked(ZELK_EVENT_DEV_DEVICE_REMOVED);
    postLocked(ZELK_EVENT_DEV_DETECTED, deviceListLocked());
    activateLocked(*d);
    return call.done(ZELK_ERROR_SUCCESS);
}

// ---- SIM, PIN and card lock --------------------------------------------------------------------------

ZELK_RESULT SimulatedCard::getSimStatus(unsigned int* simStatus)
{
    Call call(*this, "ZELK_DevSrv_GetSimStatus", {out(simStatus)});
    if (call.skip()) {
        return call.done(0);
    }
    if (!simStatus) {
        return call.done(ZELK_ERROR_BAD_PARAM);
    }
    const Device* d = activeLocked();
    if (!d) {
        return call.done(ZELK_ERROR_FAILURE);
    }
    *simStatus = d->sim.present ? d->sim.status : ZELK_SIM_STATUS_ABSENT;
    return call.done(ZELK_ERROR_SUCCESS);
}

ZELK_RESULT SimulatedCard::getPinStatus(unsigned char btType, int* status, unsigned char* indicator,
                                        unsigned char* reserved, unsigned char* remaining)
{
    Call call(*this, "ZELK_DevSrv_GetPinStatus",
              {num(btType), out(status), out(indicator), out(reserved), out(remaining)});
    if (call.skip()) {
        return call.done(0);
    }
    if (btType != 0 || !status || !indicator || !reserved || !remaining) {
        return call.done(ZELK_ERROR_BAD_PARAM);
    }
    const Device* d = activeLocked();
    if (!d || !d->sim.present) {
        return call.done(ZELK_ERROR_FAILURE);
    }
    const SimCard& sim = d->sim;
    const int pinStatus = pinStatusOf(sim);
    *status = pinStatus;
    *indicator = (pinStatus == ZELK_PIN_STATUS_PIN_REQUIRED && sim.pinCheckPending) ? 1 : 0;
    *reserved = 0;
    if (pinStatus == ZELK_PIN_STATUS_PUK_REQUIRED) {
        *remaining = byteOf(sim.pukAttempts);
    } else if (pinStatus == ZELK_PIN_STATUS_PUK_BLOCKED) {
        *remaining = 0;
    } else {
        *remaining = byteOf(sim.pinAttempts);
    }
    return call.done(ZELK_ERROR_SUCCESS);
}

ZELK_RESULT SimulatedCard::verifyPin(unsigned char btType, const char* pin, unsigned char* remaining)
{
    Call call(*this, "ZELK_DevSrv_VerifyPin", {num(btType), code(pin), out(remaining)});
    if (call.skip()) {
        return call.done(0);
    }
    std::string typed;
    if (btType != 0 || !pin || !remaining || !readCode(pin, ZELK_PIN_BUFFER_SIZE, 4, 8, &typed)) {
        return call.done(ZELK_ERROR_BAD_PARAM);
    }
    Device* d = activeLocked();
    if (!d || !d->sim.present) {
        wipe(typed);
        return call.done(ZELK_ERROR_FAILURE);
    }
    SimCard& sim = d->sim;
    ZELK_RESULT result = ZELK_ERROR_FAILURE;
    if (sim.pinAttempts > 0 && sim.pukAttempts > 0) {
        if (typed == sim.pin) {
            sim.pinAttempts = kPinAttempts;
            sim.pinVerified = true;
            result = ZELK_ERROR_SUCCESS;
        } else {
            --sim.pinAttempts;
        }
    }
    *remaining = byteOf(sim.pinAttempts);
    wipe(typed);
    return call.done(result);
}

ZELK_RESULT SimulatedCard::enablePin(unsigned char btType, const char* pin)
{
    return setPinRequest("ZELK_DevSrv_EnablePin", btType, pin, true);
}

ZELK_RESULT SimulatedCard::disablePin(unsigned char btType, const char* pin)
{
    return setPinRequest("ZELK_DevSrv_DisablePin", btType, pin, false);
}

// Switching the PIN request on or off checks the PIN like a verification does.
ZELK_RESULT SimulatedCard::setPinRequest(const char* function, unsigned char btType, const char* pin, bool on)
{
    Call call(*this, function, {num(btType), code(pin)});
    if (call.skip()) {
        return call.done(0);
    }
    std::string typed;
    if (btType != 0 || !pin || !readCode(pin, ZELK_PIN_BUFFER_SIZE, 4, 8, &typed)) {
        return call.done(ZELK_ERROR_BAD_PARAM);
    }
    Device* d = activeLocked();
    ZELK_RESULT result = ZELK_ERROR_FAILURE;
    // A request for the state the card is already in is refused without costing an attempt.
    if (d && d->sim.present && d->sim.pinAttempts > 0 && d->sim.pukAttempts > 0 && d->sim.pinEnabled != on) {
        if (typed == d->sim.pin) {
            d->sim.pinEnabled = on;
            d->sim.pinVerified = true;
            d->sim.pinAttempts = kPinAttempts;
            result = ZELK_ERROR_SUCCESS;
        } else {
            --d->sim.pinAttempts;
        }
    }
    wipe(typed);
    return call.done(result);
}

ZELK_RESULT SimulatedCard::unblockPin(unsigned char btType, const char* newPin, const char* puk,
                                      unsigned char* remaining)
{
    Call call(*this, "ZELK_DevSrv_UnblockPin", {num(btType), code(newPin), code(puk), out(remaining)});
    if (call.skip()) {
        return call.done(0);
    }
    std::string typedPin;
    std::string typedPuk;
    if (btType != 0 || !newPin || !puk || !remaining ||
        !readCode(newPin, ZELK_PIN_BUFFER_SIZE, 4, 8, &typedPin) ||
        !readCode(puk, ZELK_PIN_BUFFER_SIZE, 8, 8, &typedPuk)) {
        wipe(typedPin);
        return call.done(ZELK_ERROR_BAD_PARAM);
    }
    Device* d = activeLocked();
    ZELK_RESULT result = ZELK_ERROR_FAILURE;
    if (d && d->sim.present) {
        SimCard& sim = d->sim;
        if (!sim.unblockAllowed) {
            result = ZELK_ERROR_UNBLOCK_NOT_ALLOWED;
        } else if (sim.pukAttempts > 0) {
            if (typedPuk == sim.puk) {
                sim.pin = typedPin;
                sim.pinAttempts = kPinAttempts;
                sim.pukAttempts = kPukAttempts;
                sim.pinEnabled = true; // unblocking always leaves the PIN request on
                sim.pinVerified = true;
                result = ZELK_ERROR_SUCCESS;
            } else {
                --sim.pukAttempts;
            }
        }
        *remaining = byteOf(sim.pukAttempts);
    }
    wipe(typedPin);
    wipe(typedPuk);
    return call.done(result);
}

ZELK_RESULT SimulatedCard::changePin(unsigned char btType, const char* oldPin, const char* newPin)
{
    Call call(*this, "ZELK_DevSrv_ChangePin", {num(btType), code(oldPin), code(newPin)});
    if (call.skip()) {
        return call.done(0);
    }
    std::string typedOld;
    std::string typedNew;
    if (btType != 0 || !oldPin || !newPin || !readCode(oldPin, ZELK_PIN_BUFFER_SIZE, 4, 8, &typedOld) ||
        !readCode(newPin, ZELK_PIN_BUFFER_SIZE, 4, 8, &typedNew)) {
        wipe(typedOld);
        return call.done(ZELK_ERROR_BAD_PARAM);
    }
    Device* d = activeLocked();
    ZELK_RESULT result = ZELK_ERROR_FAILURE;
    // As on a real SIM the PIN can only be changed while its request is on.
    if (d && d->sim.present && d->sim.pinEnabled && d->sim.pinAttempts > 0 && d->sim.pukAttempts > 0) {
        if (typedOld == d->sim.pin) {
            d->sim.pin = typedNew;
            d->sim.pinAttempts = kPinAttempts;
            d->sim.pinVerified = true;
            result = ZELK_ERROR_SUCCESS;
        } else {
            --d->sim.pinAttempts;
        }
    }
    wipe(typedOld);
    wipe(typedNew);
    return call.done(result);
}

ZELK_RESULT SimulatedCard::getCardLockStatus(unsigned char* state, unsigned char* remaining,
                                             unsigned int* reserved)
{
    Call call(*this, "ZELK_DevSrv_GetCardLockStatus", {out(state), out(remaining), out(reserved)});
    if (call.skip()) {
        return call.done(0);
    }
    if (!state || !remaining || !reserved) {
        return call.done(ZELK_ERROR_BAD_PARAM);
    }
    const Device* d = activeLocked();
    if (!d) {
        return call.done(ZELK_ERROR_FAILURE);
    }
    *state = byteOf(d->cardLock.state);
    *remaining = byteOf(d->cardLock.attempts);
    *reserved = 0;
    return call.done(ZELK_ERROR_SUCCESS);
}

ZELK_RESULT SimulatedCard::verifyCardLock(const char* lockCode, int* remaining)
{
    Call call(*this, "ZELK_DevSrv_VerifyCardLock", {code(lockCode), out(remaining)});
    if (call.skip()) {
        return call.done(0);
    }
    std::string typed;
    if (!lockCode || !remaining || !readCode(lockCode, ZELK_PIN_BUFFER_SIZE, 4, 8, &typed)) {
        return call.done(ZELK_ERROR_BAD_PARAM);
    }
    Device* d = activeLocked();
    ZELK_RESULT result = ZELK_ERROR_FAILURE;
    if (d) {
        CardLock& lock = d->cardLock;
        if (lock.state == ZELK_CARD_LOCK_LOCKED && lock.attempts > 0) {
            if (typed == lock.code) {
                lock.state = ZELK_CARD_LOCK_UNLOCKED;
                result = ZELK_ERROR_SUCCESS;
            } else if (--lock.attempts == 0) {
                lock.state = ZELK_CARD_LOCK_LOCKED_OTHER; // locked for good: only the carrier can help
            }
        }
        *remaining = lock.attempts;
    }
    wipe(typed);
    return call.done(result);
}

ZELK_RESULT SimulatedCard::getImsiInfo(_ZELK_ST_IMSI_INFO* imsi)
{
    Call call(*this, "ZELK_DevSrv_GetImsiInfo", {out(imsi)});
    if (call.skip()) {
        return call.done(0);
    }
    if (!imsi) {
        return call.done(ZELK_ERROR_BAD_PARAM);
    }
    const Device* d = activeLocked();
    // The SIM keeps its files closed until the PIN is entered.
    if (!d || !simValid(d->sim) || codeNeeded(d->sim)) {
        return call.done(ZELK_ERROR_FAILURE);
    }
    copyText(imsi->szImsi, sizeof imsi->szImsi, d->sim.imsi);
    return call.done(ZELK_ERROR_SUCCESS);
}

ZELK_RESULT SimulatedCard::getGID(_ZELK_ST_GID_INFO* gid)
{
    Call call(*this, "ZELK_DevSrv_GetGID", {out(gid)});
    if (call.skip()) {
        return call.done(0);
    }
    if (!gid) {
        return call.done(ZELK_ERROR_BAD_PARAM);
    }
    const Device* d = activeLocked();
    if (!d || !simValid(d->sim) || codeNeeded(d->sim)) {
        return call.done(ZELK_ERROR_FAILURE);
    }
    std::memset(gid, 0, sizeof *gid);
    std::memcpy(gid->szGID1, d->sim.gid1.data(),
                std::min<std::size_t>(d->sim.gid1.size(), ZELK_GID_TEXT_SIZE));
    gid->nGID1Len = static_cast<uint32_t>(d->sim.gid1.size() / 2);
    std::memcpy(gid->szGID2, d->sim.gid2.data(),
                std::min<std::size_t>(d->sim.gid2.size(), ZELK_GID_TEXT_SIZE));
    gid->nGID2Len = static_cast<uint32_t>(d->sim.gid2.size() / 2);
    return call.done(ZELK_ERROR_SUCCESS);
}

// ---- Radio, offline, packet service, bands -------------------------------------------------------------

ZELK_RESULT SimulatedCard::getRFSwitch(_ZELK_ST_RF_SWITCH* rf)
{
    Call call(*this, "ZELK_DevSrv_GetRFSwitch", {out(rf)});
    if (call.skip()) {
        return call.done(0);
    }
    if (!rf) {
        return call.done(ZELK_ERROR_BAD_PARAM);
    }
    const Device* d = activeLocked();
    if (!d) {
        return call.done(ZELK_ERROR_FAILURE);
    }
    rf->nRFState = (d->radio.softwareOn && d->radio.hardwareOn) ? 1u : 0u;
    rf->nSupport = d->radio.switchable ? 1u : 0u;
    return call.done(ZELK_ERROR_SUCCESS);
}

ZELK_RESULT SimulatedCard::setRFSwitch(int on)
{
    Call call(*this, "ZELK_DevSrv_SetRFSwitch", {num(on)});
    if (call.skip()) {
        return call.done(0);
    }
    Device* d = activeLocked();
    // The hardware switch wins: software cannot turn on a radio the switch holds off.
    if (!d || !d->radio.switchable || (on && !d->radio.hardwareOn)) {
        return call.done(ZELK_ERROR_FAILURE);
    }
    d->radio.softwareOn = on != 0;
    if (on) {
        d->offline = false;
    }
    postLocked(ZELK_EVENT_DEV_RF_SWITCH,
               wordsData({d->radio.softwareOn ? 1u : 0u, d->radio.hardwareOn ? 1u : 0u}));
    return call.done(ZELK_ERROR_SUCCESS);
}

ZELK_RESULT SimulatedCard::setOffline()
{
    Call call(*this, "ZELK_DevSrv_SetOffline", {});
    if (call.skip()) {
        return call.done(0);
    }
    Device* d = activeLocked();
    if (!d) {
        return call.done(ZELK_ERROR_FAILURE);
    }
    d->offline = true;
    d->packetAttached = false;
    return call.done(ZELK_ERROR_SUCCESS);
}

ZELK_RESULT SimulatedCard::setPSState(int state)
{
    Call call(*this, "ZELK_NetSrv_SetPSState", {num(state)});
    if (call.skip()) {
        return call.done(0);
    }
    if (state != ZELK_PS_DETACH && state != ZELK_PS_ATTACH) {
        return call.done(ZELK_ERROR_BAD_PARAM);
    }
    Device* d = activeLocked();
    if (!d || (state == ZELK_PS_ATTACH && d->offline)) {
        return call.done(ZELK_ERROR_FAILURE);
    }
    d->packetAttached = state == ZELK_PS_ATTACH;
    return call.done(ZELK_ERROR_SUCCESS);
}

ZELK_RESULT SimulatedCard::getBandListAndOrderEx(unsigned char* bands, unsigned char* lteBands,
                                                 unsigned char* order)
{
    Call call(*this, "ZELK_NetSrv_GetBandListAndOrderEx", {out(bands), out(lteBands), out(order)});
    if (call.skip()) {
        return call.done(0);
    }
    if (!bands || !lteBands || !order) {
        return call.done(ZELK_ERROR_BAD_PARAM);
    }
    const Device* d = activeLocked();
    if (!d) {
        return call.done(ZELK_ERROR_FAILURE);
    }
    std::memset(bands, 0, ZELK_BAND_AREA_SIZE);
    std::memset(lteBands, 0, ZELK_BAND_AREA_SIZE);
    std::memset(order, 0, ZELK_BAND_AREA_SIZE);
    bands[0] = 0x0F; // GSM 850/900/1800/1900
    bands[1] = 0x01; // UMTS 2100
    if (d->radio.lte) {
        lteBands[0] = 0x85; // bands 1, 3 and 8
        lteBands[1] = 0x00;
    }
    order[0] = d->radio.lte ? 3 : 2;
    order[1] = 2;
    order[2] = 1;
    return call.done(ZELK_ERROR_SUCCESS);
}

// ---- Platform WWAN service -----------------------------------------------------------------------------

ZELK_RESULT SimulatedCard::isWin7()
{
    Call call(*this, "ZELK_DevSrv_IsWin7", {});
    if (call.skip()) {
        return call.done(0);
    }
    return call.done(m_platform.isWin7);
}

ZELK_RESULT SimulatedCard::isWWanReady()
{
    Call call(*this, "ZELK_DevSrv_IsWWanReady", {});
    if (call.skip()) {
        return call.done(0);
    }
    if (m_platform.wwanPollDelayMs > 0) {
        // Other SDK calls go on meanwhile: only this poll hangs.
        const unsigned generation = m_platformGeneration;
        m_platformChanged.wait_for(call.lock(), std::chrono::milliseconds(m_platform.wwanPollDelayMs),
                                   [&] { return m_platformGeneration != generation; });
    }
    if (!m_platform.wwanReady && m_platform.wwanReadyAfterPolls > 0 &&
        ++m_wwanPolls >= m_platform.wwanReadyAfterPolls) {
        m_platform.wwanReady = true;
    }
    return call.done(m_platform.wwanReady ? ZELK_ERROR_SUCCESS : ZELK_ERROR_FAILURE);
}

int SimulatedCard::isWWanServiceActive()
{
    Call call(*this, "ZELK_DevSrv_IsWWanServiceActive", {});
    if (call.skip()) {
        return static_cast<int>(call.done(0));
    }
    return static_cast<int>(call.done(static_cast<ZELK_RESULT>(m_platform.wwanService)));
}

// ---- CDMA activation -------------------------------------------------------------------------------------

namespace {
bool isCdma(const Device* d)
{
    return d && d->productType == ZELK_PRODUCT_TYPE_CDMA;
}

void applyOtaspState(Device& d, int state)
{
    if (state == ZELK_OTASP_SPL_UNLOCKED) {
        d.cdma.lockStatus = ZELK_OTKSL_NONE;
    }
    if (state == ZELK_OTASP_COMMIT_SUCCESS || state == ZELK_OTASP_PROG_SUCCESS) {
        d.cdma.activated = true;
    }
}
} // namespace

ZELK_RESULT SimulatedCard::getESN(_ZELK_ST_ESN_INFO* esn)
{
    Call call(*this, "ZELK_DevSrv_GetESN", {out(esn)});
    if (call.skip()) {
        return call.done(0);
    }
    if (!esn) {
        return call.done(ZELK_ERROR_BAD_PARAM);
    }
    const Device* d = activeLocked();
    if (!isCdma(d)) {
        return call.done(ZELK_ERROR_FAILURE);
    }
    copyText(esn->szESN, sizeof esn->szESN, d->cdma.esn);
    copyText(esn->szMEID, sizeof esn->szMEID, d->cdma.meid);
    return call.done(ZELK_ERROR_SUCCESS);
}

ZELK_RESULT SimulatedCard::getOTAActStatus(int* status)
{
    Call call(*this, "ZELK_DevSrv_GetOTAActStatus", {out(status)});
    if (call.skip()) {
        return call.done(0);
    }
    if (!status) {
        return call.done(ZELK_ERROR_BAD_PARAM);
    }
    const Device* d = activeLocked();
    if (!isCdma(d)) {
        return call.done(ZELK_ERROR_FAILURE);
    }
    *status = d->cdma.activated ? ZELK_OTA_ACTIVATED : ZELK_OTA_NOT_ACTIVATED;
    return call.done(ZELK_ERROR_SUCCESS);
}

ZELK_RESULT SimulatedCard::autoCHKOTKSLActive(const char* dialString)
{
    Call call(*this, "ZELK_DevSrv_AutoCHKOTKSLActive", {text(dialString, 64)});
    if (call.skip()) {
        return call.done(0);
    }
    if (!dialString || dialString[0] == '\0') {
        return call.done(ZELK_ERROR_BAD_PARAM);
    }
    Device* d = activeLocked();
    if (!isCdma(d)) {
        return call.done(ZELK_ERROR_FAILURE);
    }
    d->cdma.lastDialString.assign(dialString, strnlen(dialString, 64));
    for (int state : d->cdma.otaspStates) {
        applyOtaspState(*d, state);
        postWordLocked(ZELK_EVENT_DEV_OTASP_STATE, static_cast<uint32_t>(state));
    }
    if (d->cdma.otaspCallEnd && !d->cdma.otaspStates.empty()) {
        postLocked(ZELK_EVENT_CALL_END);
    }
    return call.done(ZELK_ERROR_SUCCESS);
}

ZELK_RESULT SimulatedCard::otaAutoActClear(const char* dialString)
{
    Call call(*this, "ZELK_DevSrv_OTAAutoActClear", {text(dialString, 64)});
    if (call.skip()) {
        return call.done(0);
    }
    if (!dialString) {
        return call.done(ZELK_ERROR_BAD_PARAM);
    }
    return call.done(isCdma(activeLocked()) ? ZELK_ERROR_SUCCESS : ZELK_ERROR_FAILURE);
}

ZELK_RESULT SimulatedCard::getOTKSLStatus(int* status, unsigned char* remaining)
{
    Call call(*this, "ZELK_DevSrv_GetOTKSLStatus", {out(status), out(remaining)});
    if (call.skip()) {
        return call.done(0);
    }
    if (!status || !remaining) {
        return call.done(ZELK_ERROR_BAD_PARAM);
    }
    const Device* d = activeLocked();
    if (!isCdma(d)) {
        return call.done(ZELK_ERROR_FAILURE);
    }
    *status = d->cdma.lockStatus;
    *remaining = byteOf(d->cdma.otkslAttempts);
    return call.done(ZELK_ERROR_SUCCESS);
}

ZELK_RESULT SimulatedCard::verifyOTKSL(const char* otkslCode, unsigned char* remaining)
{
    Call call(*this, "ZELK_DevSrv_VerifyOTKSL", {code(otkslCode), out(remaining)});
    if (call.skip()) {
        return call.done(0);
    }
    std::string typed;
    if (!otkslCode || !remaining || !readCode(otkslCode, ZELK_ACT_CODE_BUFFER_SIZE, 6, 6, &typed)) {
        return call.done(ZELK_ERROR_BAD_PARAM);
    }
    Device* d = activeLocked();
    ZELK_RESULT result = ZELK_ERROR_FAILURE;
    if (isCdma(d)) {
        Cdma& cdma = d->cdma;
        if (cdma.lockStatus == ZELK_OTKSL_OTKSL && cdma.otkslAttempts > 0) {
            if (typed == cdma.otksl) {
                cdma.lockStatus = ZELK_OTKSL_NONE;
                result = ZELK_ERROR_SUCCESS;
            } else {
                --cdma.otkslAttempts;
            }
        }
        *remaining = byteOf(cdma.otkslAttempts);
    }
    wipe(typed);
    return call.done(result);
}

ZELK_RESULT SimulatedCard::verifyMSL(const char* mslCode)
{
    Call call(*this, "ZELK_DevSrv_VerifyMSL", {code(mslCode)});
    if (call.skip()) {
        return call.done(0);
    }
    std::string typed;
    if (!mslCode || !readCode(mslCode, ZELK_ACT_CODE_BUFFER_SIZE, 6, 6, &typed)) {
        return call.done(ZELK_ERROR_BAD_PARAM);
    }
    Device* d = activeLocked();
    ZELK_RESULT result = ZELK_ERROR_FAILURE;
    // The MSL has no attempt counter: the carrier's code is fixed for the life of the card.
    if (isCdma(d) && d->cdma.lockStatus == ZELK_OTKSL_MSL && typed == d->cdma.msl) {
        d->cdma.lockStatus = ZELK_OTKSL_NONE;
        result = ZELK_ERROR_SUCCESS;
    }
    wipe(typed);
    return call.done(result);
}

ZELK_RESULT SimulatedCard::manualCHKOTKSLActive(const _ZELK_ST_SERVICE_NUMBER* numbers)
{
    std::vector<std::string> args;
    if (numbers) {
        args = {text(numbers->szMDN, sizeof numbers->szMDN), text(numbers->szMIN, sizeof numbers->szMIN),
                text(numbers->szSID, sizeof numbers->szSID)};
    } else {
        args = {"null"};
    }
    Call call(*this, "ZELK_DevSrv_ManualCHKOTKSLActive", std::move(args));
    if (call.skip()) {
        return call.done(0);
    }
    if (!numbers) {
        return call.done(ZELK_ERROR_BAD_PARAM);
    }
    const std::size_t mdnLength = strnlen(numbers->szMDN, sizeof numbers->szMDN);
    const std::size_t minLength = strnlen(numbers->szMIN, sizeof numbers->szMIN);
    const std::size_t sidLength = strnlen(numbers->szSID, sizeof numbers->szSID);
    if (mdnLength == sizeof numbers->szMDN || minLength == sizeof numbers->szMIN ||
        sidLength == sizeof numbers->szSID) {
        return call.done(ZELK_ERROR_BAD_PARAM);
    }
    const std::string mdn(numbers->szMDN, mdnLength);
    const std::string min(numbers->szMIN, minLength);
    const std::string sid(numbers->szSID, sidLength);
    if (!allDigits(mdn) || !allDigits(min) || !allDigits(sid) ||
        (mdn.empty() && min.empty() && sid.empty())) {
        return call.done(ZELK_ERROR_BAD_PARAM);
    }
    Device* d = activeLocked();
    // Numbers can only be written once the lock code was given (or none was asked for).
    if (!isCdma(d) || d->cdma.lockStatus != ZELK_OTKSL_NONE || !d->cdma.acceptNumbers) {
        return call.done(ZELK_ERROR_FAILURE);
    }
    d->cdma.mdn = mdn;
    d->cdma.min = min;
    d->cdma.sid = sid;
    if (!mdn.empty() || !min.empty()) {
        d->cdma.activated = true;
    }
    return call.done(ZELK_ERROR_SUCCESS);
}

ZELK_RESULT SimulatedCard::updatePRL(const void* data, unsigned long size)
{
    Call call(*this, "ZELK_DevSrv_UpdatePRL", {in(data), num(static_cast<long long>(size))});
    if (call.skip()) {
        return call.done(0);
    }
    if (!data || size == 0) {
        return call.done(ZELK_ERROR_BAD_PARAM);
    }
    Device* d = activeLocked();
    if (!isCdma(d) || size > d->cdma.prlMaxSize) {
        return call.done(ZELK_ERROR_FAILURE);
    }
    d->cdma.prlSize = size;
    return call.done(ZELK_ERROR_SUCCESS);
}

// ---- Files -----------------------------------------------------------------------------------------------

ZELK_RESULT SimulatedCard::getUserDataDirectory(char* directory, unsigned int size)
{
    Call call(*this, "ZELK_GetUserDataDirectory", {out(directory), num(size)});
    if (call.skip()) {
        return call.done(0);
    }
    if (!directory) {
        return call.done(ZELK_ERROR_BAD_PARAM);
    }
    QString path = QString::fromStdString(m_platform.userDataDirectory);
    if (path.isEmpty()) {
        path = QDir::tempPath() + QStringLiteral("/tessaro-sim-userdata");
    }
    path = QDir::cleanPath(path);
    QDir().mkpath(path);
    // Callers append file names directly: the directory carries its own separator.
    const QByteArray bytes = QFile::encodeName(path) + '/';
    if (static_cast<unsigned int>(bytes.size()) + 1 > size) {
        return call.done(ZELK_ERROR_BAD_PARAM);
    }
    std::memcpy(directory, bytes.constData(), static_cast<std::size_t>(bytes.size()) + 1);
    return call.done(ZELK_ERROR_SUCCESS);
}

// ---- Control ---------------------------------------------------------------------------------------------

bool SimulatedCard::attachDevice(const Device& device, std::string* error)
{
    Device d = device;
    if (d.id.empty()) {
        d.id = d.name;
    }
    std::string field;
    std::string what;
    if (!validateDevice(d, &field, &what)) {
        if (error) {
            *error = field + ": " + what;
        }
        return false;
    }
    std::lock_guard<std::mutex> lock(m_mutex);
    if (findLocked(d.id)) {
        if (error) {
            *error = "id: a device \"" + d.id + "\" is attached already";
        }
        return false;
    }
    if (m_devices.size() >= static_cast<std::size_t>(MAX_DEVICE_COUNT)) {
        if (error) {
            *error = "devices: 64 devices are attached already";
        }
        return false;
    }
    d.initialised = false;
    d.sim.pinVerified = false; // a device just plugged in was off: its PIN must be entered again
    m_devices.push_back(d);
    Device& added = m_devices.back();
    if (!usable(added)) {
        postLocked(ZELK_EVENT_DEV_REJECT, deviceListLocked());
        return true;
    }
    postLocked(ZELK_EVENT_DEV_DETECTED, deviceListLocked());
    if (m_activeId.empty()) {
        int present = 0;
        for (const Device& other : m_devices) {
            present += usable(other) ? 1 : 0;
        }
        if (present == 1) {
            activateLocked(added);
        }
    }
    return true;
}

bool SimulatedCard::removeDevice(const std::string& id)
{
    std::lock_guard<std::mutex> lock(m_mutex);
    const auto it =
        std::find_if(m_devices.begin(), m_devices.end(), [&](const Device& d) { return d.id == id; });
    if (it == m_devices.end()) {
        return false;
    }
    const bool wasActive = id == m_activeId;
    m_devices.erase(it);
    if (wasActive) {
        m_activeId.clear();
        postLocked(ZELK_EVENT_DEV_DEVICE_REMOVED);
        postLocked(ZELK_EVENT_DEV_LIST_CHANGED, deviceListLocked());
        afterActiveGoneLocked();
    } else {
        postLocked(ZELK_EVENT_DEV_LIST_CHANGED, deviceListLocked());
    }
    return true;
}

bool SimulatedCard::updateDevice(const Device& device)
{
    if (!validateDevice(device, nullptr, nullptr)) {
        return false;
    }
    std::lock_guard<std::mutex> lock(m_mutex);
    Device* d = findLocked(device.id);
    if (!d) {
        return false;
    }
    *d = device;
    if (!usable(*d) && m_activeId == d->id) {
        m_activeId.clear();
    }
    return true;
}

bool SimulatedCard::findDevice(const std::string& id, Device* out)
{
    std::lock_guard<std::mutex> lock(m_mutex);
    const Device* d = findLocked(id);
    if (d && out) {
        *out = *d;
    }
    return d != nullptr;
}

std::vector<Device> SimulatedCard::devices()
{
    std::lock_guard<std::mutex> lock(m_mutex);
    return m_devices;
}

std::string SimulatedCard::activeDeviceId()
{
    std::lock_guard<std::mutex> lock(m_mutex);
    return m_activeId;
}

bool SimulatedCard::rejectDevice(const std::string& id)
{
    std::lock_guard<std::mutex> lock(m_mutex);
    Device* d = findLocked(id);
    if (!d) {
        return false;
    }
    d->status = DEVICE_STATUS_REJECTED;
    if (m_activeId == id) {
        m_activeId.clear();
    }
    postLocked(ZELK_EVENT_DEV_REJECT, deviceListLocked());
    return true;
}

bool SimulatedCard::setSimPresent(const std::string& id, bool present)
{
    std::lock_guard<std::mutex> lock(m_mutex);
    Device* d = findLocked(id);
    if (!d || d->sim.present == present) {
        return false;
    }
    d->sim.present = present;
    d->sim.pinVerified = false;
    if (id != m_activeId) {
        return true; // only the active device reports its SIM
    }
    if (!present) {
        postWordLocked(ZELK_EVENT_DEV_SIM_STATE_CHANGE, ZELK_SIM_STATUS_ABSENT);
        return true;
    }
    postWordLocked(ZELK_EVENT_DEV_SIM_STATE_CHANGE, d->sim.status);
    if (codeNeeded(d->sim)) {
        postLocked(ZELK_EVENT_DEV_PIN_CHECK);
    } else {
        postLocked(ZELK_EVENT_DEV_DEVICE_NO_PIN);
        if (d->cardLock.state != ZELK_CARD_LOCK_UNLOCKED) {
            postLocked(ZELK_EVENT_DEV_CARD_LOCK);
        }
    }
    return true;
}

bool SimulatedCard::setHardwareRadio(bool on)
{
    std::lock_guard<std::mutex> lock(m_mutex);
    Device* d = activeLocked();
    if (!d) {
        return false;
    }
    d->radio.hardwareOn = on;
    postLocked(ZELK_EVENT_DEV_RF_SWITCH, wordsData({d->radio.softwareOn ? 1u : 0u, on ? 1u : 0u}));
    return true;
}

void SimulatedCard::sendPowerEvent(int state)
{
    std::lock_guard<std::mutex> lock(m_mutex);
    postWordLocked(ZELK_EVENT_DEV_POWER, static_cast<uint32_t>(state));
}

void SimulatedCard::sendFingerprintState(int state)
{
    std::lock_guard<std::mutex> lock(m_mutex);
    if (Device* d = activeLocked(); d && state == ZELK_VERIFYIND_GOOD_IMAGE) {
        d->fingerprintLocked = false;
    }
    postWordLocked(ZELK_EVENT_DEV_FP_VERIFY, static_cast<uint32_t>(state));
}

void SimulatedCard::sendOtaspState(int state)
{
    std::lock_guard<std::mutex> lock(m_mutex);
    if (Device* d = activeLocked(); isCdma(d)) {
        applyOtaspState(*d, state);
    }
    postWordLocked(ZELK_EVENT_DEV_OTASP_STATE, static_cast<uint32_t>(state));
}

void SimulatedCard::sendCallEnd()
{
    std::lock_guard<std::mutex> lock(m_mutex);
    postLocked(ZELK_EVENT_CALL_END);
}

Platform SimulatedCard::platform()
{
    std::lock_guard<std::mutex> lock(m_mutex);
    return m_platform;
}

void SimulatedCard::setPlatform(const Platform& platform)
{
    std::lock_guard<std::mutex> lock(m_mutex);
    m_platform = platform;
    m_wwanPolls = 0;
    ++m_platformGeneration;
    m_platformChanged.notify_all();
}

void SimulatedCard::injectEvent(Registry registry, int event, const void* data, std::size_t size)
{
    std::vector<unsigned char> bytes;
    if (data && size > 0) {
        const auto* p = static_cast<const unsigned char*>(data);
        bytes.assign(p, p + size);
    }
    std::lock_guard<std::mutex> lock(m_mutex);
    m_dispatcher->post(registry, event, std::move(bytes));
}

void SimulatedCard::forceResult(const std::string& function, int count, ZELK_RESULT value, bool runCall)
{
    if (count <= 0) {
        return;
    }
    std::lock_guard<std::mutex> lock(m_mutex);
    m_forced[function].push_back(Forced{count, value, runCall});
}

void SimulatedCard::clearForcedResults()
{
    std::lock_guard<std::mutex> lock(m_mutex);
    m_forced.clear();
}

std::vector<CallRecord> SimulatedCard::calls(const std::string& function)
{
    std::lock_guard<std::mutex> lock(m_mutex);
    if (function.empty()) {
        return m_calls;
    }
    std::vector<CallRecord> result;
    std::copy_if(m_calls.begin(), m_calls.end(), std::back_inserter(result),
                 [&](const CallRecord& r) { return r.function == function; });
    return result;
}

void SimulatedCard::clearCalls()
{
    std::lock_guard<std::mutex> lock(m_mutex);
    m_calls.clear();
}

void SimulatedCard::replaceState(const std::vector<Device>& devices, const std::string& activeId,
                                 const Platform& platform)
{
    std::lock_guard<std::mutex> lock(m_mutex);
    m_devices = devices;
    for (Device& d : m_devices) {
        if (d.id.empty()) {
            d.id = d.name;
        }
    }
    m_activeId = activeId;
    m_platform = platform;
    m_wwanPolls = 0;
    ++m_platformGeneration;
    m_platformChanged.notify_all();
}

void SimulatedCard::resetCard()
{
    // Events still queued belong to the previous state; let them go out before it changes.
    m_dispatcher->waitForIdle(5000);
    Device d = defaultDevice();
    d.id = d.name;
    replaceState({d}, d.id, Platform());
    std::lock_guard<std::mutex> lock(m_mutex);
    m_forced.clear();
    m_calls.clear();
    m_dispatcher->clearDelivered();
}

// ---- Free functions of the control API -------------------------------------------------------------------

Registry registryOf(int event)
{
    switch (event) {
    case ZELK_EVENT_DEV_LIST_CHANGED:
    case ZELK_EVENT_DEV_BEFORE_CHANGE:
    case ZELK_EVENT_DEV_CHANGED:
    case ZELK_EVENT_DEV_REJECT:
    case ZELK_EVENT_DEV_SWITCH:
    case ZELK_EVENT_DEV_DETECTED:
        return Registry::MultiDevice;
    case ZELK_EVENT_CALL_END:
        return Registry::Call;
    default:
        break;
    }
    if (event >= ZELK_EVENT_DEV_INIT_FIRST && event <= ZELK_EVENT_DEV_INIT_LAST) {
        return Registry::DevInit;
    }
    return Registry::DevMgr;
}

Device defaultDevice()
{
    Device d;
    d.name = "USB Modem";
    d.id = d.name;
    return d;
}

bool attachDevice(const Device& device, std::string* error)
{
    return SimulatedCard::instance().attachDevice(device, error);
}
bool removeDevice(const std::string& id)
{
    return SimulatedCard::instance().removeDevice(id);
}
bool updateDevice(const Device& device)
{
    return SimulatedCard::instance().updateDevice(device);
}
bool findDevice(const std::string& id, Device* out)
{
    return SimulatedCard::instance().findDevice(id, out);
}
std::vector<Device> devices()
{
    return SimulatedCard::instance().devices();
}
std::string activeDeviceId()
{
    return SimulatedCard::instance().activeDeviceId();
}
bool selectDevice(const std::string& id)
{
    return SimulatedCard::instance().selectDevice(id);
}
bool rejectDevice(const std::string& id)
{
    return SimulatedCard::instance().rejectDevice(id);
}
bool insertSim(const std::string& id)
{
    return SimulatedCard::instance().setSimPresent(id, true);
}
bool removeSim(const std::string& id)
{
    return SimulatedCard::instance().setSimPresent(id, false);
}
bool setHardwareRadio(bool on)
{
    return SimulatedCard::instance().setHardwareRadio(on);
}
void sendPowerEvent(int state)
{
    SimulatedCard::instance().sendPowerEvent(state);
}
void sendFingerprintState(int state)
{
    SimulatedCard::instance().sendFingerprintState(state);
}
void sendOtaspState(int state)
{
    SimulatedCard::instance().sendOtaspState(state);
}
void sendCallEnd()
{
    SimulatedCard::instance().sendCallEnd();
}
Platform platform()
{
    return SimulatedCard::instance().platform();
}
void setPlatform(const Platform& platform)
{
    SimulatedCard::instance().setPlatform(platform);
}
void injectEvent(Registry registry, int event, const void* data, std::size_t size)
{
    SimulatedCard::instance().injectEvent(registry, event, data, size);
}
void injectEvent(Registry registry, int event, const std::vector<uint32_t>& words)
{
    SimulatedCard::instance().injectEvent(registry, event, words.data(), words.size() * sizeof(uint32_t));
}
bool waitForIdle(int timeoutMs)
{
    return SimulatedCard::instance().dispatcher().waitForIdle(timeoutMs);
}
std::vector<DeliveredEvent> deliveredEvents()
{
    return SimulatedCard::instance().dispatcher().delivered();
}
void clearDeliveredEvents()
{
    SimulatedCard::instance().dispatcher().clearDelivered();
}
int callbackCount(Registry registry)
{
    return SimulatedCard::instance().dispatcher().count(registry);
}
std::thread::id deliveryThread()
{
    return SimulatedCard::instance().dispatcher().threadId();
}
void forceResult(const std::string& function, int count, ZELK_RESULT value, bool runCall)
{
    SimulatedCard::instance().forceResult(function, count, value, runCall);
}
void failNext(const std::string& function, int count)
{
    SimulatedCard::instance().forceResult(function, count, ZELK_ERROR_FAILURE, false);
}
void clearForcedResults()
{
    SimulatedCard::instance().clearForcedResults();
}
std::vector<CallRecord> calls()
{
    return SimulatedCard::instance().calls(std::string());
}
std::vector<CallRecord> calls(const std::string& function)
{
    return SimulatedCard::instance().calls(function);
}
void clearCalls()
{
    SimulatedCard::instance().clearCalls();
}

} // namespace zelk::sim
