// The device manager service: the plugin's one central object, serving IDeviceMgr to the other
// plugins, receiving the SDK's events and owning the device dialogs.
#pragma once

#include "IDeviceMgr.h"

#include <QtCore/QObject>
#include <QtCore/QRect>
#include <QtCore/QString>

class DeviceMgrUILogic;
class QWidget;

class CDeviceMgrService : public QObject, public IDeviceMgr
{
    Q_OBJECT
    Q_INTERFACES(IDeviceMgr)

public:
    // The single instance, created on first use. Not locked: only the GUI thread calls it.
    static CDeviceMgrService* instance();
    // Tears the instance down (OnDestroy, then delete); harmless when there is none.
    static void Destroy();

    // Start-up: logic layer and SDK callback registrations. False when start-up failed.
    bool Init();
    void OnDestroy();
    // Withdraws the SDK callback registrations.
    void unSDKRegisterEvent();
    // Host notifications; only `code` is read. Always 0.
    int Notify(unsigned int code, unsigned int wParam, unsigned int lParam);
    bool ShowWindow(QWidget* parent, QRect& rect);

    // SDK callbacks (SDK threads). Both always answer 1.
    static int OnDeviceMgrInitEvent(int event, void* data);
    static int OnDevMgrEventsCB(int event, void* data);

    // IDeviceMgr
    void VerifyPIN() override;
    void EnablePIN() override;
    void DisablePIN() override;
    void UnlockPIN() override;
    void ModifyPIN() override;
    int EnableRF() override;
    int DisableRF() override;
    void SetOffline() override;
    void DetatchGPRS() override;
    void ShowChooseDevice() override;
    bool IsDeviceAvialable() override;
    bool IsValidSim() override;
    void ActivateDevice() override;
    void StartDetectDevice() override;
    QString GetLastUsedDeviceName() override;
    bool IsGIDMatched(QString groupName) override;

public slots:
    void releaseData();

private:
    CDeviceMgrService();
    ~CDeviceMgrService() override;

    static CDeviceMgrService* m_pInstance;

    DeviceMgrUILogic* m_pUILogic = nullptr;
    int m_enCardState = 4;
    bool m_bDeviceAvialable = false;
    bool m_bValidSim = true;
    bool m_bValidPinState = false;
};
