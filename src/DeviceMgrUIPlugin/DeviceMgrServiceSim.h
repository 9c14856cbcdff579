// What the SIM dialog files of the device manager service share: text lookup, card-lock values and
// the code rules of the fields.
#pragma once

#include "Change.h"

#include <QtCore/QString>

namespace devmgr_sim {

// The translated text of an IDS_ key (the key itself while no language is loaded).
inline QString ids(const char* key)
{
    return Change::tr(QString::fromLatin1(key), "DeviceMgrUIPlugin");
}

// Card-lock states as the device reports them: 2 the card is usable; 1 and 3 locked (3 for good).
enum { CARD_LOCK_LOCKED = 1, CARD_LOCK_USABLE = 2, CARD_LOCK_LOCKED_FOREVER = 3 };

// How the operator wants a locked data card handled.
enum E_CARD_CUSTOMIZATION {
    CARD_SUPPORT_UNLOCK = 0, // the user may type the unlock code
    CARD_ONLY_REMINDER = 1,  // a message, then the card is used as it is
    CARD_NO_REMINDER = 2,    // silence
    CARD_EXIT = 3            // a message, then the application ends
};

// Code lengths behind the OK buttons: PINs have 4 to 8 digits, PUKs and unlock codes 8.
constexpr int kMinPinLength = 4;
constexpr int kFullCodeLength = 8;

} // namespace devmgr_sim
