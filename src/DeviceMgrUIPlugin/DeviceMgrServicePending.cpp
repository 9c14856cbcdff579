// Device manager service: the operations that belong to work not built yet (activation wizard,
// fingerprint lock).
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
