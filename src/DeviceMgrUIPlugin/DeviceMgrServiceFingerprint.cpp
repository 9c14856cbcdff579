// Device manager service: the fingerprint lock as the user sees it. While the device waits for the
// user's finger a small prompt shows the reader's guidance; once the finger is verified the prompt
// closes and the held start-up goes on.
#include "DeviceMgrService.h"

#include "Change.h"
#include "CommonUtils.h"
#include "DevCheckFPThread.h"
#include "DeviceMgrLog.h"

#include <QtCore/QTimer>
#include <QtWidgets/QDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QVBoxLayout>

namespace {

// Each reader state shows its text for one second, then the general prompt returns.
constexpr int kStateTextMs = 1000;

const char* const kGeneralPrompt = "IDS_FPLOCK_PROMPT";

// Reader states 0 to 40, in order; 255 has a text of its own.
const char* const kStateKeys[] = {
    "IDS_GUIMSG_GOOD_IMAGE",
    "IDS_GUIMSG_NO_FINGER",
    "IDS_GUIMSG_TOO_LIGHT",
    "IDS_GUIMSG_TOO_DRY",
    "IDS_GUIMSG_TOO_DARK",
    "IDS_GUIMSG_TOO_HIGH",
    "IDS_GUIMSG_TOO_LOW",
    "IDS_GUIMSG_TOO_LEFT",
    "IDS_GUIMSG_TOO_RIGHT",
    "IDS_GUIMSG_TOO_SMALL",
    "IDS_GUIMSG_TOO_STRANGE",
    "IDS_GUIMSG_BAD_QUALITY",
    "IDS_GUIMSG_PUT_FINGER",
    "IDS_GUIMSG_PUT_FINGER2",
    "IDS_GUIMSG_PUT_FINGER3",
    "IDS_GUIMSG_REMOVE_FINGER",
    "IDS_GUIMSG_CONSOLIDATION_FAIL",
    "IDS_GUIMSG_CONSOLIDATION_SUCCEED",
    "IDS_GUIMSG_CLEAN_SENSOR",
    "IDS_GUIMSG_KEEP_FINGER",
    "IDS_GUIMSG_START",
    "IDS_GUIMSG_VERIFY_START",
    "IDS_GUIMSG_ENROLL_START",
    "IDS_GUIMSG_FINGER_DETECT_START",
    "IDS_GUIMSG_GUI_FINISH",
    "IDS_GUIMSG_GUI_FINISH_SUCCEED",
    "IDS_GUIMSG_GUI_FINISH_FAIL",
    "IDS_GUIMSG_CALIB_START",
    "IDS_GUIMSG_TOO_FAST",
    "IDS_GUIMSG_TOO_SKEWED",
    "IDS_GUIMSG_TOO_SHORT",
    "IDS_GUIMSG_TOUCH_SENSOR",
    "IDS_GUIMSG_PROCESSING_IMAGE",
    "IDS_GUIMSG_SWIPE_IN_PROGRESS",
    "IDS_GUIMSG_BACKWARD_MOVEMENT",
    "IDS_GUIMSG_JOINT_DETECTED",
    "IDS_GUIMSG_CENTER_AND_PRESS_HARDER",
    "IDS_GUIMSG_IMAGE_PROCESSED",
    "IDS_GUIMSG_PUT_FINGER4",
    "IDS_GUIMSG_PUT_FINGER5",
    "IDS_GUIMSG_ENROLL_PROGRESS",
};
static_assert(sizeof(kStateKeys) / sizeof(kStateKeys[0]) == ZELK_VERIFYIND_ENROLL_PROGRESS + 1,
              "one text per reader state from 0 to 40");

const char* promptKey(_ZELK_EN_VERIFYINDSTATE state)
{
    const int value = static_cast<int>(state);
    if (value >= 0 && value <= ZELK_VERIFYIND_ENROLL_PROGRESS)
        return kStateKeys[value];
    if (state == ZELK_VERIFYIND_NO_MATCH)
        return "IDS_GUIMSG_NO_MATCH";
    return kGeneralPrompt;
}

QString text(const char* key)
{
    return Change::tr(QString::fromLatin1(key));
}

} // namespace

int CDeviceMgrService::createFPDlg()
{
    DM_LOG("%s : %s : %s : Entered");
    if (!m_pFPTimer)
        m_pFPTimer = new QTimer(this);
    QDialog* dialog = new QDialog(m_pParentWidget);
    QVBoxLayout* layout = new QVBoxLayout(dialog);
    QLabel* label = new QLabel(dialog);
    if (!dialog || !layout || !label) {
        delete dialog;
        return 1;
    }
    dialog->setObjectName(QStringLiteral("DeviceMgrUI_fplockInfoDlg"));
    dialog->setWindowTitle(QStringLiteral(" Prompt "));
    dialog->setFixedSize(310, 120);
    // Only the host's window waits for the finger; the rest of the desktop stays usable.
    dialog->setWindowModality(Qt::WindowModal);
    layout->setObjectName(QStringLiteral("DeviceMgrUI_fplayoutVBox"));
    label->setObjectName(QStringLiteral("DeviceMgrUI_fplabelInfoLabel"));
    layout->addWidget(label);
    m_pFPDlg = dialog;
    m_pFPLabel = label;
    CommonUtils::MoveCentre(dialog);
    m_pFPTimer->start(kStateTextMs);
    connect(m_pFPTimer, SIGNAL(timeout()), this, SLOT(onFPTimerOut()), Qt::UniqueConnection);
    DM_LOG("%s : %s : %s : Exit");
    return 0;
}

void CDeviceMgrService::handleFPLockOnFramelaunchedEvent()
{
    DM_LOG("%s : %s : %s : Entered");
    // The start-up notice would only sit behind the prompt.
    hideInfoDlg();
    // A prompt already on screen keeps whatever the reader last said.
    if (!m_pFPDlg) {
        if (createFPDlg() == 0 && m_pFPLabel) {
            m_pFPLabel->setText(text(kGeneralPrompt));
            m_pFPLabel->setWordWrap(true);
            m_pFPDlg->show();
        } else {
            DM_LOG("%s: %s: %s: , entered, Error occured while creating Dialog");
        }
    }
    DM_LOG("%s : %s : %s : Exit");
}

void CDeviceMgrService::handleFPVerifyEvent()
{
    const _ZELK_EN_VERIFYINDSTATE state = m_enVerifyIndState.load();
    DM_LOG("%s : %s : %s : Entered, state %d", static_cast<int>(state));
    // Without a prompt there is no lock the user is being guided through.
    if (!m_pFPDlg) {
        DM_LOG("%s : %s : %s : Exit");
        return;
    }
    if (state != ZELK_VERIFYIND_GOOD_IMAGE) {
        if (!m_pFPTimer)
            m_pFPTimer = new QTimer(this);
        ChangePrompt(state);
        // A newer state replaces the text on screen and gets its full second.
        m_pFPTimer->start(kStateTextMs);
        connect(m_pFPTimer, SIGNAL(timeout()), this, SLOT(onFPTimerOut()), Qt::UniqueConnection);
        DM_LOG("%s : %s : %s : Exit");
        return;
    }

    // Verified: the held start-up goes on.
    m_bFPLockPending = false;
    m_pFPDlg->close();
    m_pFPDlg->deleteLater();
    m_pFPDlg = nullptr;
    m_pFPLabel = nullptr;
    DevCheckFPThread* thread = m_pFPThread.load();
    if (thread)
        thread->FPUnLock();
    if (m_bFPPromptOnLaunch) {
        // The frame came up during the lock and its work waited for the finger. That work checks
        // the PIN itself, so the PIN check held since start-up would only ask a second time.
        if (thread)
            thread->Pop(ZELK_EVENT_DEV_PIN_CHECK);
        // Once per lock: a later lock of the same device has no first-frame work left to do.
        m_bFPPromptOnLaunch = false;
        InitOnMainFrameShow();
    }
    DM_LOG("%s : %s : %s : Exit");
}

void CDeviceMgrService::ChangePrompt(_ZELK_EN_VERIFYINDSTATE state)
{
    const char* key = promptKey(state);
    if (m_pFPLabel)
        m_pFPLabel->setText(text(key));
}

void CDeviceMgrService::onFPTimerOut()
{
    if (m_pFPTimer) {
        m_pFPTimer->stop();
        m_pFPTimer->disconnect();
    }
    if (m_pFPDlg && m_pFPLabel)
        m_pFPLabel->setText(text(kGeneralPrompt));
}

void CDeviceMgrService::FPLockOnDialogClose()
{
    DM_LOG("%s : %s : %s : Entered");
    // The device that held the lock is gone (switched away or rejected): nothing is left to verify.
    if (m_pFPDlg) {
        m_pFPDlg->close();
        m_pFPDlg->deleteLater();
        m_pFPDlg = nullptr;
        m_pFPLabel = nullptr;
        if (DevCheckFPThread* thread = m_pFPThread.load())
            thread->FPUnLock();
    }
    DM_LOG("%s : %s : %s : Exit");
}
