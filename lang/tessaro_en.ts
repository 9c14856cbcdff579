<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="en_US">
<context>
    <name>DeviceMgrUIPlugin</name>
    <message>
        <source>IDS_ACTIVE_DEVICE_FALSE</source>
        <extracomment>Question (Yes/No) before the active data card is switched.</extracomment>
        <translation>Switching the data card ends the current connection. Do you want to switch to the selected data card?</translation>
    </message>
    <message>
        <source>IDS_ACTIVE_FAILED</source>
        <extracomment>Message page when activation fails.</extracomment>
        <translation>The activation failed. Please try again later or contact your service provider.</translation>
    </message>
    <message>
        <source>IDS_ACTIVE_OTKSL_MDN_PROMPT</source>
        <extracomment>Label beside the MDN field (60 pixels wide).</extracomment>
        <translation>MDN:</translation>
    </message>
    <message>
        <source>IDS_ACTIVE_OTKSL_MIN_PROMPT</source>
        <extracomment>Label beside the MIN field (60 pixels wide).</extracomment>
        <translation>MIN:</translation>
    </message>
    <message>
        <source>IDS_ACTIVE_OTKSL_SID_PROMPT</source>
        <extracomment>Label beside the SID field (60 pixels wide).</extracomment>
        <translation>SID:</translation>
    </message>
    <message>
        <source>IDS_ACTIVE_SUCCESS</source>
        <extracomment>Final message page after a successful activation; Finish restarts the data card. Keep the button name identical to IDS_BTN_FINISH.</extracomment>
        <translation>The data card has been activated. Click Finish to restart the data card.</translation>
    </message>
    <message>
        <source>IDS_AUTOACT_BEGIN</source>
        <extracomment>Message page while automatic activation runs.</extracomment>
        <translation>Automatic activation has started. This may take a few minutes. Please wait...</translation>
    </message>
    <message>
        <source>IDS_AUTOACT_OTASP_NONE</source>
        <extracomment>Automatic activation progress.</extracomment>
        <translation>Waiting for the activation to start...</translation>
    </message>
    <message>
        <source>IDS_AUTOACT_STATE_COMMIT_SUCCESS</source>
        <extracomment>Automatic activation: success; the Cancel button now reads Finish.</extracomment>
        <translation>The activation data has been saved on the data card.</translation>
    </message>
    <message>
        <source>IDS_AUTOACT_STATE_IMSI_DOWNLOADED</source>
        <extracomment>Automatic activation progress.</extracomment>
        <translation>Subscriber identity (IMSI) received.</translation>
    </message>
    <message>
        <source>IDS_AUTOACT_STATE_IN_PROGRESS</source>
        <extracomment>Automatic activation progress.</extracomment>
        <translation>Activation in progress...</translation>
    </message>
    <message>
        <source>IDS_AUTOACT_STATE_MDN_DOWNLOADED</source>
        <extracomment>Automatic activation progress.</extracomment>
        <translation>Phone number (MDN) received.</translation>
    </message>
    <message>
        <source>IDS_AUTOACT_STATE_NAM_DOWNLOADED</source>
        <extracomment>Automatic activation progress.</extracomment>
        <translation>Number assignment (NAM) received.</translation>
    </message>
    <message>
        <source>IDS_AUTOACT_STATE_PRL_DOWNLOADED</source>
        <extracomment>Automatic activation progress.</extracomment>
        <translation>Preferred roaming list (PRL) received.</translation>
    </message>
    <message>
        <source>IDS_AUTOACT_STATE_PROG_FAILED</source>
        <extracomment>Automatic activation: failure; the Cancel button now reads Finish.</extracomment>
        <translation>Programming the data card failed.</translation>
    </message>
    <message>
        <source>IDS_AUTOACT_STATE_PROG_SUCCESS</source>
        <extracomment>Automatic activation: success; the Cancel button now reads Finish.</extracomment>
        <translation>The data card has been programmed successfully.</translation>
    </message>
    <message>
        <source>IDS_AUTOACT_STATE_SPL_UNLOCKED</source>
        <extracomment>Automatic activation progress.</extracomment>
        <translation>Service programming lock released.</translation>
    </message>
    <message>
        <source>IDS_AUTO_MSG</source>
        <extracomment>Explanation under the automatic activation choice.</extracomment>
        <translation>Your service provider's network activates the data card over the air. This is the recommended method.</translation>
    </message>
    <message>
        <source>IDS_BTN_AUTO</source>
        <extracomment>Radio button on the first page.</extracomment>
        <translation>Automatic activation</translation>
    </message>
    <message>
        <source>IDS_BTN_BACK</source>
        <extracomment>Wizard button.</extracomment>
        <translation>Back</translation>
    </message>
    <message>
        <source>IDS_BTN_CANCEL</source>
        <extracomment>Wizard button.</extracomment>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>IDS_BTN_FINISH</source>
        <extracomment>Wizard button that replaces Cancel when activation has ended.</extracomment>
        <translation>Finish</translation>
    </message>
    <message>
        <source>IDS_BTN_MANUAL</source>
        <extracomment>Radio button on the first page.</extracomment>
        <translation>Manual activation</translation>
    </message>
    <message>
        <source>IDS_BTN_NEXT</source>
        <extracomment>Wizard button.</extracomment>
        <translation>Next</translation>
    </message>
    <message>
        <source>IDS_CANCEL</source>
        <extracomment>Button.</extracomment>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>IDS_CARDLOCKDLG_DEADLOCK</source>
        <extracomment>Message box for a locked data card that cannot be unlocked here. %s is replaced by the card type text (e.g. "SIM/USIM" or "UIM").</extracomment>
        <translation>This data card is locked to another network and cannot be used with the inserted %s card.</translation>
    </message>
    <message>
        <source>IDS_CARDLOCKDLG_FORCE_EXIT</source>
        <extracomment>Message box before the application ends because of a locked data card. %s is replaced by the card type text (e.g. "SIM/USIM" or "UIM").</extracomment>
        <translation>This data card is locked to another network and cannot be used with the inserted %s card. The application will now close.</translation>
    </message>
    <message>
        <source>IDS_DETECTE_DEVICE</source>
        <extracomment>Information window shown for 10 seconds when a data card is detected.</extracomment>
        <translation>A data card has been detected.</translation>
    </message>
    <message>
        <source>IDS_DEVICE_INVALID</source>
        <extracomment>Information window shown for 3 seconds when the data card is rejected.</extracomment>
        <translation>The data card has been rejected and cannot be used.</translation>
    </message>
    <message>
        <source>IDS_DEVICE_NAME</source>
        <extracomment>Column header of the device list.</extracomment>
        <translation>Device Name</translation>
    </message>
    <message>
        <source>IDS_DEV_MGR_PROMPT</source>
        <extracomment>Title of the device chooser.</extracomment>
        <translation>Select Data Card</translation>
    </message>
    <message>
        <source>IDS_DLG_TITLE</source>
        <extracomment>Title of the activation wizard.</extracomment>
        <translation>Service Activation</translation>
    </message>
    <message>
        <source>IDS_ESN_MSG</source>
        <extracomment>Explanation above the ESN or MEID of the data card.</extracomment>
        <translation>Your service provider may ask you for this number of your data card:</translation>
    </message>
    <message>
        <source>IDS_ESN_PROMPT</source>
        <extracomment>Label before the electronic serial number (about 50 pixels).</extracomment>
        <translation>ESN:</translation>
    </message>
    <message>
        <source>IDS_FPLOCK_PROMPT</source>
        <extracomment>Fingerprint prompt window (general text).</extracomment>
        <translation>The data card is protected by a fingerprint lock. Please verify your fingerprint on the sensor to unlock it.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_BACKWARD_MOVEMENT</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>Backward movement detected. Please swipe in one direction only.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_BAD_QUALITY</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>The fingerprint image quality is poor. Please try again.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_CALIB_START</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>Calibrating the sensor. Please do not touch it.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_CENTER_AND_PRESS_HARDER</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>Please center your finger on the sensor and press harder.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_CLEAN_SENSOR</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>Please clean the sensor.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_CONSOLIDATION_FAIL</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>The fingerprint samples could not be combined. Please try again.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_CONSOLIDATION_SUCCEED</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>The fingerprint samples have been combined.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_ENROLL_PROGRESS</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>Fingerprint enrollment in progress...</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_ENROLL_START</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>Fingerprint enrollment has started.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_FINGER_DETECT_START</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>Waiting for your finger...</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_GOOD_IMAGE</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>Fingerprint captured.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_GUI_FINISH</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>The fingerprint check has ended.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_GUI_FINISH_FAIL</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>The fingerprint check failed.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_GUI_FINISH_SUCCEED</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>The fingerprint check was successful.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_IMAGE_PROCESSED</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>The fingerprint has been processed.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_JOINT_DETECTED</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>A finger joint was detected. Please use your fingertip.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_KEEP_FINGER</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>Please keep your finger on the sensor.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_NO_FINGER</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>No finger detected.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_NO_MATCH</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>The fingerprint does not match. Please try again.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_PROCESSING_IMAGE</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>Processing the fingerprint...</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_PUT_FINGER</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>Please place your finger on the sensor.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_PUT_FINGER2</source>
        <extracomment>Fingerprint prompt: the numbered keys ask for the finger for the 2nd, 3rd, 4th and 5th time.</extracomment>
        <translation>Please place your finger on the sensor a second time.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_PUT_FINGER3</source>
        <extracomment>Fingerprint prompt: the numbered keys ask for the finger for the 2nd, 3rd, 4th and 5th time.</extracomment>
        <translation>Please place your finger on the sensor a third time.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_PUT_FINGER4</source>
        <extracomment>Fingerprint prompt: the numbered keys ask for the finger for the 2nd, 3rd, 4th and 5th time.</extracomment>
        <translation>Please place your finger on the sensor a fourth time.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_PUT_FINGER5</source>
        <extracomment>Fingerprint prompt: the numbered keys ask for the finger for the 2nd, 3rd, 4th and 5th time.</extracomment>
        <translation>Please place your finger on the sensor a fifth time.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_REMOVE_FINGER</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>Please lift your finger from the sensor.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_START</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>Starting the fingerprint sensor...</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_SWIPE_IN_PROGRESS</source>
        <extracomment>Fingerprint prompt while the finger is being swiped.</extracomment>
        <translation>Reading the fingerprint...</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_TOO_DARK</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>The fingerprint image is too dark. Please press more lightly.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_TOO_DRY</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>Your finger is too dry. Please moisten it slightly and try again.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_TOO_FAST</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>You swiped too fast. Please swipe more slowly.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_TOO_HIGH</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>Your finger is too high. Please move it down.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_TOO_LEFT</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>Your finger is too far to the left. Please move it to the right.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_TOO_LIGHT</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>The fingerprint image is too light. Please press a little harder.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_TOO_LOW</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>Your finger is too low. Please move it up.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_TOO_RIGHT</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>Your finger is too far to the right. Please move it to the left.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_TOO_SHORT</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>The swipe was too short. Please swipe your whole fingertip over the sensor.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_TOO_SKEWED</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>Your finger is at an angle. Please keep it straight.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_TOO_SMALL</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>The captured area is too small. Please place more of your finger on the sensor.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_TOO_STRANGE</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>The fingerprint could not be recognized. Please try again.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_TOUCH_SENSOR</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>Please touch the sensor.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_VERIFY_START</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>Fingerprint verification has started.</translation>
    </message>
    <message>
        <source>IDS_INIT_DEV_UNDERWAY</source>
        <extracomment>Information window shown for 3 seconds while the data card starts up.</extracomment>
        <translation>The data card is being initialized. Please wait...</translation>
    </message>
    <message>
        <source>IDS_MAINFRM_CANCEL_PROMPT</source>
        <extracomment>Cancel button of the PIN dialogs.</extracomment>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>IDS_MAINFRM_CARDLOCKDLG_CANCELPROMPT</source>
        <extracomment>Question when the unlock-code dialog is cancelled.</extracomment>
        <translation>The data card will stay locked. Do you really want to cancel?</translation>
    </message>
    <message>
        <source>IDS_MAINFRM_CARDLOCKDLG_CAPTION</source>
        <extracomment>Title of the dialog that asks for the data card's unlock code.</extracomment>
        <translation>Unlock Data Card</translation>
    </message>
    <message>
        <source>IDS_MAINFRM_CARDLOCKDLG_INPUTPLEASE</source>
        <extracomment>Label above the unlock-code field.</extracomment>
        <translation>Please enter the unlock code of the data card:</translation>
    </message>
    <message>
        <source>IDS_MAINFRM_CARDLOCKDLG_LEFTTIMES</source>
        <extracomment>Retries label: the program appends the number of attempts directly after this text, without inserting any separator, so the text ends with a colon and a blank ("Remaining attempts: 3"). No placeholder. Shown under the service programming code field of the activation wizard.</extracomment>
        <translation>Remaining attempts: </translation>
    </message>
    <message>
        <source>IDS_MAINFRM_CHANGEPIN_SUCCESS</source>
        <extracomment>Message box after a successful PIN change.</extracomment>
        <translation>The PIN has been changed.</translation>
    </message>
    <message>
        <source>IDS_MAINFRM_DISABLEPIN_SUCCESS</source>
        <extracomment>Message box after the PIN request was switched off.</extracomment>
        <translation>The PIN request has been disabled.</translation>
    </message>
    <message>
        <source>IDS_MAINFRM_DISABLE_WINDOWSTXT</source>
        <extracomment>Title of the dialog that switches the PIN request off.</extracomment>
        <translation>Disable PIN Request</translation>
    </message>
    <message>
        <source>IDS_MAINFRM_ENABLEPIN_SUCCESS</source>
        <extracomment>Message box after the PIN request was switched on.</extracomment>
        <translation>The PIN request has been enabled.</translation>
    </message>
    <message>
        <source>IDS_MAINFRM_ENABLE_WINDOWSTXT</source>
        <extracomment>Title of the dialog that switches the PIN request on.</extracomment>
        <translation>Enable PIN Request</translation>
    </message>
    <message>
        <source>IDS_MAINFRM_ERROR_PROMPT</source>
        <extracomment>Title of error message boxes.</extracomment>
        <translation>Error</translation>
    </message>
    <message>
        <source>IDS_MAINFRM_INPUT_NEW_PIN_PROMPT</source>
        <extracomment>Label beside the new-PIN field.</extracomment>
        <translation>New PIN:</translation>
    </message>
    <message>
        <source>IDS_MAINFRM_INPUT_NEW_PIN_PROMPT2</source>
        <extracomment>Label beside the field that repeats the new PIN.</extracomment>
        <translation>Confirm new PIN:</translation>
    </message>
    <message>
        <source>IDS_MAINFRM_INPUT_OLD_PIN_PROMPT</source>
        <extracomment>Label beside the current-PIN field of the change-PIN dialog.</extracomment>
        <translation>Current PIN:</translation>
    </message>
    <message>
        <source>IDS_MAINFRM_INPUT_PIN_PROMPT</source>
        <extracomment>Label above the PIN field.</extracomment>
        <translation>Please enter the PIN:</translation>
    </message>
    <message>
        <source>IDS_MAINFRM_INPUT_PUK_PROMPT</source>
        <extracomment>Label beside the PUK field of the unblock dialog.</extracomment>
        <translation>PUK:</translation>
    </message>
    <message>
        <source>IDS_MAINFRM_OK_PROMPT</source>
        <extracomment>OK button of the PIN dialogs.</extracomment>
        <translation>OK</translation>
    </message>
    <message>
        <source>IDS_MAINFRM_PIN_CANCELPROMPT</source>
        <extracomment>Question when a PIN or PUK dialog is cancelled or closed (Yes/No or OK/Cancel).</extracomment>
        <translation>Do you really want to cancel the PIN entry?</translation>
    </message>
    <message>
        <source>IDS_MAINFRM_PIN_CHANGE_WINDOWSTXT</source>
        <extracomment>Title of the change-PIN dialog.</extracomment>
        <translation>Change PIN</translation>
    </message>
    <message>
        <source>IDS_MAINFRM_PIN_REMAIN_PROMPT</source>
        <extracomment>Retries label: the program appends the number of attempts directly after this text, without inserting any separator, so the text ends with a colon and a blank ("Remaining attempts: 3"). No placeholder. Used for the PIN and for the unlock code of the data card.</extracomment>
        <translation>Remaining attempts: </translation>
    </message>
    <message>
        <source>IDS_MAINFRM_PIN_UNLOCK_WINDOWSTXT</source>
        <extracomment>Title of the dialog that unblocks the PIN with the PUK.</extracomment>
        <translation>Unblock PIN</translation>
    </message>
    <message>
        <source>IDS_MAINFRM_PIN_VERIFY_WINDOWSTXT</source>
        <extracomment>Title of the PIN dialog shown at start-up.</extracomment>
        <translation>Enter PIN</translation>
    </message>
    <message>
        <source>IDS_MAINFRM_PROMPT</source>
        <extracomment>Title of the plugin's message boxes (information, warnings and questions).</extracomment>
        <translation>Notice</translation>
    </message>
    <message>
        <source>IDS_MAINFRM_PUK_REMAIN_PROMPT</source>
        <extracomment>Retries label: the program appends the number of attempts directly after this text, without inserting any separator, so the text ends with a colon and a blank ("Remaining attempts: 3"). No placeholder.</extracomment>
        <translation>Remaining PUK attempts: </translation>
    </message>
    <message>
        <source>IDS_MAINFRM_UNKNOWN</source>
        <extracomment>Replaces the whole retries label when the number of attempts cannot be read; no number follows.</extracomment>
        <translation>Remaining attempts: unknown</translation>
    </message>
    <message>
        <source>IDS_MAINFRM_UNLOCKPIN_SUCCESS</source>
        <extracomment>Message box after a successful unblock with the PUK.</extracomment>
        <translation>The PIN has been unblocked and the new PIN is now active.</translation>
    </message>
    <message>
        <source>IDS_MANUAL_MSG</source>
        <extracomment>Explanation under the manual activation choice (label about 300 x 100 pixels).</extracomment>
        <translation>You enter the activation data provided by your service provider (MIN, MDN, SID) yourself. A lock code may be required.</translation>
    </message>
    <message>
        <source>IDS_MEID_PROMPT</source>
        <extracomment>Label before the mobile equipment identifier (about 50 pixels).</extracomment>
        <translation>MEID:</translation>
    </message>
    <message>
        <source>IDS_MGR_LIST_PROMPT</source>
        <extracomment>Label above the list of attached data cards.</extracomment>
        <translation>Select the data card to use:</translation>
    </message>
    <message>
        <source>IDS_MSG_CARD_BLOCKED</source>
        <extracomment>Message box shown both after the last wrong PUK (SIM card) and after the last wrong unlock code (data card), hence the neutral word "card". No placeholder is replaced here.</extracomment>
        <translation>The card is permanently blocked. Please contact your service provider.</translation>
    </message>
    <message>
        <source>IDS_MSG_WWAN_PRIVILIGE</source>
        <extracomment>Message box when the operating system refuses the unblock request.</extracomment>
        <translation>The system's mobile broadband service does not allow this program to unblock the PIN. Please unblock the PIN in the system's mobile broadband settings.</translation>
    </message>
    <message>
        <source>IDS_MSL_FAILED</source>
        <extracomment>Message page after a refused MSL code. Keep the button name identical to IDS_BTN_FINISH.</extracomment>
        <translation>The MSL code was not accepted. Click Finish and start the activation again.</translation>
    </message>
    <message>
        <source>IDS_MSL_MSG</source>
        <extracomment>Explanation on the MSL page (label 300 x 64 pixels).</extracomment>
        <translation>Please enter the 6-digit master subsidy lock code (MSL) provided by your service provider.</translation>
    </message>
    <message>
        <source>IDS_MSL_PROMPT_MSL</source>
        <extracomment>Label beside the MSL field (60 pixels wide).</extracomment>
        <translation>MSL:</translation>
    </message>
    <message>
        <source>IDS_NO</source>
        <extracomment>Button of a question box.</extracomment>
        <translation>No</translation>
    </message>
    <message>
        <source>IDS_OK</source>
        <extracomment>Button.</extracomment>
        <translation>OK</translation>
    </message>
    <message>
        <source>IDS_OPEN_PRL_FILE</source>
        <extracomment>Caption of the file chooser.</extracomment>
        <translation>Open PRL File</translation>
    </message>
    <message>
        <source>IDS_OTKSL_PROMPT_PWD</source>
        <extracomment>Label beside the service programming code field.</extracomment>
        <translation>SPC:</translation>
    </message>
    <message>
        <source>IDS_PIN_CHANGE_FAILED</source>
        <extracomment>Message box after a failed PIN change.</extracomment>
        <translation>The PIN could not be changed. Please check the current PIN.</translation>
    </message>
    <message>
        <source>IDS_PIN_CHECK_FAILED</source>
        <extracomment>Message box after a wrong PIN in the start-up dialog; the dialog then shows the remaining attempts.</extracomment>
        <translation>The PIN you entered is incorrect.</translation>
    </message>
    <message>
        <source>IDS_PIN_DISABLE_FAILED</source>
        <extracomment>Message box after a failed attempt to switch the PIN request off (also after IDS_PIN_PIN_LOCKED).</extracomment>
        <translation>The PIN request could not be disabled.</translation>
    </message>
    <message>
        <source>IDS_PIN_ENABLE_FAILED</source>
        <extracomment>Message box after a failed attempt to switch the PIN request on (also after IDS_PIN_PIN_LOCKED).</extracomment>
        <translation>The PIN request could not be enabled.</translation>
    </message>
    <message>
        <source>IDS_PIN_MSG_PIN_DIFFER</source>
        <extracomment>Message box when the two new PINs differ.</extracomment>
        <translation>The new PIN and its confirmation do not match.</translation>
    </message>
    <message>
        <source>IDS_PIN_PIN_LOCKED</source>
        <extracomment>Message box when no PIN attempts are left.</extracomment>
        <translation>The PIN has been blocked because it was entered incorrectly too many times. Please unblock it with the PUK.</translation>
    </message>
    <message>
        <source>IDS_PIN_PUK_FAILED</source>
        <extracomment>Message box after a wrong PUK while attempts are left.</extracomment>
        <translation>The PUK you entered is incorrect. Please try again.</translation>
    </message>
    <message>
        <source>IDS_PIN_SIM_LOCKED</source>
        <extracomment>Message box when the PUK is used up. Every %s is replaced by the card word ("SIM/USIM", "UIM" or the configured name).</extracomment>
        <translation>The %s card is permanently blocked. Please contact your service provider.</translation>
    </message>
    <message>
        <source>IDS_PRL_BTN_BROWSER</source>
        <extracomment>Browse button for the PRL file (about 22 x 20 pixels).</extracomment>
        <translation>...</translation>
    </message>
    <message>
        <source>IDS_PRL_FILE_FILTER</source>
        <extracomment>File chooser filter: used as it is as the filter pattern; keep the patterns in brackets and the ;; separators.</extracomment>
        <translation>PRL files (*.prl *.PRL);;All files (*)</translation>
    </message>
    <message>
        <source>IDS_PRL_FILE_NOT_EXIST</source>
        <extracomment>Error box.</extracomment>
        <translation>The PRL file does not exist or cannot be opened. Please check the path.</translation>
    </message>
    <message>
        <source>IDS_PRL_LABEL</source>
        <extracomment>Label beside the PRL file path (60 pixels wide).</extracomment>
        <translation>PRL:</translation>
    </message>
    <message>
        <source>IDS_PRL_NO_MEMORY</source>
        <extracomment>Error box.</extracomment>
        <translation>There is not enough memory to read the PRL file.</translation>
    </message>
    <message>
        <source>IDS_PRL_READ_ERROR</source>
        <extracomment>Error box.</extracomment>
        <translation>The PRL file could not be read completely.</translation>
    </message>
    <message>
        <source>IDS_PROMPT_CALLING_DISABLE</source>
        <extracomment>Warning when OK is pressed in a PIN dialog while a call is active.</extracomment>
        <translation>This is not possible during a call. Please end the call first.</translation>
    </message>
    <message>
        <source>IDS_PROMPT_CAPTION</source>
        <extracomment>Title of the question before the active data card is switched.</extracomment>
        <translation>Switch Data Card</translation>
    </message>
    <message>
        <source>IDS_SIM_INVALID</source>
        <extracomment>Message box text. Every %s is replaced by the card word ("SIM/USIM", "UIM" or the configured name).</extracomment>
        <translation>The %s card is missing or invalid. Please insert a valid %s card.</translation>
    </message>
    <message>
        <source>IDS_SPC_FAILED</source>
        <extracomment>Message page after a refused code. Keep the button name identical to IDS_BTN_FINISH.</extracomment>
        <translation>The service programming code was not accepted. Click Finish and start the activation again.</translation>
    </message>
    <message>
        <source>IDS_SPC_MSG</source>
        <extracomment>Explanation above the code field on the lock-code page (label 290 x 64 pixels).</extracomment>
        <translation>Please enter the 6-digit service programming code (SPC) provided by your service provider.</translation>
    </message>
    <message>
        <source>IDS_YES</source>
        <extracomment>Button of a question box.</extracomment>
        <translation>Yes</translation>
    </message>
</context>
</TS>
