// The plugin's PIN state: what the SIM asks for, and the job handed to the shared PIN dialog.
#pragma once

#include <QtCore/QMetaType>

// Values 0, 1, 4 and 5 come from reading the SIM; 2, 3, 6 and 7 are only ever requests passed
// into DeviceMgrUILogic::ProcessPIN or used as the PIN dialog's job.
enum E_DEVMGR_PIN_STATE : int {
    DEVMGR_PIN_READY = 0,   // no code needed
    DEVMGR_PIN_VERIFY = 1,  // the PIN must be entered
    DEVMGR_PIN_ENABLE = 2,  // request: switch the PIN request on
    DEVMGR_PIN_DISABLE = 3, // request: switch the PIN request off
    DEVMGR_UNLOCK_PIN = 4,  // the PUK must be entered
    DEVMGR_PIN_BLOCKED = 5, // the PUK is used up; the SIM cannot be unlocked here
    DEVMGR_CHANGE_PIN = 6,  // request: change the PIN
    DEVMGR_CARD_LOCK = 7    // request: verify the data card's network-lock code
};

// The signal PinStateChanged crosses threads through queued connections, which need the type
// registered by name (DeviceMgrUILogic registers it when it is created).
Q_DECLARE_METATYPE(E_DEVMGR_PIN_STATE)
