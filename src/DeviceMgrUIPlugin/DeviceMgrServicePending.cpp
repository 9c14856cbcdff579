// Device manager service: the operations that belong to work not built yet (device chooser,
// activation wizard, fingerprint lock, GID rules, last used device).
// Each one below does nothing and says so; its owner replaces it with the real operation and moves
// it to the file of its concern.
#include "DeviceMgrService.h"

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

// Activation: see DeviceMgrServiceActivation.cpp.

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
// Closing the chooser: nothing to close until it exists; then its CloseDlg().
void CDeviceMgrService::chooserCloseDlg()
{
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
