// Simulated data card: scenario files (devices, platform and a timeline of steps) and reset.
#include "SimulatedCard.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QLocale>
#include <QtCore/QSet>

#include <cmath>
#include <limits>
#include <mutex>

namespace zelk::sim {

namespace {

const char* const kFunctions[] = {"ZELK_DevSrv_RegisterDevMgrCallback",
                                  "ZELK_DevSrv_UnRegisterDevMgrCallback",
                                  "ZELK_DevSrv_RegisterDevInitEventCallback",
                                  "ZELK_DevSrv_UnRegisterDevInitEventCallback",
                                  "ZELK_DevSrv_RegisterMultiDeviceEventCallback",
                                  "ZELK_DevSrv_UnRegisterMultiDeviceEventCallback",
                                  "ZELK_CallSrv_RegisterCallEventHandler",
                                  "ZELK_CallSrv_UnRegisterCallEventHandler",
                                  "ZELK_DevSrv_GetDevStatus",
                                  "ZELK_DevSrv_GetDeviceName",
                                  "ZELK_DevSrv_GetDevicePort",
                                  "ZELK_DevSrv_GetAvailableDeviceList",
                                  "ZELK_DevSrv_ManualChangeDevice",
                                  "ZELK_DevSrv_DetectDevice",
                                  "ZELK_DevSrv_GetProductType",
                                  "ZELK_DevSrv_ResetMs",
                                  "ZELK_DevSrv_GetSimStatus",
                                  "ZELK_DevSrv_GetPinStatus",
                                  "ZELK_DevSrv_VerifyPin",
                                  "ZELK_DevSrv_EnablePin",
                                  "ZELK_DevSrv_DisablePin",
                                  "ZELK_DevSrv_UnblockPin",
                                  "ZELK_DevSrv_ChangePin",
                                  "ZELK_DevSrv_GetCardLockStatus",
                                  "ZELK_DevSrv_VerifyCardLock",
                                  "ZELK_DevSrv_GetImsiInfo",
                                  "ZELK_DevSrv_GetGID",
                                  "ZELK_DevSrv_GetRFSwitch",
                                  "ZELK_DevSrv_SetRFSwitch",
                                  "ZELK_DevSrv_SetOffline",
                                  "ZELK_NetSrv_SetPSState",
                                  "ZELK_NetSrv_GetBandListAndOrderEx",
                                  "ZELK_DevSrv_IsWin7",
                                  "ZELK_DevSrv_IsWWanReady",
                                  "ZELK_DevSrv_IsWWanServiceActive",
                                  "ZELK_DevSrv_GetESN",
                                  "ZELK_DevSrv_GetOTAActStatus",
                                  "ZELK_DevSrv_AutoCHKOTKSLActive",
                                  "ZELK_DevSrv_OTAAutoActClear",
                                  "ZELK_DevSrv_GetOTKSLStatus",
                                  "ZELK_DevSrv_VerifyOTKSL",
                                  "ZELK_DevSrv_VerifyMSL",
                                  "ZELK_DevSrv_ManualCHKOTKSLActive",
                                  "ZELK_DevSrv_UpdatePRL",
                                  "ZELK_GetUserDataDirectory"};

bool knownFunction(const QString& name)
{
    for (const char* f : kFunctions) {
        if (name == QLatin1String(f)) {
            return true;
        }
    }
    return false;
}

QString typeName(const QJsonValue& v)
{
    switch (v.type()) {
    case QJsonValue::Null:
        return QStringLiteral("null");
    case QJsonValue::Bool:
        return QStringLiteral("boolean");
    case QJsonValue::Double:
        return QStringLiteral("number");
    case QJsonValue::String:
        return QStringLiteral("string");
    case QJsonValue::Array:
        return QStringLiteral("array");
    case QJsonValue::Object:
        return QStringLiteral("object");
    case QJsonValue::Undefined:
        break;
    }
    return QStringLiteral("nothing");
}

// Reads JSON values into the card's structures; the first fault is kept with its JSON path.
class Reader
{
public:
    bool ok() const { return m_error.isEmpty(); }
    QString error() const { return m_error; }

    void fail(const QString& path, const QString& what)
    {
        if (m_error.isEmpty()) {
            m_error = path + QStringLiteral(": ") + what;
        }
    }

    bool onlyKnown(const QJsonObject& o, const QString& path, std::initializer_list<const char*> keys)
    {
        for (auto it = o.begin(); it != o.end(); ++it) {
            bool known = false;
            for (const char* k : keys) {
                known = known || it.key() == QLatin1String(k);
            }
            if (!known) {
                fail(join(path, it.key()), QStringLiteral("unknown field"));
                return false;
            }
        }
        return true;
    }

    static QString join(const QString& path, const QString& key)
    {
        return path.isEmpty() ? key : path + QLatin1Char('.') + key;
    }

    bool object(const QJsonValue& v, const QString& path, QJsonObject* out)
    {
        if (!v.isObject()) {
            fail(path, QStringLiteral("must be an object (got %1)").arg(typeName(v)));
            return false;
        }
        *out = v.toObject();
        return true;
    }

    void boolean(const QJsonObject& o, const QString& path, const char* key, bool* out)
    {
        if (!o.contains(QLatin1String(key))) {
            return;
        }
        const QJsonValue v = o.value(QLatin1String(key));
        if (!v.isBool()) {
            fail(join(path, QLatin1String(key)),
                 QStringLiteral("must be true or false (got %1)").arg(typeName(v)));
            return;
        }
        *out = v.toBool();
    }

    bool integerValue(const QJsonValue& v, const QString& path, long long min, long long max, long long* out)
    {
        const double d = v.toDouble();
        if (!v.isDouble() || std::floor(d) != d) {
            fail(path, QStringLiteral("must be an integer (got %1)").arg(typeName(v)));
            return false;
        }
        if (d < static_cast<double>(min) || d > static_cast<double>(max)) {
            // Beyond 64 bits the cast would print a value the file does not hold; the shortest
            // text that reads back as the same number does.
            const bool fits = std::fabs(d) < 9.2e18;
            const QString got = fits ? QString::number(static_cast<long long>(d))
                                     : QString::number(d, 'g', QLocale::FloatingPointShortest);
            fail(path, QStringLiteral("must be %1 to %2 (got %3)").arg(min).arg(max).arg(got));
            return false;
        }
        *out = static_cast<long long>(d);
        return true;
    }

    template<typename T>
    void integer(const QJsonObject& o, const QString& path, const char* key, long long min, long long max,
                 T* out)
    {
        if (!o.contains(QLatin1String(key))) {
            return;
        }
        long long value = 0;
        if (integerValue(o.value(QLatin1String(key)), join(path, QLatin1String(key)), min, max, &value)) {
            *out = static_cast<T>(value);
        }
    }

    // Codes are read as text so that leading zeros survive; the message never quotes a code.
    void digits(const QJsonObject& o, const QString& path, const char* key, int minLength, int maxLength,
                std::string* out, bool isCode)
    {
        if (!o.contains(QLatin1String(key))) {
            return;
        }
        const QJsonValue v = o.value(QLatin1String(key));
        const QString p = join(path, QLatin1String(key));
        if (!v.isString()) {
            fail(p, QStringLiteral("must be a string of digits (got %1)").arg(typeName(v)));
            return;
        }
        const QString s = v.toString();
        bool digitsOnly = true;
        for (QChar c : s) {
            digitsOnly = digitsOnly && c >= QLatin1Char('0') && c <= QLatin1Char('9');
        }
        if (!digitsOnly || s.size() < minLength || s.size() > maxLength) {
            const QString range = minLength == maxLength
                                      ? QString::number(minLength)
                                      : QStringLiteral("%1 to %2").arg(minLength).arg(maxLength);
            fail(p, isCode ? QStringLiteral("must be %1 digits").arg(range)
                           : QStringLiteral("must be %1 digits (got \"%2\")").arg(range, s));
            return;
        }
        *out = s.toStdString();
    }

    void hex(const QJsonObject& o, const QString& path, const char* key, int exactLength, int maxLength,
             std::string* out)
    {
        if (!o.contains(QLatin1String(key))) {
            return;
        }
        const QJsonValue v = o.value(QLatin1String(key));
        const QString p = join(path, QLatin1String(key));
        if (!v.isString()) {
            fail(p, QStringLiteral("must be hexadecimal text (got %1)").arg(typeName(v)));
            return;
        }
        const QString s = v.toString();
        bool isHex = true;
        for (QChar c : s) {
            isHex = isHex && ((c >= QLatin1Char('0') && c <= QLatin1Char('9')) ||
                              (c.toLower() >= QLatin1Char('a') && c.toLower() <= QLatin1Char('f')));
        }
        if (!isHex) {
            fail(p, QStringLiteral("must be hexadecimal text (got \"%1\")").arg(s));
        } else if (exactLength > 0 && s.size() != exactLength) {
            fail(p, QStringLiteral("must be %1 hexadecimal digits (got %2)").arg(exactLength).arg(s.size()));
        } else if (exactLength == 0 && (s.size() % 2 != 0 || s.size() > maxLength)) {
            fail(p, QStringLiteral("must be whole bytes (an even number of digits), at most %1 digits")
                        .arg(maxLength));
        } else {
            *out = s.toStdString();
        }
    }

    void string(const QJsonObject& o, const QString& path, const char* key, int maxLength, std::string* out)
    {
        if (!o.contains(QLatin1String(key))) {
            return;
        }
        const QJsonValue v = o.value(QLatin1String(key));
        const QString p = join(path, QLatin1String(key));
        if (!v.isString()) {
            fail(p, QStringLiteral("must be a string (got %1)").arg(typeName(v)));
            return;
        }
        const QByteArray bytes = v.toString().toLocal8Bit();
        if (bytes.size() > maxLength) {
            fail(p, QStringLiteral("must hold at most %1 bytes (got %2)").arg(maxLength).arg(bytes.size()));
            return;
        }
        *out = bytes.toStdString();
    }

    // Applies the fields present in `o` to `d`: a full definition starts from the default device, a
    // "set" action from the device's current state.
    void device(const QJsonObject& o, const QString& path, Device* d, bool* attached)
    {
        if (!onlyKnown(o, path,
                       {"id", "name", "port", "protocol", "productType", "status", "attached", "offline",
                        "packetAttached", "fingerprintLocked", "sim", "cardLock", "radio", "cdma"})) {
            return;
        }
        string(o, path, "id", 127, &d->id);
        if (o.contains(QLatin1String("name"))) {
            string(o, path, "name", 127, &d->name);
            if (ok() && d->name.empty()) {
                fail(join(path, QStringLiteral("name")), QStringLiteral("must not be empty"));
            }
        }
        integer(o, path, "port", 0, std::numeric_limits<int>::max(), &d->port);
        integer(o, path, "protocol", std::numeric_limits<int>::min(), std::numeric_limits<int>::max(),
                &d->protocol);
        if (o.contains(QLatin1String("productType"))) {
            const QJsonValue v = o.value(QLatin1String("productType"));
            const QString p = join(path, QStringLiteral("productType"));
            if (v.toString() == QLatin1String("cdma")) {
                d->productType = ZELK_PRODUCT_TYPE_CDMA;
            } else if (v.toString() == QLatin1String("gsm")) {
                d->productType = ZELK_PRODUCT_TYPE_GSM;
            } else if (v.isDouble()) {
                integer(o, path, "productType", 0, 255, &d->productType);
            } else {
                fail(p, QStringLiteral("must be \"gsm\", \"cdma\" or an integer (got %1)")
                            .arg(v.isString() ? QLatin1Char('"') + v.toString() + QLatin1Char('"')
                                              : typeName(v)));
            }
        }
        integer(o, path, "status", 0, 255, &d->status);
        if (attached) {
            boolean(o, path, "attached", attached);
        } else if (o.contains(QLatin1String("attached"))) {
            fail(join(path, QStringLiteral("attached")), QStringLiteral("use the attach and remove actions"));
        }
        boolean(o, path, "offline", &d->offline);
        boolean(o, path, "packetAttached", &d->packetAttached);
        boolean(o, path, "fingerprintLocked", &d->fingerprintLocked);

        QJsonObject part;
        if (o.contains(QLatin1String("sim")) &&
            object(o.value(QLatin1String("sim")), join(path, "sim"), &part)) {
            const QString p = join(path, QStringLiteral("sim"));
            if (onlyKnown(part, p,
                          {"present", "status", "pin", "pinEnabled", "pinVerified", "pinAttempts", "puk",
                           "pukAttempts", "pinCheckPending", "unblockAllowed", "pinStatus", "imsi", "gid1",
                           "gid2"})) {
                boolean(part, p, "present", &d->sim.present);
                integer(part, p, "status", 0, 0xFFFFFFFFLL, &d->sim.status);
                digits(part, p, "pin", 4, 8, &d->sim.pin, true);
                boolean(part, p, "pinEnabled", &d->sim.pinEnabled);
                boolean(part, p, "pinVerified", &d->sim.pinVerified);
                integer(part, p, "pinAttempts", 0, 3, &d->sim.pinAttempts);
                digits(part, p, "puk", 8, 8, &d->sim.puk, true);
                integer(part, p, "pukAttempts", 0, 10, &d->sim.pukAttempts);
                boolean(part, p, "pinCheckPending", &d->sim.pinCheckPending);
                boolean(part, p, "unblockAllowed", &d->sim.unblockAllowed);
                if (part.value(QLatin1String("pinStatus")).isNull() &&
                    part.contains(QLatin1String("pinStatus"))) {
                    d->sim.pinStatusOverride = -1;
                } else {
                    integer(part, p, "pinStatus", 0, 255, &d->sim.pinStatusOverride);
                }
                digits(part, p, "imsi", 0, 15, &d->sim.imsi, false);
                hex(part, p, "gid1", 0, ZELK_GID_TEXT_SIZE, &d->sim.gid1);
                hex(part, p, "gid2", 0, ZELK_GID_TEXT_SIZE, &d->sim.gid2);
            }
        }
        if (o.contains(QLatin1String("cardLock")) &&
            object(o.value(QLatin1String("cardLock")), join(path, "cardLock"), &part)) {
            const QString p = join(path, QStringLiteral("cardLock"));
            if (onlyKnown(part, p, {"state", "attempts", "code"})) {
                integer(part, p, "state", 1, 3, &d->cardLock.state);
                integer(part, p, "attempts", 0, 255, &d->cardLock.attempts);
                digits(part, p, "code", 4, 8, &d->cardLock.code, true);
            }
        }
        if (o.contains(QLatin1String("radio")) &&
            object(o.value(QLatin1String("radio")), join(path, "radio"), &part)) {
            const QString p = join(path, QStringLiteral("radio"));
            if (onlyKnown(part, p, {"on", "hardwareOn", "switchable", "lte"})) {
                boolean(part, p, "on", &d->radio.softwareOn);
                boolean(part, p, "hardwareOn", &d->radio.hardwareOn);
                boolean(part, p, "switchable", &d->radio.switchable);
                boolean(part, p, "lte", &d->radio.lte);
            }
        }
        if (o.contains(QLatin1String("cdma")) &&
            object(o.value(QLatin1String("cdma")), join(path, "cdma"), &part)) {
            const QString p = join(path, QStringLiteral("cdma"));
            if (onlyKnown(part, p,
                          {"esn", "meid", "activated", "lockStatus", "msl", "otksl", "otkslAttempts",
                           "otaspStates", "otaspCallEnd", "prlMaxSize", "acceptNumbers"})) {
                hex(part, p, "esn", 8, 8, &d->cdma.esn);
                hex(part, p, "meid", 14, 14, &d->cdma.meid);
                boolean(part, p, "activated", &d->cdma.activated);
                integer(part, p, "lockStatus", 0, 255, &d->cdma.lockStatus);
                digits(part, p, "msl", 6, 6, &d->cdma.msl, true);
                digits(part, p, "otksl", 6, 6, &d->cdma.otksl, true);
                integer(part, p, "otkslAttempts", 0, 255, &d->cdma.otkslAttempts);
                boolean(part, p, "otaspCallEnd", &d->cdma.otaspCallEnd);
                boolean(part, p, "acceptNumbers", &d->cdma.acceptNumbers);
                integer(part, p, "prlMaxSize", 1, std::numeric_limits<int>::max(), &d->cdma.prlMaxSize);
                if (part.contains(QLatin1String("otaspStates"))) {
                    const QJsonValue v = part.value(QLatin1String("otaspStates"));
                    const QString sp = join(p, QStringLiteral("otaspStates"));
                    if (!v.isArray()) {
                        fail(sp, QStringLiteral("must be an array of integers (got %1)").arg(typeName(v)));
                    } else {
                        d->cdma.otaspStates.clear();
                        const QJsonArray a = v.toArray();
                        for (int i = 0; i < a.size(); ++i) {
                            long long state = 0;
                            if (!integerValue(a.at(i), sp + QStringLiteral("[%1]").arg(i), 0, 9, &state)) {
                                break;
                            }
                            d->cdma.otaspStates.push_back(static_cast<int>(state));
                        }
                    }
                }
            }
        }
    }

    void platform(const QJsonObject& o, const QString& path, Platform* p)
    {
        if (!onlyKnown(o, path,
                       {"isWin7", "wwanReady", "wwanReadyAfterPolls", "wwanService", "userDataDirectory"})) {
            return;
        }
        bool win7 = p->isWin7 == ZELK_ERROR_SUCCESS;
        boolean(o, path, "isWin7", &win7);
        p->isWin7 = win7 ? ZELK_ERROR_SUCCESS : ZELK_ERROR_FAILURE;
        boolean(o, path, "wwanReady", &p->wwanReady);
        integer(o, path, "wwanReadyAfterPolls", 0, 1000000, &p->wwanReadyAfterPolls);
        integer(o, path, "wwanService", -1, 1, &p->wwanService);
        string(o, path, "userDataDirectory", ZELK_MAX_PATH - 2, &p->userDataDirectory);
    }

private:
    QString m_error;
};

struct Step
{
    QString caption;
    int delayMs = 0;
    QJsonObject user;
    QJsonArray actions;
};

struct Scenario
{
    QString name;
    QString description;
    std::vector<Device> devices; // every device the scenario defines, attached or not
    std::vector<Step> steps;
};

std::mutex g_scenarioMutex;
Scenario g_scenario;

bool findDefined(const Scenario& s, const QString& id, Device* out)
{
    for (const Device& d : s.devices) {
        if (QString::fromStdString(d.id) == id) {
            if (out) {
                *out = d;
            }
            return true;
        }
    }
    return false;
}

// Checks one timeline action; `s` holds the defined devices.
void checkAction(Reader& r, const Scenario& s, const QJsonObject& a, const QString& path)
{
    const QString kind = a.value(QLatin1String("action")).toString();
    const auto needDevice = [&]() {
        const QJsonValue v = a.value(QLatin1String("device"));
        if (!v.isString()) {
            r.fail(Reader::join(path, QStringLiteral("device")),
                   QStringLiteral("must name a device id (got %1)").arg(typeName(v)));
        } else if (!findDefined(s, v.toString(), nullptr)) {
            r.fail(Reader::join(path, QStringLiteral("device")),
                   QStringLiteral("no device \"%1\" is defined").arg(v.toString()));
        }
    };
    if (!a.contains(QLatin1String("action"))) {
        r.fail(Reader::join(path, QStringLiteral("action")), QStringLiteral("is missing"));
    } else if (!a.value(QLatin1String("action")).isString()) {
        r.fail(Reader::join(path, QStringLiteral("action")),
               QStringLiteral("must be a string (got %1)").arg(typeName(a.value(QLatin1String("action")))));
    } else if (kind == QLatin1String("attach") || kind == QLatin1String("remove") ||
               kind == QLatin1String("select") || kind == QLatin1String("reject") ||
               kind == QLatin1String("insertSim") || kind == QLatin1String("removeSim")) {
        if (r.onlyKnown(a, path, {"action", "device"})) {
            needDevice();
        }
    } else if (kind == QLatin1String("radioSwitch")) {
        if (r.onlyKnown(a, path, {"action", "on"})) {
            bool on = false;
            if (!a.contains(QLatin1String("on"))) {
                r.fail(Reader::join(path, QStringLiteral("on")), QStringLiteral("is missing"));
            }
            r.boolean(a, path, "on", &on);
        }
    } else if (kind == QLatin1String("power") || kind == QLatin1String("fingerprint") ||
               kind == QLatin1String("otasp")) {
        if (r.onlyKnown(a, path, {"action", "state"})) {
            int state = 0;
            if (!a.contains(QLatin1String("state"))) {
                r.fail(Reader::join(path, QStringLiteral("state")), QStringLiteral("is missing"));
            }
            r.integer(a, path, "state", std::numeric_limits<int>::min(), std::numeric_limits<int>::max(),
                      &state);
        }
    } else if (kind == QLatin1String("callEnd") || kind == QLatin1String("detect")) {
        r.onlyKnown(a, path, {"action"});
    } else if (kind == QLatin1String("event")) {
        if (!r.onlyKnown(a, path, {"action", "event", "registry", "words", "deviceList"})) {
            return;
        }
        int event = 0;
        if (!a.contains(QLatin1String("event"))) {
            r.fail(Reader::join(path, QStringLiteral("event")), QStringLiteral("is missing"));
        }
        r.integer(a, path, "event", std::numeric_limits<int>::min(), std::numeric_limits<int>::max(), &event);
        if (a.contains(QLatin1String("registry"))) {
            const QString reg = a.value(QLatin1String("registry")).toString();
            if (reg != QLatin1String("devMgr") && reg != QLatin1String("devInit") &&
                reg != QLatin1String("multiDevice") && reg != QLatin1String("call")) {
                r.fail(Reader::join(path, QStringLiteral("registry")),
                       QStringLiteral("must be \"devMgr\", \"devInit\", \"multiDevice\" or \"call\""));
            }
        }
        bool list = false;
        r.boolean(a, path, "deviceList", &list);
        if (a.contains(QLatin1String("words"))) {
            const QJsonValue v = a.value(QLatin1String("words"));
            if (!v.isArray()) {
                r.fail(Reader::join(path, QStringLiteral("words")),
                       QStringLiteral("must be an array of integers (got %1)").arg(typeName(v)));
                return;
            }
            if (list) {
                r.fail(Reader::join(path, QStringLiteral("words")),
                       QStringLiteral("cannot go with deviceList"));
                return;
            }
            const QJsonArray words = v.toArray();
            for (int i = 0; i < words.size(); ++i) {
                long long w = 0;
                r.integerValue(words.at(i), Reader::join(path, QStringLiteral("words[%1]").arg(i)), INT32_MIN,
                               UINT32_MAX, &w);
            }
        }
    } else if (kind == QLatin1String("set")) {
        if (!r.onlyKnown(a, path, {"action", "device", "state"})) {
            return;
        }
        needDevice();
        Device d;
        findDefined(s, a.value(QLatin1String("device")).toString(), &d);
        QJsonObject state;
        if (r.ok() &&
            r.object(a.value(QLatin1String("state")), Reader::join(path, QStringLiteral("state")), &state)) {
            r.device(state, Reader::join(path, QStringLiteral("state")), &d, nullptr);
            if (r.ok() && state.contains(QLatin1String("id"))) {
                r.fail(Reader::join(path, QStringLiteral("state.id")), QStringLiteral("cannot change"));
            }
        }
    } else if (kind == QLatin1String("forceResult")) {
        if (!r.onlyKnown(a, path, {"action", "function", "count", "result", "runCall"})) {
            return;
        }
        const QJsonValue f = a.value(QLatin1String("function"));
        if (!f.isString() || !knownFunction(f.toString())) {
            r.fail(Reader::join(path, QStringLiteral("function")),
                   f.isString() ? QStringLiteral("no SDK function \"%1\"").arg(f.toString())
                                : QStringLiteral("must name an SDK function (got %1)").arg(typeName(f)));
        }
        int count = 1;
        long long result = 0;
        bool run = false;
        r.integer(a, path, "count", 1, 1000000, &count);
        r.integer(a, path, "result", INT32_MIN, UINT32_MAX, &result);
        r.boolean(a, path, "runCall", &run);
    } else if (kind == QLatin1String("platform")) {
        if (r.onlyKnown(a, path, {"action", "platform"})) {
            QJsonObject p;
            Platform platform;
            if (r.object(a.value(QLatin1String("platform")), Reader::join(path, QStringLiteral("platform")),
                         &p)) {
                r.platform(p, Reader::join(path, QStringLiteral("platform")), &platform);
            }
        }
    } else {
        r.fail(Reader::join(path, QStringLiteral("action")),
               QStringLiteral("unknown action \"%1\"").arg(kind));
    }
}

Registry registryNamed(const QString& name, int event)
{
    if (name == QLatin1String("devMgr")) {
        return Registry::DevMgr;
    }
    if (name == QLatin1String("devInit")) {
        return Registry::DevInit;
    }
    if (name == QLatin1String("multiDevice")) {
        return Registry::MultiDevice;
    }
    if (name == QLatin1String("call")) {
        return Registry::Call;
    }
    return registryOf(event);
}

bool runAction(const QJsonObject& a, QString* error)
{
    SimulatedCard& card = SimulatedCard::instance();
    const QString kind = a.value(QLatin1String("action")).toString();
    const std::string id = a.value(QLatin1String("device")).toString().toStdString();
    const auto failed = [&](const QString& what) {
        if (error) {
            *error = QStringLiteral("%1 \"%2\": %3").arg(kind, QString::fromStdString(id), what);
        }
        return false;
    };
    if (kind == QLatin1String("attach")) {
        Device d;
        {
            std::lock_guard<std::mutex> lock(g_scenarioMutex);
            findDefined(g_scenario, QString::fromStdString(id), &d);
        }
        std::string why;
        return card.attachDevice(d, &why) || failed(QString::fromStdString(why));
    }
    if (kind == QLatin1String("remove")) {
        return card.removeDevice(id) || failed(QStringLiteral("not attached"));
    }
    if (kind == QLatin1String("select")) {
        return card.selectDevice(id) || failed(QStringLiteral("not attached or rejected"));
    }
    if (kind == QLatin1String("reject")) {
        return card.rejectDevice(id) || failed(QStringLiteral("not attached"));
    }
    if (kind == QLatin1String("insertSim")) {
        return card.setSimPresent(id, true) ||
               failed(QStringLiteral("not attached, or its SIM is in already"));
    }
    if (kind == QLatin1String("removeSim")) {
        return card.setSimPresent(id, false) || failed(QStringLiteral("not attached, or it has no SIM"));
    }
    if (kind == QLatin1String("radioSwitch")) {
        return card.setHardwareRadio(a.value(QLatin1String("on")).toBool()) ||
               failed(QStringLiteral("no active device"));
    }
    const int state = a.value(QLatin1String("state")).toInt();
    if (kind == QLatin1String("power")) {
        card.sendPowerEvent(state);
    } else if (kind == QLatin1String("fingerprint")) {
        card.sendFingerprintState(state);
    } else if (kind == QLatin1String("otasp")) {
        card.sendOtaspState(state);
    } else if (kind == QLatin1String("callEnd")) {
        card.sendCallEnd();
    } else if (kind == QLatin1String("detect")) {
        card.detectDevice();
    } else if (kind == QLatin1String("event")) {
        const int event = a.value(QLatin1String("event")).toInt();
        const Registry registry = registryNamed(a.value(QLatin1String("registry")).toString(), event);
        if (a.value(QLatin1String("deviceList")).toBool()) {
            _ZELK_ST_MULTI_DEVICE_INFO list;
            card.getAvailableDeviceList(&list);
            card.injectEvent(registry, event, &list, sizeof list);
        } else {
            std::vector<uint32_t> words;
            for (const QJsonValue& w : a.value(QLatin1String("words")).toArray()) {
                const double d = w.toDouble();
                words.push_back(d < 0 ? static_cast<uint32_t>(static_cast<int32_t>(d))
                                      : static_cast<uint32_t>(d));
            }
            card.injectEvent(registry, event, words.data(), words.size() * sizeof(uint32_t));
        }
    } else if (kind == QLatin1String("set")) {
        Device d;
        if (!card.findDevice(id, &d)) {
            return failed(QStringLiteral("not attached"));
        }
        Reader r;
        r.device(a.value(QLatin1String("state")).toObject(), QStringLiteral("state"), &d, nullptr);
        std::string field;
        std::string what;
        if (!r.ok()) {
            return failed(r.error());
        }
        if (!validateDevice(d, &field, &what)) {
            return failed(QString::fromStdString(field + ": " + what));
        }
        card.updateDevice(d);
    } else if (kind == QLatin1String("forceResult")) {
        const double result = a.value(QLatin1String("result")).toDouble(0);
        const auto value = result < 0 ? static_cast<ZELK_RESULT>(static_cast<int32_t>(result))
                                      : static_cast<ZELK_RESULT>(result);
        card.forceResult(a.value(QLatin1String("function")).toString().toStdString(),
                         a.value(QLatin1String("count")).toInt(1), value,
                         a.value(QLatin1String("runCall")).toBool());
    } else if (kind == QLatin1String("platform")) {
        Platform p = card.platform();
        Reader r;
        r.platform(a.value(QLatin1String("platform")).toObject(), QStringLiteral("platform"), &p);
        card.setPlatform(p);
    }
    return true;
}

} // namespace

bool loadScenarioText(const QByteArray& json, const QString& name, QString* error)
{
    const auto refuse = [&](const QString& message) {
        if (error) {
            *error = name + QStringLiteral(": ") + message;
        }
        return false;
    };
    QJsonParseError parseError;
    const QJsonDocument doc = QJsonDocument::fromJson(json, &parseError);
    if (parseError.error != QJsonParseError::NoError) {
        // Turn the byte offset into a line so a person finds the spot.
        const int line = json.left(parseError.offset).count('\n') + 1;
        return refuse(QStringLiteral("(document): not valid JSON at line %1: %2")
                          .arg(line)
                          .arg(parseError.errorString()));
    }
    if (!doc.isObject()) {
        return refuse(QStringLiteral("(document): must be an object"));
    }
    const QJsonObject root = doc.object();
    Reader r;
    Scenario s;
    s.name = QFileInfo(name).completeBaseName();
    Platform platform;
    std::string activeId;
    bool activeGiven = false;
    if (!r.onlyKnown(root, QString(),
                     {"name", "description", "platform", "devices", "activeDevice", "timeline"})) {
        return refuse(r.error());
    }
    if (root.contains(QLatin1String("name"))) {
        std::string n;
        r.string(root, QString(), "name", 200, &n);
        s.name = QString::fromStdString(n);
    }
    if (root.contains(QLatin1String("description"))) {
        std::string d;
        r.string(root, QString(), "description", 4000, &d);
        s.description = QString::fromStdString(d);
    }
    QJsonObject p;
    if (r.ok() && root.contains(QLatin1String("platform")) &&
        r.object(root.value(QLatin1String("platform")), QStringLiteral("platform"), &p)) {
        r.platform(p, QStringLiteral("platform"), &platform);
    }

    // Devices.
    std::vector<Device> attached;
    if (r.ok()) {
        const QJsonValue v = root.value(QLatin1String("devices"));
        if (!root.contains(QLatin1String("devices"))) {
            r.fail(QStringLiteral("devices"), QStringLiteral("is missing"));
        } else if (!v.isArray()) {
            r.fail(QStringLiteral("devices"), QStringLiteral("must be an array (got %1)").arg(typeName(v)));
        } else if (v.toArray().size() > MAX_DEVICE_COUNT) {
            r.fail(
                QStringLiteral("devices"),
                QStringLiteral("at most %1 devices (got %2)").arg(MAX_DEVICE_COUNT).arg(v.toArray().size()));
        } else {
            const QJsonArray list = v.toArray();
            for (int i = 0; i < list.size() && r.ok(); ++i) {
                const QString path = QStringLiteral("devices[%1]").arg(i);
                QJsonObject o;
                if (!r.object(list.at(i), path, &o)) {
                    break;
                }
                Device d = defaultDevice();
                d.id.clear();
                bool isAttached = true;
                r.device(o, path, &d, &isAttached);
                if (!r.ok()) {
                    break;
                }
                if (d.id.empty()) {
                    d.id = d.name;
                }
                std::string field;
                std::string what;
                if (!validateDevice(d, &field, &what)) {
                    r.fail(Reader::join(path, QString::fromStdString(field)), QString::fromStdString(what));
                    break;
                }
                for (std::size_t j = 0; j < s.devices.size(); ++j) {
                    if (s.devices[j].id == d.id) {
                        r.fail(Reader::join(path, o.contains(QLatin1String("id")) ? QStringLiteral("id")
                                                                                  : QStringLiteral("name")),
                               QStringLiteral("the id \"%1\" is taken by devices[%2]")
                                   .arg(QString::fromStdString(d.id))
                                   .arg(j));
                    }
                }
                s.devices.push_back(d);
                if (isAttached) {
                    attached.push_back(d);
                }
            }
        }
    }

    // Active device.
    if (r.ok() && root.contains(QLatin1String("activeDevice"))) {
        const QJsonValue v = root.value(QLatin1String("activeDevice"));
        activeGiven = true;
        if (v.isString()) {
            activeId = v.toString().toStdString();
            const bool found = std::any_of(attached.begin(), attached.end(), [&](const Device& d) {
                return d.id == activeId && d.status != DEVICE_STATUS_REJECTED;
            });
            if (!found) {
                r.fail(QStringLiteral("activeDevice"),
                       QStringLiteral("no attached, usable device \"%1\"").arg(v.toString()));
            }
        } else if (!v.isNull()) {
            r.fail(QStringLiteral("activeDevice"),
                   QStringLiteral("must be a device id or null (got %1)").arg(typeName(v)));
        }
    }
    if (r.ok() && !activeGiven) {
        for (const Device& d : attached) {
            if (d.status != DEVICE_STATUS_REJECTED) {
                activeId = d.id;
                break;
            }
        }
    }

    // Timeline.
    if (r.ok() && root.contains(QLatin1String("timeline"))) {
        const QJsonValue v = root.value(QLatin1String("timeline"));
        if (!v.isArray()) {
            r.fail(QStringLiteral("timeline"), QStringLiteral("must be an array (got %1)").arg(typeName(v)));
        } else {
            const QJsonArray steps = v.toArray();
            for (int i = 0; i < steps.size() && r.ok(); ++i) {
                const QString path = QStringLiteral("timeline[%1]").arg(i);
                QJsonObject o;
                if (!r.object(steps.at(i), path, &o) ||
                    !r.onlyKnown(o, path, {"caption", "delayMs", "actions", "user"})) {
                    break;
                }
                Step step;
                std::string caption;
                r.string(o, path, "caption", 1000, &caption);
                step.caption = QString::fromStdString(caption);
                r.integer(o, path, "delayMs", 0, 600000, &step.delayMs);
                if (o.contains(QLatin1String("user"))) {
                    r.object(o.value(QLatin1String("user")), Reader::join(path, QStringLiteral("user")),
                             &step.user);
                }
                if (o.contains(QLatin1String("actions"))) {
                    const QJsonValue av = o.value(QLatin1String("actions"));
                    if (!av.isArray()) {
                        r.fail(Reader::join(path, QStringLiteral("actions")),
                               QStringLiteral("must be an array (got %1)").arg(typeName(av)));
                        break;
                    }
                    step.actions = av.toArray();
                    for (int j = 0; j < step.actions.size() && r.ok(); ++j) {
                        const QString ap = Reader::join(path, QStringLiteral("actions[%1]").arg(j));
                        QJsonObject a;
                        if (r.object(step.actions.at(j), ap, &a)) {
                            checkAction(r, s, a, ap);
                        }
                    }
                }
                if (r.ok() && step.caption.isEmpty() && step.actions.isEmpty() && step.user.isEmpty()) {
                    r.fail(path, QStringLiteral("a step needs a caption, actions or a user part"));
                }
                s.steps.push_back(step);
            }
        }
    }

    if (!r.ok()) {
        return refuse(r.error());
    }

    SimulatedCard& card = SimulatedCard::instance();
    card.dispatcher().waitForIdle(5000);
    card.clearForcedResults();
    card.clearCalls();
    card.dispatcher().clearDelivered();
    card.replaceState(attached, activeId, platform);
    std::lock_guard<std::mutex> lock(g_scenarioMutex);
    g_scenario = std::move(s);
    return true;
}

bool loadScenario(const QString& path, QString* error)
{
    QFile file(path);
    if (!file.exists()) {
        if (error) {
            *error = path + QStringLiteral(": (file): does not exist");
        }
        return false;
    }
    if (!file.open(QIODevice::ReadOnly)) {
        if (error) {
            *error = path + QStringLiteral(": (file): cannot be read: ") + file.errorString();
        }
        return false;
    }
    return loadScenarioText(file.readAll(), path, error);
}

QString scenarioName()
{
    std::lock_guard<std::mutex> lock(g_scenarioMutex);
    return g_scenario.name;
}

QString scenarioDescription()
{
    std::lock_guard<std::mutex> lock(g_scenarioMutex);
    return g_scenario.description;
}

int scenarioStepCount()
{
    std::lock_guard<std::mutex> lock(g_scenarioMutex);
    return static_cast<int>(g_scenario.steps.size());
}

QString scenarioStepCaption(int index)
{
    std::lock_guard<std::mutex> lock(g_scenarioMutex);
    if (index < 0 || index >= static_cast<int>(g_scenario.steps.size())) {
        return QString();
    }
    return g_scenario.steps[static_cast<std::size_t>(index)].caption;
}

QJsonObject scenarioStepUser(int index)
{
    std::lock_guard<std::mutex> lock(g_scenarioMutex);
    if (index < 0 || index >= static_cast<int>(g_scenario.steps.size())) {
        return QJsonObject();
    }
    return g_scenario.steps[static_cast<std::size_t>(index)].user;
}

int scenarioStepDelayMs(int index)
{
    std::lock_guard<std::mutex> lock(g_scenarioMutex);
    if (index < 0 || index >= static_cast<int>(g_scenario.steps.size())) {
        return 0;
    }
    return g_scenario.steps[static_cast<std::size_t>(index)].delayMs;
}

bool runScenarioStep(int index, QString* error)
{
    QJsonArray actions;
    {
        std::lock_guard<std::mutex> lock(g_scenarioMutex);
        if (index < 0 || index >= static_cast<int>(g_scenario.steps.size())) {
            if (error) {
                *error = QStringLiteral("timeline[%1]: no such step").arg(index);
            }
            return false;
        }
        actions = g_scenario.steps[static_cast<std::size_t>(index)].actions;
    }
    for (int i = 0; i < actions.size(); ++i) {
        QString why;
        if (!runAction(actions.at(i).toObject(), &why)) {
            if (error) {
                *error = QStringLiteral("timeline[%1].actions[%2]: %3").arg(index).arg(i).arg(why);
            }
            return false;
        }
    }
    return true;
}

void reset()
{
    SimulatedCard::instance().resetCard();
    std::lock_guard<std::mutex> lock(g_scenarioMutex);
    g_scenario = Scenario();
}

} // namespace zelk::sim
