// Manual activation as the user drives it: the lock-code pages, the device identity, and the
// numbers and roaming list written to the card, with every bad PRL path a user may give.
#include "ActivationTestSupport.h"

#include <QtCore/QTimer>
#include <QtWidgets/QFileDialog>

#include <sys/stat.h>

using acttest::button;
using acttest::dlg;

class tst_ActivationManual : public acttest::WizardSuite
{
    Q_OBJECT

    template<typename T = QLineEdit>
    static T* item(const QString& name)
    {
        return dlg()->findChild<T*>("DeviceMgrUIPlugin_" + name);
    }
    static QLineEdit* prlEntry()
    {
        return item<QPushButton>("BtnBrowsePRL")->parentWidget()->findChild<QLineEdit*>();
    }
    static QString label(const QString& name)
    {
        auto* l = item<QLabel>(name);
        return !l ? "-" : l->isHidden() ? "hidden" : l->text();
    }
    // Page, Next and the message shown.
    static QString shown()
    {
        return QString("%1 %2 %3")
            .arg(g_pActivationInstance.load()->page())
            .arg(button("Next")->isEnabled() ? "on" : "off", label("labelMessage"));
    }
    // The card's calls of manual activation.
    static QString sdk()
    {
        const QStringList calls =
            acttest::sdkCalls().filter(QRegExp("^DevSrv_(GetESN|Verify|Update|Manual)"));
        return calls.join(' ').remove("DevSrv_");
    }

    void open(const QByteArray& xml, int lock = 0, const QString& esn = "1A2B3C4D", const QString& meid = "")
    {
        zelk::sim::Device d = simtest::activeDevice();
        d.cdma.lockStatus = lock;
        d.cdma.esn = esn.toStdString();
        d.cdma.meid = meid.isEmpty() ? "A0000012345678" : meid.toStdString();
        QVERIFY(zelk::sim::updateDevice(d));
        WizardSuite::open(acttest::activeXml("<activetype>1</activetype>" + xml));
    }

private slots:

    // "lock status|ESN|MEID|showtype ("-": displaycode 0)|keys|identity shown|after Next|page when
    // opened again": an empty ESN or MEID is the card's own, ESN "fail" cannot be read.
    void lockPages_data()
    {
        QTest::addColumn<QStringList>("row");
        // clang-format off
        for (const char* row : {
                 "1|||0||ESN 02602833485", "1|FFFFFFFF||0||ESN 25516777215", "1|00000000||0||ESN 00000000000",
                 "1|||1||ESN 1A2B3C4D", "1|80ABCDEF||0||MEID 268435457803430008", "1|8aBCDEF0||1||ESN 8aBCDEF0",
                 "1|80ABCDEF|FFFFFFFFFFFFFF|0||MEID 429496729516777215", "1|80ABCDEF||1||MEID A0000012345678",
                 "1|||-||hidden", "1|fail||0||empty", "2|||-|12345||3 off -|3", "2|||-|1234567||2 off -|2",
                 "2|||-|1a2b3-c456||2 off -|2", "2|||-|111111||7 off IDS_MSL_FAILED|3", "1|||-|654321|hidden|2 off -|2",
                 "1|||-|111111|hidden|7 off IDS_SPC_FAILED|1 IDS_MAINFRM_CARDLOCKDLG_LEFTTIMES2",
                 "3|||-|||0 off -|0", "-1|||-|||7 off IDS_ACTIVE_FAILED|2"})
            // clang-format on
            QTest::newRow(row) << QString(row).split('|');
    }
    void lockPages()
    {
        QFETCH(QStringList, row);
        const int lock = row[0].toInt();
        if (lock < 0)
            zelk::sim::failNext("ZELK_DevSrv_GetOTKSLStatus");
        if (row[1] == "fail")
            zelk::sim::failNext("ZELK_DevSrv_GetESN");
        open(row[3] == "-" ? "<displaycode>0</displaycode>"
                           : "<displaycode>1</displaycode><showtype>" + row[3].toLatin1() + "</showtype>",
             std::max(lock, 0), row[1].size() == 8 ? row[1] : "1A2B3C4D", row[2]);
        if (lock == 1) {
            const QStringList id = row[5].split(' ');
            QCOMPARE(label("LabelOTKInfo") + '|' + label("LabelESNText") + '|' + label("LabelESNNumber"),
                     id[0] == "hidden"  ? "hidden|hidden|hidden"
                     : id[0] == "empty" ? "||"
                                        : QString("IDS_ESN_MSG|IDS_%1_PROMPT|%2").arg(id[0], id[1]));
            QCOMPARE(label("LabelRetryAttempt"), QStringLiteral("IDS_MAINFRM_CARDLOCKDLG_LEFTTIMES3"));
            QCOMPARE(sdk().startsWith("GetESN(out)"), row[3] != "-");
        }
        if (row.size() < 7)
            return;
        if (!row[4].isEmpty()) {
            QLineEdit* entry = item(lock == 1 ? "EditOTKBox" : "LineMSL");
            QCOMPARE(entry->echoMode(), QLineEdit::Password);
            simtest::type(entry, row[4]);
            QCOMPARE(button("Next")->isEnabled(), entry->text().size() == 6);
            if (button("Next")->isEnabled())
                simtest::click(button("Next"));
        }
        QCOMPARE(shown(), row[6]);
        QVERIFY(button("Back")->isHidden());
        // No log line carries the code.
        const QString code = QString(row[4]).remove(QRegExp("\\D")).left(6);
        QVERIFY(svc::logCount("ManualActivate") > 0);
        QCOMPARE(code.isEmpty() ? 0 : svc::logCount(code), 0);
        simtest::click(button("Cancel"));
        open("<displaycode>0</displaycode>", zelk::sim::devices()[0].cdma.lockStatus);
        const QString retries = label("LabelRetryAttempt");
        QCOMPARE(QString::number(g_pActivationInstance.load()->page()) +
                     (retries == "-" ? "" : ' ' + retries),
                 row[7]);
    }

    // "MIN,MDN,SID lengths|PRL file (offered when given)|MIN MDN SID|call refused|shown after Next (none:
    // Next off)|box|calls".
    void numbers_data()
    {
        QTest::addColumn<QStringList>("row");
        // clang-format off
        const QString rows[] = {
            "10,10,5||$N||5 off IDS_ACTIVE_SUCCESS||$W", "10,10,5||123456789 0987654321 1||||",
            "22,20,9||1111111111111111111111111 22222222222222222222 12345678||5 off IDS_ACTIVE_SUCCESS||"
            "ManualCHKOTKSLActive(2222222222222222,1111111111111111111111,12345)",
            "0,3,-||12 456 -||5 off IDS_ACTIVE_SUCCESS||ManualCHKOTKSLActive(456,,)",
            "10,10,5||$N|ManualCHKOTKSLActive|6 off IDS_ACTIVE_FAILED||$W",
            "10,10,5|100|$N||5 off IDS_ACTIVE_SUCCESS||$P $W", "10,10,5|100|$N|UpdatePRL|6 off IDS_ACTIVE_FAILED||$P",
            "10,10,5|0|$N||6 off IDS_ACTIVE_FAILED||UpdatePRL(in,0)", "10,10,5|missing|$N||2 on -|$X|",
            "10,10,5|dir|$N||2 on -|$X|", "10,10,5|/dev/zero|$N||2 on -|$X|", "10,10,5|fifo|$N||2 on -|$X|",
            "10,10,5|big|$N||6 on -|IDS_PRL_READ_ERROR|"};
        // clang-format on
        for (QString row : rows) {
            row.replace("$N", "1234567890 0987654321 123").replace("$X", "IDS_PRL_FILE_NOT_EXIST");
            row.replace("$W", "ManualCHKOTKSLActive(0987654321,1234567890,123)")
                .replace("$P", "UpdatePRL(in,100)");
            QTest::newRow(qPrintable(row)) << row.split('|');
        }
    }
    void numbers()
    {
        QFETCH(QStringList, row);
        QTemporaryDir files;
        QFile file(row[1] == "dir"          ? files.path()
                   : row[1].startsWith('/') ? row[1]
                                            : files.filePath("a.prl"));
        const QString path = file.fileName();
        if (row[1] == "fifo")
            QCOMPARE(::mkfifo(QFile::encodeName(path).constData(), 0600), 0);
        else if (row[1] == "big" || QRegExp("\\d+").exactMatch(row[1]))
            QVERIFY(file.open(QIODevice::WriteOnly) &&
                    file.resize(row[1] == "big" ? 200 << 20 : row[1].toInt()));
        if (!row[3].isEmpty())
            zelk::sim::failNext("ZELK_DevSrv_" + row[3].toStdString());
        QString xml = row[1].isEmpty() ? "" : "<prl>1</prl>";
        const QStringList lengths = row[0].split(','), tags = {"min", "mdn", "sid"};
        for (int i = 0; i < 3; ++i)
            xml += lengths[i] == "-" ? "" : QString("<%1 length=\"%2\">1</%1>").arg(tags[i], lengths[i]);
        open(xml.toLatin1());
        if (!row[1].isEmpty())
            simtest::type(prlEntry(), path);
        for (int i = 0; i < 3; ++i)
            simtest::type(item("Line" + tags[i].toUpper()), row[2].split(' ')[i].remove('-'));
        QCOMPARE(button("Next")->isEnabled(), !row[4].isEmpty());
        if (!row[4].isEmpty()) {
            simtest::click(button("Next"));
            QCOMPARE(shown(), row[4]);
        }
        const QString box =
            "ShowMessage 3 DeviceMgrUIPlugin_ActivationDlg | IDS_MAINFRM_ERROR_PROMPT | %1 | IDS_OK";
        QCOMPARE(simtest::messages().join(""), row[5].isEmpty() ? QString() : box.arg(row[5]));
        if (row[5] == "IDS_PRL_FILE_NOT_EXIST")
            QCOMPARE(dlg()->focusWidget(), prlEntry());
        QCOMPARE(sdk(), row[6]);
    }

    // The browse button: a chosen file goes into the path entry; cancelling leaves it as it was.
    void browse()
    {
        QTemporaryDir files;
        QFile file(files.filePath("carrier.prl"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        open("<prl>1</prl>");
        for (const bool accept : {true, false}) {
            QTimer::singleShot(0, [&] {
                QFileDialog* chooser = nullptr;
                for (QWidget* w : QApplication::topLevelWidgets())
                    chooser = chooser ? chooser : qobject_cast<QFileDialog*>(w);
                QVERIFY(chooser);
                chooser->selectFile(accept ? file.fileName() : files.path());
                QMetaObject::invokeMethod(chooser, accept ? "accept" : "reject");
            });
            simtest::click(item<QPushButton>("BtnBrowsePRL"));
            QCOMPARE(prlEntry()->text(), file.fileName());
            QVERIFY(button("Next")->isEnabled());
        }
    }
};

QTEST_MAIN(tst_ActivationManual)
#include "tst_activationmanual.moc"
