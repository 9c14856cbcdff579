// active.xml as the activation settings read it: the file variants carriers ship and the broken
// ones they must not crash on, the status numbers, the retried read and the released instance.
#include "ActivationConfigParse.h"
#include "ActivationTestSupport.h"

#include <QtTest/QtTest>

namespace {

// type|autonum|display|showtype|min/len|mdn/len|sid/len|prl
QString summary(const ActivationInfo& i)
{
    const QString num =
        i.strAutoNum.size() > 20 ? QStringLiteral("<%1>").arg(i.strAutoNum.size()) : i.strAutoNum;
    return QStringLiteral("%1|%2|%3|%4|%5/%6|%7/%8|%9/%10|%11")
        .arg(QString::number(i.strActiveType), num, QString::number(i.bDisplayCode),
             QString::number(i.nShowType), QString::number(i.bShowMIN), QString::number(i.nMINLength),
             QString::number(i.bShowMDN), QString::number(i.nMDNLength), QString::number(i.bShowSID))
        .arg(i.nSIDLength)
        .arg(i.bShowPRL);
}

const char* const kDefaults = "0|*228|0|0|0/0|0/0|0/0|0";

} // namespace

class tst_ActivationConfig : public QObject
{
    Q_OBJECT
    QTemporaryDir m_root;

private slots:
    void cleanup() { ActivationConfigParse::Release(ActivationConfigParse::GetInstance()); }

    void variants_data()
    {
        QTest::addColumn<QByteArray>("xml");
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("values");
        using acttest::activeXml;
        // "folder": a folder where the file should be; a null array: no file.
        const auto row = [](const char* tag, const QByteArray& xml, int status, const char* values) {
            QTest::newRow(tag) << xml << status << QString::fromUtf8(values);
        };
        row("every item",
            activeXml("<activetype>2</activetype><autonum>*22899</autonum><displaycode>1</displaycode>"
                      "<showtype>3</showtype><min length='10'>1</min><mdn length='12'>1</mdn>"
                      "<sid length='5'>1</sid><prl>1</prl>"),
            0, "2|*22899|1|3|1/10|1/12|1/5|1");
        row("no main", "<a><activetype>1</activetype></a>", 0, kDefaults);
        row("only exact 1 is yes",
            activeXml("<displaycode>true</displaycode><min length='4'> 1 </min><prl>01</prl>"), 0,
            "0|*228|0|0|0/4|0/0|0/0|0");
        row("not a number",
            activeXml("<activetype>abc</activetype><sid length='x'>1</sid><showtype>9z</showtype>"), 0,
            "0|*228|0|0|0/0|0/0|1/0|0");
        row("before main ignored, after main read, later wins",
            "<r><activetype>1</activetype><main/><autonum>#7</autonum><x><prl>1</prl></x><autonum>#8</"
            "autonum></r>",
            0, "0|#8|0|0|0/0|0/0|0/0|1");
        row("truncated keeps what was read", "<r><main><activetype>1</activetype><autonum>*3", 6,
            "1|*228|0|0|0/0|0/0|0/0|0");
        row("broken right after main", "<r><main><<", 6, kDefaults);
        row("element inside a value", activeXml("<min length='3'><b/></min>"), 6, "0|*228|0|0|0/3|0/0|0/0|0");
        row("missing", QByteArray(), 3, kDefaults);
        row("a folder, cannot be opened", "folder", 25, kDefaults);
        row("empty", "", 6, kDefaults);
        row("not xml", "activetype=1\n\x01\xff", 6, kDefaults);
        row("10 MB", "<r><main><activetype>1</activetype>" + QByteArray(10 << 20, 'x') + "</main></r>", 0,
            "1|*228|0|0|0/0|0/0|0/0|0");
        row("10000-character dial string", activeXml("<autonum>" + QByteArray(10000, '9') + "</autonum>"), 0,
            "0|<10000>|0|0|0/0|0/0|0/0|0");
        row("non-ASCII", activeXml("<autonum>*22\xc3\xa9</autonum><activetype>\xd9\xa2</activetype>"), 0,
            "0|*22\xc3\xa9|0|0|0/0|0/0|0/0|0");
    }

    void variants()
    {
        QFETCH(QByteArray, xml);
        QFETCH(int, status);
        QFETCH(QString, values);
        QVERIFY(acttest::installActiveXml(m_root, xml == "folder" ? QByteArray() : xml));
        if (xml == "folder")
            QVERIFY(QDir().mkpath(ActivationConfigParse::FilePath()));
        ActivationInfo info;
        QCOMPARE(ActivationConfigParse::GetInstance()->GetSettingsFromXML(&info), status);
        QCOMPARE(summary(info), values);
        bool ok = true;
        QCOMPARE(summary(ActivationConfigParse::GetInstance()->GetActivationInfo(ok)), values);
        QCOMPARE(ok, status == 0);
    }

    // A failed read is tried again on the next request; a good one is never repeated until the
    // instance is released.
    void retriedUntilReadThenKeptUntilReleased()
    {
        QVERIFY(acttest::installActiveXml(m_root, QByteArray()));
        bool ok = true;
        ActivationConfigParse::GetInstance()->GetActivationInfo(ok);
        QVERIFY(!ok);
        QVERIFY(acttest::installActiveXml(m_root, acttest::activeXml("<activetype>1</activetype>")));
        QCOMPARE(ActivationConfigParse::GetInstance()->GetActivationInfo(ok).strActiveType, 1);
        QVERIFY(ok);
        QVERIFY(acttest::installActiveXml(m_root, acttest::activeXml("<activetype>2</activetype>")));
        QCOMPARE(ActivationConfigParse::GetInstance()->GetActivationInfo(ok).strActiveType, 1);
        ActivationConfigParse::Release(ActivationConfigParse::GetInstance());
        QCOMPARE(ActivationConfigParse::GetInstance()->GetActivationInfo(ok).strActiveType, 2);
        QCOMPARE(ActivationConfigParse::GetInstance()->GetSettingsFromXML(nullptr), 23);
        QCOMPARE(ActivationConfigParse::GetInstance()->ReadValues(nullptr), 23);
    }
};

QTEST_GUILESS_MAIN(tst_ActivationConfig)
#include "tst_activationconfig.moc"
