// Host framework helpers: settings, message boxes, window placement, shut-down and worker threads.
#pragma once

#include "HostExport.h"

#include <QtCore/QString>

class QWidget;
class QThread;

// Value returned by ShowMessage / ShowMessageCustomize for the first (affirmative) button.
enum { MSGBOX_ACCEPTED = 0x400 };

// Bits of CommonUtils::GetFrameStyle().
enum { FRAME_STYLE_MAIN = 0x1, FRAME_STYLE_MINI = 0x4 };

class HOSTFW_EXPORT CommonUtils
{
public:
    // Host settings (an INI file under the user's configuration folder). A key the file does not hold
    // reads as the host's shipped default: "customize"/"simtype" "SIM", "customize"/"uimtype" "UIM",
    // "" for every other key.
    static QString GetSettings(const QString& section, const QString& key);
    static void SetSettings(const QString& section, const QString& key, const QString& value);

    // Modal message box. `icon` is a QMessageBox::Icon value (1 information, 2 warning,
    // 3 critical, 4 question); `button1` and `button2` are IDS keys, translated here (an empty
    // button2 shows one button). Returns MSGBOX_ACCEPTED (1024) when the first button was
    // chosen, 0 for the second button or a box closed any other way.
    static int ShowMessage(int icon, QWidget* parent, const QString& title, const QString& text,
                           const QString& button1 = QStringLiteral("IDS_OK"),
                           const QString& button2 = QString());
    // The same box, kept above every other window: for messages raised while the parent may be
    // hidden or busy (the SIM start-up check). Same arguments and answers as ShowMessage.
    static int ShowMessageCustomize(int icon, QWidget* parent, const QString& title, const QString& text,
                                    const QString& button1 = QStringLiteral("IDS_OK"),
                                    const QString& button2 = QString());

    // Centre a window on its parent, or on the screen when it has none.
    static void MoveCentre(QWidget* widget);
    // FRAME_STYLE_* bits of the running host.
    static int GetFrameStyle();
    static bool IsMiniMode();
    // Root of the host installation; plugins live in <root>/plugins/<Name>/.
    static QString GetPluginLibraryPath();
    // Whether the active device supports LTE (non-zero) or not (0); read by the network plugins.
    static void SetLteMode(int lte);
    static int GetLteMode();

    static bool IsShuttingDown();
    static void SetShutDownFlag();

    // Worker threads bracket their run() with these so that the host can wait for them.
    static void ThreadCountInc(const QString& who);
    static void ThreadCountDec(const QString& who);
    static int ThreadCount();
    // Wait at most `seconds` for `thread` to finish; true when it has finished (or never ran).
    static bool WaitForThreadToStop(QThread* thread, int seconds);
};
