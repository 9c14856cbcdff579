// Activation wizard: over-the-air activation (OTASP). The device dials the carrier, the network
// programs the card and the device reports each stage; the wizard shows them and closes off.
#include "ActivationWizard.h"

#include "DeviceMgrLog.h"

#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>

#include <cstring>

namespace {

// The SDK takes the dial string as 8-bit text; characters beyond it arrive as '?'.
QByteArray dialString(const QString& number)
{
    return number.toLatin1();
}

} // namespace

void ActivationWizard::AutoActivate()
{
    createMessageDisplayLayout(tr(QStringLiteral("IDS_AUTOACT_BEGIN")));
    // While the call runs the user may still abort it.
    if (m_pButtonCancel)
        m_pButtonCancel->setText(tr(QStringLiteral("IDS_BTN_CANCEL")));
    // Set before registering: whatever the registrations answer, the tear-down must withdraw them
    // and close the procedure on the device.
    autoRegistered = true;
    // A state left from an earlier procedure in this run says nothing about this one: a call that
    // ends before any new state must count as failed.
    otaState.store(ZELK_OTASP_NONE);
    if (ZELK_DevSrv_RegisterDevMgrCallback(OnDevMgrEventCB) == ZELK_ERROR_SUCCESS)
        DM_LOG("%s : %s : %s : Device Registered for Auto Activation");
    else
        DM_WARN("%s : %s : %s : Auto Activation Registration Failed");
    if (ZELK_CallSrv_RegisterCallEventHandler(OnDevMgrEventCB) != ZELK_ERROR_SUCCESS)
        DM_WARN("%s : %s : %s : CallApp Activation Registration Failed");
    const QByteArray number = dialString(m_activationInfo.strAutoNum);
    if (ZELK_DevSrv_AutoCHKOTKSLActive(number.constData()) != ZELK_ERROR_SUCCESS) {
        if (m_pLabelMessage)
            m_pLabelMessage->setText(tr(QStringLiteral("IDS_ACTIVE_FAILED")));
        DM_WARN("%s : %s : %s : Auto Activation SDK Failed");
    }
}

int ActivationWizard::OnDevMgrEventCB(int event, void* data)
{
    // Registered only while a wizard exists; the test costs nothing and keeps a late event harmless.
    ActivationWizard* wizard = g_pActivationInstance.load();
    if (!wizard)
        return 1;
    if (event == ZELK_EVENT_DEV_OTASP_STATE) {
        if (data) {
            int state = 0;
            std::memcpy(&state, data, sizeof(state));
            wizard->otaState.store(state);
        }
        emit wizard->signalOTAMsg();
    } else if (event == ZELK_EVENT_CALL_END) {
        emit wizard->signalAutoCallEnd();
    }
    return 1;
}

void ActivationWizard::onOTAMsg()
{
    if (!m_pButtonCancel || !m_pLabelMessage) {
        DM_LOG("%s : %s : %s : Precondition failed");
        return;
    }
    static const char* const kStateText[] = {
        "IDS_AUTOACT_OTASP_NONE",           "IDS_AUTOACT_STATE_IN_PROGRESS",
        "IDS_AUTOACT_STATE_SPL_UNLOCKED",   "IDS_AUTOACT_STATE_NAM_DOWNLOADED",
        "IDS_AUTOACT_STATE_MDN_DOWNLOADED", "IDS_AUTOACT_STATE_IMSI_DOWNLOADED",
        "IDS_AUTOACT_STATE_PRL_DOWNLOADED", "IDS_AUTOACT_STATE_COMMIT_SUCCESS",
        "IDS_AUTOACT_STATE_PROG_SUCCESS",   "IDS_AUTOACT_STATE_PROG_FAILED"};
    const int state = otaState.load();
    if (state < ZELK_OTASP_NONE || state > ZELK_OTASP_PROG_FAILED)
        return;
    m_pLabelMessage->setText(tr(QString::fromLatin1(kStateText[state])));
    if (state == ZELK_OTASP_COMMIT_SUCCESS || state == ZELK_OTASP_PROG_SUCCESS) {
        currentPage = PageSuccess;
        m_pButtonCancel->setText(tr(QStringLiteral("IDS_BTN_FINISH")));
    } else if (state == ZELK_OTASP_PROG_FAILED) {
        currentPage = PageFailure;
        m_pButtonCancel->setText(tr(QStringLiteral("IDS_BTN_FINISH")));
    }
}

void ActivationWizard::onAutoCallEnd()
{
    // The last state seen decides, not the call end itself.
    const int state = otaState.load();
    if (state == ZELK_OTASP_COMMIT_SUCCESS || state == ZELK_OTASP_PROG_SUCCESS) {
        DM_LOG("%s : %s : %s : autoactivation has succeeded");
        if (m_pLabelMessage)
            m_pLabelMessage->setText(tr(QStringLiteral("IDS_ACTIVE_SUCCESS")));
    } else {
        DM_LOG("%s : %s : %s : autoActivation has Failed");
        currentPage = PageFailure;
        if (m_pLabelMessage)
            m_pLabelMessage->setText(tr(QStringLiteral("IDS_ACTIVE_FAILED")));
    }
    if (m_pButtonCancel)
        m_pButtonCancel->setText(tr(QStringLiteral("IDS_BTN_FINISH")));
    const QByteArray number = dialString(m_activationInfo.strAutoNum);
    if (ZELK_DevSrv_OTAAutoActClear(number.constData()) != ZELK_ERROR_SUCCESS)
        DM_WARN("%s : %s : %s : ZELK_DevSrv_OTAAutoActClear Failed");
}

void ActivationWizard::unRegisterCB()
{
    // autoRegistered stays set on purpose: every later tear-down in this run closes the procedure
    // on the device again, even after a purely manual activation.
    if (!autoRegistered)
        return;
    // A call that has not reached its end is ended here, as a failure unless the network had
    // already committed.
    if (currentPage != PageSuccess && currentPage != PageFailure)
        onAutoCallEnd();
    if (ZELK_DevSrv_UnRegisterDevMgrCallback(OnDevMgrEventCB) != ZELK_ERROR_SUCCESS)
        DM_WARN("%s : %s : %s : ZELK_DevSrv_UnRegisterDevMgrCallback Failed");
    if (ZELK_CallSrv_UnRegisterCallEventHandler(OnDevMgrEventCB) != ZELK_ERROR_SUCCESS)
        DM_WARN("%s : %s : %s : ZELK_CallSrv_UnRegisterCallEventHandler Failed");
}
