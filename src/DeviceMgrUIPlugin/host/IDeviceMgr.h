// The device manager's interface offered to the other plugins (reached by QueryInterface 0x1001).
#pragma once

#include <QtCore/QObject>
#include <QtCore/QString>

class IDeviceMgr
{
public:
    virtual ~IDeviceMgr() {}
    virtual void VerifyPIN() = 0;
    virtual void EnablePIN() = 0;
    virtual void DisablePIN() = 0;
    virtual void UnlockPIN() = 0;
    virtual void ModifyPIN() = 0;
    // Radio on / off: 0 done, 1 SDK error, 13 no logic layer, 15 no radio switch on the device.
    virtual int EnableRF() = 0;
    virtual int DisableRF() = 0;
    virtual void SetOffline() = 0;
    virtual void DetatchGPRS() = 0;
    virtual void ShowChooseDevice() = 0;
    virtual bool IsDeviceAvialable() = 0;
    virtual bool IsValidSim() = 0;
    virtual void ActivateDevice() = 0;
    virtual void StartDetectDevice() = 0;
    virtual QString GetLastUsedDeviceName() = 0;
    virtual bool IsGIDMatched(QString groupName) = 0;
};

#define IDeviceMgr_iid "com.qorvex.tessaro.plugin.IDeviceMgr"
Q_DECLARE_INTERFACE(IDeviceMgr, IDeviceMgr_iid)
