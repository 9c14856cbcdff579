<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE" sourcelanguage="en_US">
<context>
    <name>DeviceMgrUIPlugin</name>
    <message>
        <source>IDS_ACTIVE_DEVICE_FALSE</source>
        <extracomment>Question (Yes/No) before the active data card is switched.</extracomment>
        <translation>Beim Wechsel der Datenkarte wird die bestehende Verbindung beendet. Möchten Sie zur ausgewählten Datenkarte wechseln?</translation>
    </message>
    <message>
        <source>IDS_ACTIVE_FAILED</source>
        <extracomment>Message page when activation fails.</extracomment>
        <translation>Die Aktivierung ist fehlgeschlagen. Bitte versuchen Sie es später erneut oder wenden Sie sich an Ihren Netzbetreiber.</translation>
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
        <translation>Die Datenkarte wurde aktiviert. Klicken Sie auf „Fertig stellen“, um die Datenkarte neu zu starten.</translation>
    </message>
    <message>
        <source>IDS_AUTOACT_BEGIN</source>
        <extracomment>Message page while automatic activation runs.</extracomment>
        <translation>Die automatische Aktivierung wurde gestartet. Dies kann einige Minuten dauern. Bitte warten ...</translation>
    </message>
    <message>
        <source>IDS_AUTOACT_OTASP_NONE</source>
        <extracomment>Automatic activation progress.</extracomment>
        <translation>Warten auf den Beginn der Aktivierung ...</translation>
    </message>
    <message>
        <source>IDS_AUTOACT_STATE_COMMIT_SUCCESS</source>
        <extracomment>Automatic activation: success; the Cancel button now reads Finish.</extracomment>
        <translation>Die Aktivierungsdaten wurden auf der Datenkarte gespeichert.</translation>
    </message>
    <message>
        <source>IDS_AUTOACT_STATE_IMSI_DOWNLOADED</source>
        <extracomment>Automatic activation progress.</extracomment>
        <translation>Teilnehmerkennung (IMSI) empfangen.</translation>
    </message>
    <message>
        <source>IDS_AUTOACT_STATE_IN_PROGRESS</source>
        <extracomment>Automatic activation progress.</extracomment>
        <translation>Aktivierung läuft ...</translation>
    </message>
    <message>
        <source>IDS_AUTOACT_STATE_MDN_DOWNLOADED</source>
        <extracomment>Automatic activation progress.</extracomment>
        <translation>Rufnummer (MDN) empfangen.</translation>
    </message>
    <message>
        <source>IDS_AUTOACT_STATE_NAM_DOWNLOADED</source>
        <extracomment>Automatic activation progress.</extracomment>
        <translation>Nummernzuweisung (NAM) empfangen.</translation>
    </message>
    <message>
        <source>IDS_AUTOACT_STATE_PRL_DOWNLOADED</source>
        <extracomment>Automatic activation progress.</extracomment>
        <translation>Roaming-Liste (PRL) empfangen.</translation>
    </message>
    <message>
        <source>IDS_AUTOACT_STATE_PROG_FAILED</source>
        <extracomment>Automatic activation: failure; the Cancel button now reads Finish.</extracomment>
        <translation>Die Programmierung der Datenkarte ist fehlgeschlagen.</translation>
    </message>
    <message>
        <source>IDS_AUTOACT_STATE_PROG_SUCCESS</source>
        <extracomment>Automatic activation: success; the Cancel button now reads Finish.</extracomment>
        <translation>Die Datenkarte wurde erfolgreich programmiert.</translation>
    </message>
    <message>
        <source>IDS_AUTOACT_STATE_SPL_UNLOCKED</source>
        <extracomment>Automatic activation progress.</extracomment>
        <translation>Programmiersperre aufgehoben.</translation>
    </message>
    <message>
        <source>IDS_AUTO_MSG</source>
        <extracomment>Explanation under the automatic activation choice.</extracomment>
        <translation>Die Datenkarte wird über das Mobilfunknetz Ihres Netzbetreibers aktiviert. Dies ist die empfohlene Methode.</translation>
    </message>
    <message>
        <source>IDS_BTN_AUTO</source>
        <extracomment>Radio button on the first page.</extracomment>
        <translation>Automatische Aktivierung</translation>
    </message>
    <message>
        <source>IDS_BTN_BACK</source>
        <extracomment>Wizard button.</extracomment>
        <translation>Zurück</translation>
    </message>
    <message>
        <source>IDS_BTN_CANCEL</source>
        <extracomment>Wizard button.</extracomment>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>IDS_BTN_FINISH</source>
        <extracomment>Wizard button that replaces Cancel when activation has ended.</extracomment>
        <translation>Fertig stellen</translation>
    </message>
    <message>
        <source>IDS_BTN_MANUAL</source>
        <extracomment>Radio button on the first page.</extracomment>
        <translation>Manuelle Aktivierung</translation>
    </message>
    <message>
        <source>IDS_BTN_NEXT</source>
        <extracomment>Wizard button.</extracomment>
        <translation>Weiter</translation>
    </message>
    <message>
        <source>IDS_CANCEL</source>
        <extracomment>Button.</extracomment>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>IDS_CARDLOCKDLG_DEADLOCK</source>
        <extracomment>Message box for a locked data card that cannot be unlocked here. %s is replaced by the card type text (e.g. "SIM/USIM" or "UIM").</extracomment>
        <translation>Diese Datenkarte ist für ein anderes Netz gesperrt und kann mit der eingelegten %s-Karte nicht verwendet werden.</translation>
    </message>
    <message>
        <source>IDS_CARDLOCKDLG_FORCE_EXIT</source>
        <extracomment>Message box before the application ends because of a locked data card. %s is replaced by the card type text (e.g. "SIM/USIM" or "UIM").</extracomment>
        <translation>Diese Datenkarte ist für ein anderes Netz gesperrt und kann mit der eingelegten %s-Karte nicht verwendet werden. Die Anwendung wird jetzt beendet.</translation>
    </message>
    <message>
        <source>IDS_DETECTE_DEVICE</source>
        <extracomment>Information window shown for 10 seconds when a data card is detected.</extracomment>
        <translation>Eine Datenkarte wurde erkannt.</translation>
    </message>
    <message>
        <source>IDS_DEVICE_INVALID</source>
        <extracomment>Information window shown for 3 seconds when the data card is rejected.</extracomment>
        <translation>Die Datenkarte wurde abgewiesen und kann nicht verwendet werden.</translation>
    </message>
    <message>
        <source>IDS_DEVICE_NAME</source>
        <extracomment>Column header of the device list.</extracomment>
        <translation>Gerätename</translation>
    </message>
    <message>
        <source>IDS_DEV_MGR_PROMPT</source>
        <extracomment>Title of the device chooser.</extracomment>
        <translation>Datenkarte auswählen</translation>
    </message>
    <message>
        <source>IDS_DLG_TITLE</source>
        <extracomment>Title of the activation wizard.</extracomment>
        <translation>Dienstaktivierung</translation>
    </message>
    <message>
        <source>IDS_ESN_MSG</source>
        <extracomment>Explanation above the ESN or MEID of the data card.</extracomment>
        <translation>Ihr Netzbetreiber fragt Sie eventuell nach dieser Nummer Ihrer Datenkarte:</translation>
    </message>
    <message>
        <source>IDS_ESN_PROMPT</source>
        <extracomment>Label before the electronic serial number (about 50 pixels).</extracomment>
        <translation>ESN:</translation>
    </message>
    <message>
        <source>IDS_FPLOCK_PROMPT</source>
        <extracomment>Fingerprint prompt window (general text).</extracomment>
        <translation>Die Datenkarte ist durch eine Fingerabdrucksperre geschützt. Bitte bestätigen Sie Ihren Fingerabdruck am Sensor, um sie zu entsperren.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_BACKWARD_MOVEMENT</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>Rückwärtsbewegung erkannt. Bitte ziehen Sie den Finger nur in eine Richtung.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_BAD_QUALITY</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>Die Qualität des Fingerabdruckbilds ist zu schlecht. Bitte versuchen Sie es erneut.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_CALIB_START</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>Der Sensor wird kalibriert. Bitte berühren Sie ihn nicht.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_CENTER_AND_PRESS_HARDER</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>Bitte legen Sie Ihren Finger mittig auf den Sensor und drücken Sie fester.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_CLEAN_SENSOR</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>Bitte reinigen Sie den Sensor.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_CONSOLIDATION_FAIL</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>Die Fingerabdruckaufnahmen konnten nicht zusammengeführt werden. Bitte versuchen Sie es erneut.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_CONSOLIDATION_SUCCEED</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>Die Fingerabdruckaufnahmen wurden zusammengeführt.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_ENROLL_PROGRESS</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>Der Fingerabdruck wird registriert ...</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_ENROLL_START</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>Die Registrierung des Fingerabdrucks wurde gestartet.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_FINGER_DETECT_START</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>Warten auf Ihren Finger ...</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_GOOD_IMAGE</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>Fingerabdruck erfasst.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_GUI_FINISH</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>Die Fingerabdruckprüfung ist beendet.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_GUI_FINISH_FAIL</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>Die Fingerabdruckprüfung ist fehlgeschlagen.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_GUI_FINISH_SUCCEED</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>Die Fingerabdruckprüfung war erfolgreich.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_IMAGE_PROCESSED</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>Der Fingerabdruck wurde verarbeitet.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_JOINT_DETECTED</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>Ein Fingergelenk wurde erkannt. Bitte verwenden Sie Ihre Fingerkuppe.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_KEEP_FINGER</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>Bitte lassen Sie Ihren Finger auf dem Sensor.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_NO_FINGER</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>Kein Finger erkannt.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_NO_MATCH</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>Der Fingerabdruck stimmt nicht überein. Bitte versuchen Sie es erneut.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_PROCESSING_IMAGE</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>Der Fingerabdruck wird verarbeitet ...</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_PUT_FINGER</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>Bitte legen Sie Ihren Finger auf den Sensor.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_PUT_FINGER2</source>
        <extracomment>Fingerprint prompt: the numbered keys ask for the finger for the 2nd, 3rd, 4th and 5th time.</extracomment>
        <translation>Bitte legen Sie Ihren Finger ein zweites Mal auf den Sensor.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_PUT_FINGER3</source>
        <extracomment>Fingerprint prompt: the numbered keys ask for the finger for the 2nd, 3rd, 4th and 5th time.</extracomment>
        <translation>Bitte legen Sie Ihren Finger ein drittes Mal auf den Sensor.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_PUT_FINGER4</source>
        <extracomment>Fingerprint prompt: the numbered keys ask for the finger for the 2nd, 3rd, 4th and 5th time.</extracomment>
        <translation>Bitte legen Sie Ihren Finger ein viertes Mal auf den Sensor.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_PUT_FINGER5</source>
        <extracomment>Fingerprint prompt: the numbered keys ask for the finger for the 2nd, 3rd, 4th and 5th time.</extracomment>
        <translation>Bitte legen Sie Ihren Finger ein fünftes Mal auf den Sensor.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_REMOVE_FINGER</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>Bitte nehmen Sie Ihren Finger vom Sensor.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_START</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>Der Fingerabdrucksensor wird gestartet ...</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_SWIPE_IN_PROGRESS</source>
        <extracomment>Fingerprint prompt while the finger is being swiped.</extracomment>
        <translation>Der Fingerabdruck wird gelesen ...</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_TOO_DARK</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>Das Fingerabdruckbild ist zu dunkel. Bitte drücken Sie weniger fest.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_TOO_DRY</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>Ihr Finger ist zu trocken. Bitte befeuchten Sie ihn leicht und versuchen Sie es erneut.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_TOO_FAST</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>Sie haben den Finger zu schnell gezogen. Bitte ziehen Sie ihn langsamer über den Sensor.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_TOO_HIGH</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>Ihr Finger liegt zu hoch. Bitte legen Sie ihn weiter unten auf.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_TOO_LEFT</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>Ihr Finger liegt zu weit links. Bitte legen Sie ihn weiter rechts auf.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_TOO_LIGHT</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>Das Fingerabdruckbild ist zu hell. Bitte drücken Sie etwas fester.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_TOO_LOW</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>Ihr Finger liegt zu tief. Bitte legen Sie ihn weiter oben auf.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_TOO_RIGHT</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>Ihr Finger liegt zu weit rechts. Bitte legen Sie ihn weiter links auf.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_TOO_SHORT</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>Die Bewegung war zu kurz. Bitte ziehen Sie die ganze Fingerkuppe über den Sensor.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_TOO_SKEWED</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>Ihr Finger liegt schräg. Bitte halten Sie ihn gerade.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_TOO_SMALL</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>Die erfasste Fläche ist zu klein. Bitte legen Sie mehr von Ihrem Finger auf den Sensor.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_TOO_STRANGE</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>Der Fingerabdruck konnte nicht erkannt werden. Bitte versuchen Sie es erneut.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_TOUCH_SENSOR</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>Bitte berühren Sie den Sensor.</translation>
    </message>
    <message>
        <source>IDS_GUIMSG_VERIFY_START</source>
        <extracomment>Fingerprint prompt.</extracomment>
        <translation>Die Überprüfung des Fingerabdrucks wurde gestartet.</translation>
    </message>
    <message>
        <source>IDS_INIT_DEV_UNDERWAY</source>
        <extracomment>Information window shown for 3 seconds while the data card starts up.</extracomment>
        <translation>Die Datenkarte wird initialisiert. Bitte warten ...</translation>
    </message>
    <message>
        <source>IDS_MAINFRM_CANCEL_PROMPT</source>
        <extracomment>Cancel button of the PIN dialogs.</extracomment>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>IDS_MAINFRM_CARDLOCKDLG_CANCELPROMPT</source>
        <extracomment>Question when the unlock-code dialog is cancelled.</extracomment>
        <translation>Die Datenkarte bleibt gesperrt. Möchten Sie wirklich abbrechen?</translation>
    </message>
    <message>
        <source>IDS_MAINFRM_CARDLOCKDLG_CAPTION</source>
        <extracomment>Title of the dialog that asks for the data card's unlock code.</extracomment>
        <translation>Datenkarte entsperren</translation>
    </message>
    <message>
        <source>IDS_MAINFRM_CARDLOCKDLG_INPUTPLEASE</source>
        <extracomment>Label above the unlock-code field.</extracomment>
        <translation>Bitte geben Sie den Entsperrcode der Datenkarte ein:</translation>
    </message>
    <message>
        <source>IDS_MAINFRM_CARDLOCKDLG_LEFTTIMES</source>
        <extracomment>Retries label: the program appends the number of attempts directly after this text, without inserting any separator, so the text ends with a colon and a blank ("Remaining attempts: 3"). No placeholder. Shown under the service programming code field of the activation wizard.</extracomment>
        <translation>Verbleibende Versuche: </translation>
    </message>
    <message>
        <source>IDS_MAINFRM_CHANGEPIN_SUCCESS</source>
        <extracomment>Message box after a successful PIN change.</extracomment>
        <translation>Die PIN wurde geändert.</translation>
    </message>
    <message>
        <source>IDS_MAINFRM_DISABLEPIN_SUCCESS</source>
        <extracomment>Message box after the PIN request was switched off.</extracomment>
        <translation>Die PIN-Abfrage wurde deaktiviert.</translation>
    </message>
    <message>
        <source>IDS_MAINFRM_DISABLE_WINDOWSTXT</source>
        <extracomment>Title of the dialog that switches the PIN request off.</extracomment>
        <translation>PIN-Abfrage deaktivieren</translation>
    </message>
    <message>
        <source>IDS_MAINFRM_ENABLEPIN_SUCCESS</source>
        <extracomment>Message box after the PIN request was switched on.</extracomment>
        <translation>Die PIN-Abfrage wurde aktiviert.</translation>
    </message>
    <message>
        <source>IDS_MAINFRM_ENABLE_WINDOWSTXT</source>
        <extracomment>Title of the dialog that switches the PIN request on.</extracomment>
        <translation>PIN-Abfrage aktivieren</translation>
    </message>
    <message>
        <source>IDS_MAINFRM_ERROR_PROMPT</source>
        <extracomment>Title of error message boxes.</extracomment>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>IDS_MAINFRM_INPUT_NEW_PIN_PROMPT</source>
        <extracomment>Label beside the new-PIN field.</extracomment>
        <translation>Neue PIN:</translation>
    </message>
    <message>
        <source>IDS_MAINFRM_INPUT_NEW_PIN_PROMPT2</source>
        <extracomment>Label beside the field that repeats the new PIN.</extracomment>
        <translation>Neue PIN bestätigen:</translation>
    </message>
    <message>
        <source>IDS_MAINFRM_INPUT_OLD_PIN_PROMPT</source>
        <extracomment>Label beside the current-PIN field of the change-PIN dialog.</extracomment>
        <translation>Aktuelle PIN:</translation>
    </message>
    <message>
        <source>IDS_MAINFRM_INPUT_PIN_PROMPT</source>
        <extracomment>Label above the PIN field.</extracomment>
        <translation>Bitte geben Sie die PIN ein:</translation>
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
        <translation>Möchten Sie die PIN-Eingabe wirklich abbrechen?</translation>
    </message>
    <message>
        <source>IDS_MAINFRM_PIN_CHANGE_WINDOWSTXT</source>
        <extracomment>Title of the change-PIN dialog.</extracomment>
        <translation>PIN ändern</translation>
    </message>
    <message>
        <source>IDS_MAINFRM_PIN_REMAIN_PROMPT</source>
        <extracomment>Retries label: the program appends the number of attempts directly after this text, without inserting any separator, so the text ends with a colon and a blank ("Remaining attempts: 3"). No placeholder. Used for the PIN and for the unlock code of the data card.</extracomment>
        <translation>Verbleibende Versuche: </translation>
    </message>
    <message>
        <source>IDS_MAINFRM_PIN_UNLOCK_WINDOWSTXT</source>
        <extracomment>Title of the dialog that unblocks the PIN with the PUK.</extracomment>
        <translation>PIN entsperren</translation>
    </message>
    <message>
        <source>IDS_MAINFRM_PIN_VERIFY_WINDOWSTXT</source>
        <extracomment>Title of the PIN dialog shown at start-up.</extracomment>
        <translation>PIN eingeben</translation>
    </message>
    <message>
        <source>IDS_MAINFRM_PROMPT</source>
        <extracomment>Title of the plugin's message boxes (information, warnings and questions).</extracomment>
        <translation>Hinweis</translation>
    </message>
    <message>
        <source>IDS_MAINFRM_PUK_REMAIN_PROMPT</source>
        <extracomment>Retries label: the program appends the number of attempts directly after this text, without inserting any separator, so the text ends with a colon and a blank ("Remaining attempts: 3"). No placeholder.</extracomment>
        <translation>Verbleibende PUK-Versuche: </translation>
    </message>
    <message>
        <source>IDS_MAINFRM_UNKNOWN</source>
        <extracomment>Replaces the whole retries label when the number of attempts cannot be read; no number follows.</extracomment>
        <translation>Verbleibende Versuche: unbekannt</translation>
    </message>
    <message>
        <source>IDS_MAINFRM_UNLOCKPIN_SUCCESS</source>
        <extracomment>Message box after a successful unblock with the PUK.</extracomment>
        <translation>Die PIN wurde entsperrt, die neue PIN ist jetzt gültig.</translation>
    </message>
    <message>
        <source>IDS_MANUAL_MSG</source>
        <extracomment>Explanation under the manual activation choice (label about 300 x 100 pixels).</extracomment>
        <translation>Sie geben die Aktivierungsdaten Ihres Netzbetreibers (MIN, MDN, SID) selbst ein. Eventuell ist ein Sperrcode erforderlich.</translation>
    </message>
    <message>
        <source>IDS_MEID_PROMPT</source>
        <extracomment>Label before the mobile equipment identifier (about 50 pixels).</extracomment>
        <translation>MEID:</translation>
    </message>
    <message>
        <source>IDS_MGR_LIST_PROMPT</source>
        <extracomment>Label above the list of attached data cards.</extracomment>
        <translation>Wählen Sie die zu verwendende Datenkarte aus:</translation>
    </message>
    <message>
        <source>IDS_MSG_CARD_BLOCKED</source>
        <extracomment>Message box shown both after the last wrong PUK (SIM card) and after the last wrong unlock code (data card), hence the neutral word "card". No placeholder is replaced here.</extracomment>
        <translation>Die Karte ist dauerhaft gesperrt. Bitte wenden Sie sich an Ihren Netzbetreiber.</translation>
    </message>
    <message>
        <source>IDS_MSG_WWAN_PRIVILIGE</source>
        <extracomment>Message box when the operating system refuses the unblock request.</extracomment>
        <translation>Der Dienst für mobiles Breitband des Systems erlaubt diesem Programm nicht, die PIN zu entsperren. Bitte entsperren Sie die PIN in den Einstellungen für mobiles Breitband des Systems.</translation>
    </message>
    <message>
        <source>IDS_MSL_FAILED</source>
        <extracomment>Message page after a refused MSL code. Keep the button name identical to IDS_BTN_FINISH.</extracomment>
        <translation>Der MSL-Code wurde nicht akzeptiert. Klicken Sie auf „Fertig stellen“ und starten Sie die Aktivierung erneut.</translation>
    </message>
    <message>
        <source>IDS_MSL_MSG</source>
        <extracomment>Explanation on the MSL page (label 300 x 64 pixels).</extracomment>
        <translation>Bitte geben Sie den 6-stelligen Master-Subsidy-Lock-Code (MSL) Ihres Netzbetreibers ein.</translation>
    </message>
    <message>
        <source>IDS_MSL_PROMPT_MSL</source>
        <extracomment>Label beside the MSL field (60 pixels wide).</extracomment>
        <translation>MSL:</translation>
    </message>
    <message>
        <source>IDS_NO</source>
        <extracomment>Button of a question box.</extracomment>
        <translation>Nein</translation>
    </message>
    <message>
        <source>IDS_OK</source>
        <extracomment>Button.</extracomment>
        <translation>OK</translation>
    </message>
    <message>
        <source>IDS_OPEN_PRL_FILE</source>
        <extracomment>Caption of the file chooser.</extracomment>
        <translation>PRL-Datei öffnen</translation>
    </message>
    <message>
        <source>IDS_OTKSL_PROMPT_PWD</source>
        <extracomment>Label beside the service programming code field.</extracomment>
        <translation>SPC:</translation>
    </message>
    <message>
        <source>IDS_PIN_CHANGE_FAILED</source>
        <extracomment>Message box after a failed PIN change.</extracomment>
        <translation>Die PIN konnte nicht geändert werden. Bitte überprüfen Sie die aktuelle PIN.</translation>
    </message>
    <message>
        <source>IDS_PIN_CHECK_FAILED</source>
        <extracomment>Message box after a wrong PIN in the start-up dialog; the dialog then shows the remaining attempts.</extracomment>
        <translation>Die eingegebene PIN ist falsch.</translation>
    </message>
    <message>
        <source>IDS_PIN_DISABLE_FAILED</source>
        <extracomment>Message box after a failed attempt to switch the PIN request off (also after IDS_PIN_PIN_LOCKED).</extracomment>
        <translation>Die PIN-Abfrage konnte nicht deaktiviert werden.</translation>
    </message>
    <message>
        <source>IDS_PIN_ENABLE_FAILED</source>
        <extracomment>Message box after a failed attempt to switch the PIN request on (also after IDS_PIN_PIN_LOCKED).</extracomment>
        <translation>Die PIN-Abfrage konnte nicht aktiviert werden.</translation>
    </message>
    <message>
        <source>IDS_PIN_MSG_PIN_DIFFER</source>
        <extracomment>Message box when the two new PINs differ.</extracomment>
        <translation>Die neue PIN und die Bestätigung stimmen nicht überein.</translation>
    </message>
    <message>
        <source>IDS_PIN_PIN_LOCKED</source>
        <extracomment>Message box when no PIN attempts are left.</extracomment>
        <translation>Die PIN wurde gesperrt, weil sie zu oft falsch eingegeben wurde. Bitte entsperren Sie sie mit der PUK.</translation>
    </message>
    <message>
        <source>IDS_PIN_PUK_FAILED</source>
        <extracomment>Message box after a wrong PUK while attempts are left.</extracomment>
        <translation>Die eingegebene PUK ist falsch. Bitte versuchen Sie es erneut.</translation>
    </message>
    <message>
        <source>IDS_PIN_SIM_LOCKED</source>
        <extracomment>Message box when the PUK is used up. Every %s is replaced by the card word ("SIM/USIM", "UIM" or the configured name).</extracomment>
        <translation>Die %s-Karte ist dauerhaft gesperrt. Bitte wenden Sie sich an Ihren Netzbetreiber.</translation>
    </message>
    <message>
        <source>IDS_PRL_BTN_BROWSER</source>
        <extracomment>Browse button for the PRL file (about 22 x 20 pixels).</extracomment>
        <translation>...</translation>
    </message>
    <message>
        <source>IDS_PRL_FILE_FILTER</source>
        <extracomment>File chooser filter: used as it is as the filter pattern; keep the patterns in brackets and the ;; separators.</extracomment>
        <translation>PRL-Dateien (*.prl *.PRL);;Alle Dateien (*)</translation>
    </message>
    <message>
        <source>IDS_PRL_FILE_NOT_EXIST</source>
        <extracomment>Error box.</extracomment>
        <translation>Die PRL-Datei ist nicht vorhanden oder kann nicht geöffnet werden. Bitte überprüfen Sie den Pfad.</translation>
    </message>
    <message>
        <source>IDS_PRL_LABEL</source>
        <extracomment>Label beside the PRL file path (60 pixels wide).</extracomment>
        <translation>PRL:</translation>
    </message>
    <message>
        <source>IDS_PRL_NO_MEMORY</source>
        <extracomment>Error box.</extracomment>
        <translation>Es ist nicht genügend Arbeitsspeicher vorhanden, um die PRL-Datei zu lesen.</translation>
    </message>
    <message>
        <source>IDS_PRL_READ_ERROR</source>
        <extracomment>Error box.</extracomment>
        <translation>Die PRL-Datei konnte nicht vollständig gelesen werden.</translation>
    </message>
    <message>
        <source>IDS_PROMPT_CALLING_DISABLE</source>
        <extracomment>Warning when OK is pressed in a PIN dialog while a call is active.</extracomment>
        <translation>Dies ist während eines Anrufs nicht möglich. Bitte beenden Sie zuerst den Anruf.</translation>
    </message>
    <message>
        <source>IDS_PROMPT_CAPTION</source>
        <extracomment>Title of the question before the active data card is switched.</extracomment>
        <translation>Datenkarte wechseln</translation>
    </message>
    <message>
        <source>IDS_SIM_INVALID</source>
        <extracomment>Message box text. Every %s is replaced by the card word ("SIM/USIM", "UIM" or the configured name).</extracomment>
        <translation>Die %s-Karte fehlt oder ist ungültig. Bitte legen Sie eine gültige %s-Karte ein.</translation>
    </message>
    <message>
        <source>IDS_SPC_FAILED</source>
        <extracomment>Message page after a refused code. Keep the button name identical to IDS_BTN_FINISH.</extracomment>
        <translation>Der Service-Programmiercode wurde nicht akzeptiert. Klicken Sie auf „Fertig stellen“ und starten Sie die Aktivierung erneut.</translation>
    </message>
    <message>
        <source>IDS_SPC_MSG</source>
        <extracomment>Explanation above the code field on the lock-code page (label 290 x 64 pixels).</extracomment>
        <translation>Bitte geben Sie den 6-stelligen Service-Programmiercode (SPC) Ihres Netzbetreibers ein.</translation>
    </message>
    <message>
        <source>IDS_YES</source>
        <extracomment>Button of a question box.</extracomment>
        <translation>Ja</translation>
    </message>
</context>
</TS>
