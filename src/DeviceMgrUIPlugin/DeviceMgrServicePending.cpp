// Device manager service: the operations that belong to work not built yet (SIM dialogs, device
// chooser, activation wizard, WWAN readiness thread, fingerprint lock, GID rules, last used device).
// Each one below does nothing and says so; its owner replaces it with the real operation and moves
// it to the file of its concern.
#include "DeviceMgrService.h"

// SIM dialogs: no dialog exists yet, so there is nothing to open.
void CDeviceMgrService::VerifyPIN()
{
}
void CDeviceMgrService::EnablePIN()
{
}
void CDeviceMgrService::DisablePIN()
{
}
void CDeviceMgrService::UnlockPIN()
{
}
void CDeviceMgrService::ModifyPIN()
{
}

// The PIN check: does nothing until the SIM dialogs and the WWAN readiness thread exist.
void CDeviceMgrService::checkPINWithWin7()
{
}

// Closes the SIM dialogs: does nothing until they exist.
void CDeviceMgrService::closeAllPopups(bool closeChooser)
{
    Q_UNUSED(closeChooser)
}

// The data card's network-lock dialog: does nothing until it exists.
void CDeviceMgrService::handleCardLockState()
{
}

// The SIM-invalid prompt on a shown frame: does nothing until the SIM dialogs exist.
void CDeviceMgrService::handleSIMOnFramelaunchedEvent()
{
}

// Fingerprint prompt and lock hand-back: do nothing until the fingerprint lock exists.
void CDeviceMgrService::handleFPLockOnFramelaunchedEvent()
{
}
void CDeviceMgrService::FPLockOnDialogClose()
{
}
void CDeviceMgrService::handleFPVerifyEvent()
{
}

// Activation: does nothing until the activation wizard exists.
void CDeviceMgrService::AutolaunchActivation()
{
}
void CDeviceMgrService::ActivateDevice()
{
}
// Without a wizard there is no activation window on screen; once it exists this asks
// ActivationWizard::IsActivationWindowShown().
bool CDeviceMgrService::activationWindowShown() const
{
    return false;
}
// Nothing to destroy until the activation wizard exists.
void CDeviceMgrService::destroyActivationWizard()
{
    m_pActivationWizard = nullptr;
}

// Retranslation of the SIM dialogs: does nothing until they exist.
void CDeviceMgrService::changeLangPinDlg()
{
}
void CDeviceMgrService::changeLangVerifyPinDlg()
{
}
void CDeviceMgrService::changeLangModifyPinDlg()
{
}
void CDeviceMgrService::changeLangPukDlg()
{
}

// Device chooser: no chooser is ever created yet (m_pDlgChooseDev stays null), so these are never
// reached; each does nothing until the chooser exists, and then calls the chooser's PopulateList(),
// ShowChooseDlg(parent) and ReloadPlugins(key, force) respectively.
void CDeviceMgrService::chooserPopulateList()
{
}
void CDeviceMgrService::chooserShowChooseDlg(QWidget* parent)
{
    Q_UNUSED(parent)
}
void CDeviceMgrService::chooserReloadPlugins(const QString& key, bool force)
{
    Q_UNUSED(key)
    Q_UNUSED(force)
}

// The last used device: answers no name until localdeviceinfo.xml is read.
QString CDeviceMgrService::GetLastUsedDeviceName()
{
    return QString();
}

// GID rules: answers "no match" until GIDConfig.xml and the GID tests exist, so no plugin set is
// chosen by GID.
bool CDeviceMgrService::IsGIDMatched(QString groupName)
{
    Q_UNUSED(groupName)
    return false;
}
