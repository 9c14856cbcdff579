// Class identifiers and plugin kinds of the host's plugins, and the notification codes in use.
#pragma once

// Class identifiers are compared as strings; their case is part of the identifier.
#define NOTIFY_PLUGIN_CLSID "C986A689-A5F6-4215-84BD-39BA626F1F57"
#define DIALUP_PLUGIN_CLSID "92804312-432E-401F-96BB-1C20D852815D"
#define MAINFRAME_PLUGIN_CLSID "D754AE84-535F-4c18-85F8-F154CFE34DDF"
#define MAINMENU_PLUGIN_CLSID "FCDC307E-06DC-4dfa-AC83-834D0E306D48"
#define MINIFRAME_PLUGIN_CLSID "D754AE84-535F-4c18-85F8-F154CFE34FFF"
#define CALLSRV_PLUGIN_CLSID "8772F2BF-3227-4203-AFDD-DBAD1E9D1F98"

enum HostPluginKind {
    NOTIFY_PLUGIN_ID = 0x2011,    // 8209
    DIALUP_PLUGIN_ID = 0x4011,    // 16401
    MAINFRAME_PLUGIN_ID = 0x1011, // 4113
    MAINMENU_PLUGIN_ID = 0x1003,  // 4099
    MINIFRAME_PLUGIN_ID = 0x1001  // 4097
};

// Notifications the host delivers to plugins.
enum HostNotification {
    NTF_FRAME_SHOWN = 258,      // 0x102: the main frame is on screen
    NTF_LANGUAGE_CHANGED = 320, // 0x140: the user picked another language
    NTF_CALL_DLG_SHOWN_1 = 784, // 784..786: the call service opened a dialog of its own
    NTF_CALL_DLG_SHOWN_2 = 785,
    NTF_CALL_DLG_SHOWN_3 = 786,
    NTF_CALL_DLG_CLOSED = 787 // the call service's dialog is gone
};

// Notifications the device manager sends.
enum DeviceMgrNotification {
    NTF_DEVICE_INIT_FINISH = 512,     // 0x200, to the dial-up plugin
    NTF_RADIO_OFF = 576,              // 0x240
    NTF_RADIO_ON = 577,               // 0x241
    NTF_SIM_READY = 578,              // 0x242: PIN done and the card is not network-locked
    NTF_SIM_NOT_READY = 579,          // 0x243
    NTF_RADIO_FOUND_OFF = 580,        // 0x244
    NTF_DEVICE_INIT_SUCCESS = 581,    // 0x245
    NTF_DEVICE_INIT_EVENT = 582,      // 0x246, to the mini frame
    NTF_DEVICE_ABOUT_TO_CHANGE = 583, // 0x247
    NTF_DEVICE_CHANGED = 584,         // 0x248
    NTF_PLUGINS_RELOADED = 585,       // 0x249
    NTF_POWER_EVENT = 854             // 0x356
};
