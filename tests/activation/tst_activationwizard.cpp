// The activation wizard as the user drives it: the pages each configuration opens, over-the-air
// activation from the card's states to Finish or Cancel, and what the device is asked meanwhile.
#include "ActivationTestSupport.h"
#include "ActivationWizard.h"
#include "HostFixture.h"
#include "SimTestSupport.h"

#include <QtWidgets/QPushButton>
#include <QtWidgets/QRadioButton>

namespace {

QWidget* dlg()
{
    return simtest::window(QStringLiteral("DeviceMgrUIPlugin_ActivationDlg"));
}

template<class T = QPushButton>
T* item(const char* name)
{
    return dlg() ? dlg()->findChild<T*>(QLatin1String(name)) : nullptr;
}

QString buttonState(QPushButton* b)
{
    return !b               ? QStringLiteral("none")
           : b->isHidden()  ? QStringLiteral("hidden")
           : b->isEnabled() ? "on"
                            : "off";
}

// What the user sees: page, buttons, the message and the checked radio.
QString shown()
{
    if (!dlg())
        return QStringLiteral("closed");
    auto* label = item<QLabel>("DeviceMgrUIPlugin_labelMessage");
    auto* radio = item<QRadioButton>("DeviceMgrUIplugin_m_pRadioAutoActivate");
    return QStringLiteral("page=%1 back=%2 next=%3 cancel=%4 msg=%5 auto=%6")
        .arg(g_pActivationInstance.load()->page())
        .arg(buttonState(item("DeviceMgrUIplugin_ButtonBack")),
             buttonState(item("DeviceMgrUIplugin_ButtonNext")),
             item("DeviceMgrUIplugin_ButtonCancel")->text(),
             label && label->isVisible() ? label->text() : "-",
             radio ? (radio->isChecked() ? "checked" : "unchecked") : "-");
}

// The activation calls the card saw; registrations by name only.
QStringList sdk()
{
    QStringList out;
    for (const auto& c : zelk::sim::calls()) {
        const QString name = QString::fromStdString(c.function);
        const QString arg = QString::fromStdString(c.args.empty() ? "" : c.args[0]).remove(QLatin1Char('"'));
        out << (name.contains(QLatin1String("Register")) ? name : name + '(' + arg + ')');
    }
    return out;
}

const QStringList kEnd = {"ZELK_DevSrv_UnRegisterDevMgrCallback", "ZELK_CallSrv_UnRegisterCallEventHandler"};
const QString kClear = QStringLiteral("ZELK_DevSrv_OTAAutoActClear(*228)");

} // namespace

class tst_ActivationWizard : public QObject
{
    Q_OBJECT
    HostFixture m_host;
    QTemporaryDir m_root;

    void open(const QByteArray& xml)
    {
        QVERIFY(acttest::installActiveXml(m_root, xml));
        ActivationWizard::Instance()->showActivationDlg(m_host.mainWindow());
        QVERIFY(dlg());
    }

private slots:
    void initTestCase() { m_host.init(); }
    void init()
    {
        m_host.beginTest();
        zelk::sim::reset();
        zelk::sim::Device d = zelk::sim::defaultDevice();
        d.productType = ZELK_PRODUCT_TYPE_CDMA;
        d.cdma.activated = false;
        d.cdma.otaspStates.clear();
        QVERIFY(zelk::sim::updateDevice(d));
        zelk::sim::clearCalls();
    }
    void cleanup()
    {
        ActivationWizard::Destroy(g_pActivationInstance.load());
        QVERIFY2(m_host.endTest(), qPrintable(m_host.lastError()));
    }
    void cleanupTestCase() { m_host.shutdown(); }

    void pages_data()
    {
        QTest::addColumn<QByteArray>("xml");
        QTest::addColumn<bool>("next");
        QTest::addColumn<QString>("page");
        QTest::addColumn<QStringList>("calls");
        const QStringList start = {"ZELK_DevSrv_RegisterDevMgrCallback",
                                   "ZELK_CallSrv_RegisterCallEventHandler"};
        const QString begin = "page=7 back=%1 next=off cancel=IDS_BTN_CANCEL msg=IDS_AUTOACT_BEGIN auto=-";
        const QString choice = "page=0 back=off next=on cancel=IDS_BTN_CANCEL msg=- auto=checked";
        QTest::newRow("2: choice") << acttest::activeXml("<activetype>2</activetype>") << false << choice
                                   << QStringList();
        QTest::newRow("7 behaves as 2")
            << acttest::activeXml("<activetype>7</activetype>") << false << choice << QStringList();
        QTest::newRow("2: automatic chosen")
            << acttest::activeXml("<activetype>2</activetype><autonum>#22</autonum>") << true
            << begin.arg("off") << start + QStringList("ZELK_DevSrv_AutoCHKOTKSLActive(#22)");
        QTest::newRow("0: automatic, no Back")
            << acttest::activeXml("<activetype>0</activetype>") << false << begin.arg("hidden")
            << start + QStringList("ZELK_DevSrv_AutoCHKOTKSLActive(*228)");
        QTest::newRow("no file: defaults") << QByteArray() << false << begin.arg("hidden")
                                           << start + QStringList("ZELK_DevSrv_AutoCHKOTKSLActive(*228)");
        QTest::newRow("non-ASCII dial string in 8 bits")
            << acttest::activeXml("<autonum>*2\xe2\x82\xac</autonum>") << false << begin.arg("hidden")
            << start + QStringList("ZELK_DevSrv_AutoCHKOTKSLActive(*2?)");
        QTest::newRow("1: manual, no Back")
            << acttest::activeXml("<activetype>1</activetype>") << false
            << "page=0 back=hidden next=off cancel=IDS_BTN_CANCEL msg=- auto=-" << QStringList();
    }
    void pages()
    {
        QFETCH(QByteArray, xml);
        QFETCH(bool, next);
        open(xml);
        QCOMPARE(dlg()->size(), QSize(366, 380));
        QCOMPARE(dlg()->windowModality(), Qt::WindowModal);
        if (next)
            simtest::click(item("DeviceMgrUIplugin_ButtonNext"));
        QTEST(shown(), "page");
        QTEST(sdk(), "calls");
    }

    // States as the card reports them (-1: the call ends), then the user's last button.
    void overTheAir_data()
    {
        QTest::addColumn<QList<int>>("states");
        QTest::addColumn<QString>("page");
        QTest::addColumn<QString>("action");
        QTest::addColumn<QStringList>("calls");
        const QString done = "page=%1 back=hidden next=off cancel=IDS_BTN_FINISH msg=%2 auto=-";
        QTest::newRow("1..7, end, Finish resets")
            << QList<int>{1, 2, 3, 4, 5, 6, 7, -1} << done.arg(5).arg("IDS_ACTIVE_SUCCESS") << "cancel"
            << QStringList{kClear, "ZELK_DevSrv_ResetMs()"} + kEnd;
        QTest::newRow("8 then Escape resets")
            << QList<int>{8} << done.arg(5).arg("IDS_AUTOACT_STATE_PROG_SUCCESS") << "escape"
            << QStringList("ZELK_DevSrv_ResetMs()") + kEnd;
        QTest::newRow("9, end, Finish") << QList<int>{9, -1} << done.arg(6).arg("IDS_ACTIVE_FAILED")
                                        << "cancel" << QStringList(kClear) + kEnd;
        QTest::newRow("end alone fails") << QList<int>{-1} << done.arg(6).arg("IDS_ACTIVE_FAILED") << "close"
                                         << QStringList(kClear) + kEnd;
        const QString running = "page=7 back=hidden next=off cancel=IDS_BTN_CANCEL msg=%1 auto=-";
        QTest::newRow("Cancel mid-call") << QList<int>{1, 2} << running.arg("IDS_AUTOACT_STATE_SPL_UNLOCKED")
                                         << "cancel" << QStringList(kClear) + kEnd;
        QTest::newRow("unknown states change nothing")
            << QList<int>{12, -3} << running.arg("IDS_AUTOACT_BEGIN") << "close"
            << QStringList(kClear) + kEnd;
    }
    void overTheAir()
    {
        QFETCH(QList<int>, states);
        QFETCH(QString, action);
        open(acttest::activeXml("<activetype>0</activetype>"));
        zelk::sim::clearCalls();
        for (int s : states)
            s == -1 ? zelk::sim::sendCallEnd() : zelk::sim::sendOtaspState(s);
        QVERIFY(zelk::sim::waitForIdle());
        QFETCH(QString, page);
        QTRY_COMPARE(shown(), page);
        if (action == QLatin1String("cancel"))
            simtest::click(item("DeviceMgrUIplugin_ButtonCancel"));
        else if (action == QLatin1String("escape"))
            QTest::keyClick(dlg(), Qt::Key_Escape);
        else
            dlg()->close();
        QCOMPARE(shown(), QStringLiteral("closed"));
        QTEST(sdk(), "calls");
    }

    void refusedStartKeepsCancel()
    {
        zelk::sim::failNext("ZELK_DevSrv_AutoCHKOTKSLActive");
        open(acttest::activeXml("<activetype>0</activetype>"));
        QCOMPARE(
            shown(),
            QStringLiteral("page=7 back=hidden next=off cancel=IDS_BTN_CANCEL msg=IDS_ACTIVE_FAILED auto=-"));
    }

    // A reopened wizard is built anew from the file; a second show of an open one is not. The
    // over-the-air procedure is closed on every later tear-down of the run, manual ones included.
    void reopenedAfreshAndClearedEveryTime()
    {
        open(acttest::activeXml("<activetype>0</activetype>"));
        QPointer<QWidget> first = dlg();
        simtest::click(item("DeviceMgrUIplugin_ButtonCancel"));
        QVERIFY(first.isNull());
        open(acttest::activeXml("<activetype>2</activetype>"));
        QVERIFY(acttest::installActiveXml(m_root, acttest::activeXml("<activetype>0</activetype>")));
        ActivationWizard::Instance()->showActivationDlg(m_host.mainWindow());
        QCOMPARE(shown(), QStringLiteral("page=0 back=off next=on cancel=IDS_BTN_CANCEL msg=- auto=checked"));
        zelk::sim::clearCalls();
        simtest::click(item("DeviceMgrUIplugin_ButtonCancel"));
        QCOMPARE(sdk(), QStringList(kClear) + kEnd);
    }
};

QTEST_MAIN(tst_ActivationWizard)
#include "tst_activationwizard.moc"
