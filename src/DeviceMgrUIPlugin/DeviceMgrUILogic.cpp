// The device logic layer: devices, SIM, PIN, card lock and radio through the device SDK.
#include "DeviceMgrUILogic.h"

#include "CommonUtils.h"
#include "DeviceMgrLog.h"
#include "HostIds.h"
#include "HostServices.h"
#include "Startup.h"

#include <QtCore/QByteArray>

#include <cstring>
#include <mutex>

namespace {

// Result codes of this layer.
enum {
    RESULT_SUCCESS = 0,
    RESULT_SDK_FAILED = 1,
    RESULT_UNBLOCK_NOT_ALLOWED = 14,
    RESULT_REFUSED = 15,
    RESULT_INVALID_ARGUMENT = 23,
    RESULT_INVALID_CODE = -1
};

// Card customisation values of the "support"/"type" setting.
enum { CARD_CUSTOMIZATION_EXIT = 3 };

// The PIN state reported when the card could not tell: the service keeps the same value for "no
// state read yet".
constexpr E_DEVMGR_PIN_STATE kPinStateNotRead = static_cast<E_DEVMGR_PIN_STATE>(8);
// The card-lock state reported when the card cannot be asked.
constexpr int kCardLockStateUnknown = 4;
constexpr int kQueryTries = 3;
constexpr int kMinPinLength = 4;
constexpr int kMaxCodeLength = ZELK_PIN_BUFFER_SIZE - 1;
constexpr int kUnblockAnswerNotAllowed = 6000;

// Overwrites memory in a way the optimiser may not drop as a dead store.
void secureWipe(void* data, std::size_t size)
{
    volatile unsigned char* p = static_cast<volatile unsigned char*>(data);
    while (size--)
        *p++ = 0;
}

// A code the user typed, as the SDK takes it: 8-bit ASCII, at most 8 characters and a terminator.
// Wiped as soon as the SDK call has returned, and again on destruction.
class CodeBuffer
{
public:
    explicit CodeBuffer(const QString& code)
    {
        QByteArray bytes = code.toLatin1();
        const int n = qMin(bytes.size(), kMaxCodeLength);
        std::memcpy(m_buffer, bytes.constData(), static_cast<std::size_t>(n));
        m_buffer[n] = '\0';
        // The conversion left its own copy of the code on the heap.
        secureWipe(bytes.data(), static_cast<std::size_t>(bytes.size()));
    }
    ~CodeBuffer() { wipe(); }
    CodeBuffer(const CodeBuffer&) = delete;
    CodeBuffer& operator=(const CodeBuffer&) = delete;

    const char* data() const { return m_buffer; }
    void wipe() { secureWipe(m_buffer, sizeof(m_buffer)); }

private:
    char m_buffer[ZELK_PIN_BUFFER_SIZE] = {};
};

// Copies an untrusted, possibly unterminated name field into a terminated buffer of the same size
// without reading past the field.
void copyName(char* dst, std::size_t dstSize, const char* src, std::size_t srcSize)
{
    std::size_t n = strnlen(src, srcSize);
    if (n > dstSize - 1)
        n = dstSize - 1;
    std::memcpy(dst, src, n);
    dst[n] = '\0';
}

bool succeeded(ZELK_RESULT result)
{
    return result == ZELK_ERROR_SUCCESS;
}

// The SDK's unsigned answers read as the signed numbers callers compare with (-1, 1, 6000).
int asSigned(ZELK_RESULT result)
{
    return static_cast<int>(static_cast<int32_t>(result));
}

// A remaining-attempts byte of 255 means the card does not know.
int attemptsOrUnknown(unsigned char remaining)
{
    return remaining >= ZELK_ATTEMPTS_UNKNOWN ? -1 : static_cast<int>(remaining);
}

} // namespace

DeviceMgrUILogic* DeviceMgrUILogic::m_pDeviceMgrUILogic = nullptr;

DeviceMgrUILogic* DeviceMgrUILogic::GetInstance()
{
    if (!m_pDeviceMgrUILogic)
        m_pDeviceMgrUILogic = new DeviceMgrUILogic();
    return m_pDeviceMgrUILogic;
}

DeviceMgrUILogic::DeviceMgrUILogic()
    : QObject(nullptr)
{
    qRegisterMetaType<E_DEVMGR_PIN_STATE>("E_DEVMGR_PIN_STATE");
    // The fields get their meaning in init(); until then keep them harmless.
    std::memset(&m_stDeviceInfo, 0, sizeof(m_stDeviceInfo));
    m_stDeviceInfo.nDevNum = -1;
    std::memset(m_szCurrentDevName, 0, sizeof(m_szCurrentDevName));
}

DeviceMgrUILogic::~DeviceMgrUILogic()
{
    // The service deletes the instance at unload; a later GetInstance() must not hand out the
    // dead one.
    if (m_pDeviceMgrUILogic == this)
        m_pDeviceMgrUILogic = nullptr;
}

void DeviceMgrUILogic::init()
{
    DM_LOG("%s : %s : %s : Entered");
    m_iRetryTimes = 0;
    m_iPinStatus = 0;
    {
        std::lock_guard<std::mutex> lock(m_mutexDevice);
        m_stDeviceInfo.nDevNum = -1;
        m_iCurrentPort = -1;
        m_iCurrentProtocol = 0;
        m_szCurrentDevName[0] = '\0';
    }
    m_uRFState = 0;
}

// ---- Device list, selection, status and SIM status ---------------------------------------------

void DeviceMgrUILogic::ClearDeviceInfo()
{
    DM_LOG("%s : %s : %s : Entered");
    std::lock_guard<std::mutex> lock(m_mutexDevice);
    std::memset(&m_stDeviceInfo, 0, sizeof(m_stDeviceInfo));
    m_iCurrentPort = -1;
    m_iCurrentProtocol = 0;
    std::memset(m_szCurrentDevName, 0, sizeof(m_szCurrentDevName));
}

void DeviceMgrUILogic::SetDeviceInfo(_ZELK_ST_MULTI_DEVICE_INFO* pstLocalDeviceinfo)
{
    DM_LOG("%s : %s : %s : Entered");
    if (!pstLocalDeviceinfo) {
        DM_LOG("%s : %s : %s : Input params NULL");
        return;
    }
    const int count = pstLocalDeviceinfo->nDevNum;
    if (count > MAX_DEVICE_COUNT) {
        DM_WARN("%s : %s : %s : Error :pstLocalDeviceinfo->nDevNum > MAX_DEVICE_COUNT");
        return;
    }

    std::lock_guard<std::mutex> lock(m_mutexDevice);
    m_stDeviceInfo.nDevNum = count;
    // Only the listed entries are read: the SDK's record may be shorter than the full table.
    for (int i = 0; i < count; ++i) {
        const _ZELK_ST_DEVICE_INFO& src = pstLocalDeviceinfo->stDevInfo[i];
        _ZELK_ST_DEVICE_INFO& dst = m_stDeviceInfo.stDevInfo[i];
        dst.nPort = src.nPort;
        dst.nProtocol = src.nProtocol;
        copyName(dst.szName, sizeof(dst.szName), src.szName, sizeof(src.szName));
    }
    // With several devices the user chooses; a lone device is the current one by definition.
    if (count == 1) {
        const _ZELK_ST_DEVICE_INFO& only = m_stDeviceInfo.stDevInfo[0];
        std::memcpy(m_szCurrentDevName, only.szName, sizeof(m_szCurrentDevName));
        m_iCurrentPort = only.nPort;
        m_iCurrentProtocol = only.nProtocol;
    }
}

_ZELK_ST_MULTI_DEVICE_INFO DeviceMgrUILogic::GetDeviceInfo()
{
    DM_LOG("%s : %s : %s : Entered");
    _ZELK_ST_MULTI_DEVICE_INFO stDevices;
    std::memset(&stDevices, 0, sizeof(stDevices));
    if (!succeeded(ZELK_DevSrv_GetAvailableDeviceList(&stDevices))) {
        DM_WARN("%s : %s : %s : ZELK_DevSrv_GetAvailableDeviceList returned error");
        std::memset(&stDevices, 0, sizeof(stDevices));
        return stDevices;
    }
    // Callers walk the list by its count and print the names: keep both within the record.
    if (stDevices.nDevNum > MAX_DEVICE_COUNT || stDevices.nDevNum < 0) {
        DM_WARN("%s : %s : %s : ZELK_DevSrv_GetAvailableDeviceList returned device count %d",
                static_cast<int>(stDevices.nDevNum));
        stDevices.nDevNum = 0;
    }
    for (_ZELK_ST_DEVICE_INFO& device : stDevices.stDevInfo)
        device.szName[ZELK_DEVICE_NAME_SIZE - 1] = '\0';
    return stDevices;
}

int DeviceMgrUILogic::GetDeviceStatus(_ZELK_EN_DEVICE_STATUS& enStatus)
{
    DM_LOG("%s : %s : %s : Entered");
    _ZELK_EN_DEVICE_STATUS enRead = DEVICE_STATUS_NO_DEVICE;
    if (!succeeded(ZELK_DevSrv_GetDevStatus(&enRead))) {
        DM_WARN("%s : %s : %s : ZELK_DevSrv_GetDevStatus returned error");
        return RESULT_REFUSED;
    }
    enStatus = enRead;
    return RESULT_SUCCESS;
}

int DeviceMgrUILogic::GetSystemDevStatus()
{
    DM_LOG("%s : %s : %s : Entered");
    _ZELK_EN_DEVICE_STATUS enStatus = DEVICE_STATUS_NO_DEVICE;
    if (!succeeded(ZELK_DevSrv_GetDevStatus(&enStatus))) {
        DM_WARN("%s : %s : %s : ZELK_DevSrv_GetDevStatus returned error");
        return 0;
    }
    char szName[ZELK_DEVICE_NAME_OUT_SIZE] = {};
    if (!succeeded(ZELK_DevSrv_GetDeviceName(szName))) {
        DM_WARN("%s : %s : %s : ZELK_DevSrv_GetDeviceName returned error");
        return 0;
    }
    int iPort = 0;
    if (!succeeded(ZELK_DevSrv_GetDevicePort(&iPort))) {
        DM_WARN("%s : %s : %s : ZELK_DevSrv_GetDevicePort returned error");
        return 0;
    }
    if (enStatus == DEVICE_STATUS_AVAILABLE) {
        std::lock_guard<std::mutex> lock(m_mutexDevice);
        copyName(m_szCurrentDevName, sizeof(m_szCurrentDevName), szName, sizeof(szName));
        m_iCurrentPort = iPort;
    }
    return static_cast<int>(enStatus);
}

int DeviceMgrUILogic::GetSimStatus()
{
    DM_LOG("%s : %s : %s : Entered");
    unsigned int uSimStatus = 0;
    if (!succeeded(ZELK_DevSrv_GetSimStatus(&uSimStatus))) {
        DM_WARN("%s : %s : %s : ZELK_DevSrv_GetSimStatus returned error");
        return 0;
    }
    DM_LOG("%s : %s : %s : The SIM State is %d", static_cast<int>(uSimStatus));
    return static_cast<int>(uSimStatus);
}

int DeviceMgrUILogic::isSimValid()
{
    DM_LOG("%s : %s : %s : Entered");
    unsigned int uSimStatus = 0;
    // A transient SDK failure must not throw the user into the SIM dialogs.
    if (!succeeded(ZELK_DevSrv_GetSimStatus(&uSimStatus))) {
        DM_WARN("%s : %s : %s : ZELK_DevSrv_GetSimStatus returned error");
        return 1;
    }
    DM_LOG("%s : %s : %s : The SIM State is %d", static_cast<int>(uSimStatus));
    if (uSimStatus == ZELK_SIM_STATUS_ABSENT || uSimStatus >= ZELK_SIM_STATUS_INVALID)
        return 0;
    return 1;
}

QString DeviceMgrUILogic::GetDeviceName()
{
    DM_LOG("%s : %s : %s : Entered");
    char szName[ZELK_DEVICE_NAME_OUT_SIZE];
    std::memset(szName, 0, sizeof(szName));
    if (!succeeded(ZELK_DevSrv_GetDeviceName(szName))) {
        DM_WARN("%s : %s : %s : ZELK_DevSrv_GetDeviceName returned error");
        return QString();
    }
    const QString strName = QString::fromLocal8Bit(szName, static_cast<int>(strnlen(szName, sizeof(szName))));
    DM_LOG("%s : %s : %s : device name = %s", qPrintable(strName));
    return strName;
}

QString DeviceMgrUILogic::GetCurrentDeviceName()
{
    DM_LOG("%s : %s : %s : Entered");
    // The SDK knows best which device is active; the stored name may lag behind a switch.
    return GetDeviceName();
}

int DeviceMgrUILogic::GetCurrentDevicePortNo()
{
    DM_LOG("%s : %s : %s : Entered");
    int iPort = 0;
    if (!succeeded(ZELK_DevSrv_GetDevicePort(&iPort))) {
        DM_WARN("%s : %s : %s : ZELK_DevSrv_GetDevicePort returned error");
        iPort = 0;
    }
    DM_LOG("%s : %s : %s : Exit");
    return iPort;
}

int DeviceMgrUILogic::GetCurrentDeviceProtocol()
{
    DM_LOG("%s : %s : %s : Entered");
    std::lock_guard<std::mutex> lock(m_mutexDevice);
    return m_iCurrentProtocol;
}

int DeviceMgrUILogic::SelectDevice(_ZELK_ST_DEVICE_INFO stDevice)
{
    DM_LOG("%s : %s : %s : Entered");
    char szName[ZELK_DEVICE_NAME_SIZE];
    copyName(szName, sizeof(szName), stDevice.szName, sizeof(stDevice.szName));
    const QString strName = QString::fromLocal8Bit(szName);

    if (strName == GetCurrentDeviceName() && stDevice.nPort == GetCurrentDevicePortNo()) {
        DM_LOG("%s : %s : %s : Same Device selected, No change required");
        return RESULT_SUCCESS;
    }

    // A connection running over the old device would be cut under the dial-up plugin's feet.
    InterruptServers();

    if (!succeeded(ZELK_DevSrv_ManualChangeDevice(szName, "", stDevice.nPort))) {
        DM_WARN("%s : %s : %s : ZELK_DevSrv_ManualChangeDevice returned error");
        return RESULT_SDK_FAILED;
    }
    // Port and protocol follow with the next device list or status query.
    std::lock_guard<std::mutex> lock(m_mutexDevice);
    std::memcpy(m_szCurrentDevName, szName, sizeof(m_szCurrentDevName));
    return RESULT_SUCCESS;
}

QString DeviceMgrUILogic::GetSimTypeText()
{
    DM_LOG("%s : %s : %s : Entered");
    QString strText;
    int iProductType = 0;
    if (!succeeded(ZELK_DevSrv_GetProductType(&iProductType))) {
        DM_WARN("%s : %s : %s : ZELK_DevSrv_GetProductType returned error");
        return strText;
    }
    if (iProductType == ZELK_PRODUCT_TYPE_CDMA)
        strText = CommonUtils::GetSettings(QStringLiteral("customize"), QStringLiteral("uimtype"));
    else
        strText = CommonUtils::GetSettings(QStringLiteral("customize"), QStringLiteral("simtype"));
    return strText;
}

_ZELK_ST_MULTI_DEVICE_INFO DeviceMgrUILogic::GetLocalDeviceInfo() const
{
    std::lock_guard<std::mutex> lock(m_mutexDevice);
    return m_stDeviceInfo;
}

QString DeviceMgrUILogic::GetLocalDeviceName() const
{
    std::lock_guard<std::mutex> lock(m_mutexDevice);
    return QString::fromLocal8Bit(m_szCurrentDevName);
}

int DeviceMgrUILogic::GetLocalDevicePortNo() const
{
    std::lock_guard<std::mutex> lock(m_mutexDevice);
    return m_iCurrentPort;
}

int DeviceMgrUILogic::GetStoredPinStatus() const
{
    return m_iPinStatus;
}

// ---- PIN, PUK and card lock ---------------------------------------------------------------------

int DeviceMgrUILogic::GetPinStatus(E_DEVMGR_PIN_STATE* penState)
{
    DM_LOG("%s : %s : %s : Entered");
    if (!penState) {
        DM_LOG("%s : %s : %s : Pre-condtions failed");
        return RESULT_INVALID_ARGUMENT;
    }
    int iStatus = 0;
    unsigned char btIndicator = 0;
    unsigned char btReserved = 0;
    unsigned char btRemaining = 0;
    if (!succeeded(ZELK_DevSrv_GetPinStatus(0, &iStatus, &btIndicator, &btReserved, &btRemaining))) {
        m_iRetryTimes = -1;
        DM_WARN("=====>%s : %s : %s : ZELK_DevSrv_GetPinStatus failed");
        return RESULT_SDK_FAILED;
    }
    m_iRetryTimes = btRemaining;
    m_iPinStatus = iStatus;
    switch (iStatus) {
    case ZELK_PIN_STATUS_READY:
    case ZELK_PIN_STATUS_READY_NO_PIN:
        *penState = DEVMGR_PIN_READY;
        break;
    case ZELK_PIN_STATUS_PIN_REQUIRED:
        // A non-zero indicator: the card is still running its own PIN check, nothing to enter yet.
        *penState = btIndicator == 0 ? DEVMGR_PIN_VERIFY : DEVMGR_PIN_READY;
        break;
    case ZELK_PIN_STATUS_PUK_REQUIRED:
        *penState = DEVMGR_UNLOCK_PIN;
        break;
    case ZELK_PIN_STATUS_PUK_BLOCKED:
        *penState = DEVMGR_PIN_BLOCKED;
        break;
    default:
        // Statuses without a meaning for the plugin leave the caller's state as it was.
        break;
    }
    return RESULT_SUCCESS;
}

bool DeviceMgrUILogic::queryPinStatusWithRetry(bool bForPuk, int& iStatus, int& iRemaining)
{
    int iReadStatus = 0;
    unsigned char btIndicator = 0;
    unsigned char btReserved = 0;
    unsigned char btRemaining = 0;
    for (int retry = 0; retry < kQueryTries; ++retry) {
        if (succeeded(ZELK_DevSrv_GetPinStatus(0, &iReadStatus, &btIndicator, &btReserved, &btRemaining))) {
            iStatus = iReadStatus;
            iRemaining = btRemaining;
            return true;
        }
        // The card often answers the next query at once; waiting would only stall the GUI.
        if (bForPuk)
            DM_WARN("======>%s : %s : %s : ZELK_DevSrv_GetPinStatus Failed retry %d ", retry);
        else
            DM_WARN("=====> %s : %s : %s : ZELK_DevSrv_GetPinStatus Failed  PinStatus %d retry %d",
                    iReadStatus, retry);
    }
    return false;
}

int DeviceMgrUILogic::GetPINRetryTimes()
{
    DM_LOG("%s : %s : %s : Entered");
    int iStatus = 0;
    int iRemaining = 0;
    if (!queryPinStatusWithRetry(false, iStatus, iRemaining))
        return -1;
    m_iPinStatus = iStatus;
    m_iRetryTimes = iRemaining;
    // While the PUK is asked for, the card's count is the PUK's, not the PIN's.
    return iStatus == ZELK_PIN_STATUS_PUK_REQUIRED ? 0 : iRemaining;
}

int DeviceMgrUILogic::GetPUKRetryTimes()
{
    DM_LOG("%s : %s : %s : Entered");
    int iStatus = 0;
    int iRemaining = 0;
    if (!queryPinStatusWithRetry(true, iStatus, iRemaining))
        return -1;
    m_iPinStatus = iStatus;
    m_iRetryTimes = iRemaining;
    return iStatus == ZELK_PIN_STATUS_PUK_REQUIRED ? iRemaining : 0;
}

int DeviceMgrUILogic::GetCardRetryTimes()
{
    DM_LOG("%s : %s : %s : Entered");
    for (int retry = 0; retry < kQueryTries; ++retry) {
        unsigned char btState = 0;
        unsigned char btRemaining = 0;
        unsigned int uReserved = 0;
        if (succeeded(ZELK_DevSrv_GetCardLockStatus(&btState, &btRemaining, &uReserved))) {
            DM_LOG("%s : %s : %s : ZELK_DevSrv_GetCardLockStatus returned success");
            return btRemaining;
        }
        DM_WARN("%s : %s : %s : ZELK_DevSrv_GetCardLockStatus returned error retry %d", retry);
    }
    return -1;
}

int DeviceMgrUILogic::GetCardLockedState()
{
    DM_LOG("%s : %s : %s : Entered");
    unsigned char btState = 0;
    unsigned char btRemaining = 0;
    unsigned int uReserved = 0;
    if (!succeeded(ZELK_DevSrv_GetCardLockStatus(&btState, &btRemaining, &uReserved))) {
        DM_WARN("%s : %s : %s : ZELK_DevSrv_GetCardLockStatus returned error");
        return kCardLockStateUnknown;
    }
    DM_LOG("%s : %s : %s : ZELK_DevSrv_GetCardLockStatus returned success  card state = %d",
           static_cast<int>(btState));
    return btState;
}

int DeviceMgrUILogic::GetCardCustomization()
{
    DM_LOG("%s : %s : %s : Entered");
    const QString strType = CommonUtils::GetSettings(QStringLiteral("support"), QStringLiteral("type"));
    if (strType == QLatin1String("0"))
        return 0;
    if (strType == QLatin1String("1"))
        return 1;
    if (strType == QLatin1String("2"))
        return 2;
    // An unknown or missing value must not offer an unlock the carrier did not configure.
    return CARD_CUSTOMIZATION_EXIT;
}

bool DeviceMgrUILogic::isPINValid(QString& strPin)
{
    DM_LOG("%s : %s : %s : Entered");
    return strPin.length() >= kMinPinLength && strPin.length() <= kMaxCodeLength;
}

bool DeviceMgrUILogic::isPUKValid(QString& strPuk)
{
    return strPuk.length() == kMaxCodeLength;
}

int DeviceMgrUILogic::ValidatePINs(QString strFirst, QString strSecond)
{
    DM_LOG("%s : %s : %s : Entered");
    if (!isPINValid(strFirst) || !isPINValid(strSecond)) {
        DM_LOG("%s : %s : %s : Input params are invalid");
        return RESULT_REFUSED;
    }
    CodeBuffer first(strFirst);
    CodeBuffer second(strSecond);
    const bool bEqual = std::strncmp(first.data(), second.data(), ZELK_PIN_BUFFER_SIZE) == 0;
    return bEqual ? RESULT_SUCCESS : RESULT_REFUSED;
}

int DeviceMgrUILogic::ProcessPIN(QString strCode, int& iRetries, E_DEVMGR_PIN_STATE enRequest)
{
    DM_LOG("%s : %s : %s : Entered");
    int iResult = RESULT_SDK_FAILED;
    switch (enRequest) {
    case DEVMGR_PIN_VERIFY:
        iResult = processVerifyPIN(iRetries, strCode);
        break;
    case DEVMGR_PIN_ENABLE:
        iResult = processEnablePIN(iRetries, strCode);
        break;
    case DEVMGR_PIN_DISABLE:
        iResult = processDisablePIN(iRetries, strCode);
        break;
    case DEVMGR_CARD_LOCK:
        iResult = VerifyCardLock(strCode, iRetries);
        break;
    default:
        break;
    }
    if (iResult == RESULT_SUCCESS)
        return RESULT_SUCCESS;
    DM_LOG("%s : %s : %s : ProcessPIN: SimState %d Failed", static_cast<int>(enRequest));
    return RESULT_SDK_FAILED;
}

int DeviceMgrUILogic::processVerifyPIN(int& iRetries, QString strPin)
{
    DM_LOG("%s : %s : %s : Entered");
    if (!isPINValid(strPin)) {
        DM_LOG("%s : %s : %s : Invalid input params");
        return RESULT_INVALID_CODE;
    }
    const unsigned char btType = 0;
    // Left unknown if the card does not answer with a count.
    unsigned char btRemaining = ZELK_ATTEMPTS_UNKNOWN;
    CodeBuffer pin(strPin);
    DM_LOG("%s : %s : %s : ZELK_DevSrv_VerifyPin called with btType = %d, szPinCode = %s",
           static_cast<int>(btType), DM_MASKED(pin.data()));
    const ZELK_RESULT result = ZELK_DevSrv_VerifyPin(btType, pin.data(), &btRemaining);
    pin.wipe();
    DM_LOG("%s : %s : %s : ZELK_DevSrv_VerifyPin returned %li", static_cast<long>(asSigned(result)));

    iRetries = attemptsOrUnknown(btRemaining);
    if (btRemaining == 0) {
        // The last PIN attempt is gone: from now on the card asks for the PUK.
        m_iPinStatus = ZELK_PIN_STATUS_PUK_REQUIRED;
        iRetries = 0;
    }
    return asSigned(result);
}

int DeviceMgrUILogic::processEnablePIN(int& iRetries, QString strPin)
{
    DM_LOG("%s : %s : %s : Entered");
    if (!isPINValid(strPin)) {
        DM_LOG("%s : %s : %s : Invalid input params");
        return RESULT_INVALID_CODE;
    }
    CodeBuffer pin(strPin);
    const ZELK_RESULT result = ZELK_DevSrv_EnablePin(0, pin.data());
    pin.wipe();
    DM_LOG("<===== %s : %s : %s :  ZELK_DevSrv_EnablePin return value %d ", asSigned(result));
    return finishEnableDisablePIN(result, iRetries);
}

int DeviceMgrUILogic::processDisablePIN(int& iRetries, QString strPin)
{
    DM_LOG("%s : %s : %s : Entered");
    if (!isPINValid(strPin)) {
        DM_LOG("%s : %s : %s : Invalid input params");
        return RESULT_INVALID_CODE;
    }
    CodeBuffer pin(strPin);
    const ZELK_RESULT result = ZELK_DevSrv_DisablePin(0, pin.data());
    pin.wipe();
    DM_LOG("<===== %s : %s : %s :  ZELK_DevSrv_DisablePin return value %d ", asSigned(result));
    return finishEnableDisablePIN(result, iRetries);
}

int DeviceMgrUILogic::finishEnableDisablePIN(ZELK_RESULT result, int& iRetries)
{
    if (succeeded(result)) {
        m_iRetryTimes = 0;
        return RESULT_SUCCESS;
    }
    // A wrong PIN may have used up the last attempt; tell the service what the card asks for now.
    E_DEVMGR_PIN_STATE enState = kPinStateNotRead;
    GetPinStatus(&enState);
    if (enState == DEVMGR_UNLOCK_PIN) {
        m_iRetryTimes = 0;
        m_iPinStatus = ZELK_PIN_STATUS_PUK_REQUIRED;
    }
    emit PinStateChanged(enState);
    iRetries = m_iRetryTimes;
    return asSigned(result);
}

int DeviceMgrUILogic::VerifyCardLock(QString& strCode, int& iRetries)
{
    DM_LOG("%s : %s : %s : Entered");
    if (!isPINValid(strCode)) {
        DM_LOG("%s : %s : %s : Password is invalid");
        return RESULT_INVALID_ARGUMENT;
    }
    CodeBuffer code(strCode);
    const ZELK_RESULT result = ZELK_DevSrv_VerifyCardLock(code.data(), &iRetries);
    code.wipe();
    if (!succeeded(result)) {
        DM_WARN("%s : %s : %s : ZELK_DevSrv_VerifyCardLock returned error");
        return RESULT_SDK_FAILED;
    }
    DM_LOG("%s : %s : %s : ZELK_DevSrv_VerifyCardLock returned success");
    return RESULT_SUCCESS;
}

int DeviceMgrUILogic::UnlockPIN(QString strPuk, QString strNewPin, int& iRetries)
{
    DM_LOG("%s : %s : %s : Entered");
    if (!isPINValid(strNewPin) || !isPUKValid(strPuk)) {
        DM_LOG("%s : %s : %s : Invalid input params");
        return RESULT_INVALID_ARGUMENT;
    }
    // Left unknown if the card does not answer with a count.
    unsigned char btRemaining = ZELK_ATTEMPTS_UNKNOWN;
    ZELK_RESULT result = ZELK_ERROR_FAILURE;
    {
        CodeBuffer newPin(strNewPin);
        CodeBuffer puk(strPuk);
        result = ZELK_DevSrv_UnblockPin(0, newPin.data(), puk.data(), &btRemaining);
        newPin.wipe();
        puk.wipe();
    }
    iRetries = attemptsOrUnknown(btRemaining);

    switch (asSigned(result)) {
    case 0:
        m_iPinStatus = 0;
        m_iRetryTimes = 0;
        return RESULT_SUCCESS;
    case -1:
        DM_WARN("%s : %s : %s : ZELK_DevSrv_UnblockPin returned failure");
        // Without a SIM the count the card gave back means nothing.
        if (isSimValid())
            m_iRetryTimes = iRetries;
        else
            iRetries = -1;
        m_iPinStatus = ZELK_PIN_STATUS_PUK_REQUIRED;
        return RESULT_SDK_FAILED;
    case 1:
        DM_WARN("%s : %s : %s : ZELK_DevSrv_UnblockPin returned bad param,");
        return RESULT_INVALID_ARGUMENT;
    case kUnblockAnswerNotAllowed:
        m_iPinStatus = 0;
        m_iRetryTimes = 0;
        return RESULT_UNBLOCK_NOT_ALLOWED;
    default:
        DM_WARN("%s : %s : %s : ZELK_DevSrv_UnblockPin returned %d", asSigned(result));
        return RESULT_SUCCESS;
    }
}

int DeviceMgrUILogic::ModifyPIN(QString strOldPin, QString strNewPin, int& iRetries)
{
    DM_LOG("%s : %s : %s : Entered");
    if (!isPINValid(strOldPin) || !isPINValid(strNewPin)) {
        DM_LOG("%s : %s : %s : Invalid input params");
        return RESULT_INVALID_ARGUMENT;
    }
    ZELK_RESULT result = ZELK_ERROR_FAILURE;
    {
        CodeBuffer oldPin(strOldPin);
        CodeBuffer newPin(strNewPin);
        result = ZELK_DevSrv_ChangePin(0, oldPin.data(), newPin.data());
        oldPin.wipe();
        newPin.wipe();
    }

    int iResult = RESULT_SUCCESS;
    switch (asSigned(result)) {
    case 0:
        m_iRetryTimes = 0;
        break;
    case 1:
        DM_WARN("%s : %s : %s : ZELK_DevSrv_ChangePin returned bad param,");
        iResult = RESULT_INVALID_ARGUMENT;
        break;
    case -1: {
        DM_WARN("%s : %s : %s : ZELK_DevSrv_ChangePin returned failure");
        E_DEVMGR_PIN_STATE enState = kPinStateNotRead;
        GetPinStatus(&enState);
        if (enState == DEVMGR_UNLOCK_PIN) {
            m_iRetryTimes = 0;
            m_iPinStatus = ZELK_PIN_STATUS_PUK_REQUIRED;
        }
        emit PinStateChanged(enState);
        iResult = RESULT_SDK_FAILED;
        break;
    }
    default:
        DM_WARN("%s : %s : %s : ZELK_DevSrv_ChangePin returned %d", asSigned(result));
        break;
    }
    iRetries = m_iRetryTimes;
    return iResult;
}

void DeviceMgrUILogic::handleEnableDisableErrorCondition()
{
    DM_LOG("%s : %s : %s : Entered m_iRetryTimes %d", m_iRetryTimes);
    --m_iRetryTimes;
    if (m_iRetryTimes == 0)
        m_iPinStatus = ZELK_PIN_STATUS_PUK_REQUIRED;
    DM_LOG("%s : %s : %s : Exit m_iRetryTimes %d", m_iRetryTimes);
}

// ---- Radio, offline and packet detach -----------------------------------------------------------

int DeviceMgrUILogic::SwitchRFMode(bool bOn)
{
    DM_LOG("%s : %s : %s : Entered");
    DM_LOG("%s : %s : %s : ZELK_DevSrv_GetRFSwitch called");
    _ZELK_ST_RF_SWITCH stRFSwitch = {0, 0};
    if (!succeeded(ZELK_DevSrv_GetRFSwitch(&stRFSwitch))) {
        DM_WARN("%s : %s : %s : ZELK_DevSrv_GetRFSwitch returned error");
        return RESULT_SDK_FAILED;
    }
    DM_LOG("%s : %s : %s : ZELK_DevSrv_GetRFSwitch returned success");
    m_uRFState = stRFSwitch.nRFState;

    if (stRFSwitch.nSupport == 0) {
        DM_LOG("%s : %s : %s : device dosent support RF switch");
        return RESULT_REFUSED;
    }
    if ((bOn && stRFSwitch.nRFState == 1) || (!bOn && stRFSwitch.nRFState == 0)) {
        DM_LOG("%s : %s : %s : device is already in same state");
        return RESULT_SUCCESS;
    }

    DM_LOG("%s : %s : %s : ZELK_DevSrv_SetRFSwitch called");
    if (!succeeded(ZELK_DevSrv_SetRFSwitch(bOn ? 1 : 0))) {
        DM_WARN("%s : %s : %s : ZELK_DevSrv_SetRFSwitch returned error");
        return RESULT_SDK_FAILED;
    }
    DM_LOG("%s : %s : %s : ZELK_DevSrv_SetRFSwitch returned success");
    m_uRFState = bOn ? 1u : 0u;
    return RESULT_SUCCESS;
}

int DeviceMgrUILogic::SetOffline()
{
    DM_LOG("%s : %s : %s : Entered");
    DM_LOG("%s : %s : %s : ZELK_DevSrv_SetOffline called");
    if (!succeeded(ZELK_DevSrv_SetOffline())) {
        DM_WARN("%s : %s : %s : ZELK_DevSrv_SetOffline returned error");
        return RESULT_REFUSED;
    }
    DM_LOG("%s : %s : %s : ZELK_DevSrv_SetOffline returned success");
    return RESULT_SUCCESS;
}

int DeviceMgrUILogic::DetachGPRS()
{
    DM_LOG("%s : %s : %s : Entered");
    DM_LOG("%s : %s : %s : ZELK_NetSrv_SetPSState called");
    if (!succeeded(ZELK_NetSrv_SetPSState(ZELK_PS_DETACH))) {
        DM_WARN("%s : %s : %s : ZELK_NetSrv_SetPSState returned error");
        return RESULT_REFUSED;
    }
    DM_LOG("%s : %s : %s : ZELK_NetSrv_SetPSState returned success");
    return RESULT_SUCCESS;
}

bool DeviceMgrUILogic::isDetachSettingOn(const QString& key)
{
    // Carriers' configurations spell "yes" in many ways; any 'y' counts, as it always has.
    const QString strValue = CommonUtils::GetSettings(QStringLiteral("customize"), key);
    return strValue.indexOf(QLatin1Char('y'), 0, Qt::CaseInsensitive) != -1;
}

bool DeviceMgrUILogic::IsIMSIDetachEnabled()
{
    DM_LOG("%s : %s : %s : Entered");
    return isDetachSettingOn(QStringLiteral("imsi_detach"));
}

bool DeviceMgrUILogic::IsGPRSDetachEnabled()
{
    DM_LOG("%s : %s : %s : Entered");
    return isDetachSettingOn(QStringLiteral("gprs_detach"));
}

void DeviceMgrUILogic::InterruptServers()
{
    DM_LOG("%s : %s : %s : Entered");
    IPluginContainer* pContainer = Startup::GetPluginContainer();
    if (!pContainer) {
        DM_LOG("%s : %s : %s : GetPluginContainer returned NULL");
        return;
    }
    QObject* pPlugin = pContainer->GetPlugin(QStringLiteral(DIALUP_PLUGIN_CLSID), DIALUP_PLUGIN_ID);
    IDialupUIService* pDialup = qobject_cast<IDialupUIService*>(pPlugin);
    // A host without a dial-up plugin has no connection to drop.
    if (!pDialup || !pDialup->IsConnected())
        return;
    if (pDialup->GlobalDisconnect(0) != 0)
        DM_WARN("%s : %s : %s : pDialup->GlobalDisconnect returned failed");
}
