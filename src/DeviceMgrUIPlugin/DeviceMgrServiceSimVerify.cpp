// Device manager service: the start-up PIN verification dialog, shown while the SIM waits for its PIN.
#include "DeviceMgrService.h"

#include "CommonUtils.h"
#include "DeviceMgrLog.h"
#include "DeviceMgrServiceSim.h"
#include "HostIds.h"

#include <QtCore/QCoreApplication>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QVBoxLayout>

using devmgr_sim::ids;

void CDeviceMgrService::VerifyPIN()
{
    DM_LOG("%s : %s : %s : , entered");
    showVerifyPINDlg();
}

int CDeviceMgrService::createVerifyPINDlg()
{
    if (m_pdialogVerifyPINDlg)
        return 0;
    // Asks before the entry is abandoned; Yes/No in the question.
    SimDlg* dialog = new SimDlg(m_pParentWidget, true, false);
    dialog->setObjectName(QStringLiteral("DeviceMgrUI_VerifyPINDlg"));
    dialog->setFixedSize(260, 170);

    QWidget* inner = new QWidget(dialog);
    inner->setObjectName(QStringLiteral("DeviceMgrUI_widgetVerifyPINDlg"));
    QVBoxLayout* rows = new QVBoxLayout(inner);
    rows->setContentsMargins(0, 0, 0, 0);
    QLabel* prompt = new QLabel(inner);
    prompt->setObjectName(QStringLiteral("DeviceMgrUI_VerifyPIN"));
    prompt->setWordWrap(true);
    LineEdit* field = createCodeField(inner, QStringLiteral("DeviceMgrUI_VerifyeditPINText"),
                                      SLOT(showVerifyPinContextMenu(QPoint)), QSize(230, 20));
    QLabel* times = new QLabel(inner);
    times->setObjectName(QStringLiteral("DeviceMgrUI_VerifyPINTimes"));
    QPushButton* ok = new QPushButton(inner);
    ok->setObjectName(QStringLiteral("DeviceMgrUI_VerifyPINO"));
    ok->setAutoDefault(false);
    ok->setEnabled(false);
    QPushButton* cancel = new QPushButton(inner);
    cancel->setObjectName(QStringLiteral("DeviceMgrUI_VerifyPINCancel"));
    // Return in an incomplete field must not reach Cancel.
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
    connect(ok, SIGNAL(clicked()), this, SLOT(onVerifyPINOkButtonClicked()));
    connect(cancel, SIGNAL(clicked()), this, SLOT(onCancelButtonClicked()));

    m_pdialogVerifyPINDlg = dialog;
    m_plabelVerifyPIN = prompt;
    m_peditVerifyPINText = field;
    m_plabelVerifyPINTimes = times;
    m_pbuttonVerifyOK = ok;
    m_pbuttonVerifyCancel = cancel;
    changeLangVerifyPinDlg();
    return 0;
}

void CDeviceMgrService::showVerifyPINDlg()
{
    if (!m_pdialogVerifyPINDlg && createVerifyPINDlg() != 0)
        return;
    if (setDlgToInitialStateVerifyPin() != 0)
        return;
    CommonUtils::MoveCentre(m_pdialogVerifyPINDlg);
    m_pdialogVerifyPINDlg->show();
    m_pdialogVerifyPINDlg->raise();
    m_pdialogVerifyPINDlg->activateWindow();
    m_peditVerifyPINText->setFocus();
}

int CDeviceMgrService::setDlgToInitialStateVerifyPin()
{
    if (!m_pdialogVerifyPINDlg || !m_peditVerifyPINText || !m_pbuttonVerifyOK || !m_plabelVerifyPIN ||
        !m_plabelVerifyPINTimes) {
        DM_LOG("%s : %s : %s : , pre - conditionals are  NULL");
        return 1;
    }
    m_peditVerifyPINText->setText(QString());
    m_peditVerifyPINText->setEnabled(true);
    m_pbuttonVerifyOK->setEnabled(false);
    m_pbuttonVerifyOK->setDefault(false);
    if (QWidget* content = m_pdialogVerifyPINDlg->MainWidget())
        content->setEnabled(true);
    m_plabelVerifyPIN->setText(ids("IDS_MAINFRM_INPUT_PIN_PROMPT"));
    m_iVerifyDlgRetries = m_pUILogic ? m_pUILogic->GetPINRetryTimes() : -1;
    m_plabelVerifyPINTimes->setText(retriesText("IDS_MAINFRM_PIN_REMAIN_PROMPT", m_iVerifyDlgRetries));
    m_peditVerifyPINText->setFocus();
    return 0;
}

void CDeviceMgrService::onVerifyPINOkButtonClicked()
{
    DM_LOG("%s : %s : %s : , entered");
    initMainMenuObj();
    if (!m_pdialogVerifyPINDlg || !m_pUILogic || !m_peditVerifyPINText) {
        DM_LOG("Arg is NULL: %s: %s: %s %d", __LINE__);
        return;
    }
    QPointer<SimDlg> dialog(m_pdialogVerifyPINDlg);
    if (m_bCallActive) {
        // The SIM cannot be reached during a call; nothing is sent to it.
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
    int retries = 0;
    int result = 1;
    if (m_enPinState == DEVMGR_PIN_VERIFY) {
        QString pin = m_peditVerifyPINText->text();
        if (m_pbuttonVerifyOK)
            m_pbuttonVerifyOK->setEnabled(false);
        result = m_pUILogic->ProcessPIN(pin, retries, m_enPinState);
        pin.fill(QLatin1Char('0'));
    }

    if (result == 0) {
        DM_LOG("%s : %s : %s : m_bValidPinState = true");
        m_bValidPinState = true;
        closeSimDlg(dialog);
        QCoreApplication::sendPostedEvents();
        reportSimReadyByCardLock();
        DM_LOG("%s : %s : %s : After m_pdialogVerifyPINDlg->close ()");
        refreshSimMenu();
        return;
    }

    // A count that cannot be read gets no failure message; the label says it is unknown instead.
    if (retries >= 0) {
        showSimMessage(QMessageBox::Information, dialog, QStringLiteral("IDS_PIN_CHECK_FAILED"), true);
        if (!dialog)
            return;
    }

    if (retries > 0) {
        setDlgToInitialStateVerifyPin();
    } else if (retries == -1) {
        // The SIM still waits for its PIN: the user may try again.
        m_peditVerifyPINText->setText(QString());
        refreshSimMenu();
        if (m_plabelVerifyPINTimes)
            m_plabelVerifyPINTimes->setText(ids("IDS_MAINFRM_UNKNOWN"));
        m_iVerifyDlgRetries = -1;
        m_peditVerifyPINText->setFocus();
    } else {
        // No attempt left: the SIM now asks for the PUK.
        switchToPukDlg(dialog, false);
    }
}

void CDeviceMgrService::changeLangVerifyPinDlg()
{
    if (!m_pdialogVerifyPINDlg)
        return;
    m_pdialogVerifyPINDlg->setWindowTitle(ids("IDS_MAINFRM_PIN_VERIFY_WINDOWSTXT"));
    if (m_plabelVerifyPIN)
        m_plabelVerifyPIN->setText(ids("IDS_MAINFRM_INPUT_PIN_PROMPT"));
    if (m_plabelVerifyPINTimes)
        m_plabelVerifyPINTimes->setText(retriesText("IDS_MAINFRM_PIN_REMAIN_PROMPT", m_iVerifyDlgRetries));
    if (m_pbuttonVerifyOK)
        m_pbuttonVerifyOK->setText(ids("IDS_MAINFRM_OK_PROMPT"));
    if (m_pbuttonVerifyCancel)
        m_pbuttonVerifyCancel->setText(ids("IDS_MAINFRM_CANCEL_PROMPT"));
}
