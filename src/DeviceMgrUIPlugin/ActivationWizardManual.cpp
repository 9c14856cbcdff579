// Activation wizard: manual activation. The device says which lock code it wants (none, the
// one-time subsidy-lock code or the MSL); the typed code goes straight to the device, which alone
// judges it; then the MIN, MDN, SID and roaming list are written.
#include "ActivationWizard.h"

#include "CommonUtils.h"
#include "DeviceMgrLog.h"
#include "ExtendLineEdit.h"

#include <QtCore/QFile>
#include <QtGui/QRegExpValidator>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <memory>
#include <new>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// Both lock codes have six digits.
constexpr int kCodeDigits = ZELK_ACT_CODE_BUFFER_SIZE - 1;

// The largest roaming list accepted from a file. A roaming list states its own length in a 16-bit
// field, so no list a card can take exceeds 64 KiB; anything bigger is not a roaming list (a disk
// image, a video picked by mistake) and reading it whole would only cost memory.
constexpr qint64 kMaxPrlBytes = 64 * 1024;

void secureWipe(void* data, std::size_t size)
{
    volatile unsigned char* p = static_cast<volatile unsigned char*>(data);
    while (size--)
        *p++ = 0;
}

// A code on its way to the device: at most six characters and a terminator in a zero-filled
// buffer, wiped when it goes out of scope.
class ActivationCode
{
public:
    explicit ActivationCode(const QString& entry)
    {
        std::memset(m_buffer, 0, sizeof(m_buffer));
        QByteArray ascii = entry.toLatin1();
        std::memcpy(m_buffer, ascii.constData(),
                    static_cast<std::size_t>(std::min(ascii.size(), kCodeDigits)));
        secureWipe(ascii.data(), static_cast<std::size_t>(ascii.size()));
    }
    ~ActivationCode() { secureWipe(m_buffer, sizeof(m_buffer)); }
    ActivationCode(const ActivationCode&) = delete;
    ActivationCode& operator=(const ActivationCode&) = delete;
    const char* data() const { return m_buffer; }

private:
    char m_buffer[ZELK_ACT_CODE_BUFFER_SIZE];
};

// Text of a fixed-size field of a device record, which need not be terminated.
QByteArray fieldText(const char* field, std::size_t size)
{
    return QByteArray(field, static_cast<int>(strnlen(field, size)));
}

quint32 hexValue(const QByteArray& text)
{
    bool ok = false;
    const quint32 value = text.toUInt(&ok, 16);
    return ok ? value : 0;
}

// The ESN as carriers quote it: manufacturer code (top 8 bits) and serial number (low 24 bits).
QString esnDecimal(const QByteArray& esn)
{
    const quint32 value = hexValue(esn);
    return QString::asprintf("%03u%08u", value >> 24, value & 0xFFFFFFu);
}

// The MEID as carriers quote it: manufacturer code (first 8 hex digits) and serial (last 6).
QString meidDecimal(const QByteArray& meid)
{
    return QString::asprintf("%010u%08u", hexValue(meid.left(8)), hexValue(meid.mid(8, 6)));
}

void copyField(char* field, std::size_t size, const QPointer<QLineEdit>& entry)
{
    const QByteArray text = entry ? entry->text().toLatin1() : QByteArray();
    std::memcpy(field, text.constData(),
                std::min<std::size_t>(static_cast<std::size_t>(text.size()), size - 1));
}

} // namespace

// ---- Lock status --------------------------------------------------------------------------------

void ActivationWizard::ManualActivate()
{
    DM_LOG("%s : %s : %s : Entered");
    if (ZELK_DevSrv_GetOTKSLStatus(&otkslStatus, &otkslRetries) != ZELK_ERROR_SUCCESS) {
        DM_WARN("%s : %s : %s : Manual Activation returned failure.{may be not supported)");
        createMessageDisplayLayout(tr(QStringLiteral("IDS_ACTIVE_FAILED")));
        return;
    }
    switch (otkslStatus) {
    case ZELK_OTKSL_OTKSL:
        createOTKSLLayout(otkslRetries);
        break;
    case ZELK_OTKSL_MSL:
        createMSLLayout();
        break;
    case ZELK_OTKSL_NONE:
        createMINandSIDLayout();
        break;
    default:
        // A status this wizard does not know: nothing to offer, Cancel is the only way out.
        if (m_pButtonNext)
            m_pButtonNext->setEnabled(false);
        if (m_pButtonBack)
            m_pButtonBack->setEnabled(false);
        break;
    }
}

void ActivationWizard::dropPage(QPointer<QWidget>& page)
{
    if (page)
        m_pPageLayout->removeWidget(page);
    delete page.data();
    page = nullptr;
    m_pPageLayout->update();
}

// ---- MSL page -----------------------------------------------------------------------------------

void ActivationWizard::createMSLLayout()
{
    if (!m_pWidgetMSL) {
        m_pWidgetMSL = new QWidget(nullptr);
        auto* outer = new QVBoxLayout(m_pWidgetMSL);
        auto* row = new QHBoxLayout();
        m_pLabelMSLInfo = new QLabel(m_pWidgetMSL);
        m_pLabelMSLString = new QLabel(m_pWidgetMSL);
        m_pLineMSL = new ExtendLineEdit(m_pWidgetMSL);
        m_pWidgetMSL->setObjectName(QStringLiteral("DeviceMgrUIPlugin_WidgetMSL"));
        outer->setObjectName(QStringLiteral("DeviceMgrUIPlugin_LayoutMSLComplete"));
        row->setObjectName(QStringLiteral("DeviceMgrUIPlugin_LayoutMSL"));
        m_pLabelMSLInfo->setObjectName(QStringLiteral("DeviceMgrUIPlugin_LabelMSLInfo"));
        m_pLabelMSLString->setObjectName(QStringLiteral("DeviceMgrUIPlugin_LabelMSLString"));
        m_pLineMSL->setObjectName(QStringLiteral("DeviceMgrUIPlugin_LineMSL"));
        m_pLabelMSLInfo->setFixedSize(300, 64);
        m_pLabelMSLInfo->setWordWrap(true);
        m_pLabelMSLString->setFixedWidth(60);
        m_pLineMSL->setFixedSize(150, 20);
        m_pLineMSL->setEchoMode(QLineEdit::Password);
        m_pLineMSL->setMaxLength(kCodeDigits);
        m_pLineMSL->setValidator(numericValidator);
        outer->addWidget(m_pLabelMSLInfo);
        outer->addSpacing(20);
        outer->addLayout(row);
        outer->addSpacing(40);
        row->addWidget(m_pLabelMSLString);
        row->addSpacing(20);
        row->addWidget(m_pLineMSL);
        connect(m_pLineMSL, SIGNAL(textEdited(QString)), this, SLOT(onTextEdited(QString)));
    }
    updateMSLLayout();
}

void ActivationWizard::updateMSLLayout()
{
    if (!m_pButtonNext || !m_pButtonBack || !m_pPageLayout || !m_pLabelMSLInfo || !m_pLabelMSLString) {
        DM_LOG("%s : %s : %s : Failed. Item NULL");
        return;
    }
    m_pButtonNext->setEnabled(false);
    m_pButtonBack->setEnabled(true);
    currentPage = PageMSL;
    m_pLabelMSLInfo->setText(tr(QStringLiteral("IDS_MSL_MSG")));
    m_pLabelMSLString->setText(tr(QStringLiteral("IDS_MSL_PROMPT_MSL")));
    m_pPageLayout->addWidget(m_pWidgetMSL, 0, Qt::AlignTop);
}

void ActivationWizard::verifyMSL()
{
    if (!m_pPageLayout) {
        DM_LOG("%s : %s : %s : Failed. Item NULL");
        return;
    }
    const ActivationCode code(m_pLineMSL ? m_pLineMSL->text() : QString());
    DM_LOG("%s : %s : %s : Remobe MSL widget");
    DM_LOG("%s : %s : %s : Delete MSL widget");
    dropPage(m_pWidgetMSL);
    // One try per page: after a refusal the user starts again and the device is asked afresh.
    if (ZELK_DevSrv_VerifyMSL(code.data()) != ZELK_ERROR_SUCCESS) {
        DM_WARN("%s : %s : %s : Verify MSL failed");
        createMessageDisplayLayout(tr(QStringLiteral("IDS_MSL_FAILED")));
        return;
    }
    DM_LOG("%s : %s : %s : Verify MSL success");
    createMINandSIDLayout();
}

// ---- One-time code page -------------------------------------------------------------------------

void ActivationWizard::createOTKSLLayout(int retries)
{
    // The tear-down leaves this page to its dialog; a dialog that closed itself is deleted later,
    // and its page must not turn up in the next one.
    if (m_pWidgetOTKSL && m_pWidgetContainer && m_pWidgetOTKSL->parentWidget() &&
        !m_pWidgetContainer->isAncestorOf(m_pWidgetOTKSL))
        m_pWidgetOTKSL = nullptr;
    if (!m_pWidgetOTKSL) {
        m_pWidgetOTKSL = new QWidget(nullptr);
        auto* layout = new QVBoxLayout(m_pWidgetOTKSL);
        m_pLabelOTKInfo = new QLabel(m_pWidgetOTKSL);
        auto* esnRow = new QHBoxLayout();
        m_pLabelESNText = new QLabel(m_pWidgetOTKSL);
        m_pLabelESNNumber = new QLabel(m_pWidgetOTKSL);
        m_pLabelActivationcodeInfo = new QLabel(m_pWidgetOTKSL);
        auto* inputRow = new QHBoxLayout();
        m_pLabelOTKString = new QLabel(m_pWidgetOTKSL);
        m_pEditOTKBox = new ExtendLineEdit(m_pWidgetOTKSL);
        m_pLabelRetryAttempt = new QLabel(m_pWidgetOTKSL);
        if (!layout || !m_pLabelOTKInfo || !esnRow || !m_pLabelESNText || !m_pLabelESNNumber ||
            !m_pLabelActivationcodeInfo || !inputRow || !m_pLabelOTKString || !m_pEditOTKBox ||
            !m_pLabelRetryAttempt) {
            DM_LOG("%s : %s : %s : Failed! one of the Items is  NULL");
            return;
        }
        m_pWidgetOTKSL->setObjectName(QStringLiteral("DeviceMgrUIPlugin_WidgetOTKSL"));
        layout->setObjectName(QStringLiteral("DeviceMgrUIPlugin_layoutOTKSL"));
        m_pLabelOTKInfo->setObjectName(QStringLiteral("DeviceMgrUIPlugin_LabelOTKInfo"));
        esnRow->setObjectName(QStringLiteral("DeviceMgrUIPlugin_layoutESN"));
        m_pLabelESNText->setObjectName(QStringLiteral("DeviceMgrUIPlugin_LabelESNText"));
        m_pLabelESNNumber->setObjectName(QStringLiteral("DeviceMgrUIPlugin_LabelESNNumber"));
        m_pLabelActivationcodeInfo->setObjectName(
            QStringLiteral("DeviceMgrUIPlugin_LabelActivationcodeInfo"));
        inputRow->setObjectName(QStringLiteral("DeviceMgrUIPlugin_layoutOTKInput"));
        m_pLabelOTKString->setObjectName(QStringLiteral("DeviceMgrUIPlugin_LabelOTKString"));
        m_pEditOTKBox->setObjectName(QStringLiteral("DeviceMgrUIPlugin_EditOTKBox"));
        m_pLabelRetryAttempt->setObjectName(QStringLiteral("DeviceMgrUIPlugin_LabelRetryAttempt"));

        m_pLabelOTKInfo->setFixedSize(290, 64);
        m_pLabelOTKInfo->setWordWrap(true);
        m_pLabelOTKInfo->setAlignment(Qt::AlignTop);
        m_pLabelESNText->setMaximumWidth(50);
        m_pLabelESNNumber->setFixedWidth(220);
        esnRow->addWidget(m_pLabelESNText);
        esnRow->addWidget(m_pLabelESNNumber);
        m_pLabelActivationcodeInfo->setFixedSize(290, 64);
        m_pLabelActivationcodeInfo->setWordWrap(true);
        m_pLabelActivationcodeInfo->setAlignment(Qt::AlignLeft | Qt::AlignTop);
        m_pEditOTKBox->setFixedSize(150, 20);
        m_pEditOTKBox->setEchoMode(QLineEdit::Password);
        m_pEditOTKBox->setMaxLength(kCodeDigits);
        m_pEditOTKBox->setValidator(numericValidator);
        inputRow->addWidget(m_pLabelOTKString);
        inputRow->addSpacing(20);
        inputRow->addWidget(m_pEditOTKBox);

        layout->addWidget(m_pLabelOTKInfo);
        layout->addLayout(esnRow);
        layout->addWidget(m_pLabelActivationcodeInfo);
        layout->addSpacing(20);
        layout->addLayout(inputRow);
        layout->addSpacing(5);
        layout->addWidget(m_pLabelRetryAttempt);
        connect(m_pEditOTKBox, SIGNAL(textEdited(QString)), this, SLOT(onTextEdited(QString)));
    }
    updateOTKSLLayout(retries);
}

void ActivationWizard::updateOTKSLLayout(int retries)
{
    if (!m_pButtonNext || !m_pButtonBack || !m_pPageLayout || !m_pLabelOTKInfo || !m_pLabelESNText ||
        !m_pLabelESNNumber || !m_pLabelActivationcodeInfo || !m_pLabelOTKString || !m_pEditOTKBox ||
        !m_pLabelRetryAttempt) {
        DM_LOG("%s : %s : %s : Failed! one of the Items is  NULL");
        return;
    }
    m_pButtonNext->setEnabled(false);
    m_pButtonBack->setEnabled(true);
    currentPage = PageOTKSL;
    SetESNandMEID();
    m_pLabelActivationcodeInfo->setText(tr(QStringLiteral("IDS_SPC_MSG")));
    m_pLabelOTKString->setText(tr(QStringLiteral("IDS_OTKSL_PROMPT_PWD")));
    // The translation carries its own blank or colon before the number.
    m_pLabelRetryAttempt->setText(tr(QStringLiteral("IDS_MAINFRM_CARDLOCKDLG_LEFTTIMES")) +
                                  QString::number(retries));
    if (!CommonUtils::IsMiniMode())
        m_pWidgetOTKSL->setContentsMargins(5, 0, 20, 10);
    m_pPageLayout->addWidget(m_pWidgetOTKSL, 1);
}

void ActivationWizard::SetESNandMEID()
{
    std::memset(&m_stEsnInfo, 0, sizeof(m_stEsnInfo));
    if (!m_pLabelOTKInfo || !m_pLabelESNText || !m_pLabelESNNumber)
        return;
    if (!m_activationInfo.bDisplayCode) {
        m_pLabelOTKInfo->hide();
        m_pLabelESNText->hide();
        m_pLabelESNNumber->hide();
        return;
    }
    // Without the identity the user can still type the code; the labels stay empty.
    if (ZELK_DevSrv_GetESN(&m_stEsnInfo) != ZELK_ERROR_SUCCESS)
        return;
    const QByteArray esn = fieldText(m_stEsnInfo.szESN, sizeof(m_stEsnInfo.szESN));
    m_pLabelOTKInfo->setText(tr(QStringLiteral("IDS_ESN_MSG")));
    // An ESN beginning with 80 is a pseudo-ESN derived from the MEID, which is what carriers ask
    // for then. A true ESN of manufacturer 0x80 shows its MEID too.
    if (!esn.startsWith("80")) {
        m_pLabelESNText->setText(tr(QStringLiteral("IDS_ESN_PROMPT")));
        m_pLabelESNNumber->setText(m_activationInfo.nShowType == 0 ? esnDecimal(esn)
                                                                   : QString::fromLatin1(esn));
    } else {
        const QByteArray meid = fieldText(m_stEsnInfo.szMEID, sizeof(m_stEsnInfo.szMEID));
        m_pLabelESNText->setText(tr(QStringLiteral("IDS_MEID_PROMPT")));
        m_pLabelESNNumber->setText(m_activationInfo.nShowType == 0 ? meidDecimal(meid)
                                                                   : QString::fromLatin1(meid));
    }
}

void ActivationWizard::VerifyOTKSL()
{
    if (!m_pPageLayout) {
        DM_LOG("%s : %s : %s : Failed! Component NULL");
        return;
    }
    const ActivationCode code(m_pEditOTKBox ? m_pEditOTKBox->text() : QString());
    DM_LOG("%s : %s : %s : Remove OTKSL widget");
    DM_LOG("%s : %s : %s : Delete OTKSL widget");
    dropPage(m_pWidgetOTKSL);
    // The device counts the attempts; the next ManualActivate() shows what it has left.
    if (ZELK_DevSrv_VerifyOTKSL(code.data(), &otkslRetries) != ZELK_ERROR_SUCCESS) {
        DM_WARN("%s : %s : %s : ZELK_DevSrv_VerifyOTKSL  returned Failure");
        createMessageDisplayLayout(tr(QStringLiteral("IDS_SPC_FAILED")));
        return;
    }
    DM_LOG("%s : %s : %s : ZELK_DevSrv_VerifyOTKSL  returned SUCCESS");
    createMINandSIDLayout();
}

// ---- MIN, MDN, SID and PRL page -----------------------------------------------------------------

void ActivationWizard::createMINandSIDLayout()
{
    if (!m_pWidgetMINSID) {
        m_pWidgetMINSID = new QWidget(nullptr);
        auto* layout = new QVBoxLayout(m_pWidgetMINSID);
        m_pWidgetMIN = new QWidget(m_pWidgetMINSID);
        m_pWidgetMDN = new QWidget(m_pWidgetMINSID);
        m_pWidgetSID = new QWidget(m_pWidgetMINSID);
        m_pWidgetPRL = new QWidget(m_pWidgetMINSID);
        auto* rowMIN = new QHBoxLayout(m_pWidgetMIN);
        auto* rowMDN = new QHBoxLayout(m_pWidgetMDN);
        auto* rowSID = new QHBoxLayout(m_pWidgetSID);
        auto* rowPRL = new QHBoxLayout(m_pWidgetPRL);
        m_pLabelMIN = new QLabel(m_pWidgetMIN);
        m_pLabelMDN = new QLabel(m_pWidgetMDN);
        m_pLabelSID = new QLabel(m_pWidgetSID);
        m_pLabelPRL = new QLabel(m_pWidgetPRL);
        m_pLineMIN = new ExtendLineEdit(m_pWidgetMIN);
        m_pLineMDN = new ExtendLineEdit(m_pWidgetMDN);
        m_pLineSID = new ExtendLineEdit(m_pWidgetSID);
        m_pLinePRL = new ExtendLineEdit(m_pWidgetPRL);
        m_pBtnBrowsePRL = new QPushButton(m_pWidgetPRL);
        if (!layout || !m_pWidgetMIN || !m_pWidgetMDN || !m_pWidgetSID || !m_pWidgetPRL || !rowMIN ||
            !rowMDN || !rowSID || !rowPRL || !m_pLabelMIN || !m_pLabelMDN || !m_pLabelSID || !m_pLabelPRL ||
            !m_pLineMIN || !m_pLineMDN || !m_pLineSID || !m_pLinePRL || !m_pBtnBrowsePRL) {
            DM_LOG("%s : %s : %s : Failed! One of the items is NULL");
            delete m_pWidgetMINSID.data();
            return;
        }
        // Style sheets address these names; their unevenness is part of that interface.
        m_pWidgetMINSID->setObjectName(QStringLiteral("DeviceMgrUIPlugin_WidgetMINSID"));
        layout->setObjectName(QStringLiteral("DeviceMgrUIPlugin_LayoutMINComplete"));
        m_pWidgetMIN->setObjectName(QStringLiteral("DeviceMgrUIPlugin_pWidgetMIN"));
        rowMIN->setObjectName(QStringLiteral("DeviceMgrUIPlugin_LayoutMIN"));
        m_pLabelMIN->setObjectName(QStringLiteral("DeviceMgrUIPlugin_LabelMIN-"));
        m_pLineMIN->setObjectName(QStringLiteral("DeviceMgrUIPlugin_LineMIN"));
        m_pWidgetMDN->setObjectName(QStringLiteral("DeviceMgrUIPlugin_WidgetMDN"));
        m_pLabelMDN->setObjectName(QStringLiteral("DeviceMgrUIPlugin_LabelMDN"));
        m_pLineMDN->setObjectName(QStringLiteral("DeviceMgrUIPlugin_LineMDN"));
        m_pWidgetSID->setObjectName(QStringLiteral("DeviceMgrUIPlugin_WidgetSID"));
        rowSID->setObjectName(QStringLiteral("DeviceMgrUIPlugin_LayoutSID"));
        m_pLabelSID->setObjectName(QStringLiteral("DeviceMgrUIPlugin_LabelSID"));
        m_pLineSID->setObjectName(QStringLiteral("DeviceMgrUIPlugin_LineSID"));
        m_pBtnBrowsePRL->setObjectName(QStringLiteral("DeviceMgrUIPlugin_BtnBrowsePRL"));
        AddMINSIDItemsToLayout();
    }
    updateMINandSIDLayout();
}

void ActivationWizard::AddMINSIDItemsToLayout()
{
    const bool mini = CommonUtils::IsMiniMode();
    for (QLineEdit* entry : {m_pLineMIN.data(), m_pLineMDN.data(), m_pLineSID.data(), m_pLinePRL.data()})
        entry->setFixedSize(150, 20);
    for (QLabel* label : {m_pLabelMIN.data(), m_pLabelMDN.data(), m_pLabelSID.data(), m_pLabelPRL.data()})
        label->setFixedSize(60, 20);
    m_pBtnBrowsePRL->setFixedSize(mini ? 20 : 22, 20);

    auto* page = static_cast<QVBoxLayout*>(m_pWidgetMINSID->layout());
    QWidget* const rows[] = {m_pWidgetMIN, m_pWidgetMDN, m_pWidgetSID, m_pWidgetPRL};
    QLabel* const labels[] = {m_pLabelMIN, m_pLabelMDN, m_pLabelSID, m_pLabelPRL};
    QLineEdit* const entries[] = {m_pLineMIN, m_pLineMDN, m_pLineSID, m_pLinePRL};
    for (int i = 0; i < 4; ++i) {
        auto* row = static_cast<QHBoxLayout*>(rows[i]->layout());
        row->addSpacing(20);
        row->addWidget(labels[i]);
        row->addWidget(entries[i]);
        if (i == 3)
            row->addWidget(m_pBtnBrowsePRL);
        else
            row->addSpacing(mini ? 35 : 40);
        page->addWidget(rows[i]);
        connect(entries[i], SIGNAL(textChanged(QString)), this, SLOT(onTextEdited(QString)));
    }
    if (!mini)
        page->addSpacing(18);

    // The carrier's lengths are applied as written, 0 included (such a field takes nothing).
    m_pLineMIN->setMaxLength(m_activationInfo.nMINLength);
    m_pLineMDN->setMaxLength(m_activationInfo.nMDNLength);
    m_pLineSID->setMaxLength(m_activationInfo.nSIDLength);
    for (QLineEdit* entry : {m_pLineMIN.data(), m_pLineMDN.data(), m_pLineSID.data()})
        entry->setValidator(numericValidator);
    connect(m_pBtnBrowsePRL, SIGNAL(clicked(bool)), this, SLOT(onBtnBrowserPRLClicked()));
    SetMINandSIDConfig();
}

void ActivationWizard::SetMINandSIDConfig()
{
    if (!m_pWidgetMIN || !m_pWidgetMDN || !m_pWidgetSID || !m_pWidgetPRL) {
        DM_LOG("%s : %s : %s : Failed. One of the items is NULL");
        return;
    }
    if (!m_activationInfo.bShowMIN) {
        DM_LOG("%s : %s : %s : Hide MIN layout");
        m_pWidgetMIN->hide();
    }
    if (!m_activationInfo.bShowMDN) {
        DM_LOG("%s : %s : %s : Hide MDN layout");
        m_pWidgetMDN->hide();
    }
    if (!m_activationInfo.bShowSID) {
        DM_LOG("%s : %s : %s : Hide SID layout");
        m_pWidgetSID->hide();
    }
    if (!m_activationInfo.bShowPRL) {
        DM_LOG("%s : %s : %s : Hide PRL layout");
        m_pWidgetPRL->hide();
    }
}

void ActivationWizard::updateMINandSIDLayout()
{
    if (!m_pButtonNext || !m_pButtonBack || !m_pPageLayout || !m_pWidgetMINSID || !m_pLabelMIN ||
        !m_pLabelMDN || !m_pLabelSID || !m_pLabelPRL || !m_pBtnBrowsePRL) {
        DM_LOG("%s : %s : %s : Failed. One of the items is NULL");
        return;
    }
    m_pButtonNext->setEnabled(false);
    m_pButtonBack->setEnabled(true);
    currentPage = PageMINSID;
    m_pLabelMIN->setText(tr(QStringLiteral("IDS_ACTIVE_OTKSL_MIN_PROMPT")));
    m_pLabelMDN->setText(tr(QStringLiteral("IDS_ACTIVE_OTKSL_MDN_PROMPT")));
    m_pLabelSID->setText(tr(QStringLiteral("IDS_ACTIVE_OTKSL_SID_PROMPT")));
    m_pLabelPRL->setText(tr(QStringLiteral("IDS_PRL_LABEL")));
    m_pBtnBrowsePRL->setText(tr(QStringLiteral("IDS_PRL_BTN_BROWSER")));
    m_pPageLayout->addWidget(m_pWidgetMINSID, 1);
}

void ActivationWizard::onBtnBrowserPRLClicked()
{
    // The translated filter text is the pattern itself ("PRL (*.prl)" and the like).
    const QString path = QFileDialog::getOpenFileName(m_pDialog, tr(QStringLiteral("IDS_OPEN_PRL_FILE")),
                                                      QString(), tr(QStringLiteral("IDS_PRL_FILE_FILTER")));
    if (!path.isEmpty() && m_pLinePRL)
        m_pLinePRL->setText(path);
}

bool ActivationWizard::readPrlFile(QByteArray* data)
{
    const QString title = tr(QStringLiteral("IDS_MAINFRM_ERROR_PROMPT"));
    const auto error = [&](const char* key) {
        CommonUtils::ShowMessage(QMessageBox::Critical, m_pDialog, title, tr(QString::fromLatin1(key)),
                                 QStringLiteral("IDS_OK"));
    };
    // Non-blocking, so that a FIFO with no writer cannot hang the wizard at open. The file type is
    // then judged on the opened file itself, which cannot change under us as the path can.
    const QByteArray path = QFile::encodeName(m_pLinePRL->text());
    int fd = -1;
    if (!path.isEmpty()) {
        do
            fd = ::open(path.constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
        while (fd < 0 && errno == EINTR);
    }
    struct stat info = {};
    // A directory, a device, a FIFO or a socket is no file to read a roaming list from: the user
    // is asked for a proper path, as for a missing one.
    if (fd < 0 || ::fstat(fd, &info) != 0 || !S_ISREG(info.st_mode)) {
        if (fd >= 0)
            ::close(fd);
        DM_LOG("%s : %s : %s : PRL file is not existed");
        error("IDS_PRL_FILE_NOT_EXIST");
        m_pLinePRL->setFocus();
        return false;
    }
    const qint64 size = info.st_size;
    std::unique_ptr<char[]> buffer;
    if (size <= kMaxPrlBytes) {
        buffer.reset(new (std::nothrow) char[static_cast<std::size_t>(size) + 1]);
        if (!buffer) {
            ::close(fd);
            DM_LOG("%s : %s : %s : No enough memory to read PRL");
            error("IDS_PRL_NO_MEMORY");
            currentPage = PageFailure;
            return false;
        }
    }
    // One read of the whole file; an oversized file is not read at all. Either way, what arrives
    // must be exactly the size the file had when opened.
    ssize_t got = -1;
    if (buffer) {
        do
            got = ::read(fd, buffer.get(), static_cast<std::size_t>(size));
        while (got < 0 && errno == EINTR);
    }
    ::close(fd);
    if (got != size) {
        DM_LOG("%s : %s : %s : PRL read error");
        error("IDS_PRL_READ_ERROR");
        currentPage = PageFailure;
        return false;
    }
    *data = QByteArray(buffer.get(), static_cast<int>(size));
    return true;
}

void ActivationWizard::verifyMINSID()
{
    if (!m_pPageLayout) {
        DM_LOG("%s : %s : %s : Failed! Item NULL");
        return;
    }
    _ZELK_ST_SERVICE_NUMBER numbers;
    std::memset(&numbers, 0, sizeof(numbers));
    copyField(numbers.szMIN, sizeof(numbers.szMIN), m_pLineMIN);
    copyField(numbers.szSID, sizeof(numbers.szSID), m_pLineSID);
    copyField(numbers.szMDN, sizeof(numbers.szMDN), m_pLineMDN);

    // The roaming list goes first: numbers without the carrier's list would leave a card that
    // registers nowhere useful.
    if (m_activationInfo.bShowPRL && m_pLinePRL) {
        QByteArray prl;
        if (!readPrlFile(&prl))
            return;
        if (ZELK_DevSrv_UpdatePRL(prl.constData(), static_cast<unsigned long>(prl.size())) !=
            ZELK_ERROR_SUCCESS) {
            DM_LOG("%s : %s : %s : Remove MIN Sid widget");
            DM_LOG("%s : %s : %s : Delete MIN SID widget");
            dropPage(m_pWidgetMINSID);
            // Logged as a number failure: for the user it is the same failed activation.
            DM_WARN("%s : %s : %s : ZELK_DevSrv_ManualCHKOTKSLActive returned Failure");
            createMessageDisplayLayout(tr(QStringLiteral("IDS_ACTIVE_FAILED")));
            currentPage = PageFailure;
            return;
        }
    }
    DM_LOG("%s : %s : %s : Remove MIN Sid widget");
    DM_LOG("%s : %s : %s : Delete MIN SID widget");
    dropPage(m_pWidgetMINSID);
    if (ZELK_DevSrv_ManualCHKOTKSLActive(&numbers) == ZELK_ERROR_SUCCESS) {
        DM_LOG("%s : %s : %s : ZELK_DevSrv_ManualCHKOTKSLActive returned SUCCESS");
        createMessageDisplayLayout(tr(QStringLiteral("IDS_ACTIVE_SUCCESS")));
        // Finish then resets the device so that it starts with its new numbers.
        currentPage = PageSuccess;
    } else {
        DM_WARN("%s : %s : %s : ZELK_DevSrv_ManualCHKOTKSLActive returned Failure");
        createMessageDisplayLayout(tr(QStringLiteral("IDS_ACTIVE_FAILED")));
        currentPage = PageFailure;
    }
}
