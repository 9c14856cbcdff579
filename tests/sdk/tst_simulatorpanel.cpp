// Simulator panel: its controls drive the simulated card, which sends the events they promise.
#include "SdkTestSupport.h"
#include "SimulatorPanel.h"

#include <QtTest/QtTest>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QPushButton>

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
    void attachAndRemoveDevices()
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

private:
    static void click(QWidget& panel, const char* name)
    {
        auto* b = panel.findChild<QPushButton*>(QLatin1String(name));
        QVERIFY2(b, name);
        QTest::mouseClick(b, Qt::LeftButton);
    }
};

QTEST_MAIN(tst_SimulatorPanel)
#include "tst_simulatorpanel.moc"
