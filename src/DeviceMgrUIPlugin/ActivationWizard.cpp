// Activation wizard: the singleton, its dialog, the page frame with Back, Next and Cancel, the
// choice of the activation type, the message page and the tear-down.
#include "ActivationWizard.h"

#include "Change.h"
#include "CommonUtils.h"
#include "DeviceMgrLog.h"

#include <QtCore/QRegExp>
#include <QtGui/QCloseEvent>
#include <QtGui/QRegExpValidator>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QRadioButton>
#include <QtWidgets/QVBoxLayout>

#include <cstring>

std::atomic<ActivationWizard*> g_pActivationInstance{nullptr};

// ---- Dialog --------------------------------------------------------------------------------------

ActivationDlg::ActivationDlg(QWidget* parent, Qt::WindowFlags flags)
    : ExtendDialog(parent, 1)
{
    setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | flags);
}

void ActivationDlg::Instantiate(ActivationWizard* wizard)
{
    m_pWizard = wizard;
}

void ActivationDlg::cancelThroughWizard()
{
    if (!m_pWizard)
        return;
    m_bClosingItself = true;
    m_pWizard->onCancelButtonClicked();
    // The tear-down has scheduled this dialog for deletion; nothing else may touch it now.
}

void ActivationDlg::closeEvent(QCloseEvent* event)
{
    // The wizard decides how its dialog goes (a device reset after success, the callbacks
    // withdrawn), not the window system.
    event->ignore();
    cancelThroughWizard();
}

void ActivationDlg::reject()
{
    cancelThroughWizard();
}

// ---- Singleton -----------------------------------------------------------------------------------

ActivationWizard::ActivationWizard()
{
    std::memset(&m_stEsnInfo, 0, sizeof(m_stEsnInfo));
}

ActivationWizard::~ActivationWizard()
{
    delete numericValidator;
}

ActivationWizard* ActivationWizard::Instance()
{
    if (!g_pActivationInstance.load())
        g_pActivationInstance.store(new ActivationWizard());
    return g_pActivationInstance.load();
}

void ActivationWizard::Destroy(ActivationWizard* wizard)
{
    if (!wizard)
        return;
    wizard->onCancelButtonClicked();
    ActivationWizard* expected = wizard;
    g_pActivationInstance.compare_exchange_strong(expected, nullptr);
    delete wizard;
}

void ActivationWizard::OnDestroy()
{
}

int ActivationWizard::getRetryTimes()
{
    return 0;
}

bool ActivationWizard::IsActivationWindowShown() const
{
    if (!m_pDialog)
        return false;
    return m_pDialog->isVisible() || m_pDialog->isActiveWindow();
}

QString ActivationWizard::tr(QString key)
{
    return Change::tr(key, "DeviceMgrUIPlugin");
}

// ---- Frame ---------------------------------------------------------------------------------------

void ActivationWizard::showActivationDlg(QWidget* parent)
{
    const QRegExp digits(QStringLiteral("[0-9]{1,22}"), Qt::CaseSensitive, QRegExp::RegExp);
    if (!numericValidator)
        numericValidator = new QRegExpValidator(digits, nullptr);
    if (!m_pDialog) {
        m_pDialog = new ActivationDlg(parent, Qt::WindowCloseButtonHint);
        if (!m_pDialog) {
            DM_LOG("%s : %s : %s : Activation Dlg is NULL");
            return;
        }
        m_pDialog->Instantiate(this);
        bool ok = false;
        ActivationConfigParse* config = ActivationConfigParse::GetInstance();
        m_activationInfo = config->GetActivationInfo(ok);
        // A user who asked for the wizard gets it even without the carrier's settings: the
        // defaults (over the air, "*228") are what most carriers use.
        if (!ok)
            DM_LOG("%s : %s : %s : Failed to read Config data");
        ActivationConfigParse::Release(config);
        createParentContainer();
        m_pDialog->AddMainWidget(m_pWidgetParent);
        m_pDialog->setFixedSize(366, 380);
        m_pDialog->setObjectName(QStringLiteral("DeviceMgrUIPlugin_ActivationDlg"));
    }
    m_pDialog->setWindowModality(Qt::WindowModal);
    m_pDialog->setWindowTitle(tr(QStringLiteral("IDS_DLG_TITLE")));
    m_pDialog->show();
}

void ActivationWizard::createParentContainer()
{
    if (!m_pWidgetParent) {
        m_pWidgetParent = new QWidget(nullptr);
        m_pWidgetContainer = new QGroupBox(m_pWidgetParent);
        m_pPageLayout = new QVBoxLayout();
        m_pLayoutParent = new QVBoxLayout(m_pWidgetParent);
        m_pButtonBack = new QPushButton(m_pWidgetParent);
        m_pButtonNext = new QPushButton(m_pWidgetParent);
        m_pButtonCancel = new QPushButton(m_pWidgetParent);
        m_pButtonLayout = new QHBoxLayout();
        if (!m_pWidgetParent || !m_pWidgetContainer || !m_pPageLayout || !m_pLayoutParent || !m_pButtonBack ||
            !m_pButtonNext || !m_pButtonCancel || !m_pButtonLayout) {
            DM_LOG("%s : %s : %s : creating Parent container failed");
            return;
        }
        m_pWidgetParent->setObjectName(QStringLiteral("DeviceMgrUIplugin_WidgetParent"));
        m_pWidgetContainer->setObjectName(QStringLiteral("DeviceMgrUIplugin_WidgetContainer"));
        m_pLayoutParent->setObjectName(QStringLiteral("DeviceMgrUIplugin_LayoutParent"));
        m_pButtonBack->setObjectName(QStringLiteral("DeviceMgrUIplugin_ButtonBack"));
        m_pButtonNext->setObjectName(QStringLiteral("DeviceMgrUIplugin_ButtonNext"));
        m_pButtonCancel->setObjectName(QStringLiteral("DeviceMgrUIplugin_ButtonCancel"));
        m_pButtonLayout->setObjectName(QStringLiteral("DeviceMgrUIplugin_ButtonLayout"));

        m_pLayoutParent->setContentsMargins(10, 15, 10, 10);
        m_pButtonLayout->setContentsMargins(0, 10, 12, 0);
        m_pButtonLayout->setSpacing(30);
        m_pButtonLayout->setAlignment(Qt::AlignRight);
        m_pButtonLayout->addWidget(m_pButtonBack);
        m_pButtonLayout->addWidget(m_pButtonNext);
        m_pButtonLayout->addWidget(m_pButtonCancel);

        connect(m_pButtonBack, SIGNAL(clicked()), this, SLOT(onBackButtonClicked()));
        connect(m_pButtonNext, SIGNAL(clicked()), this, SLOT(onNextButtonClicked()));
        connect(m_pButtonCancel, SIGNAL(clicked()), this, SLOT(onCancelButtonClicked()));
        // Unique: a rebuilt frame must not make the over-the-air messages arrive twice.
        connect(this, SIGNAL(signalAutoCallEnd()), this, SLOT(onAutoCallEnd()),
                static_cast<Qt::ConnectionType>(Qt::AutoConnection | Qt::UniqueConnection));
        connect(this, SIGNAL(signalOTAMsg()), this, SLOT(onOTAMsg()),
                static_cast<Qt::ConnectionType>(Qt::AutoConnection | Qt::UniqueConnection));

        m_pLayoutParent->addWidget(m_pWidgetContainer, 1, Qt::AlignTop);
        if (!CommonUtils::IsMiniMode())
            m_pWidgetContainer->setFixedSize(342, 300);
        m_pWidgetContainer->setLayout(m_pPageLayout);
        m_pLayoutParent->addLayout(m_pButtonLayout);
    }
    updateParentContainer();
}

void ActivationWizard::updateParentContainer()
{
    if (!m_pButtonBack || !m_pButtonNext || !m_pButtonCancel) {
        DM_LOG("%s : %s : %s : preconditions FAILED. Quit function");
        return;
    }
    m_pButtonBack->setText(tr(QStringLiteral("IDS_BTN_BACK")));
    m_pButtonNext->setText(tr(QStringLiteral("IDS_BTN_NEXT")));
    m_pButtonCancel->setText(tr(QStringLiteral("IDS_BTN_CANCEL")));
    switch (m_activationInfo.strActiveType) {
    case 0:
        m_pButtonBack->hide();
        DM_LOG("%s : %s : %s : Activation type is  0. Call AutoActivate");
        AutoActivate();
        break;
    case 1:
        m_pButtonBack->hide();
        DM_LOG("%s : %s : %s : Activation type is 1. Call Manual Activate");
        ManualActivate();
        break;
    default:
        // Carriers' files carry other numbers too; all of them let the user choose.
        DM_LOG("%s : %s : %s : Activation type is 2. Show selection option");
        createSelectTypeLayout();
        break;
    }
}

// ---- Selection page ------------------------------------------------------------------------------

void ActivationWizard::createSelectTypeLayout()
{
    if (!m_pWidgetSelectType) {
        m_pWidgetSelectType = new QWidget(nullptr);
        auto* layout = new QVBoxLayout(m_pWidgetSelectType);
        m_pRadioAutoActivate = new QRadioButton(m_pWidgetSelectType);
        m_pRadioManualActivate = new QRadioButton(m_pWidgetSelectType);
        m_pLabelAutoText = new QLabel(m_pWidgetSelectType);
        m_pLabelManualText = new QLabel(m_pWidgetSelectType);
        if (!m_pWidgetSelectType || !layout || !m_pRadioAutoActivate || !m_pRadioManualActivate ||
            !m_pLabelAutoText || !m_pLabelManualText) {
            DM_LOG("%s : %s : %s :Failed!One of the components is NULL. ");
            return;
        }
        layout->setObjectName(QStringLiteral("DeviceMgrUIplugin_layoutSelectType"));
        // The group box already frames the page; a second margin would push the texts off it.
        layout->setContentsMargins(0, 0, 0, 0);
        m_pRadioAutoActivate->setObjectName(QStringLiteral("DeviceMgrUIplugin_m_pRadioAutoActivate"));
        m_pRadioManualActivate->setObjectName(QStringLiteral("DeviceMgrUIplugin_m_pRadioManualActivate"));
        m_pLabelAutoText->setObjectName(QStringLiteral("DeviceMgrUIplugin_m_pLabelAutoText"));
        m_pLabelManualText->setObjectName(QStringLiteral("DeviceMgrUIplugin_LabelManualText"));
        for (QLabel* label : {m_pLabelAutoText.data(), m_pLabelManualText.data()}) {
            label->setFixedWidth(300);
            label->setWordWrap(true);
            label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
        }
        m_pLabelManualText->setFixedHeight(100);
        layout->addSpacing(10);
        layout->addWidget(m_pRadioAutoActivate);
        layout->addWidget(m_pLabelAutoText);
        layout->addSpacing(15);
        layout->addWidget(m_pRadioManualActivate);
        layout->addWidget(m_pLabelManualText);
        layout->addSpacing(15);
    }
    updateSelectTypeLayout();
}

void ActivationWizard::updateSelectTypeLayout()
{
    if (!m_pDialog || !m_pPageLayout || !m_pRadioAutoActivate || !m_pRadioManualActivate ||
        !m_pLabelAutoText || !m_pLabelManualText || !m_pButtonBack || !m_pButtonNext) {
        DM_LOG("%s : %s : %s :Failed!One of the components is NULL. ");
        return;
    }
    m_pRadioAutoActivate->setChecked(true);
    currentPage = PageSelectType;
    m_pRadioAutoActivate->setText(tr(QStringLiteral("IDS_BTN_AUTO")));
    m_pRadioManualActivate->setText(tr(QStringLiteral("IDS_BTN_MANUAL")));
    m_pLabelAutoText->setText(tr(QStringLiteral("IDS_AUTO_MSG")));
    m_pLabelManualText->setText(tr(QStringLiteral("IDS_MANUAL_MSG")));
    m_pButtonBack->setEnabled(false);
    m_pButtonNext->setEnabled(true);
    m_pPageLayout->addWidget(m_pWidgetSelectType, 0, Qt::AlignLeft | Qt::AlignTop);
}

// ---- Message page --------------------------------------------------------------------------------

void ActivationWizard::createMessageDisplayLayout(QString text)
{
    if (!m_pLabelMessage) {
        m_pLabelMessage = new QLabel(m_pWidgetContainer);
        if (!m_pLabelMessage) {
            DM_LOG("%s : %s : %s : Failed! One of the items is NULL");
            return;
        }
        m_pLabelMessage->setObjectName(QStringLiteral("DeviceMgrUIPlugin_labelMessage"));
        m_pLabelMessage->setWordWrap(true);
        m_pLabelMessage->setAlignment(Qt::AlignLeft | Qt::AlignTop);
        m_pLabelMessage->setFixedSize(300, 64);
    }
    if (!m_pButtonBack || !m_pButtonNext || !m_pButtonCancel || !m_pPageLayout)
        return;
    m_pButtonBack->setEnabled(false);
    m_pButtonNext->setEnabled(false);
    m_pButtonCancel->setText(tr(QStringLiteral("IDS_BTN_FINISH")));
    currentPage = PageMessage;
    m_pLabelMessage->setText(text);
    // A second message (a manual failure after an over-the-air attempt) reuses the label in place.
    if (m_pPageLayout->indexOf(m_pLabelMessage) < 0)
        m_pPageLayout->addWidget(m_pLabelMessage, 0, Qt::AlignTop);
    m_pLabelMessage->show();
}

// ---- Entries of the manual pages -----------------------------------------------------------------

void ActivationWizard::onTextEdited(QString text)
{
    if (!m_pButtonNext) {
        DM_LOG("Arg is NULL: %s: %s: %s %d", __LINE__);
        return;
    }
    if (currentPage == PageOTKSL || currentPage == PageMSL) {
        // Both codes have six digits; the field takes no more.
        m_pButtonNext->setEnabled(text.length() > 5);
        return;
    }
    const auto entry = [](const QPointer<QLineEdit>& edit) { return edit ? edit->text() : QString(); };
    // The SID length of the configuration is checked when the numbers are written, not here.
    const bool incomplete =
        (m_activationInfo.bShowMIN && entry(m_pLineMIN).length() < m_activationInfo.nMINLength) ||
        (m_activationInfo.bShowMDN && entry(m_pLineMDN).length() < m_activationInfo.nMDNLength) ||
        (m_activationInfo.bShowSID && entry(m_pLineSID).isEmpty()) ||
        (m_activationInfo.bShowPRL && entry(m_pLinePRL).isEmpty());
    m_pButtonNext->setEnabled(!incomplete);
}

// ---- Page state ----------------------------------------------------------------------------------

void ActivationWizard::onNextButtonClicked()
{
    switch (currentPage) {
    case PageSelectType: {
        if (!m_pRadioAutoActivate || !m_pRadioManualActivate) {
            DM_LOG("%s : %s : %s : Failed. Component NULL");
            return;
        }
        // The radios go with the selection page: read the choice first.
        const bool automatic = m_pRadioAutoActivate->isChecked();
        const bool manual = m_pRadioManualActivate->isChecked();
        if (m_pPageLayout)
            m_pPageLayout->removeWidget(m_pWidgetSelectType);
        delete m_pWidgetSelectType.data();
        if (automatic)
            AutoActivate();
        else if (manual)
            ManualActivate();
        break;
    }
    case PageOTKSL:
        VerifyOTKSL();
        break;
    case PageMINSID:
        verifyMINSID();
        break;
    case PageMSL:
        verifyMSL();
        break;
    default:
        // The result and message pages have nothing to go on to.
        break;
    }
}

void ActivationWizard::backToSelection(QPointer<QWidget>& page)
{
    if (m_pPageLayout && page)
        m_pPageLayout->removeWidget(page);
    delete page.data();
    page = nullptr;
    if (m_pPageLayout)
        m_pPageLayout->update();
    createSelectTypeLayout();
    // The user came from manual activation; that is the likelier next choice.
    if (m_pRadioManualActivate)
        m_pRadioManualActivate->setChecked(true);
}

void ActivationWizard::onBackButtonClicked()
{
    switch (currentPage) {
    case PageOTKSL:
        backToSelection(m_pWidgetOTKSL);
        break;
    case PageMINSID:
        backToSelection(m_pWidgetMINSID);
        break;
    case PageMSL:
        backToSelection(m_pWidgetMSL);
        break;
    default:
        // Back is disabled on these pages; should it be reached, the choice is shown again.
        createSelectTypeLayout();
        break;
    }
}

void ActivationWizard::onCancelButtonClicked()
{
    // Page 5 only exists while its dialog does; a wizard destroyed later (the device went away,
    // the host shuts down) must not reset the device a second time.
    if (currentPage == PageSuccess && m_pDialog) {
        if (ZELK_DevSrv_ResetMs() == ZELK_ERROR_SUCCESS)
            DM_LOG("%s : %s : %s : ZELK_DevSrv_ResetMs returned SUCCESS");
        else
            DM_WARN("%s : %s : %s : ZELK_DevSrv_ResetMs Failed");
    }
    unRegisterCB();
    delete numericValidator;
    numericValidator = nullptr;
    // Children of the dialog: they go with it. The lock-code page is cleared only when it is
    // verified or left with Back; its guarded pointer forgets it when the dialog takes it along.
    m_pWidgetSelectType = nullptr;
    m_pWidgetMSL = nullptr;
    m_pWidgetMINSID = nullptr;
    m_pLabelMessage = nullptr;
    m_pWidgetContainer = nullptr;
    m_pWidgetParent = nullptr;
    if (ActivationDlg* dialog = m_pDialog.data()) {
        m_pDialog = nullptr;
        dialog->Instantiate(nullptr);
        if (dialog->isClosingItself()) {
            // Still inside its own close or key handling.
            dialog->hide();
            dialog->deleteLater();
        } else {
            delete dialog;
        }
    }
}
