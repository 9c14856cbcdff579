// The activation wizard as the user drives it: the page each configuration opens, the choice, the
// card's over-the-air states, the button that ends it, and what the device is asked meanwhile.
#include "ActivationTestSupport.h"

#include <QtWidgets/QRadioButton>

using acttest::button;
using acttest::dlg;

namespace {

// What the user sees: page, Back and Next, the Cancel text, the message and the automatic radio.
QString shown()
{
    if (!dlg())
        return QStringLiteral("closed");
    const auto state = [](QPushButton* b) {
        return b->isHidden() ? "hidden" : b->isEnabled() ? "on" : "off";
    };
    auto* label = dlg()->findChild<QLabel*>(QStringLiteral("DeviceMgrUIPlugin_labelMessage"));
    auto* radio = dlg()->findChild<QRadioButton*>(QStringLiteral("DeviceMgrUIplugin_m_pRadioAutoActivate"));
    return QStringLiteral("%1 back=%2 next=%3 %4 %5%6")
        .arg(g_pActivationInstance.load()->page())
        .arg(state(button("Back")), state(button("Next")), button("Cancel")->text(),
             label && label->isVisible() ? label->text() : "-", radio && radio->isChecked() ? " auto" : "");
}

const QStringList kStart = {"DevSrv_RegisterDevMgrCallback", "CallSrv_RegisterCallEventHandler"};
const QStringList kEnd = {"DevSrv_UnRegisterDevMgrCallback", "CallSrv_UnRegisterCallEventHandler"};
const QStringList kClear = {"DevSrv_OTAAutoActClear(*228)"};
QByteArray type(int n)
{
    return acttest::activeXml("<activetype>" + QByteArray::number(n) + "</activetype>");
}

} // namespace

class tst_ActivationWizard : public acttest::WizardSuite
{
    Q_OBJECT

private slots:
    // Steps: "refuse" (the card will not start the call), "next", a state number, "end" (the call
    // ends); then the closing: "cancel" (the button), "escape", "close" (window button) or none.
    void pages_data()
    {
        QTest::addColumn<QByteArray>("xml");
        QTest::addColumn<QString>("steps");
        QTest::addColumn<QString>("page");
        QTest::addColumn<QString>("closing");
        QTest::addColumn<QStringList>("calls");
        struct Row
        {
            const char* tag;
            QByteArray xml;
            const char* steps;
            QString page;
            const char* closing;
            QStringList calls;
        };
        const QString run = "7 back=%1 next=off IDS_BTN_CANCEL %2",
                      done = "%1 back=hidden next=off IDS_BTN_FINISH %2";
        const QString choice = "0 back=off next=on IDS_BTN_CANCEL - auto";
        const QStringList ota = kStart + QStringList("DevSrv_AutoCHKOTKSLActive(*228)");
        const Row rows[] = {
            {"7 as 2: choice", type(7), "", choice, "cancel", {}},
            {"2: automatic chosen, dial string in 8 bits",
             acttest::activeXml("<activetype>2</activetype><autonum>#2\xe2\x82\xac</autonum>"), "next",
             run.arg("off", "IDS_AUTOACT_BEGIN"), "", kStart + QStringList("DevSrv_AutoCHKOTKSLActive(#2?)")},
            {"no file: automatic *228", QByteArray(), "", run.arg("hidden", "IDS_AUTOACT_BEGIN"), "", ota},
            {"refused start", type(0), "refuse", run.arg("hidden", "IDS_ACTIVE_FAILED"), "", ota},
            {"1..7, end, Finish resets", type(0), "1 2 3 4 5 6 7 end", done.arg(5).arg("IDS_ACTIVE_SUCCESS"),
             "cancel", ota + kClear + QStringList("DevSrv_ResetMs()") + kEnd},
            {"8, Escape resets", type(0), "8", done.arg(5).arg("IDS_AUTOACT_STATE_PROG_SUCCESS"), "escape",
             ota + QStringList("DevSrv_ResetMs()") + kEnd},
            {"9, end, Finish", type(0), "9 end", done.arg(6).arg("IDS_ACTIVE_FAILED"), "cancel",
             ota + kClear + kEnd},
            {"end alone fails", type(0), "end", done.arg(6).arg("IDS_ACTIVE_FAILED"), "close",
             ota + kClear + kEnd},
            {"Cancel mid-call", type(0), "1 2", run.arg("hidden", "IDS_AUTOACT_STATE_SPL_UNLOCKED"), "cancel",
             ota + kClear + kEnd},
            {"unknown states", type(0), "12 -3", run.arg("hidden", "IDS_AUTOACT_BEGIN"), "close",
             ota + kClear + kEnd},
        };
        for (const Row& r : rows)
            QTest::newRow(r.tag) << r.xml << r.steps << r.page << r.closing << r.calls;
    }
    void pages()
    {
        QFETCH(QString, steps);
        QFETCH(QString, closing);
        if (steps.startsWith(QLatin1String("refuse")))
            zelk::sim::failNext("ZELK_DevSrv_AutoCHKOTKSLActive");
        QFETCH(QByteArray, xml);
        open(xml);
        QCOMPARE(dlg()->windowModality(), Qt::WindowModal);
        for (const QString& step : steps.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
            if (step == QLatin1String("next"))
                simtest::click(button("Next"));
            else if (step == QLatin1String("end"))
                zelk::sim::sendCallEnd();
            else if (step != QLatin1String("refuse"))
                zelk::sim::sendOtaspState(step.toInt());
        }
        QVERIFY(zelk::sim::waitForIdle());
        QFETCH(QString, page);
        QTRY_COMPARE(shown(), page);
        if (closing == QLatin1String("cancel"))
            simtest::click(button("Cancel"));
        else if (closing == QLatin1String("escape"))
            QTest::keyClick(dlg(), Qt::Key_Escape);
        else if (closing == QLatin1String("close"))
            dlg()->close();
        QCOMPARE(!dlg(), !closing.isEmpty());
        QTEST(acttest::sdkCalls(), "calls");
    }

    // A reopened wizard is built anew from the file; a second show of an open one is not. The
    // over-the-air procedure is closed on every later tear-down of the run, manual ones included.
    void reopenedAfreshAndClearedEveryTime()
    {
        open(type(0));
        QPointer<QWidget> first = dlg();
        simtest::click(button("Cancel"));
        QVERIFY(first.isNull());
        open(type(2));
        QVERIFY(acttest::installActiveXml(m_root, type(0)));
        ActivationWizard::Instance()->showActivationDlg(m_host.mainWindow());
        QCOMPARE(shown(), QStringLiteral("0 back=off next=on IDS_BTN_CANCEL - auto"));
        zelk::sim::clearCalls();
        simtest::click(button("Cancel"));
        QCOMPARE(acttest::sdkCalls(), kClear + kEnd);
    }
};

QTEST_MAIN(tst_ActivationWizard)
#include "tst_activationwizard.moc"
