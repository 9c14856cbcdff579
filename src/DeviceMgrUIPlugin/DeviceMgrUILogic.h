// The device logic layer: the one object through which the plugin talks to the device SDK.
#pragma once

#include "DeviceMgrPinState.h"
#include "ZelkSdk.h"

#include <QtCore/QObject>
#include <QtCore/QString>

#include <mutex>

// Wraps every SDK call for devices, SIM, PIN, card lock and radio, logs each outcome and turns
// SDK failures into small result codes and fixed fallback values. Runs on the GUI thread, except
// ClearDeviceInfo/SetDeviceInfo, which the SDK's callback thread calls to refresh the device list.
class DeviceMgrUILogic : public QObject
{
    Q_OBJECT

public:
    // Created on first call, without parent and without initialising the fields: the service calls
    // init() once right after. Not locked: the service creates it on the GUI thread before any SDK
    // callback is registered.
    static DeviceMgrUILogic* GetInstance();
    ~DeviceMgrUILogic() override;

    void init();

    // ---- Device list, selection, status and SIM status ----
    void ClearDeviceInfo();
    // Copies the SDK's list in; a count above MAX_DEVICE_COUNT is refused whole. With exactly one
    // device that device becomes the current one.
    void SetDeviceInfo(_ZELK_ST_MULTI_DEVICE_INFO* pstDeviceInfo);
    // The SDK's own list; on failure a zeroed record (count 0).
    _ZELK_ST_MULTI_DEVICE_INFO GetDeviceInfo();
    // 0 on success, 15 when the SDK fails.
    int GetDeviceStatus(_ZELK_EN_DEVICE_STATUS& enStatus);
    // The device status (0 on any SDK failure); status 3 takes the SDK's name and port over.
    int GetSystemDevStatus();
    // 0 when the SDK fails.
    int GetSimStatus();
    // 1 for a valid SIM and also when the SIM query fails, 0 for status 0 or 255 and above.
    int isSimValid();
    // The active device's name, asked from the SDK; empty when the call fails.
    QString GetDeviceName();
    QString GetCurrentDeviceName();
    // The active device's port, asked from the SDK; 0 when the call fails.
    int GetCurrentDevicePortNo();
    // The stored protocol of the current device (no SDK call).
    int GetCurrentDeviceProtocol();
    // 0 on success or when the device is already the active one, 1 when the SDK refused.
    int SelectDevice(_ZELK_ST_DEVICE_INFO stDevice);
    // The configured SIM (or UIM, on CDMA devices) type text; empty when the product is unknown.
    QString GetSimTypeText();

    // Read-only views of the stored copies (the chooser's and the tests' window on what the SDK
    // callback wrote); each takes the list lock.
    _ZELK_ST_MULTI_DEVICE_INFO GetLocalDeviceInfo() const;
    QString GetLocalDeviceName() const;
    int GetLocalDevicePortNo() const;
    // The last PIN status read from the SDK (3: the PUK is required).
    int GetStoredPinStatus() const;

    // ---- PIN, PUK and card lock ----
    // 0 on success, 1 when the SDK fails, 23 for a null pointer.
    int GetPinStatus(E_DEVMGR_PIN_STATE* penState);
    // Remaining PIN attempts (0 while the PUK is asked for); -1 after three failed queries.
    int GetPINRetryTimes();
    // Remaining PUK attempts while the PUK is asked for, otherwise 0; -1 after three failed queries.
    int GetPUKRetryTimes();
    // Remaining network-lock code attempts; -1 after three failed queries.
    int GetCardRetryTimes();
    // The card-lock state byte (2: not locked); 4 when the query fails.
    int GetCardLockedState();
    // 0 support unlock, 1 only reminder, 2 no reminder, 3 exit (also for any unknown setting).
    int GetCardCustomization();
    bool isPINValid(QString& strPin);
    bool isPUKValid(QString& strPuk);
    // 0 when both are valid and equal, else 15.
    int ValidatePINs(QString strFirst, QString strSecond);
    // Runs request 1 (verify), 2 (enable), 3 (disable) or 7 (card lock); 0 on success, else 1.
    int ProcessPIN(QString strCode, int& iRetries, E_DEVMGR_PIN_STATE enRequest);
    // -1 for an invalid PIN, otherwise the SDK's result.
    int processVerifyPIN(int& iRetries, QString strPin);
    int processEnablePIN(int& iRetries, QString strPin);
    int processDisablePIN(int& iRetries, QString strPin);
    // 0 unlocked, 1 refused, 23 invalid code.
    int VerifyCardLock(QString& strCode, int& iRetries);
    // 0 done, 1 refused, 14 not allowed, 23 invalid argument.
    int UnlockPIN(QString strPuk, QString strNewPin, int& iRetries);
    // 0 done, 1 refused, 23 invalid argument.
    int ModifyPIN(QString strOldPin, QString strNewPin, int& iRetries);
    // Counts one failed enable or disable attempt; the last one leaves the PUK required.
    void handleEnableDisableErrorCondition();

    // ---- Radio, offline and packet detach ----
    // 0 done or nothing to do, 1 SDK error, 15 the device has no radio switch.
    int SwitchRFMode(bool bOn);
    // 0 success, 15 SDK error.
    int SetOffline();
    int DetachGPRS();
    bool IsIMSIDetachEnabled();
    bool IsGPRSDetachEnabled();
    // Drops the host's dial-up connection, if one is up, before the device changes under it.
    void InterruptServers();

    // Remaining attempts of the code currently asked for; -1 unknown.
    int m_iRetryTimes = 0;

    static DeviceMgrUILogic* m_pDeviceMgrUILogic;

signals:
    void PinStateChanged(E_DEVMGR_PIN_STATE enState);

private:
    DeviceMgrUILogic();
    Q_DISABLE_COPY(DeviceMgrUILogic)

    // What a failed enable or disable leaves behind: the state read afterwards, and the count.
    int finishEnableDisablePIN(ZELK_RESULT result, int& iRetries);
    // Reads the PIN status up to three times; false when every query failed.
    bool queryPinStatusWithRetry(bool bForPuk, int& iStatus, int& iRemaining);
    // Settings value holds a 'y' in either case.
    static bool isDetachSettingOn(const QString& key);

    int m_iPinStatus = 0;
    // Written from the SDK's callback thread, read on the GUI thread: guarded by m_mutexDevice,
    // together with the current device fields below. The lock is never held across an SDK call.
    // A standard mutex rather than QMutex: its pthread calls are visible to ThreadSanitizer, the
    // futex fast path of QMutex is not.
    _ZELK_ST_MULTI_DEVICE_INFO m_stDeviceInfo;
    int m_iCurrentPort = -1;
    int m_iCurrentProtocol = 0;
    char m_szCurrentDevName[ZELK_DEVICE_NAME_SIZE];
    unsigned int m_uRFState = 0;
    mutable std::mutex m_mutexDevice;
};
