// Activation wizard: manual activation. The lock-code pages (MSL, one-time code), the device
// identity and the MIN, MDN, SID and PRL page plug in here; the frame dispatches to these from the
// selection page, from Next on pages 1 to 3 and from the browse button.
//
// Until those pages exist, manual activation leaves an empty page whose only way out is Cancel, the
// same dead end the wizard shows for a lock status it does not know.
#include "ActivationWizard.h"

#include "DeviceMgrLog.h"

#include <QtWidgets/QPushButton>

void ActivationWizard::ManualActivate()
{
    DM_LOG("%s : %s : %s : Entered");
    if (m_pButtonNext)
        m_pButtonNext->setEnabled(false);
    if (m_pButtonBack)
        m_pButtonBack->setEnabled(false);
}

void ActivationWizard::VerifyOTKSL()
{
}

void ActivationWizard::verifyMINSID()
{
}

void ActivationWizard::verifyMSL()
{
}

void ActivationWizard::onBtnBrowserPRLClicked()
{
}
