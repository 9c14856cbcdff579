// Device manager service: the change-PIN dialog (current PIN, new PIN twice).
#include "DeviceMgrService.h"

#include "CommonUtils.h"
#include "DeviceMgrLog.h"
#include "DeviceMgrServiceSim.h"
#include "HostIds.h"

#include <QtWidgets/QGridLayout>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QMessageBox>

using devmgr_sim::ids;

void CDeviceMgrService::ModifyPIN()
{
    DM_LOG("%s : %s : %s : , entered");
    m_enPinState = DEVMGR_CHANGE_PIN;
    if (!m_pdialogModifyDlg && createModifyDlg() != 0)
        return;
    if (setDlgToInitialStateModifyPin() != 0)
        return;
    CommonUtils::MoveCentre(m_pdialogModifyDlg);
    m_pdialogModifyDlg->show();
    m_pdialogModifyDlg->raise();
    m_pdialogModifyDlg->activateWindow();
    m_peditCurrPINText->setFocus();
}

int CDeviceMgrService::createModifyDlg()
{
    if (m_pdialogModifyDlg)
        return 0;
    SimDlg* dialog = new SimDlg(m_pParentWidget, true, false);
    dialog->setObjectName(QStringLiteral("DeviceMgrUI_dialogModifyDlg"));
    dialog->setFixedSize(300, 200);
    QWidget* inner = new QWidget(dialog);
    inner->setObjectName(QStringLiteral("DeviceMgrUI_widgetModifyDlg"));
    QGridLayout* grid = new QGridLayout(inner);
    grid->setContentsMargins(0, 0, 0, 0);

    const QSize fieldSize(105, 20);
    m_plabelModTimes = new QLabel(inner);
    m_plabelModTimes->setObjectName(QStringLiteral("DeviceMgrUI_labelModTimes"));
    m_plabelCurrPIN = new QLabel(inner);
    m_plabelCurrPIN->setObjectName(QStringLiteral("DeviceMgrUI_labelCurrPIN"));
    m_peditCurrPINText = createCodeField(inner, QStringLiteral("DeviceMgrUI_editCurrPINText"),
                                         SLOT(showCurrPinContextMenu(const QPoint&)), fieldSize);
    m_plabelNewPIN = new QLabel(inner);
    m_plabelNewPIN->setObjectName(QStringLiteral("DeviceMgrUI_labelNewPIN"));
    m_peditNewPINText = createCodeField(inner, QStringLiteral("DeviceMgrUI_editNewPINText"),
                                        SLOT(showNewPinContextMenu(const QPoint&)), fieldSize);
    m_plabelConfirmPIN = new QLabel(inner);
    m_plabelConfirmPIN->setObjectName(QStringLiteral("DeviceMgrUI_labelConfirmPIN"));
    m_peditConfirmNewPINText = createCodeField(inner, QStringLiteral("DeviceMgrUI_editConfirmNewPINText"),
                                               SLOT(showConfirmPinContextMenu(const QPoint&)), fieldSize);
    grid->addWidget(m_plabelModTimes, 0, 0, 1, 2);
    grid->addWidget(m_plabelCurrPIN, 1, 0);
    grid->addWidget(m_peditCurrPINText, 1, 1);
    grid->addWidget(m_plabelNewPIN, 2, 0);
    grid->addWidget(m_peditNewPINText, 2, 1);
    grid->addWidget(m_plabelConfirmPIN, 3, 0);
    grid->addWidget(m_peditConfirmNewPINText, 3, 1);
    grid->setRowStretch(4, 1);
    dialog->AddMainWidget(inner);
    m_pdialogModifyDlg = dialog;
    connect(dialog, SIGNAL(closeRequested(QCloseEvent*)), this, SLOT(onCloseDialog(QCloseEvent*)));
    connect(dialog, &SimDlg::signalFieldsCleared, this, [this, dialog] { applyOkRule(dialog); });

    if (setButtonsCreateModifyDlg() != 0) {
        delete dialog;
        return 1;
    }
    return setTextCreateModifyDlg();
}

int CDeviceMgrService::setButtonsCreateModifyDlg()
{
    QWidget* inner = m_pdialogModifyDlg ? m_pdialogModifyDlg->MainWidget() : nullptr;
    QGridLayout* grid = inner ? qobject_cast<QGridLayout*>(inner->layout()) : nullptr;
    if (!grid) {
        DM_LOG("%s : %s : %s : , widget creation error");
        return 1;
    }
    QPushButton* ok = new QPushButton(inner);
    ok->setObjectName(QStringLiteral("DeviceMgrUI_buttonModOK"));
    ok->setAutoDefault(false);
    ok->setEnabled(false);
    QPushButton* cancel = new QPushButton(inner);
    cancel->setObjectName(QStringLiteral("DeviceMgrUI_buttonModCancel"));
    cancel->setAutoDefault(false);
    connect(ok, SIGNAL(clicked()), this, SLOT(onModOkButtonClicked()));
    connect(cancel, SIGNAL(clicked()), this, SLOT(onCancelButtonClicked()));
    QHBoxLayout* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    grid->addLayout(buttons, 5, 0, 1, 2);
    m_pbuttonModOK = ok;
    m_pbuttonModCancel = cancel;
    return 0;
}

int CDeviceMgrService::setTextCreateModifyDlg()
{
    if (!m_pdialogModifyDlg || !m_plabelModTimes || !m_plabelCurrPIN || !m_plabelNewPIN ||
        !m_plabelConfirmPIN || !m_pbuttonModOK || !m_pbuttonModCancel) {
        DM_LOG("%s : %s : %s : , widget creation error");
        return 1;
    }
    changeLangModifyPinDlg();
    return 0;
}

int CDeviceMgrService::setDlgToInitialStateModifyPin()
{
    if (!m_peditCurrPINText || !m_peditNewPINText || !m_peditConfirmNewPINText || !m_pbuttonModOK ||
        !m_plabelModTimes) {
        DM_LOG("%s: %s: %s: ,Either widget are NUL or Memory allocation failed");
        return 1;
    }
    m_peditCurrPINText->setText(QString());
    m_peditNewPINText->setText(QString());
    m_peditConfirmNewPINText->setText(QString());
    m_pbuttonModOK->setEnabled(false);
    m_pbuttonModOK->setDefault(false);
    m_iModDlgRetries = m_pUILogic ? m_pUILogic->GetPINRetryTimes() : -1;
    m_plabelModTimes->setText(retriesText("IDS_MAINFRM_PIN_REMAIN_PROMPT", m_iModDlgRetries));
    m_peditCurrPINText->setFocus();
    return 0;
}

void CDeviceMgrService::processTextEditedModifyPin()
{
    if (!m_peditCurrPINText || !m_peditNewPINText || !m_peditConfirmNewPINText || !m_pbuttonModOK) {
        DM_LOG("%s : %s : %s : , textEditedModifyPin failed");
        return;
    }
    applyOkRule(m_pdialogModifyDlg);
}

void CDeviceMgrService::onModOkButtonClicked()
{
    DM_LOG("%s : %s : %s : , entered");
    initMainMenuObj();
    if (!m_peditCurrPINText || !m_peditNewPINText || !m_peditConfirmNewPINText || !m_pdialogModifyDlg ||
        !m_pbuttonModOK) {
        DM_LOG("%s: %s: %s: ,Either widget are NUL or Memory allocation failed");
        return;
    }
    QPointer<SimDlg> dialog(m_pdialogModifyDlg);
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
    QString newPin = m_peditNewPINText->text();
    QString confirmPin = m_peditConfirmNewPINText->text();
    QString currentPin = m_peditCurrPINText->text();
    if (!m_pUILogic || m_pUILogic->ValidatePINs(newPin, confirmPin) != 0) {
        showSimMessage(QMessageBox::Information, dialog, QStringLiteral("IDS_PIN_MSG_PIN_DIFFER"));
        if (dialog)
            setDlgToInitialState();
    } else {
        modifyPinModOkButtonClicked(newPin, currentPin);
    }
    newPin.fill(QLatin1Char('0'));
    confirmPin.fill(QLatin1Char('0'));
    currentPin.fill(QLatin1Char('0'));
}

void CDeviceMgrService::modifyPinModOkButtonClicked(QString& newPin, QString& currentPin)
{
    initMainMenuObj();
    if (!m_pUILogic || !m_pMainMenu) {
        DM_LOG("%s: %s: %s: , Memory allocation failed");
        return;
    }
    QPointer<SimDlg> dialog(m_pdialogModifyDlg);
    if (m_pbuttonModOK)
        m_pbuttonModOK->setEnabled(false);
    int retries = 0;
    const int result = m_pUILogic->ModifyPIN(currentPin, newPin, retries);
    if (result == 0) {
        showSimMessage(QMessageBox::Information, m_pParentWidget,
                       QStringLiteral("IDS_MAINFRM_CHANGEPIN_SUCCESS"));
        closeSimDlg(dialog);
        return;
    }
    if (retries != -1) {
        showSimMessage(QMessageBox::Information, dialog, QStringLiteral("IDS_PIN_CHANGE_FAILED"));
    } else {
        closeSimDlg(dialog);
        return;
    }
    if (!dialog)
        return;
    if (retries != 0) {
        setDlgToInitialState();
        return;
    }
    // The wrong current PIN used the last attempt: the SIM now wants its PUK, and the other plugins
    // must stop treating it as usable.
    m_bValidPinState = false;
    sendNotification(NTF_SIM_NOT_READY);
    switchToPukDlg(dialog, false);
}

void CDeviceMgrService::changeLangModifyPinDlg()
{
    if (!m_pdialogModifyDlg)
        return;
    m_pdialogModifyDlg->setWindowTitle(ids("IDS_MAINFRM_PIN_CHANGE_WINDOWSTXT"));
    if (m_plabelModTimes)
        m_plabelModTimes->setText(retriesText("IDS_MAINFRM_PIN_REMAIN_PROMPT", m_iModDlgRetries));
    if (m_plabelCurrPIN)
        m_plabelCurrPIN->setText(ids("IDS_MAINFRM_INPUT_OLD_PIN_PROMPT"));
    if (m_plabelNewPIN)
        m_plabelNewPIN->setText(ids("IDS_MAINFRM_INPUT_NEW_PIN_PROMPT"));
    if (m_plabelConfirmPIN)
        m_plabelConfirmPIN->setText(ids("IDS_MAINFRM_INPUT_NEW_PIN_PROMPT2"));
    if (m_pbuttonModOK)
        m_pbuttonModOK->setText(ids("IDS_MAINFRM_OK_PROMPT"));
    if (m_pbuttonModCancel)
        m_pbuttonModCancel->setText(ids("IDS_MAINFRM_CANCEL_PROMPT"));
}
