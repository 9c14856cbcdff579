// Host application: the simulator panel that drives the simulated data card by hand.
#include "SimulatorPanel.h"

#include "sim/SimControl.h"

#include <QtCore/QRegularExpression>
#include <QtCore/QSignalBlocker>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSpinBox>
#include <QtWidgets/QVBoxLayout>

namespace {

QPushButton* button(const QString& text, const char* name, QWidget* parent)
{
    auto* b = new QPushButton(text, parent);
    b->setObjectName(QLatin1String(name));
    return b;
}

// ---- Fingerprint lock: every verification state the reader can report, by number; the list is
// editable, so a state outside it (to see how the plugin copes) can be typed as its number.
// clang-format off
const char* const kFingerprintStates[] = {
    "0 verified (ends the lock)", "1 no finger", "2 too light", "3 too dry", "4 too dark", "5 too high",
    "6 too low", "7 too far left", "8 too far right", "9 too small", "10 not recognised", "11 bad quality",
    "12 put finger", "13 put finger (2nd)", "14 put finger (3rd)", "15 remove finger",
    "16 samples not combined", "17 samples combined", "18 clean sensor", "19 keep finger", "20 start",
    "21 verification started", "22 enrolment started", "23 waiting for finger", "24 finished",
    "25 finished: succeeded", "26 finished: failed", "27 calibrating", "28 too fast", "29 skewed",
    "30 too short", "31 touch sensor", "32 processing image", "33 swipe in progress",
    "34 backward movement", "35 joint detected", "36 centre and press harder", "37 image processed",
    "38 put finger (4th)", "39 put finger (5th)", "40 enrolment progress", "255 no match"};
// clang-format on

} // namespace

SimulatorPanel::SimulatorPanel(QWidget* parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("SimulatorPanel"));
    auto* layout = new QVBoxLayout(this);

    auto* devicesBox = new QGroupBox(tr("Devices"), this);
    devicesBox->setObjectName(QStringLiteral("SimulatorPanel_groupDevices"));
    auto* devicesLayout = new QVBoxLayout(devicesBox);
    m_pDevices = new QComboBox(devicesBox);
    m_pDevices->setObjectName(QStringLiteral("SimulatorPanel_comboDevices"));
    devicesLayout->addWidget(m_pDevices);
    auto* attachRow = new QHBoxLayout;
    QPushButton* attachGsm = button(tr("Attach GSM card"), "SimulatorPanel_btnAttachGsm", devicesBox);
    QPushButton* attachCdma = button(tr("Attach CDMA card"), "SimulatorPanel_btnAttachCdma", devicesBox);
    attachRow->addWidget(attachGsm);
    attachRow->addWidget(attachCdma);
    devicesLayout->addLayout(attachRow);
    auto* deviceRow = new QHBoxLayout;
    QPushButton* remove = button(tr("Remove"), "SimulatorPanel_btnRemoveDevice", devicesBox);
    QPushButton* select = button(tr("Make active"), "SimulatorPanel_btnSelectDevice", devicesBox);
    QPushButton* reject = button(tr("Reject"), "SimulatorPanel_btnRejectDevice", devicesBox);
    deviceRow->addWidget(remove);
    deviceRow->addWidget(select);
    deviceRow->addWidget(reject);
    devicesLayout->addLayout(deviceRow);
    auto* simRow = new QHBoxLayout;
    QPushButton* insertSim = button(tr("Insert SIM"), "SimulatorPanel_btnInsertSim", devicesBox);
    QPushButton* removeSim = button(tr("Remove SIM"), "SimulatorPanel_btnRemoveSim", devicesBox);
    simRow->addWidget(insertSim);
    simRow->addWidget(removeSim);
    devicesLayout->addLayout(simRow);
    m_pHardwareRadio = new QCheckBox(tr("Hardware radio switch on"), devicesBox);
    m_pHardwareRadio->setObjectName(QStringLiteral("SimulatorPanel_checkHardwareRadio"));
    devicesLayout->addWidget(m_pHardwareRadio);
    layout->addWidget(devicesBox);

    auto* eventsBox = new QGroupBox(tr("Events"), this);
    eventsBox->setObjectName(QStringLiteral("SimulatorPanel_groupEvents"));
    auto* form = new QFormLayout(eventsBox);
    m_pFingerprint = new QComboBox(eventsBox);
    m_pFingerprint->setObjectName(QStringLiteral("SimulatorPanel_comboFingerprint"));
    m_pFingerprint->setEditable(true);
    m_pFingerprint->setInsertPolicy(QComboBox::NoInsert);
    for (const char* text : kFingerprintStates) {
        const QString item = QString::fromLatin1(text);
        m_pFingerprint->addItem(item, item.section(QLatin1Char(' '), 0, 0).toInt());
    }
    m_pFingerprint->setCurrentIndex(m_pFingerprint->findData(int(ZELK_VERIFYIND_VERIFY_START)));
    QPushButton* sendFingerprint = button(tr("Send"), "SimulatorPanel_btnFingerprint", eventsBox);
    auto* fpRow = new QHBoxLayout;
    fpRow->addWidget(m_pFingerprint, 1);
    fpRow->addWidget(sendFingerprint);
    form->addRow(tr("Fingerprint"), fpRow);

    m_pOtasp = new QSpinBox(eventsBox);
    m_pOtasp->setObjectName(QStringLiteral("SimulatorPanel_spinOtasp"));
    m_pOtasp->setRange(0, 9);
    m_pOtasp->setValue(1);
    QPushButton* sendOtasp = button(tr("Send state"), "SimulatorPanel_btnOtasp", eventsBox);
    QPushButton* callEnd = button(tr("Call end"), "SimulatorPanel_btnCallEnd", eventsBox);
    auto* otaRow = new QHBoxLayout;
    otaRow->addWidget(m_pOtasp, 1);
    otaRow->addWidget(sendOtasp);
    otaRow->addWidget(callEnd);
    form->addRow(tr("OTASP"), otaRow);

    m_pPower = new QSpinBox(eventsBox);
    m_pPower->setObjectName(QStringLiteral("SimulatorPanel_spinPower"));
    m_pPower->setRange(0, 255);
    QPushButton* sendPower = button(tr("Send"), "SimulatorPanel_btnPower", eventsBox);
    auto* powerRow = new QHBoxLayout;
    powerRow->addWidget(m_pPower, 1);
    powerRow->addWidget(sendPower);
    form->addRow(tr("Power"), powerRow);

    m_pEvent = new QSpinBox(eventsBox);
    m_pEvent->setObjectName(QStringLiteral("SimulatorPanel_spinEvent"));
    m_pEvent->setRange(0, 99999);
    m_pEvent->setValue(ZELK_EVENT_DEV_SIM_STATE_CHANGE);
    m_pRegistry = new QComboBox(eventsBox);
    m_pRegistry->setObjectName(QStringLiteral("SimulatorPanel_comboRegistry"));
    m_pRegistry->addItem(tr("usual registry"), -1);
    m_pRegistry->addItem(tr("device manager"), static_cast<int>(zelk::Registry::DevMgr));
    m_pRegistry->addItem(tr("initialisation"), static_cast<int>(zelk::Registry::DevInit));
    m_pRegistry->addItem(tr("multi-device"), static_cast<int>(zelk::Registry::MultiDevice));
    m_pRegistry->addItem(tr("call service"), static_cast<int>(zelk::Registry::Call));
    m_pWords = new QLineEdit(eventsBox);
    m_pWords->setObjectName(QStringLiteral("SimulatorPanel_lineWords"));
    m_pWords->setPlaceholderText(tr("data words, e.g. 1 0 or 0x10"));
    QPushButton* inject = button(tr("Inject"), "SimulatorPanel_btnInject", eventsBox);
    auto* rawRow = new QHBoxLayout;
    rawRow->addWidget(m_pEvent);
    rawRow->addWidget(m_pRegistry);
    form->addRow(tr("Raw event"), rawRow);
    auto* wordsRow = new QHBoxLayout;
    wordsRow->addWidget(m_pWords, 1);
    wordsRow->addWidget(inject);
    form->addRow(tr("Data"), wordsRow);
    layout->addWidget(eventsBox);

    m_pStatus = new QLabel(this);
    m_pStatus->setObjectName(QStringLiteral("SimulatorPanel_labelStatus"));
    m_pStatus->setWordWrap(true);
    layout->addWidget(m_pStatus);
    layout->addStretch(1);

    connect(attachGsm, &QPushButton::clicked, this, &SimulatorPanel::onAttachGsm);
    connect(attachCdma, &QPushButton::clicked, this, &SimulatorPanel::onAttachCdma);
    connect(remove, &QPushButton::clicked, this, &SimulatorPanel::onRemoveDevice);
    connect(select, &QPushButton::clicked, this, &SimulatorPanel::onSelectDevice);
    connect(reject, &QPushButton::clicked, this, &SimulatorPanel::onRejectDevice);
    connect(insertSim, &QPushButton::clicked, this, &SimulatorPanel::onInsertSim);
    connect(removeSim, &QPushButton::clicked, this, &SimulatorPanel::onRemoveSim);
    connect(m_pHardwareRadio, &QCheckBox::toggled, this, &SimulatorPanel::onHardwareRadioToggled);
    connect(sendPower, &QPushButton::clicked, this, &SimulatorPanel::onSendPower);
    connect(sendFingerprint, &QPushButton::clicked, this, &SimulatorPanel::onSendFingerprint);
    connect(sendOtasp, &QPushButton::clicked, this, &SimulatorPanel::onSendOtasp);
    connect(callEnd, &QPushButton::clicked, this, &SimulatorPanel::onCallEnd);
    connect(inject, &QPushButton::clicked, this, &SimulatorPanel::onInjectEvent);
    connect(m_pDevices, QOverload<int>::of(&QComboBox::currentIndexChanged), this, [this](int) {
        zelk::sim::Device d;
        if (zelk::sim::findDevice(selectedDeviceId().toStdString(), &d)) {
            const QSignalBlocker blocker(m_pHardwareRadio);
            m_pHardwareRadio->setChecked(d.radio.hardwareOn);
        }
    });
    refresh();
}

QString SimulatorPanel::selectedDeviceId() const
{
    return m_pDevices->currentData().toString();
}

void SimulatorPanel::refresh()
{
    const QString previous = selectedDeviceId();
    const std::string active = zelk::sim::activeDeviceId();
    const QSignalBlocker blocker(m_pDevices);
    m_pDevices->clear();
    for (const zelk::sim::Device& d : zelk::sim::devices()) {
        QString label = QString::fromStdString(d.name) + QStringLiteral(" (port %1").arg(d.port);
        label += d.productType == ZELK_PRODUCT_TYPE_CDMA ? QStringLiteral(", CDMA") : QStringLiteral(", GSM");
        if (!d.sim.present) {
            label += QStringLiteral(", no SIM");
        }
        if (d.status == DEVICE_STATUS_REJECTED) {
            label += QStringLiteral(", rejected");
        }
        if (d.id == active) {
            label += QStringLiteral(", active");
        }
        m_pDevices->addItem(label + QLatin1Char(')'), QString::fromStdString(d.id));
    }
    int index = m_pDevices->findData(previous);
    if (index < 0) {
        index = m_pDevices->findData(QString::fromStdString(active));
    }
    m_pDevices->setCurrentIndex(index < 0 ? 0 : index);
    zelk::sim::Device d;
    if (zelk::sim::findDevice(active, &d)) {
        const QSignalBlocker radioBlocker(m_pHardwareRadio);
        m_pHardwareRadio->setChecked(d.radio.hardwareOn);
    }
}

void SimulatorPanel::report(const QString& text)
{
    m_pStatus->setText(text);
    refresh();
    emit signalActionDone(text);
}

void SimulatorPanel::attach(bool cdma)
{
    // Pick an id and port no attached device uses yet.
    zelk::sim::Device d = zelk::sim::defaultDevice();
    std::string id;
    do {
        id = "card" + std::to_string(m_iNextDevice++);
    } while (zelk::sim::findDevice(id, nullptr));
    d.id = id;
    d.port = 10 + m_iNextDevice;
    if (cdma) {
        d.name = "EV-DO Card " + std::to_string(m_iNextDevice - 1);
        d.productType = ZELK_PRODUCT_TYPE_CDMA;
        d.cdma.activated = false;
        d.cdma.lockStatus = ZELK_OTKSL_OTKSL;
        d.cdma.otaspStates.clear();
    } else {
        d.name = "USB Modem " + std::to_string(m_iNextDevice - 1);
    }
    std::string error;
    if (zelk::sim::attachDevice(d, &error)) {
        report(tr("Attached %1").arg(QString::fromStdString(d.name)));
    } else {
        report(tr("Cannot attach: %1").arg(QString::fromStdString(error)));
    }
}

void SimulatorPanel::onAttachGsm()
{
    attach(false);
}

void SimulatorPanel::onAttachCdma()
{
    attach(true);
}

void SimulatorPanel::onRemoveDevice()
{
    const QString id = selectedDeviceId();
    report(zelk::sim::removeDevice(id.toStdString()) ? tr("Removed %1").arg(id) : tr("No device to remove"));
}

void SimulatorPanel::onSelectDevice()
{
    const QString id = selectedDeviceId();
    report(zelk::sim::selectDevice(id.toStdString()) ? tr("%1 is the active device").arg(id)
                                                     : tr("%1 cannot become active").arg(id));
}

void SimulatorPanel::onRejectDevice()
{
    const QString id = selectedDeviceId();
    report(zelk::sim::rejectDevice(id.toStdString()) ? tr("Rejected %1").arg(id) : tr("No device to reject"));
}

void SimulatorPanel::onInsertSim()
{
    const QString id = selectedDeviceId();
    report(zelk::sim::insertSim(id.toStdString()) ? tr("SIM inserted into %1").arg(id)
                                                  : tr("%1 has its SIM already").arg(id));
}

void SimulatorPanel::onRemoveSim()
{
    const QString id = selectedDeviceId();
    report(zelk::sim::removeSim(id.toStdString()) ? tr("SIM removed from %1").arg(id)
                                                  : tr("%1 has no SIM").arg(id));
}

void SimulatorPanel::onHardwareRadioToggled(bool on)
{
    report(zelk::sim::setHardwareRadio(on)
               ? (on ? tr("Hardware radio switch on") : tr("Hardware radio switch off"))
               : tr("No active device"));
}

void SimulatorPanel::onSendPower()
{
    zelk::sim::sendPowerEvent(m_pPower->value());
    report(tr("Power event %1").arg(m_pPower->value()));
}

void SimulatorPanel::onSendFingerprint()
{
    // The leading number of what the list shows, picked or typed.
    const QRegularExpressionMatch number =
        QRegularExpression(QStringLiteral("^\\s*(-?\\d+)")).match(m_pFingerprint->currentText());
    bool ok = false;
    const int state = number.hasMatch() ? number.captured(1).toInt(&ok) : 0;
    if (!ok) {
        report(tr("Fingerprint indication: enter a state number"));
        return;
    }
    zelk::sim::sendFingerprintState(state);
    report(tr("Fingerprint indication %1").arg(state));
}

void SimulatorPanel::onSendOtasp()
{
    zelk::sim::sendOtaspState(m_pOtasp->value());
    report(tr("OTASP state %1").arg(m_pOtasp->value()));
}

void SimulatorPanel::onCallEnd()
{
    zelk::sim::sendCallEnd();
    report(tr("Activation call ended"));
}

void SimulatorPanel::onInjectEvent()
{
    std::vector<uint32_t> words;
    const QStringList parts =
        m_pWords->text().split(QRegularExpression(QStringLiteral("[\\s,;]+")), Qt::SkipEmptyParts);
    for (const QString& part : parts) {
        bool ok = false;
        const qlonglong value = part.toLongLong(&ok, 0);
        if (!ok || value < INT32_MIN || value > qlonglong(UINT32_MAX)) {
            report(tr("Not a data word: %1").arg(part));
            return;
        }
        words.push_back(static_cast<uint32_t>(value));
    }
    const int event = m_pEvent->value();
    const int registry = m_pRegistry->currentData().toInt();
    zelk::sim::injectEvent(
        registry < 0 ? zelk::sim::registryOf(event) : static_cast<zelk::Registry>(registry), event, words);
    report(tr("Event %1 with %n data word(s)", nullptr, static_cast<int>(words.size())).arg(event));
}
