// active.xml as the activation settings read it: the file variants carriers ship and the broken
// ones they must not crash on, the status numbers, the retried read and the released instance.
#include "ActivationConfigParse.h"
#include "ActivationTestSupport.h"

#include <QtTest/QtTest>

namespace {

// type|autonum|display|showtype|min/len|mdn/len|sid/len|prl
QString summary(const ActivationInfo& i)
{
    return QStringLiteral("%1|%2|%3|%4|%5/%6|%7/%8|%9/%10|%11")
        .arg(i.strActiveType)
        .arg(i.strAutoNum.size() > 20 ? QStringLiteral("<%1>").arg(i.strAutoNum.size()) : i.strAutoNum)
        .arg(i.bDisplayCode)
        .arg(i.nShowType)
        .arg(i.bShowMIN)
        .arg(i.nMINLength)
        .arg(i.bShowMDN)
        .arg(i.nMDNLength)
        .arg(i.bShowSID)
        .arg(i.nSIDLength)
        .arg(i.bShowPRL);
}

const QString kDefaults = QStringLiteral("0|*228|0|0|0/0|0/0|0/0|0");

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
        const QByteArray full = acttest::activeXml(
            "<activetype>2</activetype><autonum>*22899</autonum><displaycode>1</displaycode><showtype>3</"
            "showtype>"
            "<min length=\"10\">1</min><mdn length=\"12\">1</mdn><sid length=\"5\">1</sid><prl>1</prl>");
        QTest::newRow("every item") << full << 0 << "2|*22899|1|3|1/10|1/12|1/5|1";
        QFile shipped(QStringLiteral(TESSARO_SOURCE_DIR "/config/plugin/active.xml"));
        QVERIFY(shipped.open(QIODevice::ReadOnly));
        QTest::newRow("shipped sample") << shipped.readAll() << 0 << "2|*228|1|0|1/10|1/10|1/5|1";
        QTest::newRow("no main") << QByteArray("<a><activetype>1</activetype></a>") << 0 << kDefaults;
        QTest::newRow("only exact 1 is yes")
            << acttest::activeXml("<displaycode>true</displaycode><min length='4'> 1 </min><prl>01</prl>")
            << 0 << "0|*228|0|0|0/4|0/0|0/0|0";
        QTest::newRow("not a number")
            << acttest::activeXml(
                   "<activetype>abc</activetype><sid length='x'>1</sid><showtype>9z</showtype>")
            << 0 << "0|*228|0|0|0/0|0/0|1/0|0";
        QTest::newRow("before main ignored, after main read")
            << QByteArray(
                   "<r><activetype>1</activetype><main/><autonum>#777</autonum><x><prl>1</prl></x></r>")
            << 0 << "0|#777|0|0|0/0|0/0|0/0|1";
        QTest::newRow("later value wins")
            << acttest::activeXml("<activetype>1</activetype><activetype>2</activetype>") << 0
            << "2|*228|0|0|0/0|0/0|0/0|0";
        QTest::newRow("truncated keeps what was read")
            << QByteArray("<r><main><activetype>1</activetype><autonum>*3") << 6
            << "1|*228|0|0|0/0|0/0|0/0|0";
        QTest::newRow("broken right after main") << QByteArray("<r><main><<") << 6 << kDefaults;
        QTest::newRow("element inside a value")
            << acttest::activeXml("<min length='3'><b/></min>") << 6 << "0|*228|0|0|0/3|0/0|0/0|0";
        QTest::newRow("missing") << QByteArray() << 3 << kDefaults;
        QTest::newRow("empty") << QByteArray("") << 6 << kDefaults;
        QTest::newRow("not xml") << QByteArray("activetype=1\n\x01\xff") << 6 << kDefaults;
        QTest::newRow("10 MB") << QByteArray("<r><main><activetype>1</activetype>") +
                                      QByteArray(10 << 20, 'x') + "</main></r>"
                               << 0 << "1|*228|0|0|0/0|0/0|0/0|0";
        QTest::newRow("10000-character dial string")
            << acttest::activeXml(("<autonum>" + QByteArray(10000, '9') + "</autonum>").constData()) << 0
            << "0|<10000>|0|0|0/0|0/0|0/0|0";
        QTest::newRow("non-ASCII") << acttest::activeXml(
                                          "<autonum>*22\xc3\xa9</autonum><activetype>\xd9\xa2</activetype>")
                                   << 0 << QStringLiteral("0|*22\u00e9|0|0|0/0|0/0|0/0|0");
    }

    void variants()
    {
        QFETCH(QByteArray, xml);
        QFETCH(int, status);
        QFETCH(QString, values);
        QVERIFY(acttest::installActiveXml(m_root, xml));
        ActivationInfo info;
        QCOMPARE(ActivationConfigParse::GetInstance()->GetSettingsFromXML(&info), status);
        QCOMPARE(summary(info), values);
        bool ok = true;
        QCOMPARE(summary(ActivationConfigParse::GetInstance()->GetActivationInfo(ok)), values);
        QCOMPARE(ok, status == 0);
    }

    void unreadableAndNull()
    {
        QVERIFY(acttest::installActiveXml(m_root, QByteArray()));
        QVERIFY(QDir().mkpath(ActivationConfigParse::FilePath())); // a folder where the file should be
        ActivationInfo info;
        QCOMPARE(ActivationConfigParse::GetInstance()->GetSettingsFromXML(&info), 25);
        QCOMPARE(ActivationConfigParse::GetInstance()->GetSettingsFromXML(nullptr), 23);
        QCOMPARE(ActivationConfigParse::GetInstance()->ReadValues(nullptr), 23);
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
    }
};

QTEST_GUILESS_MAIN(tst_ActivationConfig)
#include "tst_activationconfig.moc"
