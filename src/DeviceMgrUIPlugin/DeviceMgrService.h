// The device manager service: the plugin's one central object, serving IDeviceMgr to the other
// plugins, receiving the SDK's events and owning the device dialogs.
#pragma once

#include "DeviceMgrUILogic.h"
#include "IDeviceMgr.h"
#include "SimWidgets.h"
#include "ZelkSdk.h"

#include <QtCore/QMutex>
#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QRect>
#include <QtCore/QString>
#include <QtWidgets/QDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QWidget>

#include <atomic>

class ActivationWizard;
class ChooseDevice;
class DevCheckFPThread;
class DeviceMgrWin7Thread;
class GIDConfigParse;
struct GIDItem;
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

    // Owned by the fingerprint lock.
    void FPLockOnDialogClose();
    void handleFPVerifyEvent();
    void subscribeCallNotification();

    // ---- Fingerprint lock: the reader's prompt (GUI thread) ----
    // The prompt dialog with its label and the timer that brings the general prompt back; 0 on success.
    int createFPDlg();
    // Shows the reader's text for `state` (the general prompt for a state without one).
    void ChangePrompt(_ZELK_EN_VERIFYINDSTATE state);
    DevCheckFPThread* fpThread() const { return m_pFPThread.load(); }
    bool isFPPromptOnLaunch() const { return m_bFPPromptOnLaunch; }

    // ---- PIN state dispatch (GUI thread) ----
    // Checks the PIN at once, or first waits for the platform's WWAN service.
    void checkPINWithWin7();
    // Re-reads the PIN state and, when allowed, opens the dialog it asks for.
    void checkPIN();
    void launchPinDlg(E_DEVMGR_PIN_STATE state);
    void launchSpecificPinDlg(E_DEVMGR_PIN_STATE state);
    // The PIN dialog's attempts are used up: the PUK dialog, or the card-blocked message for the
    // network-lock code.
    void processPINPUK();
    // Closes every popup of the service (the chooser too when asked).
    void closeAllPopups(bool closeChooser);
    // Closes the PIN, PUK, change-PIN and verification dialogs without asking; their fields clear.
    void closePinDlg();
    // Resets the dialog of the current job (m_enPinState) to its freshly opened look; 0 on success.
    int setDlgToInitialState();

    // ---- Enable/disable PIN dialog, also used for the network-lock code ----
    int createPINDlg();
    void showPINDlg();
    void displaySuccessMsgBoxPINOkButtonClicked();
    void displayFailureMsgBoxPINOkButtonClicked();
    void processMsgBoxReply(QString text, E_DEVMGR_PIN_STATE job);
    void processMsgBoxReplyNo(E_DEVMGR_PIN_STATE job);
    void changeLangPinDlg();

    // ---- PUK dialog ----
    int createPUKDlg();
    int createInternalPUKLayouts();
    int setDlgToInitialStateUnlockPin();
    void processTextEditedUnlockPin();
    void changeLangPukDlg();

    // ---- Change-PIN dialog ----
    int createModifyDlg();
    int setTextCreateModifyDlg();
    int setButtonsCreateModifyDlg();
    int setDlgToInitialStateModifyPin();
    void processTextEditedModifyPin();
    void modifyPinModOkButtonClicked(QString& newPin, QString& currentPin);
    void changeLangModifyPinDlg();

    // ---- Start-up verification dialog ----
    int createVerifyPINDlg();
    void showVerifyPINDlg();
    int setDlgToInitialStateVerifyPin();
    void changeLangVerifyPinDlg();

    // ---- Data card lock ----
    void VerifyCardLock();
    void handleCardLockState();
    int setDlgToInitialStateCardVerify();

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

    // ---- Device chooser, GID rules and last used device ----
    // One bit test of a GID group against the SIM's GID, read afresh for this test.
    bool checkGIDRule(_ZELK_EN_GIDTYPE type, const GIDItem& item);
    // The SDK's user data folder, with its trailing separator.
    QString getUserDataDirectory();
    ChooseDevice* chooseDevice() const { return m_pDlgChooseDev; }

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
    bool isValidPinState() const { return m_bValidPinState; }
    bool isMsgBoxShown() const { return m_bMsgBoxShown; }
    bool isCallActive() const { return m_bCallActive; }
    DeviceMgrWin7Thread* win7Thread() const { return m_pWin7Thread; }
    // The dispatch refreshes the menu but opens no dialog while suspended.
    void setPinCheckSuspended(bool suspended) { m_bPinCheckSuspended = suspended; }

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
    // Fingerprint lock: a reader's text has been on screen for its second.
    void onFPTimerOut();

    // SIM dialogs: the shared field and button handlers.
    void onTextEdited(const QString& text);
    void onVerifyPINOkButtonClicked();
    void onPINOkButtonClicked();
    void onPUKOkButtonClicked();
    void onModOkButtonClicked();
    void onCancelButtonClicked();
    void onCloseDialog(QCloseEvent* event);
    void onDeviceInitFinishHandler();
    void showVerifyPinContextMenu(const QPoint& pos);
    void showPinContextMenu(const QPoint& pos);
    void showCurrPinContextMenu(const QPoint& pos);
    void showNewPinContextMenu(const QPoint& pos);
    void showConfirmPinContextMenu(const QPoint& pos);
    void showPUKContextMenu(const QPoint& pos);
    void showPINPUKContextMenu(const QPoint& pos);
    void showConfirmPUKContextMenu(const QPoint& pos);

private:
    CDeviceMgrService();
    ~CDeviceMgrService() override;

    // The single places that reach the chooser (when it exists) and the activation wizard.
    void chooserPopulateList();
    void chooserShowChooseDlg(QWidget* parent);
    void chooserReloadPlugins(const QString& key, bool force);
    bool activationWindowShown() const;
    void destroyActivationWizard();
    void chooserCloseDlg();
    // The chooser, created on first need.
    ChooseDevice* ensureChooser();

    // Shared by the SIM dialogs.
    // A code field with the settings every SIM dialog gives it; `contextSlot` is a SLOT() string.
    LineEdit* createCodeField(QWidget* parent, const QString& objectName, const char* contextSlot,
                              const QSize& size);
    // Closes a SIM dialog without asking the user (the program, not the user, decided).
    static void closeSimDlg(SimDlg* dialog);
    // Whether the fields of `dialog` hold what its OK button asks for (the code lengths of its job).
    bool okRuleHolds(const SimDlg* dialog) const;
    // OK of `dialog` enabled (and default) exactly when its rule holds; answers whether it holds.
    bool applyOkRule(const SimDlg* dialog);
    // The PIN is used up: a PUK dialog built afresh replaces `from` (may be null). With
    // `reportNotReady` the SIM is also reported not ready. False when the dialog cannot be built.
    bool switchToPukDlg(SimDlg* from, bool reportNotReady);
    // The SIM can be used: 578 when the card is not network-locked, else 579.
    void reportSimReadyByCardLock();
    void refreshSimMenu();
    // The retries label: the prompt text followed by the count, or the unknown text.
    static QString retriesText(const char* promptKey, int count);
    // A modal message of the SIM dialogs, flagged in m_bMsgBoxShown while it is open.
    int showSimMessage(int icon, QWidget* parent, const QString& textKey, bool customize = false);
    // The enable/disable dialog reset for job 2 or 3.
    int setDlgToInitialStateEnableDisable();
    void applyPinDlgTitle();

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
    // Created on an SDK thread by the first lock event, stopped and deleted on the GUI thread.
    std::atomic<DevCheckFPThread*> m_pFPThread{nullptr};
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

    // ---- SIM dialogs ----
    // Set with m_bFrameShown: dialogs and messages of the PIN dispatch wait for it.
    bool m_bFrameLaunched = false;
    bool m_bPinCheckSuspended = false;
    // A modal message of the SIM dialogs is open.
    bool m_bMsgBoxShown = false;
    // A call is in progress (the call service's notifications): no code goes to the SIM meanwhile.
    bool m_bCallActive = false;
    // The PIN state the logic layer reported after a failed operation, taken over by the PIN
    // dialog when it resets for another attempt; 0 when none is waiting.
    E_DEVMGR_PIN_STATE m_enPendingPinState = DEVMGR_PIN_READY;

    // Enable/disable PIN dialog, also the network-lock code dialog (job in m_enPinState).
    QPointer<SimDlg> m_pdialogPINDlg;
    QPointer<QLabel> m_plabelPINPrompt;
    QPointer<LineEdit> m_peditPINText;
    QPointer<QLabel> m_plabelPINTimes;
    QPointer<QPushButton> m_pbuttonPINOK;
    QPointer<QPushButton> m_pbuttonPINCancel;
    int m_iPINDlgRetries = -1;

    // PUK dialog, rebuilt whenever the PIN runs out.
    QPointer<SimDlg> m_pdialogPUKDlg;
    QPointer<QWidget> m_pwidgetPUKDlg;
    QPointer<QLabel> m_plabelPUKTimes;
    QPointer<QLabel> m_plabelPUK;
    QPointer<LineEdit> m_peditPUKText;
    QPointer<QLabel> m_plabelPUKNewPIN;
    QPointer<LineEdit> m_peditPUKPINText;
    QPointer<QLabel> m_plabelPUKConfirm;
    QPointer<LineEdit> m_peditConfirmPUKPINText;
    QPointer<QPushButton> m_pbuttonPUKOK;
    QPointer<QPushButton> m_pbuttonPUKCancel;
    int m_iPUKDlgRetries = -1;

    // Change-PIN dialog.
    QPointer<SimDlg> m_pdialogModifyDlg;
    QPointer<QLabel> m_plabelModTimes;
    QPointer<QLabel> m_plabelCurrPIN;
    QPointer<LineEdit> m_peditCurrPINText;
    QPointer<QLabel> m_plabelNewPIN;
    QPointer<LineEdit> m_peditNewPINText;
    QPointer<QLabel> m_plabelConfirmPIN;
    QPointer<LineEdit> m_peditConfirmNewPINText;
    QPointer<QPushButton> m_pbuttonModOK;
    QPointer<QPushButton> m_pbuttonModCancel;
    int m_iModDlgRetries = -1;

    // Start-up verification dialog.
    QPointer<SimDlg> m_pdialogVerifyPINDlg;
    QPointer<QLabel> m_plabelVerifyPIN;
    QPointer<LineEdit> m_peditVerifyPINText;
    QPointer<QLabel> m_plabelVerifyPINTimes;
    QPointer<QPushButton> m_pbuttonVerifyOK;
    QPointer<QPushButton> m_pbuttonVerifyCancel;
    int m_iVerifyDlgRetries = -1;
    // The logic layer's device list is refilled on SDK threads and cleared or read on the GUI
    // thread; this keeps each refresh whole.
    QMutex m_devInfoMutex;

    // ---- CDMA service activation ----
    // The automatic launch was tried for the device now attached; cleared when it goes.
    bool m_bActivationLaunched = false;
    // Retries the automatic launch while the information dialog is on screen; one timer, so that
    // several launch attempts meanwhile make one retry.
    QTimer* m_pActivationRetryTimer = nullptr;

public:
    QTimer* activationRetryTimer() const { return m_pActivationRetryTimer; }
    ActivationWizard* activationWizard() const { return m_pActivationWizard; }

private:
    // ---- Fingerprint lock: the prompt dialog ----
    QPointer<QDialog> m_pFPDlg;
    QPointer<QLabel> m_pFPLabel;
    QTimer* m_pFPTimer = nullptr;
};
