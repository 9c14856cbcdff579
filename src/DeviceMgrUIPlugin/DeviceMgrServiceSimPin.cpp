// Device manager service: the PIN dialog that switches the SIM's PIN request on or off and takes the
// data card's network-lock code, with its result messages.
#include "DeviceMgrService.h"

#include "CommonUtils.h"
#include "DeviceMgrLog.h"
#include "DeviceMgrServiceSim.h"
#include "HostIds.h"

#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QVBoxLayout>

using devmgr_sim::ids;

void CDeviceMgrService::EnablePIN()
{
    DM_LOG("%s : %s : %s : , entered");
    m_enPinState = DEVMGR_PIN_ENABLE;
    showPINDlg();
}

void CDeviceMgrService::DisablePIN()
{
    DM_LOG("%s : %s : %s : , entered");
    m_enPinState = DEVMGR_PIN_DISABLE;
    showPINDlg();
}

int CDeviceMgrService::createPINDlg()
{
    if (m_pdialogPINDlg)
        return 0;
    if (!m_pParentWidget) {
        DM_LOG("Arg is NULL: %s: %s: %s %d", __LINE__);
        return 1;
    }
    SimDlg* dialog = new SimDlg(m_pParentWidget, true, false);
    dialog->setObjectName(QStringLiteral("DeviceMgrUI_m_pdialogPINDlg"));
    dialog->setFixedSize(260, 170);

    QWidget* inner = new QWidget(dialog);
    inner->setObjectName(QStringLiteral("DeviceMgrUI_widgetPINDlg"));
    QVBoxLayout* rows = new QVBoxLayout(inner);
    rows->setContentsMargins(0, 0, 0, 0);
    QLabel* prompt = new QLabel(inner);
    // Longer in some languages, and the unlock code's prompt is long in any.
    prompt->setWordWrap(true);
    LineEdit* field = createCodeField(inner, QString(), SLOT(showPinContextMenu(QPoint)), QSize(230, 20));
    QLabel* times = new QLabel(inner);
    times->setObjectName(QStringLiteral("DeviceMgrUI_m_plabelPINTimes"));
    QPushButton* ok = new QPushButton(inner);
    ok->setAutoDefault(false);
    ok->setEnabled(false);
    QPushButton* cancel = new QPushButton(inner);
    cancel->setAutoDefault(false);
    QHBoxLayout* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    rows->addWidget(prompt);
    rows->addWidget(field);
    rows->addWidget(times);
    rows->addStretch(1);
    rows->addLayout(buttons);
    dialog->AddMainWidget(inner);

    connect(dialog, SIGNAL(closeRequested(QCloseEvent*)), this, SLOT(onCloseDialog(QCloseEvent*)));
    connect(dialog, &SimDlg::signalFieldsCleared, this, [this, dialog] { applyOkRule(dialog); });
    connect(ok, SIGNAL(clicked()), this, SLOT(onPINOkButtonClicked()));
    connect(cancel, SIGNAL(clicked()), this, SLOT(onCancelButtonClicked()));

    m_pdialogPINDlg = dialog;
    m_plabelPINPrompt = prompt;
    m_peditPINText = field;
    m_plabelPINTimes = times;
    m_pbuttonPINOK = ok;
    m_pbuttonPINCancel = cancel;
    changeLangPinDlg();
    return 0;
}

void CDeviceMgrService::showPINDlg()
{
    if (!m_pdialogPINDlg && createPINDlg() != 0) {
        DM_LOG("%s : %s : %s : , createPINDlg failed");
        return;
    }
    // Other SIM dialogs stay as they are: digits typed there are the user's, not this job's.
    m_enPendingPinState = DEVMGR_PIN_READY;
    if (setDlgToInitialState() != 0)
        return;
    applyPinDlgTitle();
    CommonUtils::MoveCentre(m_pdialogPINDlg);
    m_pdialogPINDlg->show();
    m_pdialogPINDlg->raise();
    m_pdialogPINDlg->activateWindow();
    m_peditPINText->setFocus();
}

void CDeviceMgrService::applyPinDlgTitle()
{
    if (!m_pdialogPINDlg)
        return;
    const char* key = "IDS_MAINFRM_PIN_VERIFY_WINDOWSTXT";
    if (m_enPinState == DEVMGR_PIN_ENABLE)
        key = "IDS_MAINFRM_ENABLE_WINDOWSTXT";
    else if (m_enPinState == DEVMGR_PIN_DISABLE)
        key = "IDS_MAINFRM_DISABLE_WINDOWSTXT";
    else if (m_enPinState == DEVMGR_CARD_LOCK)
        key = "IDS_MAINFRM_CARDLOCKDLG_CAPTION";
    m_pdialogPINDlg->setWindowTitle(ids(key));
}

int CDeviceMgrService::setDlgToInitialStateEnableDisable()
{
    if (!m_pdialogPINDlg || !m_peditPINText || !m_pbuttonPINOK || !m_plabelPINPrompt || !m_plabelPINTimes) {
        DM_LOG("Arg is NULL: %s: %s: %s %d", __LINE__);
        return 1;
    }
    m_peditPINText->setText(QString());
    m_peditPINText->setEnabled(true);
    m_pbuttonPINOK->setEnabled(false);
    m_pbuttonPINOK->setDefault(false);
    if (QWidget* content = m_pdialogPINDlg->MainWidget())
        content->setEnabled(true);
    m_plabelPINPrompt->setText(ids("IDS_MAINFRM_INPUT_PIN_PROMPT"));
    m_iPINDlgRetries = m_pUILogic ? m_pUILogic->GetPINRetryTimes() : -1;
    m_plabelPINTimes->setText(retriesText("IDS_MAINFRM_PIN_REMAIN_PROMPT", m_iPINDlgRetries));
    applyPinDlgTitle();
    m_peditPINText->setFocus();
    return 0;
}

void CDeviceMgrService::onPINOkButtonClicked()
{
    DM_LOG("%s : %s : %s : , entered");
    initMainMenuObj();
    if (!m_peditPINText) {
        DM_LOG("Arg is NULL: %s: %s: %s %d", __LINE__);
        return;
    }
    if (!m_pUILogic) {
        DM_LOG("Arg is NULL: %s: %s: %s %d", __LINE__);
        return;
    }
    if (!m_pdialogPINDlg) {
        DM_LOG("Arg is NULL: %s: %s: %s %d", __LINE__);
        return;
    }
    if (!m_plabelPINTimes) {
        DM_LOG("Arg is NULL: %s: %s: %s %d", __LINE__);
        return;
    }
    QPointer<SimDlg> dialog(m_pdialogPINDlg);
    if (m_bCallActive) {
        CommonUtils::ShowMessage(QMessageBox::Warning, dialog, ids("IDS_MAINFRM_PROMPT"),
                                 ids("IDS_PROMPT_CALLING_DISABLE"), QStringLiteral("IDS_OK"));
        closeSimDlg(dialog);
        return;
    }

    // An entry that does not meet the OK rule (a field emptied behind the user's back) never
    // reaches the logic layer.
    if (!applyOkRule(dialog)) {
        DM_LOG("%s : %s : %s : , incomplete entry, nothing sent");
        return;
    }
    const E_DEVMGR_PIN_STATE job = m_enPinState;
    int retries = 0;
    int result = 1;
    if (job == DEVMGR_PIN_ENABLE || job == DEVMGR_PIN_DISABLE || job == DEVMGR_CARD_LOCK) {
        QString code = m_peditPINText->text();
        if (m_pbuttonPINOK)
            m_pbuttonPINOK->setEnabled(false);
        result = m_pUILogic->ProcessPIN(code, retries, job);
        code.fill(QLatin1Char('0'));
    }

    if (result == 0) {
        closeSimDlg(dialog);
        refreshSimMenu();
        displaySuccessMsgBoxPINOkButtonClicked();
        if (job == DEVMGR_CARD_LOCK) {
            m_enCardState = devmgr_sim::CARD_LOCK_USABLE;
            sendNotification(NTF_SIM_READY);
            AutolaunchActivation();
        }
        handleCardLockState();
        return;
    }

    if (job == DEVMGR_CARD_LOCK)
        m_enCardState = devmgr_sim::CARD_LOCK_LOCKED;
    m_iPINDlgRetries = retries;
    if (retries != -1) {
        displayFailureMsgBoxPINOkButtonClicked();
        if (!dialog)
            return;
    } else {
        closeSimDlg(dialog);
    }

    if (retries > 0) {
        if (m_enPendingPinState != DEVMGR_PIN_READY)
            m_enPinState = m_enPendingPinState;
        m_enPendingPinState = DEVMGR_PIN_READY;
        setDlgToInitialState();
    } else if (retries == -1) {
        m_peditPINText->setText(QString());
        refreshSimMenu();
        m_plabelPINTimes->setText(ids("IDS_MAINFRM_UNKNOWN"));
    } else {
        processPINPUK();
    }
}

void CDeviceMgrService::displaySuccessMsgBoxPINOkButtonClicked()
{
    const char* key = nullptr;
    if (m_enPinState == DEVMGR_PIN_ENABLE)
        key = "IDS_MAINFRM_ENABLEPIN_SUCCESS";
    else if (m_enPinState == DEVMGR_PIN_DISABLE)
        key = "IDS_MAINFRM_DISABLEPIN_SUCCESS";
    // The unlocked card speaks for itself: the SIM becomes ready and the dialog closes.
    if (!key)
        return;
    showSimMessage(QMessageBox::Information, m_pParentWidget, QString::fromLatin1(key));
}

void CDeviceMgrService::displayFailureMsgBoxPINOkButtonClicked()
{
    const char* key = nullptr;
    if (m_enPinState == DEVMGR_PIN_ENABLE)
        key = "IDS_PIN_ENABLE_FAILED";
    else if (m_enPinState == DEVMGR_PIN_DISABLE)
        key = "IDS_PIN_DISABLE_FAILED";
    // A wrong network-lock code shows in the attempts label of the dialog that stays open.
    if (!key)
        return;
    QWidget* parent = m_pdialogPINDlg ? static_cast<QWidget*>(m_pdialogPINDlg) : m_pParentWidget.data();
    if (m_iPINDlgRetries == 0)
        showSimMessage(QMessageBox::Information, parent, QStringLiteral("IDS_PIN_PIN_LOCKED"));
    showSimMessage(QMessageBox::Information, parent, QString::fromLatin1(key));
}

void CDeviceMgrService::changeLangPinDlg()
{
    if (!m_pdialogPINDlg)
        return;
    applyPinDlgTitle();
    const bool cardLock = m_enPinState == DEVMGR_CARD_LOCK;
    if (m_plabelPINPrompt)
        m_plabelPINPrompt->setText(
            ids(cardLock ? "IDS_MAINFRM_CARDLOCKDLG_INPUTPLEASE" : "IDS_MAINFRM_INPUT_PIN_PROMPT"));
    if (m_plabelPINTimes)
        m_plabelPINTimes->setText(retriesText("IDS_MAINFRM_PIN_REMAIN_PROMPT", m_iPINDlgRetries));
    if (m_pbuttonPINOK)
        m_pbuttonPINOK->setText(ids("IDS_MAINFRM_OK_PROMPT"));
    if (m_pbuttonPINCancel)
        m_pbuttonPINCancel->setText(ids("IDS_MAINFRM_CANCEL_PROMPT"));
}
