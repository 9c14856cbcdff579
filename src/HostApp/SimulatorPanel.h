// Host application: the simulator panel that drives the simulated data card by hand.
#pragma once

#include <QtWidgets/QWidget>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QSpinBox;

// Attach and remove devices, insert and remove the SIM, flip the hardware radio switch, send
// fingerprint, OTASP, power and raw events. Every control carries an object name beginning with
// "SimulatorPanel_" so that tests and the demo can find it.
class SimulatorPanel : public QWidget
{
    Q_OBJECT

public:
    explicit SimulatorPanel(QWidget* parent = nullptr);

    // Id of the device the panel's actions apply to (empty when none is attached).
    QString selectedDeviceId() const;

public slots:
    // Re-reads the card's devices; call after the card changed behind the panel's back.
    void refresh();

signals:
    // After each action, with a line saying what was done (the host may log it).
    void signalActionDone(const QString& text);

private slots:
    void onAttachGsm();
    void onAttachCdma();
    void onRemoveDevice();
    void onSelectDevice();
    void onRejectDevice();
    void onInsertSim();
    void onRemoveSim();
    void onHardwareRadioToggled(bool on);
    void onSendPower();
    void onSendFingerprint();
    void onSendOtasp();
    void onCallEnd();
    void onInjectEvent();

private:
    void attach(bool cdma);
    void report(const QString& text);

    QComboBox* m_pDevices = nullptr;
    QCheckBox* m_pHardwareRadio = nullptr;
    QSpinBox* m_pPower = nullptr;
    QComboBox* m_pFingerprint = nullptr;
    QSpinBox* m_pOtasp = nullptr;
    QSpinBox* m_pEvent = nullptr;
    QComboBox* m_pRegistry = nullptr;
    QLineEdit* m_pWords = nullptr;
    QLabel* m_pStatus = nullptr;
    int m_iNextDevice = 1;
};
