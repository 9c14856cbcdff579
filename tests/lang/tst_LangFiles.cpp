// The language files: the .ts sources in lang/ and the compiled .qm files of the build, loaded with a
// plain QTranslator so that the checks do not rely on the host framework's translation class.
#include <QtCore/QDirIterator>
#include <QtCore/QFile>
#include <QtCore/QHash>
#include <QtCore/QRegularExpression>
#include <QtCore/QSet>
#include <QtCore/QTranslator>
#include <QtCore/QXmlStreamReader>
#include <QtTest/QtTest>

namespace {

const char* const kContext = "DeviceMgrUIPlugin";

// The keys and texts of a .ts file; `problems` lists keys named twice and XML errors. A text the
// plugin's lookup (context and key, no disambiguation, finished translations only) cannot reach is
// missing from the compiled file, which the test compares key by key.
struct TsFile
{
    QStringList keys; // in file order, duplicates kept
    QHash<QString, QString> texts;
    QStringList problems;
};

TsFile readTs(const QString& path)
{
    TsFile ts;
    QFile file(path);
    file.open(QIODevice::ReadOnly); // a file that cannot be read ends in the reader's error below
    QXmlStreamReader xml(&file);
    QString source;
    while (!xml.atEnd()) {
        xml.readNext();
        if (!xml.isStartElement())
            continue;
        const auto name = xml.name();
        if (name == QLatin1String("source")) {
            source = xml.readElementText();
            if (ts.keys.contains(source))
                ts.problems << source + QStringLiteral(": named twice");
            ts.keys << source;
        } else if (name == QLatin1String("translation")) {
            ts.texts.insert(source, xml.readElementText());
        }
    }
    if (xml.hasError())
        ts.problems << QStringLiteral("%1:%2: %3").arg(path).arg(xml.lineNumber()).arg(xml.errorString());
    return ts;
}

// Every "IDS_..." literal of the C++ sources under src/.
QSet<QString> sourceKeys()
{
    QSet<QString> keys;
    static const QRegularExpression literal(QStringLiteral("\"(IDS_[A-Z0-9_]+)\""));
    QDirIterator it(QStringLiteral(TESSARO_SOURCE_DIR "/src"),
                    {QStringLiteral("*.cpp"), QStringLiteral("*.h")}, QDir::Files,
                    QDirIterator::Subdirectories);
    while (it.hasNext()) {
        QFile file(it.next());
        if (!file.open(QIODevice::ReadOnly))
            continue;
        auto matches = literal.globalMatch(QString::fromUtf8(file.readAll()));
        while (matches.hasNext())
            keys.insert(matches.next().captured(1));
    }
    return keys;
}

} // namespace

class LangFilesTest : public QObject
{
    Q_OBJECT

private slots:
    void languageComplete_data()
    {
        QTest::addColumn<QString>("code");
        for (const char* code : {"en", "de"})
            QTest::newRow(code) << QString::fromLatin1(code);
    }
    // The .ts file is clean and has the English key set; the compiled file answers every key with the
    // .ts text (a stale or partial .qm fails), every key the sources use has a text, and a text carries
    // only the "%s" the plugin fills in, as many as English does.
    void languageComplete()
    {
        QFETCH(QString, code);
        const QString dir = QStringLiteral(TESSARO_SOURCE_DIR "/lang/tessaro_%1.ts");
        const TsFile ts = readTs(dir.arg(code));
        const TsFile english = readTs(dir.arg(QStringLiteral("en")));
        QVERIFY2(ts.problems.isEmpty(), qPrintable(ts.problems.join(QStringLiteral("; "))));
        QCOMPARE(QSet<QString>(ts.keys.cbegin(), ts.keys.cend()),
                 QSet<QString>(english.keys.cbegin(), english.keys.cend()));

        QTranslator qm, qmEnglish;
        QVERIFY2(qm.load(QStringLiteral("tessaro_%1").arg(code), QStringLiteral(TESSARO_LANG_DIR)),
                 qPrintable(QStringLiteral("cannot load tessaro_%1.qm from " TESSARO_LANG_DIR).arg(code)));
        QVERIFY(qmEnglish.load(QStringLiteral("tessaro_en"), QStringLiteral(TESSARO_LANG_DIR)));
        QVERIFY(qm.language().startsWith(code));

        static const QRegularExpression placeholder(QStringLiteral("%(?:[0-9]+|[a-rt-zA-Z])"));
        const QSet<QString> used = sourceKeys();
        QVERIFY2(!used.isEmpty(), "no IDS_ key found under " TESSARO_SOURCE_DIR "/src");
        const QSet<QString> all = used + QSet<QString>(ts.keys.cbegin(), ts.keys.cend());
        for (const QString& key : qAsConst(all)) {
            const QByteArray k = key.toUtf8();
            const QString text = qm.translate(kContext, k.constData());
            const QString where = key + QLatin1Char('@') + code + QStringLiteral(": ");
            QVERIFY2(!text.trimmed().isEmpty() && !text.contains(QLatin1String("IDS_")),
                     qPrintable(where + QStringLiteral("no real text: ") + text));
            QCOMPARE(text, ts.texts.value(key));
            QCOMPARE(text.count(QLatin1String("%s")),
                     qmEnglish.translate(kContext, k.constData()).count(QLatin1String("%s")));
            QVERIFY2(!placeholder.match(text).hasMatch(),
                     qPrintable(where + QStringLiteral("unfilled placeholder")));
        }
    }
};

QTEST_GUILESS_MAIN(LangFilesTest)
#include "tst_LangFiles.moc"
