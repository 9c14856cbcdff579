// CDMA service activation: the wizard (one per process) and its dialog, with the page frame, the
// choice between over-the-air and manual activation, and the over-the-air procedure.
#pragma once

#include "ActivationConfigParse.h"
#include "ExtendDialog.h"
#include "ZelkSdk.h"

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QString>

#include <atomic>

class ActivationWizard;
class QCloseEvent;
class QGroupBox;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QRegExpValidator;
class QVBoxLayout;
class QWidget;

// The wizard's window. Closing it any way the window system offers (close button, Escape) is the
// same as Cancel.
class ActivationDlg : public ExtendDialog
{
    Q_OBJECT
public:
    ActivationDlg(QWidget* parent, Qt::WindowFlags flags);
    void Instantiate(ActivationWizard* wizard);
    // True while the dialog runs its own close or Escape handling: it must not be deleted under it.
    bool isClosingItself() const { return m_bClosingItself; }

public slots:
    void reject() override;

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void cancelThroughWizard();

    QPointer<ActivationWizard> m_pWizard;
    bool m_bClosingItself = false;
};

class ActivationWizard : public QObject
{
    Q_OBJECT
public:
    // Pages (currentPage).
    enum Page {
        PageSelectType = 0,
        PageOTKSL = 1,
        PageMINSID = 2,
        PageMSL = 3,
        PageSuccess = 5,
        PageFailure = 6,
        PageMessage = 7
    };

    // The process-wide wizard, created on first use (GUI thread only).
    static ActivationWizard* Instance();
    // Tears the dialog down and deletes `wizard` (may be null).
    static void Destroy(ActivationWizard* wizard);
    void OnDestroy();
    int getRetryTimes();
    bool IsActivationWindowShown() const;
    // Builds the dialog on first use (reading active.xml then) and shows it window-modal.
    void showActivationDlg(QWidget* parent);
    // The host's text for an IDS key. Call it with a QString: a plain string literal would pick
    // QObject's own tr() and its class context instead.
    static QString tr(QString key);

    // Over-the-air activation.
    void AutoActivate();
    // Given to the SDK's device-manager and call registries; runs on SDK threads. Always 1.
    static int OnDevMgrEventCB(int event, void* data);
    void unRegisterCB();

    // Manual activation: lock-code status and the pages it leads to.
    void ManualActivate();
    void VerifyOTKSL();
    void verifyMINSID();
    void verifyMSL();

    // Which page is showing; tests and the host's status read it.
    int page() const { return currentPage; }

signals:
    void signalOTAMsg();
    void signalAutoCallEnd();

public slots:
    void onBackButtonClicked();
    void onNextButtonClicked();
    void onCancelButtonClicked();
    void onAutoCallEnd();
    void onOTAMsg();
    void onTextEdited(QString text);
    void onBtnBrowserPRLClicked();

private:
    ActivationWizard();
    ~ActivationWizard() override;

    void createParentContainer();
    void updateParentContainer();
    void createSelectTypeLayout();
    void updateSelectTypeLayout();
    void createMessageDisplayLayout(QString text);
    // Back from a page of manual activation: the page goes, the choice comes back with manual
    // activation preselected.
    void backToSelection(QPointer<QWidget>& page);

    // Manual activation pages.
    void createMSLLayout();
    void updateMSLLayout();
    void createOTKSLLayout(int retries);
    void updateOTKSLLayout(int retries);
    void SetESNandMEID();
    void createMINandSIDLayout();
    void AddMINSIDItemsToLayout();
    void SetMINandSIDConfig();
    void updateMINandSIDLayout();
    // Takes a manual page off the page layout and deletes it.
    void dropPage(QPointer<QWidget>& page);
    // Reads the roaming list named in the PRL entry into `data`; false after an error the user was
    // shown (and the page state set accordingly).
    bool readPrlFile(QByteArray* data);

    bool autoRegistered = false;
    // Written by the SDK's callback thread, read by the GUI thread.
    std::atomic<int> otaState{0};
    int currentPage = PageSelectType;
    unsigned char otkslRetries = 0;
    QRegExpValidator* numericValidator = nullptr;
    ActivationInfo m_activationInfo;
    int otkslStatus = 0;
    _ZELK_ST_ESN_INFO m_stEsnInfo;

    // Widgets live in the dialog and die with it; these pointers only find them.
    QPointer<ActivationDlg> m_pDialog;
    QPointer<QWidget> m_pWidgetParent;
    QPointer<QGroupBox> m_pWidgetContainer;
    QPointer<QVBoxLayout> m_pPageLayout;
    QPointer<QVBoxLayout> m_pLayoutParent;
    QPointer<QPushButton> m_pButtonBack;
    QPointer<QPushButton> m_pButtonNext;
    QPointer<QPushButton> m_pButtonCancel;
    QPointer<QHBoxLayout> m_pButtonLayout;
    // Selection page.
    QPointer<QWidget> m_pWidgetSelectType;
    QPointer<QRadioButton> m_pRadioAutoActivate;
    QPointer<QRadioButton> m_pRadioManualActivate;
    QPointer<QLabel> m_pLabelAutoText;
    QPointer<QLabel> m_pLabelManualText;
    // Message page.
    QPointer<QLabel> m_pLabelMessage;
    // Pages of manual activation and their entries.
    QPointer<QWidget> m_pWidgetOTKSL;
    QPointer<QWidget> m_pWidgetMSL;
    QPointer<QWidget> m_pWidgetMINSID;
    QPointer<QLineEdit> m_pLineMIN;
    QPointer<QLineEdit> m_pLineMDN;
    QPointer<QLineEdit> m_pLineSID;
    QPointer<QLineEdit> m_pLinePRL;
    QPointer<QLabel> m_pLabelMSLInfo;
    QPointer<QLabel> m_pLabelMSLString;
    QPointer<QLineEdit> m_pLineMSL;
    QPointer<QLabel> m_pLabelOTKInfo;
    QPointer<QLabel> m_pLabelESNText;
    QPointer<QLabel> m_pLabelESNNumber;
    QPointer<QLabel> m_pLabelActivationcodeInfo;
    QPointer<QLabel> m_pLabelOTKString;
    QPointer<QLineEdit> m_pEditOTKBox;
    QPointer<QLabel> m_pLabelRetryAttempt;
    QPointer<QWidget> m_pWidgetMIN;
    QPointer<QWidget> m_pWidgetMDN;
    QPointer<QWidget> m_pWidgetSID;
    QPointer<QWidget> m_pWidgetPRL;
    QPointer<QLabel> m_pLabelMIN;
    QPointer<QLabel> m_pLabelMDN;
    QPointer<QLabel> m_pLabelSID;
    QPointer<QLabel> m_pLabelPRL;
    QPointer<QPushButton> m_pBtnBrowsePRL;
};

// The one wizard of the process; the SDK's callback reaches it only through this.
extern std::atomic<ActivationWizard*> g_pActivationInstance;
