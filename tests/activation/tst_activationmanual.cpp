// Manual activation as the user drives it: the lock-code pages, the device identity, and the
// numbers and roaming list written to the card, with every bad PRL path the user may give.
#include "ActivationTestSupport.h"
#include "ActivationWizard.h"
#include "HostFixture.h"
#include "ServiceTestSupport.h"
#include "SimTestSupport.h"

#include <QtCore/QTimer>
#include <QtWidgets/QApplication>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QPushButton>

#include <sys/stat.h>

namespace {

QWidget* dlg()
{
    return simtest::window(QStringLiteral("DeviceMgrUIPlugin_ActivationDlg"));
}
template<typename T = QWidget>
T* item(const QString& name)
{
    return dlg() ? dlg()->findChild<T*>(QStringLiteral("DeviceMgrUIPlugin_") + name) : nullptr;
}
QPushButton* button(const char* name)
{
    return dlg()->findChild<QPushButton*>(QLatin1String("DeviceMgrUIplugin_Button") + QLatin1String(name));
}
QLineEdit* prlEntry()
{
    return item<QPushButton>("BtnBrowsePRL")->parentWidget()->findChild<QLineEdit*>();
}
QString label(const QString& name)
{
    auto* l = item<QLabel>(name);
    return !l ? "none" : l->isHidden() ? "hidden" : l->text();
}
// Page, Next, the message shown.
QString shown()
{
    return QStringLiteral("%1 next=%2 %3")
        .arg(g_pActivationInstance.load()->page())
        .arg(button("Next")->isEnabled() ? "on" : "off", label("labelMessage"));
}
// Calls of manual activation, arguments without quotes.
QStringList sdk()
{
    QStringList out;
    for (const auto& c : zelk::sim::calls()) {
        QStringList args;
        for (const auto& a : c.args)
            args << QString::fromStdString(a).remove('"');
        out << QString::fromStdString(c.function).remove("ZELK_DevSrv_") + '(' + args.join(',') + ')';
    }
    return out.filter(QRegExp("^(GetESN|Verify|Update|Manual)"));
}
void setCard(int lockStatus, const QString& esn = "1A2B3C4D", const QString& meid = "A0000012345678")
{
    zelk::sim::Device d = simtest::activeDevice();
    d.cdma.lockStatus = lockStatus;
    d.cdma.esn = esn.toStdString();
    d.cdma.meid = meid.toStdString();
    QVERIFY(zelk::sim::updateDevice(d));
}
QByteArray manual(const QByteArray& body)
{
    return acttest::activeXml("<activetype>1</activetype>" + body);
}

} // namespace

class tst_ActivationManual : public QObject
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
        QVERIFY(acttest::cdmaNotActivated(false));
        zelk::sim::clearCalls();
        svc::startLogCapture();
    }
    void cleanup()
    {
        qInstallMessageHandler(nullptr);
        ActivationWizard::Destroy(g_pActivationInstance.load());
        QVERIFY2(m_host.endTest(), qPrintable(m_host.lastError()));
    }
    void cleanupTestCase() { m_host.shutdown(); }

    // The identity on the one-time code page: ESN or MEID, decimal (showtype 0) or as read.
    void identity_data()
    {
        QTest::addColumn<QString>("esn");
        QTest::addColumn<QString>("meid");
        QTest::addColumn<QByteArray>("xml");
        QTest::addColumn<QString>("identity");
        const QByteArray dec = "<displaycode>1</displaycode><showtype>0</showtype>",
                         hex = "<displaycode>1</displaycode><showtype>1</showtype>";
        const QString esn = "IDS_ESN_MSG|IDS_ESN_PROMPT|", meid = "IDS_ESN_MSG|IDS_MEID_PROMPT|";
        const QString m = "A0000012345678";
        QTest::newRow("ESN decimal") << "1A2B3C4D" << m << dec << esn + "02602833485";
        QTest::newRow("ESN max") << "FFFFFFFF" << m << dec << esn + "25516777215";
        QTest::newRow("ESN zero") << "00000000" << m << dec << esn + "00000000000";
        QTest::newRow("ESN hex") << "1A2B3C4D" << m << hex << esn + "1A2B3C4D";
        QTest::newRow("MEID decimal") << "80ABCDEF" << m << dec << meid + "268435457803430008";
        QTest::newRow("MEID max") << "80ABCDEF"
                                  << "FFFFFFFFFFFFFF" << dec << meid + "429496729516777215";
        QTest::newRow("MEID hex") << "80ABCDEF" << m << hex << meid + m;
        QTest::newRow("8a is an ESN") << "8aBCDEF0" << m << hex << esn + "8aBCDEF0";
        QTest::newRow("not shown") << "1A2B3C4D" << m << QByteArray("<displaycode>0</displaycode>")
                                   << "hidden|hidden|hidden";
        QTest::newRow("unreadable") << "" << m << dec << "||";
    }
    void identity()
    {
        QFETCH(QString, esn);
        QFETCH(QString, meid);
        setCard(ZELK_OTKSL_OTKSL, esn.isEmpty() ? "1A2B3C4D" : esn, meid);
        if (esn.isEmpty())
            zelk::sim::failNext("ZELK_DevSrv_GetESN");
        QFETCH(QByteArray, xml);
        open(manual(xml));
        QTEST(label("LabelOTKInfo") + '|' + label("LabelESNText") + '|' + label("LabelESNNumber"),
              "identity");
        QCOMPARE(label("LabelRetryAttempt"), QStringLiteral("IDS_MAINFRM_CARDLOCKDLG_LEFTTIMES3"));
        QCOMPARE(sdk(), xml.contains("<displaycode>1") ? QStringList("GetESN(out)") : QStringList());
    }

    // Typing a lock code, Next, and what the device asks for when the wizard is opened again.
    void codes_data()
    {
        QTest::addColumn<int>("lock");
        QTest::addColumn<QString>("keys");
        QTest::addColumn<QString>("after");
        QTest::addColumn<QString>("reopened");
        const QString minsid = "2 next=off none";
        QTest::newRow("MSL 5 digits") << 2 << "12345"
                                      << "3 next=off none"
                                      << "3";
        QTest::newRow("MSL 7th refused, right") << 2 << "1234567" << minsid << "2";
        QTest::newRow("MSL non-digits refused") << 2 << "1a2b3-c456" << minsid << "2";
        QTest::newRow("MSL wrong") << 2 << "111111"
                                   << "7 next=off IDS_MSL_FAILED"
                                   << "3";
        QTest::newRow("OTKSL right") << 1 << "654321" << minsid << "2";
        QTest::newRow("OTKSL wrong") << 1 << "111111"
                                     << "7 next=off IDS_SPC_FAILED"
                                     << "1 IDS_MAINFRM_CARDLOCKDLG_LEFTTIMES2";
        QTest::newRow("status 3: Cancel only") << 3 << ""
                                               << "0 next=off none"
                                               << "0";
        QTest::newRow("status unreadable") << -1 << ""
                                           << "7 next=off IDS_ACTIVE_FAILED"
                                           << "2";
    }
    void codes()
    {
        QFETCH(int, lock);
        QFETCH(QString, keys);
        setCard(std::max(lock, 0));
        if (lock < 0)
            zelk::sim::failNext("ZELK_DevSrv_GetOTKSLStatus");
        open(manual("<displaycode>0</displaycode>"));
        auto* entry = item<QLineEdit>(lock == 1 ? "EditOTKBox" : "LineMSL");
        if (!keys.isEmpty()) {
            QCOMPARE(entry->echoMode(), QLineEdit::Password);
            simtest::type(entry, keys);
            QCOMPARE(button("Next")->isEnabled(), entry->text().size() == 6);
            if (button("Next")->isEnabled())
                simtest::click(button("Next"));
        }
        QTEST(shown(), "after");
        QCOMPARE(button("Back")->isHidden(), true);
        // The code typed reaches no log line.
        const QString code = QString(keys).remove(QRegExp("\\D")).left(6);
        QVERIFY(svc::logCount("ManualActivate") > 0);
        QCOMPARE(code.isEmpty() ? 0 : svc::logCount(code), 0);
        simtest::click(button("Cancel"));
        open(manual("<displaycode>0</displaycode>"));
        const auto* retries = item<QLabel>("LabelRetryAttempt");
        QTEST(QString::number(g_pActivationInstance.load()->page()) + (retries ? ' ' + retries->text() : ""),
              "reopened");
    }

    // The MIN/MDN/SID/PRL page: what is typed, the PRL path, what the card is asked and answers.
    void numbers_data()
    {
        QTest::addColumn<QByteArray>("xml");
        QTest::addColumn<QString>("prl");
        QTest::addColumn<QStringList>("typed");
        QTest::addColumn<QString>("fail");
        QTest::addColumn<QString>("after");
        QTest::addColumn<QString>("box");
        QTest::addColumn<QStringList>("calls");
        const QByteArray lengths =
            "<min length=\"10\">1</min><mdn length=\"10\">1</mdn><sid length=\"5\">1</sid>";
        const QByteArray withPrl = lengths + "<prl>1</prl>";
        const QStringList numbers = {"1234567890", "0987654321", "123"};
        const QString written = "ManualCHKOTKSLActive(0987654321,1234567890,123)",
                      prl100 = "UpdatePRL(in,100)";
        const QString ok = "5 next=off IDS_ACTIVE_SUCCESS", failed = "6 next=off IDS_ACTIVE_FAILED";
        const QString missing = "IDS_PRL_FILE_NOT_EXIST";
        QTest::newRow("no PRL") << lengths << "" << numbers << "" << ok << "" << QStringList{written};
        QTest::newRow("MIN short") << lengths << "" << QStringList{"123456789", "0987654321", "1"} << ""
                                   << ""
                                   << "" << QStringList();
        QTest::newRow("cut to 16, 22, 5")
            << QByteArray("<min length=\"22\">1</min><mdn length=\"20\">1</mdn><sid length=\"9\">1</sid>")
            << "" << QStringList{QString(25, '1'), QString(20, '2'), "12345678"} << "" << ok << ""
            << QStringList{"ManualCHKOTKSLActive(" + QString(16, '2') + ',' + QString(22, '1') + ",12345)"};
        QTest::newRow("MIN length 0")
            << QByteArray("<min length=\"0\">1</min><mdn length=\"3\">1</mdn>") << ""
            << QStringList{"12", "456", ""} << "" << ok << "" << QStringList{"ManualCHKOTKSLActive(456,,)"};
        QTest::newRow("numbers refused")
            << lengths << "" << numbers << "ManualCHKOTKSLActive" << failed << "" << QStringList{written};
        QTest::newRow("PRL accepted")
            << withPrl << "100" << numbers << "" << ok << "" << QStringList{prl100, written};
        QTest::newRow("PRL refused") << withPrl << "100" << numbers << "UpdatePRL" << failed << ""
                                     << QStringList{prl100};
        QTest::newRow("PRL empty") << withPrl << "0" << numbers << "" << failed << ""
                                   << QStringList{"UpdatePRL(in,0)"};
        QTest::newRow("PRL missing") << withPrl << "missing" << numbers << ""
                                     << "2 next=on none" << missing << QStringList();
        QTest::newRow("PRL directory") << withPrl << "dir" << numbers << ""
                                       << "2 next=on none" << missing << QStringList();
        QTest::newRow("PRL /dev/zero") << withPrl << "/dev/zero" << numbers << ""
                                       << "2 next=on none" << missing << QStringList();
        QTest::newRow("PRL FIFO") << withPrl << "fifo" << numbers << ""
                                  << "2 next=on none" << missing << QStringList();
        QTest::newRow("PRL 200 MB") << withPrl << "big" << numbers << ""
                                    << "6 next=on none"
                                    << "IDS_PRL_READ_ERROR" << QStringList();
    }
    void numbers()
    {
        QFETCH(QString, prl);
        QFETCH(QStringList, typed);
        QFETCH(QString, fail);
        QTemporaryDir files;
        QString path = prl.startsWith('/') ? prl : files.filePath("list.prl");
        if (prl == "dir")
            path = files.path();
        else if (prl == "fifo")
            QCOMPARE(::mkfifo(QFile::encodeName(path).constData(), 0600), 0);
        else if (prl == "big" || prl.toInt() > 0 || prl == "0") {
            QFile file(path);
            QVERIFY(file.open(QIODevice::WriteOnly) && file.resize(prl == "big" ? 200 << 20 : prl.toInt()));
        }
        if (!fail.isEmpty())
            zelk::sim::failNext("ZELK_DevSrv_" + fail.toStdString());
        QFETCH(QByteArray, xml);
        open(manual(xml));
        QCOMPARE(item<QLabel>("LabelMIN-")->text(), QStringLiteral("IDS_ACTIVE_OTKSL_MIN_PROMPT"));
        if (!prl.isEmpty())
            simtest::type(prlEntry(), path);
        simtest::type(item<QLineEdit>("LineMIN"), typed[0]);
        simtest::type(item<QLineEdit>("LineMDN"), typed[1]);
        simtest::type(item<QLineEdit>("LineSID"), typed[2]);
        QFETCH(QString, after);
        QCOMPARE(button("Next")->isEnabled(), !after.isEmpty());
        if (!after.isEmpty()) {
            simtest::click(button("Next"));
            QCOMPARE(shown(), after);
        }
        QFETCH(QString, box);
        QCOMPARE(simtest::messages(), box.isEmpty()
                                          ? QStringList()
                                          : QStringList("ShowMessage 3 DeviceMgrUIPlugin_ActivationDlg | "
                                                        "IDS_MAINFRM_ERROR_PROMPT | " +
                                                        box + " | IDS_OK"));
        if (box == "IDS_PRL_FILE_NOT_EXIST")
            QCOMPARE(dlg()->focusWidget(), prlEntry());
        QTEST(sdk(), "calls");
    }

    // The browse button: a chosen file goes into the path entry; cancelling leaves it as it was.
    void browse()
    {
        QTemporaryDir files;
        const QString path = files.filePath("carrier.prl");
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write("PRL") == 3);
        file.close();
        open(manual("<prl>1</prl>"));
        for (const bool accept : {true, false}) {
            QTimer::singleShot(0, [&] {
                QFileDialog* chooser = nullptr;
                for (QWidget* w : QApplication::topLevelWidgets())
                    chooser = chooser ? chooser : qobject_cast<QFileDialog*>(w);
                QVERIFY(chooser);
                QCOMPARE(chooser->windowTitle(), QStringLiteral("IDS_OPEN_PRL_FILE"));
                chooser->selectFile(accept ? path : files.path());
                QMetaObject::invokeMethod(chooser, accept ? "accept" : "reject");
            });
            simtest::click(item<QPushButton>("BtnBrowsePRL"));
            QCOMPARE(prlEntry()->text(), path);
            QVERIFY(button("Next")->isEnabled());
        }
    }
};

QTEST_MAIN(tst_ActivationManual)
#include "tst_activationmanual.moc"
