// Device manager service: the PUK dialog that unblocks the SIM and sets a new PIN.
#include "DeviceMgrService.h"

#include "CommonUtils.h"
#include "DeviceMgrLog.h"
#include "DeviceMgrServiceSim.h"
#include "HostIds.h"

#include <QtWidgets/QGridLayout>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QMessageBox>

using devmgr_sim::ids;

namespace {

// Answer of the logic layer when the platform's WWAN service refuses this process the unblock.
constexpr int kUnblockNotAllowed = 14;

// Shown when the language files have no text for the refusal: the user must learn where to go.
// clang-format off
const char* const kPrivilegeFallback = "This method is not allowed for calling process privileges. Please use system's WWAN UI to unblock the PIN";
// clang-format on

} // namespace

void CDeviceMgrService::UnlockPIN()
{
    DM_LOG("%s : %s : %s : , entered");
    if (!m_pdialogPUKDlg && createPUKDlg() != 0) {
        DM_LOG("%s : %s : %s : , createPUKDlg failed");
        return;
    }
    // The job (m_enPinState) stays: the dispatch stored the state it read (4) before calling.
    if (setDlgToInitialStateUnlockPin() != 0)
        return;
    CommonUtils::MoveCentre(m_pdialogPUKDlg);
    m_pdialogPUKDlg->show();
    m_pdialogPUKDlg->raise();
    m_pdialogPUKDlg->activateWindow();
    m_peditPUKText->setFocus();
}

int CDeviceMgrService::createPUKDlg()
{
    if (m_pdialogPUKDlg)
        return 0;
    SimDlg* dialog = new SimDlg(m_pParentWidget, true, false);
    dialog->setObjectName(QStringLiteral("DeviceMgrUI_dialogPUKDlg"));
    dialog->setFixedSize(320, 200);
    m_pdialogPUKDlg = dialog;
    if (createInternalPUKLayouts() != 0) {
        delete dialog;
        return 1;
    }
    connect(dialog, SIGNAL(closeRequested(QCloseEvent*)), this, SLOT(onCloseDialog(QCloseEvent*)));
    connect(dialog, &SimDlg::signalFieldsCleared, this, [this, dialog] { applyOkRule(dialog); });
    changeLangPukDlg();
    return 0;
}

int CDeviceMgrService::createInternalPUKLayouts()
{
    if (!m_pdialogPUKDlg) {
        DM_LOG("Arg is NULL: %s: %s: %s %d", __LINE__);
        return 1;
    }
    QWidget* inner = new QWidget(m_pdialogPUKDlg);
    inner->setObjectName(QStringLiteral("DeviceMgrUI_widgetPUKDlg"));
    QGridLayout* grid = new QGridLayout(inner);
    grid->setContentsMargins(0, 0, 0, 0);

    QLabel* times = new QLabel(inner);
    times->setObjectName(QStringLiteral("DeviceMgrUI_labelPUKTimes"));
    QLabel* pukLabel = new QLabel(inner);
    pukLabel->setObjectName(QStringLiteral("DeviceMgrUI_labelPUK"));
    const QSize fieldSize(105, 20);
    LineEdit* puk = createCodeField(inner, QStringLiteral("DeviceMgrUI_editPUKText"),
                                    SLOT(showPUKContextMenu(const QPoint&)), fieldSize);
    QLabel* newLabel = new QLabel(inner);
    LineEdit* newPin = createCodeField(inner, QStringLiteral("DeviceMgrUI_editPUKPINText"),
                                       SLOT(showPINPUKContextMenu(const QPoint&)), fieldSize);
    QLabel* confirmLabel = new QLabel(inner);
    LineEdit* confirm = createCodeField(inner, QStringLiteral("DeviceMgrUI_editConfirmPUKPINText"),
                                        SLOT(showConfirmPUKContextMenu(const QPoint&)), fieldSize);
    QPushButton* ok = new QPushButton(inner);
    ok->setObjectName(QStringLiteral("DeviceMgrUI_buttonPUKOK"));
    ok->setAutoDefault(false);
    ok->setEnabled(false);
    QPushButton* cancel = new QPushButton(inner);
    cancel->setObjectName(QStringLiteral("DeviceMgrUI_buttonPUKCancel"));
    cancel->setAutoDefault(false);
    connect(ok, SIGNAL(clicked()), this, SLOT(onPUKOkButtonClicked()));
    connect(cancel, SIGNAL(clicked()), this, SLOT(onCancelButtonClicked()));

    grid->addWidget(times, 0, 0, 1, 2);
    grid->addWidget(pukLabel, 1, 0);
    grid->addWidget(puk, 1, 1);
    grid->addWidget(newLabel, 2, 0);
    grid->addWidget(newPin, 2, 1);
    grid->addWidget(confirmLabel, 3, 0);
    grid->addWidget(confirm, 3, 1);
    QHBoxLayout* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    grid->setRowStretch(4, 1);
    grid->addLayout(buttons, 5, 0, 1, 2);
    m_pdialogPUKDlg->AddMainWidget(inner);

    m_pwidgetPUKDlg = inner;
    m_plabelPUKTimes = times;
    m_plabelPUK = pukLabel;
    m_peditPUKText = puk;
    m_plabelPUKNewPIN = newLabel;
    m_peditPUKPINText = newPin;
    m_plabelPUKConfirm = confirmLabel;
    m_peditConfirmPUKPINText = confirm;
    m_pbuttonPUKOK = ok;
    m_pbuttonPUKCancel = cancel;
    return 0;
}

int CDeviceMgrService::setDlgToInitialStateUnlockPin()
{
    if (!m_pdialogPUKDlg || !m_peditPUKText || !m_peditPUKPINText || !m_peditConfirmPUKPINText ||
        !m_pbuttonPUKOK || !m_plabelPUKTimes) {
        DM_LOG("Arg is NULL: %s: %s: %s %d", __LINE__);
        return 1;
    }
    m_peditPUKText->setText(QString());
    m_peditPUKPINText->setText(QString());
    m_peditConfirmPUKPINText->setText(QString());
    m_pbuttonPUKOK->setEnabled(false);
    m_pbuttonPUKOK->setDefault(false);
    if (QWidget* content = m_pdialogPUKDlg->MainWidget())
        content->setEnabled(true);
    m_iPUKDlgRetries = m_pUILogic ? m_pUILogic->GetPUKRetryTimes() : -1;
    m_plabelPUKTimes->setText(retriesText("IDS_MAINFRM_PUK_REMAIN_PROMPT", m_iPUKDlgRetries));
    m_peditPUKText->setFocus();
    return 0;
}

void CDeviceMgrService::processTextEditedUnlockPin()
{
    if (!m_peditPUKText || !m_peditPUKPINText || !m_peditConfirmPUKPINText || !m_pbuttonPUKOK) {
        DM_LOG("%s : %s : %s : , Function pre-conditipon failed, widget not initialized");
        return;
    }
    // The PUK has exactly 8 digits, a PIN 4 to 8.
    applyOkRule(m_pdialogPUKDlg);
}

void CDeviceMgrService::onPUKOkButtonClicked()
{
    DM_LOG("%s : %s : %s : , entered");
    initMainMenuObj();
    if (!m_pUILogic) {
        DM_LOG("Arg is NULL: %s: %s: %s %d", __LINE__);
        return;
    }
    if (!m_peditPUKPINText) {
        DM_LOG("Arg is NULL: %s: %s: %s %d", __LINE__);
        return;
    }
    if (!m_peditConfirmPUKPINText) {
        DM_LOG("Arg is NULL: %s: %s: %s %d", __LINE__);
        return;
    }
    if (!m_pdialogPUKDlg) {
        DM_LOG("Arg is NULL: %s: %s: %s %d", __LINE__);
        return;
    }
    if (!m_peditPUKText) {
        DM_LOG("Arg is NULL: %s: %s: %s %d", __LINE__);
        return;
    }
    if (!m_plabelPUKTimes) {
        DM_LOG("Arg is NULL: %s: %s: %s %d", __LINE__);
        return;
    }
    QPointer<SimDlg> dialog(m_pdialogPUKDlg);
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
    QString newPin = m_peditPUKPINText->text();
    QString confirmPin = m_peditConfirmPUKPINText->text();
    if (m_pUILogic->ValidatePINs(newPin, confirmPin) != 0) {
        newPin.fill(QLatin1Char('0'));
        confirmPin.fill(QLatin1Char('0'));
        showSimMessage(QMessageBox::Information, dialog, QStringLiteral("IDS_PIN_MSG_PIN_DIFFER"));
        return;
    }

    if (m_pbuttonPUKOK)
        m_pbuttonPUKOK->setEnabled(false);
    QString puk = m_peditPUKText->text();
    // Stays "unknown" should the logic layer refuse the codes before asking the card.
    int retries = -1;
    const int result = m_pUILogic->UnlockPIN(puk, newPin, retries);
    puk.fill(QLatin1Char('0'));
    newPin.fill(QLatin1Char('0'));
    confirmPin.fill(QLatin1Char('0'));

    if (result == 0) {
        closeSimDlg(dialog);
        showSimMessage(QMessageBox::Information, nullptr, QStringLiteral("IDS_MAINFRM_UNLOCKPIN_SUCCESS"));
        m_bValidPinState = true;
        reportSimReadyByCardLock();
        handleCardLockState();
        return;
    }
    if (result == kUnblockNotAllowed) {
        closeSimDlg(dialog);
        QString text = ids("IDS_MSG_WWAN_PRIVILIGE");
        if (text.isEmpty() || text == QLatin1String("IDS_MSG_WWAN_PRIVILIGE"))
            text = QString::fromLatin1(kPrivilegeFallback);
        m_bMsgBoxShown = true;
        CommonUtils::ShowMessage(QMessageBox::Information, nullptr, ids("IDS_MAINFRM_PROMPT"), text,
                                 QStringLiteral("IDS_OK"));
        m_bMsgBoxShown = false;
        return;
    }
    if (retries == -1) {
        m_iPUKDlgRetries = -1;
        m_plabelPUKTimes->setText(ids("IDS_MAINFRM_UNKNOWN"));
        m_peditPUKText->setText(QString());
        m_peditPUKPINText->setText(QString());
        m_peditConfirmPUKPINText->setText(QString());
        m_peditPUKText->setFocus();
        return;
    }
    if (retries == 0) {
        // The last PUK attempt is gone: the SIM is blocked for good.
        closeSimDlg(dialog);
        showSimMessage(QMessageBox::Information, nullptr, QStringLiteral("IDS_MSG_CARD_BLOCKED"));
        return;
    }
    showSimMessage(QMessageBox::Information, dialog, QStringLiteral("IDS_PIN_PUK_FAILED"));
    if (dialog)
        setDlgToInitialState();
}

void CDeviceMgrService::changeLangPukDlg()
{
    if (!m_pdialogPUKDlg)
        return;
    m_pdialogPUKDlg->setWindowTitle(ids("IDS_MAINFRM_PIN_UNLOCK_WINDOWSTXT"));
    if (m_plabelPUKTimes)
        m_plabelPUKTimes->setText(retriesText("IDS_MAINFRM_PUK_REMAIN_PROMPT", m_iPUKDlgRetries));
    if (m_plabelPUK)
        m_plabelPUK->setText(ids("IDS_MAINFRM_INPUT_PUK_PROMPT"));
    if (m_plabelPUKNewPIN)
        m_plabelPUKNewPIN->setText(ids("IDS_MAINFRM_INPUT_NEW_PIN_PROMPT"));
    if (m_plabelPUKConfirm)
        m_plabelPUKConfirm->setText(ids("IDS_MAINFRM_INPUT_NEW_PIN_PROMPT2"));
    if (m_pbuttonPUKOK)
        m_pbuttonPUKOK->setText(ids("IDS_MAINFRM_OK_PROMPT"));
    if (m_pbuttonPUKCancel)
        m_pbuttonPUKCancel->setText(ids("IDS_MAINFRM_CANCEL_PROMPT"));
}
