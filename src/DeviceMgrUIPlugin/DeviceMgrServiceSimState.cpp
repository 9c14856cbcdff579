// Device manager service: the PIN state dispatch that picks the SIM dialog the user sees, the WWAN
// wait in front of it, and what every SIM dialog shares (fields, Cancel, closing, context menus).
#include "DeviceMgrService.h"

#include "CommonUtils.h"
#include "DeviceMgrLog.h"
#include "DeviceMgrServiceSim.h"
#include "DeviceMgrWin7Thread.h"
#include "GIDConfigParse.h"
#include "HostIds.h"
#include "HostServices.h"

#include <QtCore/QRegExp>
#include <QtGui/QCloseEvent>
#include <QtGui/QRegExpValidator>
#include <QtWidgets/QMessageBox>

#include <cstring>

using devmgr_sim::ids;

namespace {

// Value of a PIN state that was not read.
const E_DEVMGR_PIN_STATE kPinStateNotRead = static_cast<E_DEVMGR_PIN_STATE>(8);

} // namespace

// ---- WWAN wait -----------------------------------------------------------------------------------

void CDeviceMgrService::checkPINWithWin7()
{
    DM_LOG("%s : %s : %s : Entered ");
    if (ZELK_DevSrv_IsWin7() != ZELK_ERROR_SUCCESS) {
        checkPIN();
        return;
    }
    DM_LOG("%s : %s : %s : ZELK_ERROR_SUCCESS == ZELK_DevSrv_IsWin7 ");
    E_DEVMGR_PIN_STATE state = kPinStateNotRead;
    if (!m_pUILogic || m_pUILogic->GetPinStatus(&state) != 0)
        DM_LOG("%s : %s : %s : GetPinStatus failed");
    // A blocked SIM gets its message at once: no code will be asked for, so nothing waits.
    if (state == DEVMGR_PIN_BLOCKED) {
        checkPIN();
        return;
    }
    if (!m_pWin7Thread) {
        m_pWin7Thread = DeviceMgrWin7Thread::Instance();
        connect(m_pWin7Thread, SIGNAL(deviceInitFinished()), this, SLOT(onDeviceInitFinishHandler()));
    }
    if (!m_pWin7Thread->m_bWWanReady.load()) {
        // The check runs from onDeviceInitFinishHandler() once the service is ready.
        m_pWin7Thread->start(QThread::InheritPriority);
        return;
    }
    DM_LOG("%s : %s : %s : Win 7 thread initialized. Check PIN ");
    checkPIN();
}

void CDeviceMgrService::onDeviceInitFinishHandler()
{
    DM_LOG("%s : %s : %s : ZELK_EVENT_DEV_DEVICE_INIT_FINISH recieved");
    _ZELK_EN_DEVICE_STATUS status = static_cast<_ZELK_EN_DEVICE_STATUS>(0);
    if (m_pUILogic)
        m_pUILogic->GetDeviceStatus(status);
    if (!m_bFrameShown)
        return;
    if (status == DEVICE_STATUS_AVAILABLE && m_pWin7Thread && m_pWin7Thread->m_bWWanReady.load()) {
        DM_LOG("%s : %s : %s : Win 7 thread initialized. Check PIN ");
        checkPIN();
    }
    initMainMenuObj();
    if (m_pMainMenu) {
        m_pMainMenu->RefreshSimMenu();
        m_pMainMenu->RefreshRadioMenu();
        m_pMainMenu->RefreshDeviceMenu(1);
    }
}

// ---- PIN state dispatch --------------------------------------------------------------------------

void CDeviceMgrService::checkPIN()
{
    DM_LOG("%s : %s : %s : called");
    // A dialog the user is typing into is never replaced, and its state is not even re-read.
    if ((m_pdialogPINDlg && m_pdialogPINDlg->isActiveWindow()) ||
        (m_pdialogPUKDlg && m_pdialogPUKDlg->isActiveWindow())) {
        DM_LOG("%s : %s : %s : Either PIN window or PUK window is active");
        return;
    }
    if (!m_pUILogic) {
        DM_LOG("%s : %s : %s : Pre-conditions  failed");
        return;
    }
    E_DEVMGR_PIN_STATE state = kPinStateNotRead;
    if (m_pUILogic->GetPinStatus(&state) != 0) {
        DM_LOG("%s : %s : %s : GetPinStatus failed");
        AutolaunchActivation();
        return;
    }
    m_enPinState = state;

    if (state == DEVMGR_PIN_READY && m_bFrameLaunched) {
        // The SIM can be read now: pick the plugin set by IMSI.
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
        // Then the first group of the SIM rules that matches picks the plugin set "GID<name>".
        if (m_pGIDConfig) {
            const QList<GIDGroup> groups = m_pGIDConfig->GetGIDGroups();
            for (const GIDGroup& group : groups) {
                if (IsGIDMatched(group.name)) {
                    ensureChooser();
                    chooserReloadPlugins(QStringLiteral("GID") + group.name, false);
                    break;
                }
            }
        }
    }

    initMainMenuObj();
    if (m_pMainMenu) {
        m_pMainMenu->RefreshSimMenu();
        m_pMainMenu->RefreshRadioMenu();
        m_pMainMenu->RefreshDeviceMenu(1);
    }
    if (!m_bFrameLaunched || m_bPinCheckSuspended)
        return;
    launchPinDlg(m_enPinState);
}

void CDeviceMgrService::launchPinDlg(E_DEVMGR_PIN_STATE state)
{
    DM_LOG("%s : %s : %s : Entered");
    if (m_bFrameLaunched) {
        launchSpecificPinDlg(state);
        return;
    }
    if (state != DEVMGR_PIN_READY) {
        DM_LOG("%s : %s : %s :Pin not ready. m_bValidPinState = false");
        m_bValidPinState = false;
        sendNotification(NTF_SIM_NOT_READY);
        return;
    }
    DM_LOG("%s : %s : %s : DEVMGR_PIN_READY. m_bValidPinState = true");
    m_bValidPinState = true;
    // Without a frame no card-lock dialog may open; the lock is handled once the frame is shown.
    reportSimReadyByCardLock();
}

void CDeviceMgrService::launchSpecificPinDlg(E_DEVMGR_PIN_STATE state)
{
    switch (state) {
    case DEVMGR_PIN_VERIFY:
        DM_LOG("%s : %s : %s : DEVMGR_PIN_VERIFY. m_bValidPinState = false");
        m_bValidPinState = false;
        sendNotification(NTF_SIM_NOT_READY);
        hideInfoDlg();
        VerifyPIN();
        break;
    case DEVMGR_UNLOCK_PIN:
        DM_LOG("%s : %s : %s : DEVMGR_UNLOCK_PIN. m_bValidPinState = false");
        m_bValidPinState = false;
        sendNotification(NTF_SIM_NOT_READY);
        hideInfoDlg();
        UnlockPIN();
        break;
    case DEVMGR_PIN_BLOCKED:
        showMessage(QStringLiteral("IDS_PIN_SIM_LOCKED"));
        break;
    case DEVMGR_PIN_READY:
        DM_LOG("%s : %s : %s :DEV_MGR_PIN_READY. m_bValidPinState = true");
        m_bValidPinState = true;
        reportSimReadyByCardLock();
        handleCardLockState();
        break;
    default:
        // 2 and 3 are jobs of the PIN dialog, never states the SIM reports: nothing to show.
        break;
    }
}

void CDeviceMgrService::reportSimReadyByCardLock()
{
    if (m_pUILogic && m_pUILogic->GetCardLockedState() == devmgr_sim::CARD_LOCK_USABLE) {
        m_enCardState = devmgr_sim::CARD_LOCK_USABLE;
        sendNotification(NTF_SIM_READY);
        AutolaunchActivation();
    } else {
        sendNotification(NTF_SIM_NOT_READY);
    }
}

void CDeviceMgrService::processPINPUK()
{
    DM_LOG("%s : %s : %s : , entered");
    if (!m_pdialogPINDlg) {
        DM_LOG("Arg is NULL: %s: %s: %s %d", __LINE__);
        return;
    }
    initMainMenuObj();
    if (!m_pMainMenu) {
        DM_LOG("Arg is NULL: %s: %s: %s %d", __LINE__);
        return;
    }
    // A PUK dialog that was never built is built below; one that lost a part is being torn down
    // and cannot take the entry.
    if (m_pdialogPUKDlg) {
        const QList<QWidget*> parts = {m_pwidgetPUKDlg,    m_plabelPUKTimes,         m_plabelPUK,
                                       m_peditPUKText,     m_plabelPUKNewPIN,        m_peditPUKPINText,
                                       m_plabelPUKConfirm, m_peditConfirmPUKPINText, m_pbuttonPUKOK,
                                       m_pbuttonPUKCancel};
        if (parts.contains(nullptr)) {
            DM_LOG("Arg is NULL: %s: %s: %s %d", __LINE__);
            return;
        }
    }

    if (m_enPinState == DEVMGR_CARD_LOCK) {
        // The network-lock code is used up: the card stays locked for good, no dialog follows.
        m_enCardState = devmgr_sim::CARD_LOCK_LOCKED;
        closeSimDlg(m_pdialogPINDlg);
        refreshSimMenu();
        QString text = ids("IDS_MSG_CARD_BLOCKED");
        if (text.isEmpty() || text == QLatin1String("IDS_MSG_CARD_BLOCKED"))
            text = QStringLiteral("The Data card is permanently blocked. Please contact your Operator");
        m_bMsgBoxShown = true;
        CommonUtils::ShowMessage(QMessageBox::Information, m_pParentWidget, ids("IDS_MAINFRM_PROMPT"), text,
                                 QStringLiteral("IDS_OK"));
        m_bMsgBoxShown = false;
        return;
    }

    closeSimDlg(m_pdialogPINDlg);
    refreshSimMenu();
    if (!switchToPukDlg(nullptr, true))
        return;
    DM_LOG("%s : %s : %s : , Exit");
}

bool CDeviceMgrService::switchToPukDlg(SimDlg* from, bool reportNotReady)
{
    closeSimDlg(from);
    // Never reused: each blocked PIN gets a dialog built from scratch.
    if (m_pdialogPUKDlg) {
        closeSimDlg(m_pdialogPUKDlg);
        m_pdialogPUKDlg->deleteLater();
        m_pdialogPUKDlg = nullptr;
    }
    if (createPUKDlg() != 0) {
        DM_LOG("%s : %s : %s : , createPUKDlg failed");
        return false;
    }
    m_enPinState = DEVMGR_UNLOCK_PIN;
    if (reportNotReady) {
        DM_LOG("%s : %s : %s : m_bValidPinState = false");
        m_bValidPinState = false;
        sendNotification(NTF_SIM_NOT_READY);
    }
    setDlgToInitialState();
    if (!reportNotReady)
        refreshSimMenu();
    CommonUtils::MoveCentre(m_pdialogPUKDlg);
    m_pdialogPUKDlg->show();
    m_pdialogPUKDlg->raise();
    m_pdialogPUKDlg->activateWindow();
    if (m_peditPUKText)
        m_peditPUKText->setFocus();
    return true;
}

bool CDeviceMgrService::IsValidSim()
{
    // Other plugins call this through IDeviceMgr; the log names the interface's declaration.
    static const char* const kDeclaredIn = "../../src/DeviceMgrUIPlugin/DeviceMgrService.h";
    qDebug("%s: %s: %s: Entered   m_bDeviceAvialable - %d ", devmgr_log::now().constData(), kDeclaredIn,
           __FUNCTION__, int(m_bDeviceAvialable));
    if (!IsDeviceAvialable())
        return false;
    qDebug("%s: %s: %s: Entered   m_bValidSim - %d , m_bValidPinState - %d ", devmgr_log::now().constData(),
           kDeclaredIn, __FUNCTION__, int(m_bValidSim), int(m_bValidPinState));
    return m_pUILogic && m_enCardState == devmgr_sim::CARD_LOCK_USABLE && m_bValidSim && m_bValidPinState;
}

void CDeviceMgrService::onPinStateChanged(E_DEVMGR_PIN_STATE penStatus)
{
    // Reported in the middle of a PIN dialog operation: the dialog's job must stay as it is until
    // the dialog resets for another attempt.
    m_enPendingPinState = penStatus;
}

void CDeviceMgrService::handleSIMOnFramelaunchedEvent()
{
    DM_LOG("%s : %s : %s : called");
    // The SIM went invalid under a shown frame: a code typed for it can no longer succeed, so no
    // SIM dialog may stay open over it.
    m_bValidPinState = false;
    closePinDlg();
}

// ---- Closing and resetting -----------------------------------------------------------------------

void CDeviceMgrService::closeAllPopups(bool closeChooser)
{
    DM_LOG("%s : %s : %s : called");
    if (m_pActivationWizard)
        destroyActivationWizard();
    if (closeChooser && m_pDlgChooseDev)
        chooserCloseDlg();
    closePinDlg();
    // The information dialog stays: it carries the device news of the same event (detected,
    // invalid) and closes on its own timer.
}

void CDeviceMgrService::closePinDlg()
{
    DM_LOG("%s : %s : %s : called");
    closeSimDlg(m_pdialogPINDlg);
    closeSimDlg(m_pdialogPUKDlg);
    closeSimDlg(m_pdialogModifyDlg);
    closeSimDlg(m_pdialogVerifyPINDlg);
}

void CDeviceMgrService::closeSimDlg(SimDlg* dialog)
{
    if (!dialog || !dialog->isVisible())
        return;
    dialog->m_bAskOnClose = false;
    dialog->close();
    // A confirmation still open over it keeps close() from acting; the card decided for the user.
    if (dialog->isVisible()) {
        dialog->hide();
        // close() did not get to set it again: the user's next close must still ask.
        dialog->m_bAskOnClose = true;
    }
}

int CDeviceMgrService::setDlgToInitialState()
{
    switch (m_enPinState) {
    case DEVMGR_PIN_VERIFY:
        return setDlgToInitialStateVerifyPin();
    case DEVMGR_PIN_ENABLE:
    case DEVMGR_PIN_DISABLE:
        return setDlgToInitialStateEnableDisable();
    case DEVMGR_UNLOCK_PIN:
        return setDlgToInitialStateUnlockPin();
    case DEVMGR_CHANGE_PIN:
        return setDlgToInitialStateModifyPin();
    case DEVMGR_CARD_LOCK:
        return setDlgToInitialStateCardVerify();
    default:
        DM_LOG("%s : %s : %s : no SIM dialog for PIN state %d", int(m_enPinState));
        return 1;
    }
}

bool CDeviceMgrService::okRuleHolds(const SimDlg* dialog) const
{
    using devmgr_sim::kFullCodeLength;
    using devmgr_sim::kMinPinLength;
    const auto holds = [](const LineEdit* field, int minimum) {
        return field && field->text().length() >= minimum;
    };
    if (!dialog)
        return false;
    if (dialog == m_pdialogVerifyPINDlg)
        return holds(m_peditVerifyPINText, kMinPinLength);
    if (dialog == m_pdialogPINDlg)
        return holds(m_peditPINText, m_enPinState == DEVMGR_CARD_LOCK ? kFullCodeLength : kMinPinLength);
    if (dialog == m_pdialogPUKDlg)
        return holds(m_peditPUKText, kFullCodeLength) && holds(m_peditPUKPINText, kMinPinLength) &&
               holds(m_peditConfirmPUKPINText, kMinPinLength);
    if (dialog == m_pdialogModifyDlg)
        return holds(m_peditCurrPINText, kMinPinLength) && holds(m_peditNewPINText, kMinPinLength) &&
               holds(m_peditConfirmNewPINText, kMinPinLength);
    return false;
}

bool CDeviceMgrService::applyOkRule(const SimDlg* dialog)
{
    QPushButton* ok = nullptr;
    if (!dialog)
        return false;
    if (dialog == m_pdialogVerifyPINDlg)
        ok = m_pbuttonVerifyOK;
    else if (dialog == m_pdialogPINDlg)
        ok = m_pbuttonPINOK;
    else if (dialog == m_pdialogPUKDlg)
        ok = m_pbuttonPUKOK;
    else if (dialog == m_pdialogModifyDlg)
        ok = m_pbuttonModOK;
    const bool complete = okRuleHolds(dialog);
    if (ok) {
        ok->setEnabled(complete);
        ok->setDefault(complete);
    }
    return complete;
}

void CDeviceMgrService::refreshSimMenu()
{
    initMainMenuObj();
    if (m_pMainMenu)
        m_pMainMenu->RefreshSimMenu();
}

QString CDeviceMgrService::retriesText(const char* promptKey, int count)
{
    if (count < 0)
        return ids("IDS_MAINFRM_UNKNOWN");
    // The prompt ends with its own separator; only the number follows.
    return ids(promptKey) + QString::asprintf("%d", count);
}

int CDeviceMgrService::showSimMessage(int icon, QWidget* parent, const QString& textKey, bool customize)
{
    const QString title = ids("IDS_MAINFRM_PROMPT");
    const QString text = Change::tr(textKey, "DeviceMgrUIPlugin");
    m_bMsgBoxShown = true;
    const int answer =
        customize ? CommonUtils::ShowMessageCustomize(icon, parent, title, text, QStringLiteral("IDS_OK"))
                  : CommonUtils::ShowMessage(icon, parent, title, text, QStringLiteral("IDS_OK"));
    m_bMsgBoxShown = false;
    return answer;
}

LineEdit* CDeviceMgrService::createCodeField(QWidget* parent, const QString& objectName,
                                             const char* contextSlot, const QSize& size)
{
    LineEdit* edit = new LineEdit(parent);
    if (!objectName.isEmpty())
        edit->setObjectName(objectName);
    edit->setEchoMode(QLineEdit::Password);
    edit->setMaxLength(devmgr_sim::kFullCodeLength);
    edit->setValidator(new QRegExpValidator(QRegExp(QStringLiteral("[0-9]{1,8}")), edit));
    edit->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(edit, SIGNAL(customContextMenuRequested(QPoint)), this, contextSlot);
    // Key presses pass the field's own filter first, which swallows Ctrl+X.
    edit->installEventFilter(edit);
    connect(edit, SIGNAL(textEdited(QString)), this, SLOT(onTextEdited(QString)));
    edit->setFixedSize(size);
    return edit;
}

// ---- Shared handlers -----------------------------------------------------------------------------

void CDeviceMgrService::onTextEdited(const QString& text)
{
    DM_LOG("%s : %s : %s : , entered");
    QPushButton* ok = nullptr;
    int minimum = devmgr_sim::kMinPinLength;
    switch (m_enPinState) {
    case DEVMGR_PIN_VERIFY:
        ok = m_pbuttonVerifyOK;
        break;
    case DEVMGR_PIN_ENABLE:
    case DEVMGR_PIN_DISABLE:
        ok = m_pbuttonPINOK;
        break;
    case DEVMGR_UNLOCK_PIN:
        processTextEditedUnlockPin();
        return;
    case DEVMGR_CHANGE_PIN:
        processTextEditedModifyPin();
        return;
    case DEVMGR_CARD_LOCK:
        ok = m_pbuttonPINOK;
        minimum = devmgr_sim::kFullCodeLength;
        break;
    default:
        return;
    }
    if (!ok) {
        DM_LOG("%s : %s : %s : , Function pre-conditipon failed, widget not initialized");
        return;
    }
    const bool complete = text.length() >= minimum;
    ok->setEnabled(complete);
    ok->setDefault(complete);
}

void CDeviceMgrService::onCancelButtonClicked()
{
    DM_LOG("%s : %s : %s : , entered");
    initMainMenuObj();
    switch (m_enPinState) {
    case DEVMGR_PIN_ENABLE:
    case DEVMGR_PIN_DISABLE:
        if (!m_pdialogPINDlg) {
            DM_LOG("%s : %s : %s : , PIN Dlg is NULL");
            return;
        }
        // Nothing pending: the SIM stays as it was.
        closeSimDlg(m_pdialogPINDlg);
        break;
    case DEVMGR_CHANGE_PIN:
        if (!m_pdialogModifyDlg) {
            DM_LOG("%s : %s : %s : , Modify Dlg is NULL");
            return;
        }
        closeSimDlg(m_pdialogModifyDlg);
        break;
    case DEVMGR_CARD_LOCK:
        if (!m_pdialogPINDlg) {
            DM_LOG("%s : %s : %s : , PIN Dlg is NULL");
            return;
        }
        processMsgBoxReply(ids("IDS_MAINFRM_CARDLOCKDLG_CANCELPROMPT"), DEVMGR_CARD_LOCK);
        break;
    case DEVMGR_PIN_VERIFY:
    case DEVMGR_UNLOCK_PIN:
        processMsgBoxReply(ids("IDS_MAINFRM_PIN_CANCELPROMPT"), m_enPinState);
        break;
    default:
        // The SIM no longer asks for anything: whatever is open has nothing left to wait for.
        closePinDlg();
        break;
    }
}

void CDeviceMgrService::processMsgBoxReply(QString text, E_DEVMGR_PIN_STATE job)
{
    SimDlg* dialog = nullptr;
    if (job == DEVMGR_PIN_VERIFY)
        dialog = m_pdialogVerifyPINDlg;
    else if (job == DEVMGR_UNLOCK_PIN)
        dialog = m_pdialogPUKDlg;
    else
        dialog = m_pdialogPINDlg;
    if (!dialog) {
        DM_LOG("Arg is NULL: %s: %s: %s %d", __LINE__);
        return;
    }
    QPointer<SimDlg> guard(dialog);
    // Nothing in the dialog may be used while the question is open.
    if (QWidget* content = dialog->MainWidget())
        content->setEnabled(false);
    m_bMsgBoxShown = true;
    const int reply = CommonUtils::ShowMessage(QMessageBox::Question, dialog, ids("IDS_MAINFRM_PROMPT"), text,
                                               QStringLiteral("IDS_YES"), QStringLiteral("IDS_NO"));
    m_bMsgBoxShown = false;
    if (!guard)
        return;
    if (reply == MSGBOX_ACCEPTED) {
        closeSimDlg(guard);
        if (QWidget* content = guard->MainWidget())
            content->setEnabled(true);
        refreshSimMenu();
        return;
    }
    processMsgBoxReplyNo(job);
}

void CDeviceMgrService::processMsgBoxReplyNo(E_DEVMGR_PIN_STATE job)
{
    SimDlg* dialog = nullptr;
    LineEdit* field = nullptr;
    if (job == DEVMGR_PIN_VERIFY) {
        dialog = m_pdialogVerifyPINDlg;
        field = m_peditVerifyPINText;
    } else if (job == DEVMGR_UNLOCK_PIN) {
        dialog = m_pdialogPUKDlg;
        field = m_peditPUKText;
    } else {
        dialog = m_pdialogPINDlg;
        field = m_peditPINText;
    }
    if (!dialog || !field)
        return;
    if (QWidget* content = dialog->MainWidget())
        content->setEnabled(true);
    // OK follows what the fields hold now, by the job's own rule.
    onTextEdited(field->text());
    field->setFocus();
}

void CDeviceMgrService::onCloseDialog(QCloseEvent* event)
{
    DM_LOG("%s : %s : %s : called");
    // A dialog that went away may have changed what the SIM menu items can offer.
    if (event && event->isAccepted())
        refreshSimMenu();
}

// ---- Context menus of the code fields ------------------------------------------------------------

void CDeviceMgrService::showVerifyPinContextMenu(const QPoint& pos)
{
    if (m_peditVerifyPINText)
        m_peditVerifyPINText->ShowContextMenu(pos);
}

void CDeviceMgrService::showPinContextMenu(const QPoint& pos)
{
    if (m_peditPINText)
        m_peditPINText->ShowContextMenu(pos);
}

void CDeviceMgrService::showCurrPinContextMenu(const QPoint& pos)
{
    if (m_peditCurrPINText)
        m_peditCurrPINText->ShowContextMenu(pos);
}

void CDeviceMgrService::showNewPinContextMenu(const QPoint& pos)
{
    if (m_peditNewPINText)
        m_peditNewPINText->ShowContextMenu(pos);
}

void CDeviceMgrService::showConfirmPinContextMenu(const QPoint& pos)
{
    if (m_peditConfirmNewPINText)
        m_peditConfirmNewPINText->ShowContextMenu(pos);
}

void CDeviceMgrService::showPUKContextMenu(const QPoint& pos)
{
    if (m_peditPUKText)
        m_peditPUKText->ShowContextMenu(pos);
}

void CDeviceMgrService::showPINPUKContextMenu(const QPoint& pos)
{
    if (m_peditPUKPINText)
        m_peditPUKPINText->ShowContextMenu(pos);
}

void CDeviceMgrService::showConfirmPUKContextMenu(const QPoint& pos)
{
    if (m_peditConfirmPUKPINText)
        m_peditConfirmPUKPINText->ShowContextMenu(pos);
}
