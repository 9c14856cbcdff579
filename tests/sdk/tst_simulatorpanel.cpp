// Simulator panel: its controls change the simulated card and send the events they promise.
#include "SdkTestSupport.h"
#include "SimulatorPanel.h"

#include <QtTest/QtTest>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSpinBox>

using namespace zelk::sim;
using sdktest::Recorder;

class tst_SimulatorPanel : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { sdktest::registerAll(); }
    void cleanupTestCase() { sdktest::unregisterAll(); }
    void init()
    {
        reset();
        Recorder::instance().clear();
    }
    void attachAndRemoveDevices();
    void simAndRadioButtons();
    void fingerprintAndOtasp();
    void rawEventWithWords();
    void badWordIsRefused();

private:
    static void click(QWidget& panel, const char* name)
    {
        auto* b = panel.findChild<QPushButton*>(QLatin1String(name));
        QVERIFY2(b, name);
        QTest::mouseClick(b, Qt::LeftButton);
    }
};

void tst_SimulatorPanel::attachAndRemoveDevices()
{
    SimulatorPanel panel;
    auto* combo = panel.findChild<QComboBox*>("SimulatorPanel_comboDevices");
    QVERIFY(combo);
    QCOMPARE(combo->count(), 1);
    click(panel, "SimulatorPanel_btnAttachCdma");
    QCOMPARE(int(devices().size()), 2);
    QCOMPARE(devices().back().productType, ZELK_PRODUCT_TYPE_CDMA);
    QCOMPARE(combo->count(), 2);
    QVERIFY(waitForIdle());
    QCOMPARE(Recorder::instance().events(), QList<int>{ZELK_EVENT_DEV_DETECTED});

    combo->setCurrentIndex(1);
    click(panel, "SimulatorPanel_btnSelectDevice");
    QCOMPARE(QString::fromStdString(activeDeviceId()), panel.selectedDeviceId());
    click(panel, "SimulatorPanel_btnRemoveDevice");
    QCOMPARE(int(devices().size()), 1);
    QCOMPARE(combo->count(), 1);
    QVERIFY(waitForIdle());
}

void tst_SimulatorPanel::simAndRadioButtons()
{
    SimulatorPanel panel;
    click(panel, "SimulatorPanel_btnRemoveSim");
    Device d;
    QVERIFY(findDevice(defaultDevice().id, &d));
    QVERIFY(!d.sim.present);
    click(panel, "SimulatorPanel_btnInsertSim");
    QVERIFY(findDevice(defaultDevice().id, &d));
    QVERIFY(d.sim.present);

    auto* radio = panel.findChild<QCheckBox*>("SimulatorPanel_checkHardwareRadio");
    QVERIFY(radio && radio->isChecked());
    radio->setChecked(false);
    QVERIFY(findDevice(defaultDevice().id, &d));
    QVERIFY(!d.radio.hardwareOn);
    QVERIFY(waitForIdle());
    QCOMPARE(Recorder::instance().events(), (QList<int>{6619, 6619, 6012, 6615}));
}

void tst_SimulatorPanel::fingerprintAndOtasp()
{
    Device d = defaultDevice();
    d.fingerprintLocked = true;
    d.productType = ZELK_PRODUCT_TYPE_CDMA;
    d.cdma.activated = false;
    QVERIFY(updateDevice(d));
    SimulatorPanel panel;
    auto* fp = panel.findChild<QComboBox*>("SimulatorPanel_comboFingerprint");
    fp->setCurrentIndex(fp->findData(int(ZELK_VERIFYIND_GOOD_IMAGE)));
    click(panel, "SimulatorPanel_btnFingerprint");
    panel.findChild<QSpinBox*>("SimulatorPanel_spinOtasp")->setValue(8);
    click(panel, "SimulatorPanel_btnOtasp");
    click(panel, "SimulatorPanel_btnCallEnd");
    QVERIFY(waitForIdle());
    QCOMPARE(Recorder::instance().events(), (QList<int>{6620, 6617, 6618}));
    QVERIFY(findDevice(d.id, &d));
    QVERIFY(!d.fingerprintLocked);
    QVERIFY(d.cdma.activated);
}

void tst_SimulatorPanel::rawEventWithWords()
{
    SimulatorPanel panel;
    panel.findChild<QSpinBox*>("SimulatorPanel_spinEvent")->setValue(ZELK_EVENT_DEV_RF_SWITCH);
    panel.findChild<QLineEdit*>("SimulatorPanel_lineWords")->setText("0, 0x1");
    click(panel, "SimulatorPanel_btnInject");
    QVERIFY(waitForIdle());
    const std::vector<sdktest::Seen> seen = Recorder::instance().seen();
    QCOMPARE(seen.size(), std::size_t(1));
    QCOMPARE(seen[0].registry, zelk::Registry::DevMgr);
    QCOMPARE(seen[0].words, (std::vector<uint32_t>{0, 1}));
}

void tst_SimulatorPanel::badWordIsRefused()
{
    SimulatorPanel panel;
    QSignalSpy done(&panel, &SimulatorPanel::signalActionDone);
    panel.findChild<QLineEdit*>("SimulatorPanel_lineWords")->setText("1 two");
    click(panel, "SimulatorPanel_btnInject");
    QCOMPARE(done.count(), 1);
    QVERIFY(done.at(0).at(0).toString().contains("two"));
    QVERIFY(waitForIdle());
    QVERIFY(Recorder::instance().seen().empty());
}

QTEST_MAIN(tst_SimulatorPanel)
#include "tst_simulatorpanel.moc"
