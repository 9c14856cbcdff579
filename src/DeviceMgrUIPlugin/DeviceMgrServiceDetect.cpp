// Device manager service: device detection, change, initialisation and SIM state, the information
// dialog, message boxes and the notifications sent to the other plugins.
#include "DeviceMgrService.h"

#include "Change.h"
#include "CommonUtils.h"
#include "DeviceMgrLog.h"
#include "DeviceMgrWin7Thread.h"
#include "HostIds.h"
#include "HostServices.h"
#include "Startup.h"

#include <QtCore/QTimer>
#include <QtWidgets/QDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QVBoxLayout>

namespace {

QString idsText(const char* key)
{
    return Change::tr(QString::fromLatin1(key), "DeviceMgrUIPlugin");
}

} // namespace

INotifyService* CDeviceMgrService::notifyServiceOf(IPluginContainer* container)
{
    if (!container)
        return nullptr;
    QObject* plugin = container->GetPlugin(QStringLiteral(NOTIFY_PLUGIN_CLSID), NOTIFY_PLUGIN_ID);
    return plugin ? qobject_cast<INotifyService*>(plugin) : nullptr;
}

void CDeviceMgrService::sendNotification(unsigned int code)
{
    DM_LOG("%s: %s: %s: called");
    if (!m_pPluginContainer)
        m_pPluginContainer = Startup::GetPluginContainer();
    if (!m_pPluginContainer) {
        DM_LOG("%s: %s: %s: Startup::GetPluginContainer() returned null ");
        return;
    }
    QObject* plugin = m_pPluginContainer->GetPlugin(QStringLiteral(NOTIFY_PLUGIN_CLSID), NOTIFY_PLUGIN_ID);
    if (!plugin) {
        DM_LOG("%s: %s: %s: GetPlugin (NOTIFY_PLUGIN) returned NULL");
        return;
    }
    INotifyService* notify = qobject_cast<INotifyService*>(plugin);
    if (!notify) {
        DM_LOG("%s: %s: %s: Notify object is null");
        return;
    }
    if (code == NTF_DEVICE_INIT_EVENT)
        notify->SendNotify(QStringLiteral(MINIFRAME_PLUGIN_CLSID), code, 0, 0);
    else
        notify->Broadcast(code, 0, 0);
}

void CDeviceMgrService::handleDevDetectEvent()
{
    DM_LOG("%s : %s : %s : m_bDeviceAvialable = true");
    m_bDeviceAvialable = true;
    storeProductType();
    DM_LOG("%s : %s : %s : enter ProductType : %s", qPrintable(QString::number(m_iCurProductType)));
    if (!m_pUILogic || !m_bFrameShown)
        return;
    DM_LOG("%s : %s : %s : DeviceInfoDlg =====> Device Change showInfo");
    showInfoDlg(idsText("IDS_DETECTE_DEVICE"), 10000);
    const _ZELK_ST_MULTI_DEVICE_INFO devices = m_pUILogic->GetDeviceInfo();
    Q_UNUSED(devices)
    if (!m_pDlgChooseDev)
        return;
    chooserPopulateList();
    {
        QMutexLocker lock(&m_devInfoMutex);
        m_pUILogic->GetSystemDevStatus();
    }
    m_strCurDevName = m_pUILogic->GetCurrentDeviceName();
    storeProductType();
    DM_LOG("%s : %s : %s : second time ProductType : %s", qPrintable(QString::number(m_iCurProductType)));
    reloadPluginsForCurrentDevice();
}

void CDeviceMgrService::handleDevChangeEvent()
{
    DM_LOG("%s : %s : %s : m_bDeviceAvialable = true");
    m_bDeviceAvialable = true;
    storeProductType();
    DM_LOG("%s : %s : %s : enter ProductType : %s", qPrintable(QString::number(m_iCurProductType)));
    if (!m_pUILogic || !m_bFrameShown || !m_pDlgChooseDev)
        return;
    if (m_bValidSim) {
        DM_LOG("%s : %s : %s : DeviceInfoDlg =====> Device Active showInfo");
        showInfoDlg(idsText("IDS_INIT_DEV_UNDERWAY"), 3000);
    }
    chooserPopulateList();
    m_strCurDevName = m_pUILogic->GetCurrentDeviceName();
    storeProductType();
    DM_LOG("%s : %s : %s : second time ProductType : %s", qPrintable(QString::number(m_iCurProductType)));
}

void CDeviceMgrService::caseDeviceInitFinish()
{
    DM_LOG("%s : %s : %s :Entered");
    if (!m_pUILogic)
        m_pUILogic = DeviceMgrUILogic::GetInstance();
    if (!m_pUILogic)
        return;
    _ZELK_EN_DEVICE_STATUS status = DEVICE_STATUS_NO_DEVICE;
    m_pUILogic->GetDeviceStatus(status);
    if (status != DEVICE_STATUS_AVAILABLE) {
        DM_LOG("%s : %s : %s :DEVICE_STATUS_AVAILABLE != enDevStatus");
        return;
    }
    CommonUtils::SetLteMode(DevIsSupportLTE());
    // The dial-up plugin may start connecting from here on.
    if (INotifyService* notify = notifyServiceOf(Startup::GetPluginContainer()))
        notify->SendNotify(QStringLiteral(DIALUP_PLUGIN_CLSID), NTF_DEVICE_INIT_FINISH, 0, 0);
    m_bSimReady = true;
    m_bDeviceAvialable = true;
    if (m_iCurProductType == ZELK_PRODUCT_TYPE_CDMA)
        AutolaunchActivation();
    DM_LOG("%s : %s : %s : Exit");
}

void CDeviceMgrService::caseDeviceInitSuccess()
{
    m_bDeviceAvialable = true;
    DM_LOG("%s : %s : %s : got event(ZELK_EVENT_DEV_INIT_SUCCESS)");
    DM_LOG("%s : %s : %s : If sim valid close the popup dlgs");
    if (m_bValidSim) {
        DM_LOG("%s : %s : %s : close all popup(ZELK_EVENT_DEV_INIT_SUCCESS)");
        closeAllPopups(false);
    }
    initMainMenuObj();
    if (m_pMainMenu)
        m_pMainMenu->RefreshSimMenu();
    if (CommonUtils::GetFrameStyle() & FRAME_STYLE_MINI) {
        // In mini mode the compact window is the one that reports the device to the user; without
        // it the news has no one to reach.
        IPluginContainer* container = Startup::GetPluginContainer();
        QObject* plugin =
            container ? container->GetPlugin(QStringLiteral(MINIFRAME_PLUGIN_CLSID), MINIFRAME_PLUGIN_ID)
                      : nullptr;
        if (!plugin || !qobject_cast<IMiniFrameUIService*>(plugin))
            return;
    }
    sendNotification(NTF_DEVICE_INIT_SUCCESS);
}

void CDeviceMgrService::handleSIMStateChangeEvent()
{
    DM_LOG("%s : %s : %s : Enter");
    initMainMenuObj();
    if (m_pMainMenu)
        m_pMainMenu->RefreshSimMenu();
    const unsigned int simState = m_iSimState.load();
    if (simState >= 1 && simState <= 254) {
        if (m_pUILogic && m_pUILogic->GetCardLockedState() == 2) {
            m_enCardState = 2;
            sendNotification(NTF_SIM_READY);
            AutolaunchActivation();
        } else {
            sendNotification(NTF_SIM_NOT_READY);
        }
        m_bSimReady = true;
    } else {
        DM_LOG("%s : %s : %s : send notification (ZELK_EVENT_DEV_SIM_STATE_CHANGE)");
        sendNotification(NTF_SIM_NOT_READY);
        m_bSimReady = false;
    }
}

void CDeviceMgrService::deviceMgrEventSwich(bool reject)
{
    m_strLastDevName = m_strCurDevName;
    m_iLastProductType = m_iCurProductType;
    sendNotification(NTF_SIM_NOT_READY);
    DM_LOG("%s : %s : %s :ZELK_EVENT_DEV_REJECT. m_bDeviceAvialable = false");
    m_bDeviceAvialable = false;
    m_bValidSim = true;
    m_bSimReady = false;
    // The device that had its automatic activation launch is no longer the active one.
    m_bActivationLaunched = false;
    if (m_bFrameShown) {
        // Nothing that belonged to the old device may stay on screen.
        closeAllPopups(false);
        FPLockOnDialogClose();
        m_bFPPromptOnLaunch = false;
        m_bFPLockPending = false;
        if (m_pMainMenu) {
            m_pMainMenu->RefreshSimMenu();
            m_pMainMenu->RefreshRadioMenu();
            m_pMainMenu->RefreshDeviceMenu(1);
        }
        if (reject)
            showInfoDlg(idsText("IDS_DEVICE_INVALID"), 3000);
    }
    // The WWAN service the thread waits for belonged to the old device.
    if (m_pWin7Thread)
        m_pWin7Thread->Stop();
}

// ---- Information dialog --------------------------------------------------------------------------

int CDeviceMgrService::createInfoDlg()
{
    DM_LOG("%s: %s : %s, entered");
    QDialog* dialog = new QDialog(m_pParentWidget);
    QVBoxLayout* layout = new QVBoxLayout(dialog);
    QLabel* label = new QLabel(dialog);
    if (!dialog || !layout || !label) {
        DM_LOG("%s: %s : %s, Error occured in widgret creation");
        delete dialog;
        return 1;
    }
    dialog->setObjectName(QStringLiteral("DeviceMgrUI_dialogInfoDlg"));
    dialog->setFixedSize(310, 120);
    layout->setObjectName(QStringLiteral("DeviceMgrUI_layoutVBox"));
    label->setObjectName(QStringLiteral("DeviceMgrUI_labelInfoLabel"));
    layout->addWidget(label);
    m_pInfoDlg = dialog;
    m_pInfoLabel = label;
    return 0;
}

void CDeviceMgrService::showInfoDlg(QString text, int msec)
{
    QMutexLocker lock(&m_mutex);
    DM_LOG("%s : %s : %s : , entered");
    if (!m_pInfoTimer)
        m_pInfoTimer = new QTimer(this);
    // The activation wizard has the user's attention; a detection notice would only get in its way.
    if (text == idsText("IDS_DETECTE_DEVICE") && m_pActivationWizard && activationWindowShown()) {
        DM_LOG("%s : %s : %s : , return because activation dlg is shown");
        return;
    }
    if (!m_pInfoDlg && createInfoDlg() != 0) {
        DM_LOG("%s: %s: %s: , entered, Error occured while creating Dialog");
        m_pInfoTimer->start(msec);
        return;
    }
    if (!m_pInfoDlg || !m_pInfoLabel) {
        DM_LOG("Arg is NULL: %s: %s: %s %d", __LINE__);
        return;
    }
    if (!m_pInfoDlg->isVisible()) {
        m_pInfoLabel->setText(text);
        m_pInfoLabel->setWordWrap(true);
        CommonUtils::MoveCentre(m_pInfoDlg);
        m_pInfoDlg->show();
        m_pInfoTimer->start(msec);
        connect(m_pInfoTimer, SIGNAL(timeout()), this, SLOT(onTimerOut()));
        DM_LOG("%s : %s : %s : , exit");
        return;
    }
    // A newer notice replaces the one on screen and takes over its time.
    m_pInfoLabel->setText(text);
    m_pInfoLabel->setWordWrap(true);
    m_pInfoTimer->setInterval(msec);
    CommonUtils::MoveCentre(m_pInfoDlg);
    m_pInfoDlg->raise();
    m_pInfoDlg->activateWindow();
    DM_LOG("%s : %s : %s : , return set dlg text");
}

void CDeviceMgrService::onTimerOut()
{
    if (!m_pInfoTimer)
        return;
    m_pInfoTimer->stop();
    // Also drops the duplicate connections that repeated notices made.
    disconnect(m_pInfoTimer, nullptr, nullptr, nullptr);
    DM_LOG("%s : %s : %s : DeviceInfoDlg =====> Time Out hideInfo");
    hideInfoDlg();
}

void CDeviceMgrService::hideInfoDlg()
{
    QMutexLocker lock(&m_mutex);
    DM_LOG("%s : %s : %s : Entered");
    m_bDevInitStarted = false;
    if (m_pInfoDlg && m_pInfoDlg->isVisible()) {
        m_pInfoDlg->close();
        m_pInfoDlg->deleteLater();
        m_pInfoDlg = nullptr;
        m_pInfoLabel = nullptr;
    }
    DM_LOG("%s : %s : %s : Exit");
}

void CDeviceMgrService::showMessage(const QString& key)
{
    hideInfoDlg();
    closeAllPopups(false);
    initMainMenuObj();
    if (m_pMainMenu)
        m_pMainMenu->RefreshSimMenu();
    QString text = Change::tr(key, "DeviceMgrUIPlugin");
    if (text.isEmpty())
        return;
    const QString simType = CommonUtils::GetSettings(QStringLiteral("customize"), QStringLiteral("simtype"));
    const QString uimType = CommonUtils::GetSettings(QStringLiteral("customize"), QStringLiteral("uimtype"));
    int productType = 3;
    const ZELK_RESULT result = ZELK_DevSrv_GetProductType(&productType);
    DM_LOG("=======> %s: %s: %s: ZELK_DevSrv_GetProductType(%d) returned %li:", productType,
           static_cast<long>(result));
    QString cardWord;
    if (productType == ZELK_PRODUCT_TYPE_CDMA)
        cardWord = uimType.isEmpty() ? QStringLiteral("UIM") : uimType;
    else
        cardWord = simType.isEmpty() ? QStringLiteral("SIM/USIM") : simType;
    text.replace(QStringLiteral("%s"), cardWord, Qt::CaseSensitive);
    CommonUtils::ShowMessage(QMessageBox::Information, m_pParentWidget, idsText("IDS_MAINFRM_PROMPT"), text);
}
