// Device manager service: life cycle, the SDK callbacks and the dispatch of their events on the GUI
// thread, and the host's notifications.
#include "DeviceMgrService.h"

#include "Change.h"
#include "CommonUtils.h"
#include "DevCheckFPThread.h"
#include "DeviceMgrChooseDevice.h"
#include "DeviceMgrLog.h"
#include "DeviceMgrWin7Thread.h"
#include "GIDConfigParse.h"
#include "HostIds.h"
#include "HostServices.h"
#include "Startup.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QStringList>
#include <QtCore/QTimer>
#include <QtWidgets/QDialog>

#include <cstring>
#include <mutex>
#include <shared_mutex>

std::atomic<CDeviceMgrService*> CDeviceMgrService::m_pInstance{nullptr};
CDeviceMgrService::HandlerProbe CDeviceMgrService::s_handlerProbe = nullptr;

namespace {

// Held shared by every callback for as long as it uses the instance, and exclusively while the
// instance pointer is cleared: once Destroy() holds it, no callback can still be inside the object.
std::shared_mutex& instanceLock()
{
    static std::shared_mutex lock;
    return lock;
}

// First 32-bit word of an event's data.
unsigned int firstWord(const void* data)
{
    unsigned int word = 0;
    std::memcpy(&word, data, sizeof(word));
    return word;
}

} // namespace

CDeviceMgrService::CDeviceMgrService()
    : QObject(nullptr)
{
    DM_LOG("%s : %s : %s : constructor called");
    // GIDConfig.xml is read here, once for the service's life.
    m_pGIDConfig = GIDConfigParse::GetInstance();
    if (QCoreApplication* app = QCoreApplication::instance())
        connect(app, SIGNAL(aboutToQuit()), this, SLOT(appQuitStop()));
    // The power event is raised on an SDK thread; the queued connection brings it to the GUI thread.
    connect(this, SIGNAL(PowerMgrEvent(int)), this, SLOT(OnPowerMgr(int)));
}

CDeviceMgrService::~CDeviceMgrService()
{
    // A service made later reads the configuration anew.
    GIDConfigParse::DestroyConfigInstance();
    m_pGIDConfig = nullptr;
}

CDeviceMgrService* CDeviceMgrService::instance()
{
    CDeviceMgrService* service = m_pInstance.load();
    if (!service) {
        service = new CDeviceMgrService;
        m_pInstance.store(service);
    }
    return service;
}

void CDeviceMgrService::Destroy()
{
    CDeviceMgrService* service = m_pInstance.load();
    if (!service)
        return;
    {
        // Waits for callbacks still running on SDK threads; later ones find no instance.
        std::unique_lock<std::shared_mutex> guard(instanceLock());
        m_pInstance.store(nullptr);
    }
    service->OnDestroy();
    delete service;
}

void CDeviceMgrService::setHandlerProbe(HandlerProbe probe)
{
    s_handlerProbe = probe;
}

bool CDeviceMgrService::Init()
{
    DM_LOG("%s : %s : %s : called");
    // The SDK callbacks are static and reach the service only through this pointer.
    m_pInstance.store(this);

    m_pUILogic = DeviceMgrUILogic::GetInstance();
    if (!m_pUILogic) {
        DM_WARN2("%s: %s: DeviceMgrUILogic init failed");
        return false;
    }
    connect(m_pUILogic, SIGNAL(PinStateChanged(E_DEVMGR_PIN_STATE)), this,
            SLOT(onPinStateChanged(E_DEVMGR_PIN_STATE)));
    m_pUILogic->init();

    // Without init events no device ever becomes usable: nothing else is worth registering.
    if (ZELK_DevSrv_RegisterDevInitEventCallback(OnDeviceMgrInitEvent) != ZELK_ERROR_SUCCESS) {
        DM_WARN2("%s: %s: ZELK_DevSrv_RegisterDevInitEventCallback failed");
        return false;
    }
    bool result = true;
    if (ZELK_DevSrv_RegisterDevMgrCallback(OnDevMgrEventsCB) != ZELK_ERROR_SUCCESS) {
        DM_WARN2("%s: %s: ZELK_DevSrv_RegisterDevMgrCallback failed");
        result = false;
    }
    // One function serves both the device-manager and the multi-device events.
    if (ZELK_DevSrv_RegisterMultiDeviceEventCallback(OnDevMgrEventsCB) != ZELK_ERROR_SUCCESS) {
        DM_WARN2("%s: %s: ZELK_DevSrv_RegisterMultiDeviceEventCallback failed");
        result = false;
    }

    // Automatic connections: emitted on an SDK thread, they are queued to the GUI thread.
    // clang-format off
    connect(this, SIGNAL(signalDeviceMgrInitEventHandler (qint32)), this, SLOT(deviceMgrInitEventHandler (qint32)));
    connect(this, SIGNAL(signalDeviceMgrEventHandler (qint32 )), this, SLOT(deviceMgrEventHandler (qint32 )));
    connect(this, SIGNAL(signalRFSwitch (unsigned int, unsigned int)), this, SLOT(onSignalRFSwitch (unsigned int, unsigned int)));
    connect(this, SIGNAL(signalUpdateChooseDevice ()), this, SLOT(onUpdateChooseDevice ()));
    connect(this, SIGNAL(signalFplockOnmainframelaunched()), this, SLOT(handleFPLockOnFramelaunchedEvent()));
    connect(this, SIGNAL(signalSIMframelaunched()), this, SLOT(handleSIMOnFramelaunchedEvent()));
    // clang-format on
    return result;
}

void CDeviceMgrService::OnDestroy()
{
    releaseData();
}

void CDeviceMgrService::releaseData()
{
    DM_LOG("%s : %s : %s : destructor called");
    delete m_pDlgChooseDev;
    m_pDlgChooseDev = nullptr;
    disconnect();
    if (m_pWin7Thread) {
        m_pWin7Thread->Stop();
        if (m_pWin7Thread->isRunning()) {
            // Its SDK poll has not returned within the bound. Deleting a running thread would
            // abort the process and waiting could hang the shut-down: it deletes itself once the
            // poll returns (a deferred delete of an object already gone is dropped with it).
            DM_LOG("%s : %s : %s : WWAN thread still polling, deleted when it ends");
            connect(m_pWin7Thread, &QThread::finished, m_pWin7Thread, &QObject::deleteLater);
            if (!m_pWin7Thread->isRunning())
                delete m_pWin7Thread;
        } else {
            delete m_pWin7Thread;
        }
        m_pWin7Thread = nullptr;
    }
    // ---- Fingerprint lock: the thread ends within its bound (held events are dropped), the
    // prompt goes with it.
    if (DevCheckFPThread* thread = m_pFPThread.exchange(nullptr)) {
        thread->Stop();
        delete thread;
    }
    if (m_pFPTimer)
        m_pFPTimer->stop();
    delete m_pFPDlg.data();
    m_pFPDlg = nullptr;
    m_pFPLabel = nullptr;
    if (m_pInfoTimer)
        m_pInfoTimer->stop();
    delete m_pInfoDlg.data();
    m_pInfoDlg = nullptr;
    m_pInfoLabel = nullptr;
    // The SIM dialogs; their widgets go with them. A PUK dialog replaced earlier may still wait for
    // its deferred deletion, which the event loop does on its own.
    delete m_pdialogPINDlg.data();
    delete m_pdialogPUKDlg.data();
    delete m_pdialogModifyDlg.data();
    delete m_pdialogVerifyPINDlg.data();
    delete m_pUILogic;
    m_pUILogic = nullptr;
    destroyActivationWizard();
    DM_LOG("%s : %s : %s : destructor exit");
}

void CDeviceMgrService::unSDKRegisterEvent()
{
    DM_LOG2("%s: %s called");
    // Results are not checked: at shut-down there is nothing left to do about a refusal.
    ZELK_DevSrv_UnRegisterDevInitEventCallback(OnDeviceMgrInitEvent);
    ZELK_DevSrv_UnRegisterDevMgrCallback(OnDevMgrEventsCB);
    ZELK_DevSrv_UnRegisterMultiDeviceEventCallback(OnDevMgrEventsCB);
    DM_LOG2("%s: %s exit");
}

void CDeviceMgrService::appQuitStop()
{
    DM_LOG("%s: %s: %s: Entered");
    m_bAppQuit.store(true);
    CommonUtils::SetShutDownFlag();
    DM_LOG("%s: %s: %s: Exit");
}

void CDeviceMgrService::StartDetectDevice()
{
    DM_LOG2("%s: %s: ZELK_DevSrv_DetectDevice called");
    if (ZELK_DevSrv_DetectDevice() != ZELK_ERROR_SUCCESS)
        DM_WARN2("%s: %s: ZELK_DevSrv_DetectDevice failed");
    // Detection reports through events; the request itself is taken as made either way.
    DM_LOG2("%s: %s: ZELK_DevSrv_DetectDevice success");
}

void CDeviceMgrService::OnMyDeviceMgrInitEventHandler(int event)
{
    emit signalDeviceMgrInitEventHandler(event);
}

// ---- SDK threads ---------------------------------------------------------------------------------

int CDeviceMgrService::OnDeviceMgrInitEvent(int event, void* data)
{
    Q_UNUSED(data)
    DM_LOG("%s : %s : %s : called event = %d", event);
    std::shared_lock<std::shared_mutex> guard(instanceLock());
    CDeviceMgrService* service = m_pInstance.load();
    // ---- Fingerprint lock: from the lock event (6018) on, init events are held by the fingerprint
    // thread, which replays them in arrival order once the finger is verified. The lock event
    // itself is held too: the thread hands it on first.
    if (event == ZELK_EVENT_DEV_FP_LOCK && service) {
        DevCheckFPThread* thread = service->m_pFPThread.load();
        if (!thread) {
            // Only the SDK's one init-event thread creates it.
            thread = new DevCheckFPThread(service);
            service->m_pFPThread.store(thread);
        }
        thread->FPLock();
        thread->startHolding();
    } else if (event == ZELK_EVENT_DEV_DEVICE_INIT_FINISH && service) {
        CommonUtils::SetLteMode(service->DevIsSupportLTE());
    }
    if (service) {
        DevCheckFPThread* thread = service->m_pFPThread.load();
        if (!thread || !thread->pushIfHolding(event)) {
            // What an ended run left behind goes first, so the GUI sees arrival order.
            if (thread)
                thread->SendAllNotifies();
            emit service->signalDeviceMgrInitEventHandler(event);
        }
    }
    DM_LOG("%s : %s : %s : exit");
    return 1;
}

int CDeviceMgrService::OnDevMgrEventsCB(int event, void* data)
{
    DM_LOG("%s : %s : %s : called event = %d ", event);
    std::shared_lock<std::shared_mutex> guard(instanceLock());
    CDeviceMgrService* service = m_pInstance.load();
    if (!service)
        return 1;
    if (service->m_bAppQuit.load()) {
        DM_LOG("%s : %s : %s : Events ignored: App Shutting down ");
        return 1;
    }
    if (event == ZELK_EVENT_DEV_RF_SWITCH) {
        DM_LOG("%s : %s : %s : got ZELK_EVENT_DEV_RF_SWITCH event ");
        if (data) {
            DM_LOG("%s : %s : %s : Emit signal on getting ZELK_EVENT_DEV_RF_SWITCH event ");
            _ZELK_ST_RF_SWITCH_EVENT words;
            std::memcpy(&words, data, sizeof(words));
            // The SDK sends the software state first; the receiver takes the hardware state first.
            emit service->signalRFSwitch(words.nHwState, words.nSwState);
        }
    } else {
        if ((event == ZELK_EVENT_DEV_DETECTED || event == ZELK_EVENT_DEV_LIST_CHANGED ||
             event == ZELK_EVENT_DEV_REJECT) &&
            service->m_pUILogic) {
            DM_LOG("%s : %s : %s :Update Device Info on events");
            {
                QMutexLocker lock(&service->m_devInfoMutex);
                service->m_pUILogic->ClearDeviceInfo();
                service->m_pUILogic->SetDeviceInfo(static_cast<_ZELK_ST_MULTI_DEVICE_INFO*>(data));
            }
            emit service->signalUpdateChooseDevice();
        }
        if (data) {
            if (event == ZELK_EVENT_DEV_SIM_STATE_CHANGE)
                service->m_iSimState.store(firstWord(data));
            else if (event == ZELK_EVENT_DEV_FP_VERIFY)
                service->m_enVerifyIndState.store(static_cast<_ZELK_EN_VERIFYINDSTATE>(firstWord(data)));
            else if (event == ZELK_EVENT_DEV_POWER)
                emit service->PowerMgrEvent(static_cast<int>(firstWord(data)));
        }
    }
    emit service->signalDeviceMgrEventHandler(event);
    DM_LOG("%s : %s : %s : exit");
    return 1;
}

// ---- GUI thread ----------------------------------------------------------------------------------

void CDeviceMgrService::deviceMgrInitEventHandler(qint32 event)
{
    if (s_handlerProbe)
        s_handlerProbe(event);
    DM_LOG("%s : %s : %s : ,called");
    if (CommonUtils::IsShuttingDown()) {
        DM_LOG("%s : %s : %s : signals ignored: App Shutting down ");
        return;
    }
    DM_LOG("%s : %s : %s : %d Device Init event", event);
    switch (event) {
    case ZELK_EVENT_DEV_INIT_START:
        if (!m_bDevInitStarted)
            m_bDevInitStarted = true;
        break;
    case ZELK_EVENT_DEV_SIM_INVALID:
        m_bValidSim = false;
        if (m_bFrameShown && !m_bFPLockPending)
            emit signalSIMframelaunched();
        break;
    case ZELK_EVENT_DEV_INIT_SUCCESS:
        if (m_bFrameShown)
            selectPluginsBySim();
        caseDeviceInitSuccess();
        break;
    case ZELK_EVENT_DEV_PIN_CHECK:
        checkPINWithWin7();
        break;
    case ZELK_EVENT_DEV_DEVICE_NO_PIN:
        if (m_pUILogic) {
            E_DEVMGR_PIN_STATE state = static_cast<E_DEVMGR_PIN_STATE>(8);
            if (m_pUILogic->GetPinStatus(&state) == 0) {
                DM_LOG("%s : %s : %s : GetPinStatus success");
                m_enPinState = state;
            }
            m_enCardState = m_pUILogic->GetCardLockedState();
            // clang-format off
            DM_LOG("%s : %s : %s : , ZELK_EVENT_DEV_DEVICE_NO_PIN: m_pUILogic->GetCardLockedState () return m_enCardState: %d.", m_enCardState);
            // clang-format on
        }
        break;
    case ZELK_EVENT_DEV_CARD_LOCK:
        handleCardLockState();
        break;
    case ZELK_EVENT_DEV_DEVICE_INIT_FINISH:
        caseDeviceInitFinish();
        break;
    case ZELK_EVENT_DEV_DEVICE_REMOVED:
        // The next device attached gets its own automatic activation launch.
        m_bActivationLaunched = false;
        if (m_bFrameShown) {
            closeAllPopups(false);
            initMainMenuObj();
            if (m_pMainMenu) {
                m_pMainMenu->RefreshSimMenu();
                m_pMainMenu->RefreshRadioMenu();
                m_pMainMenu->RefreshDeviceMenu(1);
            }
        }
        if (m_pUILogic) {
            QMutexLocker lock(&m_devInfoMutex);
            m_pUILogic->ClearDeviceInfo();
        }
        sendNotification(NTF_DEVICE_INIT_EVENT);
        break;
    case ZELK_EVENT_DEV_FP_LOCK:
        m_bFPLockPending = true;
        if (m_bFrameShown)
            emit signalFplockOnmainframelaunched();
        break;
    default:
        // Other initialisation stages, and numbers outside 6000..6018, need nothing here.
        break;
    }
}

void CDeviceMgrService::deviceMgrEventHandler(qint32 event)
{
    if (s_handlerProbe)
        s_handlerProbe(event);
    DM_LOG("%s : %s : %s : ,called");
    if (CommonUtils::IsShuttingDown()) {
        DM_LOG("%s : %s : %s : Events ignored: App Shutting down ");
        return;
    }
    switch (event) {
    case ZELK_EVENT_DEV_BEFORE_CHANGE:
        m_strLastDevName = m_strCurDevName;
        m_iLastProductType = m_iCurProductType;
        sendNotification(NTF_DEVICE_ABOUT_TO_CHANGE);
        break;
    case ZELK_EVENT_DEV_CHANGED:
        sendNotification(NTF_DEVICE_CHANGED);
        handleDevChangeEvent();
        break;
    case ZELK_EVENT_DEV_ACTIVE:
        DM_LOG("%s : %s : %s :ZELK_EVENT_DEV_ACTIVE");
        if (m_pMainMenu)
            m_pMainMenu->RefreshRadioMenu();
        handleDevDetectEvent();
        break;
    case ZELK_EVENT_DEV_REJECT:
        DM_LOG("%s : %s : %s : %d Device event (ZELK_EVENT_DEV_REJECT)", event);
        CommonUtils::SetLteMode(0);
        deviceMgrEventSwich(true);
        break;
    case ZELK_EVENT_DEV_SWITCH:
        DM_LOG("%s : %s : %s : %d Device event (ZELK_EVENT_DEV_SWITCH)", event);
        deviceMgrEventSwich(false);
        break;
    case ZELK_EVENT_DEV_DETECTED: {
        DM_LOG("%s : %s : %s :ZELK_EVENT_DEV_DETECTED");
        _ZELK_ST_MULTI_DEVICE_INFO devices;
        std::memset(&devices, 0, sizeof(devices));
        if (m_pUILogic)
            devices = m_pUILogic->GetDeviceInfo();
        if (m_pDlgChooseDev) {
            DM_LOG("%s : %s : %s :Choose device instance NOT null");
            if (devices.nDevNum > 1) {
                DM_LOG("%s : %s : %s :call show choose device");
                chooserShowChooseDlg(m_pParentWidget);
            }
        }
        break;
    }
    case ZELK_EVENT_DEV_SIM_STATE_CHANGE:
        handleSIMStateChangeEvent();
        break;
    case ZELK_EVENT_DEV_FP_VERIFY:
        handleFPVerifyEvent();
        break;
    default:
        DM_LOG("%s : %s : %s : ,Unknown event occured ");
        break;
    }
    DM_LOG("%s : %s : %s : ,exit");
}

void CDeviceMgrService::selectPluginsBySim()
{
    _ZELK_ST_IMSI_INFO imsi;
    std::memset(&imsi, 0, sizeof(imsi));
    if (ZELK_DevSrv_GetImsiInfo(&imsi) == ZELK_ERROR_SUCCESS) {
        imsi.szImsi[sizeof(imsi.szImsi) - 1] = '\0';
        const QString key = QStringLiteral("IMSI") + QString::fromLatin1(imsi.szImsi);
        if (key.length() > 4) {
            ensureChooser();
            chooserReloadPlugins(key, false);
        }
    }
    // The GID groups are only tried once the container is known from an earlier lookup.
    if (m_pPluginContainer) {
        const QStringList names = m_pPluginContainer->GetGIDNameList();
        for (const QString& name : names) {
            if (IsGIDMatched(name)) {
                ensureChooser();
                chooserReloadPlugins(QStringLiteral("GID") + name, false);
                break;
            }
        }
    }
}

void CDeviceMgrService::onUpdateChooseDevice()
{
    if (m_pDlgChooseDev)
        chooserPopulateList();
}

int CDeviceMgrService::Notify(unsigned int code, unsigned int wParam, unsigned int lParam)
{
    Q_UNUSED(wParam)
    Q_UNUSED(lParam)
    DM_LOG("%s: %s: %s: called");
    switch (code) {
    case NTF_FRAME_SHOWN: {
        DM_LOG("%s : %s : %s : got notification NTF_FRAME_SHOWN");
        m_bFrameShown = true;
        m_bFrameLaunched = true;
        getParentWidget();
        initMainMenuObj();
        ensureChooser();
        if (m_pUILogic && m_pDlgChooseDev) {
            _ZELK_EN_DEVICE_STATUS status = DEVICE_STATUS_NO_DEVICE;
            m_pUILogic->GetDeviceStatus(status);
            if (status == DEVICE_STATUS_AVAILABLE) {
                DM_LOG("%s : %s : %s :DEVICE_STATUS_AVAILABLE. m_bDeviceAvialable = true");
                m_bDeviceAvialable = true;
            }
            const _ZELK_ST_MULTI_DEVICE_INFO devices = m_pUILogic->GetDeviceInfo();
            int systemStatus = 0;
            {
                QMutexLocker lock(&m_devInfoMutex);
                systemStatus = m_pUILogic->GetSystemDevStatus();
            }
            if (systemStatus == DEVICE_STATUS_AVAILABLE) {
                if (m_bDeviceAvialable) {
                    DM_LOG("%s : %s : %s : DeviceInfoDlg =====> Show Main Window showInfo");
                    showInfoDlg(Change::tr(QStringLiteral("IDS_INIT_DEV_UNDERWAY")), 3000);
                }
                if (m_bFPLockPending) {
                    m_bFPPromptOnLaunch = true;
                    handleFPLockOnFramelaunchedEvent();
                } else {
                    InitOnMainFrameShow();
                }
            } else if (devices.nDevNum < 2) {
                m_strCurDevName = m_pUILogic->GetCurrentDeviceName();
                m_iCurProductType = readProductType();
            } else {
                chooserShowChooseDlg(m_pParentWidget);
            }
        }
        break;
    }
    case NTF_LANGUAGE_CHANGED:
        changeLangPinDlg();
        changeLangVerifyPinDlg();
        changeLangModifyPinDlg();
        changeLangPukDlg();
        // The device chooser follows the language as well.
        if (m_pDlgChooseDev)
            m_pDlgChooseDev->ChangeLang();
        break;
    case NTF_CALL_DLG_SHOWN_1:
    case NTF_CALL_DLG_SHOWN_2:
    case NTF_CALL_DLG_SHOWN_3:
        // The call service's dialogs stand for a call being set up or under way.
        m_bExternalDlgShown = true;
        m_bCallActive = true;
        break;
    case NTF_CALL_DLG_CLOSED:
        m_bExternalDlgShown = false;
        m_bCallActive = false;
        break;
    default:
        break;
    }
    return 0;
}

void CDeviceMgrService::InitOnMainFrameShow()
{
    if (!m_bValidSim) {
        sendNotification(NTF_SIM_NOT_READY);
        showMessage(QStringLiteral("IDS_SIM_INVALID"));
    }
    if (!m_pUILogic) {
        DM_LOG("Arg is NULL: %s: %s: %s %d", 6557);
        return;
    }
    if (static_cast<int>(m_enPinState) == 8) {
        // 240 is how the SDK reports a SIM that needs no PIN at all.
        if (m_pUILogic->GetSimStatus() == 240)
            m_enPinState = static_cast<E_DEVMGR_PIN_STATE>(0);
    }
    m_strCurDevName = m_pUILogic->GetCurrentDeviceName();
    storeProductType();
    reloadPluginsForCurrentDevice();
    checkPINWithWin7();
    subscribeCallNotification();
}

void CDeviceMgrService::reloadPluginsForCurrentDevice()
{
    if (m_strCurDevName == m_strLastDevName || !m_pDlgChooseDev)
        return;
    // A device of the same family, or one whose family is not known yet, keeps the loaded plugins
    // unless its set differs; another family forces the reload.
    const bool sameFamily =
        m_iCurProductType == m_iLastProductType || m_iCurProductType == 3 || m_iLastProductType == 3;
    chooserReloadPlugins(m_strCurDevName, !sameFamily);
}

int CDeviceMgrService::readProductType()
{
    int productType = 3;
    if (ZELK_DevSrv_GetProductType(&productType) != ZELK_ERROR_SUCCESS)
        productType = 3;
    return productType;
}

void CDeviceMgrService::storeProductType()
{
    m_iCurProductType = readProductType();
    CommonUtils::SetSettings(QStringLiteral("Device"), QStringLiteral("ProductType"),
                             QString::number(m_iCurProductType));
}

// The service has no window of its own; its dialogs open on demand.
bool CDeviceMgrService::ShowWindow(QWidget*, QRect&)
{
    return true;
}

bool CDeviceMgrService::IsDeviceAvialable()
{
    _ZELK_EN_DEVICE_STATUS status{};
    const bool available = ZELK_DevSrv_GetDevStatus(&status) == ZELK_ERROR_SUCCESS &&
                           (status == DEVICE_STATUS_READY || status == DEVICE_STATUS_AVAILABLE);
    m_bDeviceAvialable = available;
    return available;
}
