// The device manager service: the plugin's one central object, serving IDeviceMgr to the other
// plugins, receiving the SDK's events and owning the device dialogs.
#pragma once

#include "DeviceMgrUILogic.h"
#include "IDeviceMgr.h"
#include "ZelkSdk.h"

#include <QtCore/QMutex>
#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QRect>
#include <QtCore/QString>
#include <QtWidgets/QDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QWidget>

#include <atomic>

class ActivationWizard;
class ChooseDevice;
class DevCheckFPThread;
class DeviceMgrWin7Thread;
class GIDConfigParse;
class IMainMenuUI;
class INotifyService;
class IPluginContainer;
class QCloseEvent;
class QTimer;

class CDeviceMgrService : public QObject, public IDeviceMgr
{
    Q_OBJECT
    Q_INTERFACES(IDeviceMgr)

public:
    // The single instance, created on first use. Not locked: only the GUI thread calls it.
    static CDeviceMgrService* instance();
    // Tears the instance down (OnDestroy, then delete); harmless when there is none.
    static void Destroy();

    // Start-up: logic layer, own connections and SDK callback registrations. False when the logic
    // layer is missing or a registration failed.
    bool Init();
    void OnDestroy();
    // Withdraws the SDK callback registrations.
    void unSDKRegisterEvent();
    // Host notifications; only `code` is read. Always 0.
    int Notify(unsigned int code, unsigned int wParam, unsigned int lParam);
    bool ShowWindow(QWidget* parent, QRect& rect);
    // The work that waits until the main frame is on screen.
    void InitOnMainFrameShow();
    // Lets other code feed an init event into the same queued path the SDK uses.
    void OnMyDeviceMgrInitEventHandler(int event);

    // SDK callbacks (SDK threads). Both always answer 1.
    static int OnDeviceMgrInitEvent(int event, void* data);
    static int OnDevMgrEventsCB(int event, void* data);

    // Benchmarks and tests observe when a queued event reaches its GUI-thread handler; null (the
    // default) costs one pointer test per event.
    using HandlerProbe = void (*)(int event);
    static void setHandlerProbe(HandlerProbe probe);

    // Notification to the other plugins: 582 to the mini frame, every other code broadcast.
    void sendNotification(unsigned int code);

    // Device detection, change, initialisation and SIM state (GUI thread).
    void handleDevDetectEvent();
    void handleDevChangeEvent();
    void caseDeviceInitFinish();
    void caseDeviceInitSuccess();
    void handleSIMStateChangeEvent();
    void deviceMgrEventSwich(bool reject);

    // The self-closing information dialog; createInfoDlg answers 0 on success.
    int createInfoDlg();
    void showInfoDlg(QString text, int msec);
    void hideInfoDlg();
    // A message box whose text may carry "%s" for the kind of card ("SIM/USIM" or "UIM").
    void showMessage(const QString& key);

    void initMainMenuObj();
    // True when the active device reports LTE bands.
    bool DevIsSupportLTE();
    void getParentWidget();

    // Owned by the SIM dialogs, the WWAN thread, the fingerprint lock, activation and GID work.
    void checkPINWithWin7();
    void closeAllPopups(bool closeChooser);
    void handleCardLockState();
    void FPLockOnDialogClose();
    void handleFPVerifyEvent();
    void subscribeCallNotification();
    void changeLangPinDlg();
    void changeLangVerifyPinDlg();
    void changeLangModifyPinDlg();
    void changeLangPukDlg();

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

    // Read-only views of the state for the host's status display and for tests.
    bool isFrameShown() const { return m_bFrameShown; }
    bool isDevInitStarted() const { return m_bDevInitStarted; }
    bool isValidSimFlag() const { return m_bValidSim; }
    bool isSimReady() const { return m_bSimReady; }
    bool isDeviceAvailableFlag() const { return m_bDeviceAvialable; }
    bool isExternalDlgShown() const { return m_bExternalDlgShown; }
    bool isFPLockPending() const { return m_bFPLockPending; }
    bool isAppQuit() const { return m_bAppQuit.load(); }
    int pinState() const { return static_cast<int>(m_enPinState); }
    int cardState() const { return m_enCardState; }
    unsigned int simState() const { return m_iSimState.load(); }
    int verifyIndState() const { return static_cast<int>(m_enVerifyIndState.load()); }
    int lastSwRFState() const { return m_iLastSwRFState; }
    QString currentDeviceName() const { return m_strCurDevName; }
    QString lastDeviceName() const { return m_strLastDevName; }
    int currentProductType() const { return m_iCurProductType; }
    int lastProductType() const { return m_iLastProductType; }
    QWidget* parentWidget() const { return m_pParentWidget.data(); }
    QTimer* infoTimer() const { return m_pInfoTimer; }

signals:
    void signalDeviceMgrInitEventHandler(qint32 enNotifyType);
    void signalDeviceMgrEventHandler(qint32 iNotifyType);
    void signalAboutToClose();
    void signalRFSwitch(uint hwstate, uint swstate);
    void signalUpdateChooseDevice();
    void PowerMgrEvent(int iStatus);
    void signalFplockOnmainframelaunched();
    void signalSIMframelaunched();

public slots:
    void appQuitStop();
    void AutolaunchActivation();
    void deviceMgrInitEventHandler(qint32 event);
    void deviceMgrEventHandler(qint32 event);
    void releaseData();
    void onTimerOut();
    void handleFPLockOnFramelaunchedEvent();
    void handleSIMOnFramelaunchedEvent();
    void OnPowerMgr(int iStatus);
    void onPinStateChanged(E_DEVMGR_PIN_STATE penStatus);
    void onSignalRFSwitch(uint hwstate, uint swstate);
    void onUpdateChooseDevice();

private:
    CDeviceMgrService();
    ~CDeviceMgrService() override;

    // The chooser and the activation wizard are built by their own work; until then these are
    // the single places that reach them.
    void chooserPopulateList();
    void chooserShowChooseDlg(QWidget* parent);
    void chooserReloadPlugins(const QString& key, bool force);
    bool activationWindowShown() const;
    void destroyActivationWizard();

    // The IMSI and GID plugin-set selection of a freshly initialised device.
    void selectPluginsBySim();
    // Reloads the plugin set of the current device when it differs from the last one.
    void reloadPluginsForCurrentDevice();
    // ZELK_DevSrv_GetProductType with 3 ("not known yet") when it fails.
    static int readProductType();
    void storeProductType();
    // The notification service, looked up in `container` (null when any step is missing).
    static INotifyService* notifyServiceOf(IPluginContainer* container);

    // The callbacks run on SDK threads and reach the service only through m_pInstance; a lock in
    // the callbacks' file keeps Destroy() from deleting it under a running callback.
    static std::atomic<CDeviceMgrService*> m_pInstance;
    static HandlerProbe s_handlerProbe;

    std::atomic<bool> m_bAppQuit{false};
    GIDConfigParse* m_pGIDConfig = nullptr;
    int m_enCardState = 4;
    // The data words of the last SIM-state and fingerprint-verify events: written on an SDK
    // thread, read by the GUI-thread handler that the same event reaches afterwards.
    std::atomic<unsigned int> m_iSimState{0};
    std::atomic<_ZELK_EN_VERIFYINDSTATE> m_enVerifyIndState{ZELK_VERIFYIND_NONE};
    int m_iLastSwRFState = -1;
    ActivationWizard* m_pActivationWizard = nullptr;
    ChooseDevice* m_pDlgChooseDev = nullptr;
    IMainMenuUI* m_pMainMenu = nullptr;
    DeviceMgrUILogic* m_pUILogic = nullptr;
    IPluginContainer* m_pPluginContainer = nullptr;
    DeviceMgrWin7Thread* m_pWin7Thread = nullptr;
    E_DEVMGR_PIN_STATE m_enPinState = static_cast<E_DEVMGR_PIN_STATE>(8);
    QPointer<QWidget> m_pParentWidget;
    QPointer<QDialog> m_pInfoDlg;
    QPointer<QLabel> m_pInfoLabel;
    QTimer* m_pInfoTimer = nullptr;
    bool m_bFPLockPending = false;
    DevCheckFPThread* m_pFPThread = nullptr;
    bool m_bDevInitStarted = false;
    bool m_bFrameShown = false;
    bool m_bDeviceAvialable = false;
    bool m_bValidSim = true;
    bool m_bSimReady = false;
    bool m_bExternalDlgShown = false;
    QString m_strCurDevName;
    int m_iCurProductType = 3;
    QString m_strLastDevName;
    int m_iLastProductType = 3;
    // Serialises showing and hiding the information dialog. Not recursive: neither may call the
    // other while holding it.
    QMutex m_mutex;
    bool m_bFPPromptOnLaunch = false;
    bool m_bValidPinState = false;
    // The logic layer's device list is refilled on SDK threads and cleared or read on the GUI
    // thread; this keeps each refresh whole.
    QMutex m_devInfoMutex;
};
