// Device manager service: what the user sees about the data card's network lock after each
// successful PIN step, and the unlock code entry in the PIN dialog.
#include "DeviceMgrService.h"

#include "CommonUtils.h"
#include "DeviceMgrLog.h"
#include "DeviceMgrServiceSim.h"

#include <QtCore/QCoreApplication>
#include <QtWidgets/QMessageBox>

using namespace devmgr_sim;

void CDeviceMgrService::VerifyCardLock()
{
    m_enPinState = DEVMGR_CARD_LOCK;
    showPINDlg();
}

int CDeviceMgrService::setDlgToInitialStateCardVerify()
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
    m_plabelPINPrompt->setText(ids("IDS_MAINFRM_CARDLOCKDLG_INPUTPLEASE"));
    m_iPINDlgRetries = m_pUILogic ? m_pUILogic->GetCardRetryTimes() : -1;
    m_plabelPINTimes->setText(retriesText("IDS_MAINFRM_PIN_REMAIN_PROMPT", m_iPINDlgRetries));
    applyPinDlgTitle();
    m_peditPINText->setFocus();
    return 0;
}

void CDeviceMgrService::handleCardLockState()
{
    if (!m_bFrameLaunched)
        return;
    DM_LOG("%s : %s : %s : , entered");
    if (!m_pUILogic) {
        DM_LOG("%s : %s : %s : , Pre-conditions failed");
        return;
    }
    hideInfoDlg();
    const int customization = m_pUILogic->GetCardCustomization();
    m_enCardState = m_pUILogic->GetCardLockedState();
    if (m_enCardState != CARD_LOCK_LOCKED && m_enCardState != CARD_LOCK_LOCKED_FOREVER)
        return;
    // The card word of the messages. A user's settings file may empty it: the sentence then takes
    // the word that showMessage uses, never a gap.
    const auto cardWord = [this] {
        const QString word = m_pUILogic->GetSimTypeText();
        if (!word.isEmpty())
            return word;
        return readProductType() == ZELK_PRODUCT_TYPE_CDMA ? QStringLiteral("UIM")
                                                           : QStringLiteral("SIM/USIM");
    };

    switch (customization) {
    case CARD_SUPPORT_UNLOCK:
        DM_LOG("%s : %s : %s : State = CARD_SUPPORT_UNLOCK");
        if (m_enCardState != CARD_LOCK_LOCKED_FOREVER) {
            VerifyCardLock();
            break;
        }
        // No attempts left to unlock it: the user can only be told.
        [[fallthrough]];
    case CARD_ONLY_REMINDER: {
        DM_LOG("%s : %s : %s : State = CARD_ONLY_REMINDER");
        QString text = ids("IDS_CARDLOCKDLG_DEADLOCK");
        text.replace(QStringLiteral("%s"), cardWord());
        m_bMsgBoxShown = true;
        CommonUtils::ShowMessage(QMessageBox::Information, nullptr, ids("IDS_MAINFRM_PROMPT"), text,
                                 QStringLiteral("IDS_OK"));
        m_bMsgBoxShown = false;
        AutolaunchActivation();
        break;
    }
    case CARD_NO_REMINDER:
        DM_LOG("%s : %s : %s : State = CARD_NO_REMINDER");
        AutolaunchActivation();
        break;
    case CARD_EXIT: {
        DM_LOG("%s : %s : %s : State = CARD_EXIT");
        QString text = ids("IDS_CARDLOCKDLG_FORCE_EXIT");
        text.replace(QStringLiteral("%s"), cardWord());
        m_bMsgBoxShown = true;
        CommonUtils::ShowMessage(QMessageBox::Information, nullptr, ids("IDS_MAINFRM_PROMPT"), text,
                                 QStringLiteral("IDS_OK"));
        m_bMsgBoxShown = false;
        // The operator allows no use of this card in this program: the whole application ends.
        QCoreApplication::exit(0);
        break;
    }
    default:
        DM_LOG("%s : %s : %s : State = default");
        break;
    }
}
