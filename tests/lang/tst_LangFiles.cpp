// Checks of the language files: the .ts sources in lang/ and the compiled .qm files of the build.
// The compiled files are loaded with a plain QTranslator, so these checks do not rely on the
// host framework's translation class.
#include <QtCore/QDir>
#include <QtCore/QDirIterator>
#include <QtCore/QFile>
#include <QtCore/QHash>
#include <QtCore/QMap>
#include <QtCore/QRegularExpression>
#include <QtCore/QSet>
#include <QtCore/QTranslator>
#include <QtCore/QXmlStreamReader>
#include <QtTest/QtTest>

#include <memory>

namespace {

const char* const kContext = "DeviceMgrUIPlugin";
// The plugin's dialogs, messages, wizard pages and fingerprint prompts use this many keys.
const int kMinimumKeyCount = 136;

// One language: what its .ts file says and what its compiled .qm file answers.
struct Language
{
    QString code;
    QString tsPath;
    QStringList keys; // in file order, duplicates kept
    QHash<QString, QString> tsTexts;
    QStringList contexts;
    QStringList problems; // unfinished, obsolete or disambiguated messages
    QString parseError;
    std::shared_ptr<QTranslator> translator;
    bool qmLoaded = false;
};

// Reads the messages of a .ts file.
void readTs(Language& lang)
{
    QFile file(lang.tsPath);
    if (!file.open(QIODevice::ReadOnly)) {
        lang.parseError = QStringLiteral("cannot open %1").arg(lang.tsPath);
        return;
    }
    QXmlStreamReader xml(&file);
    QString context;
    QString source;
    while (!xml.atEnd()) {
        xml.readNext();
        if (!xml.isStartElement())
            continue;
        const auto name = xml.name();
        if (name == QLatin1String("name")) {
            context = xml.readElementText();
            lang.contexts << context;
        } else if (name == QLatin1String("message")) {
            source.clear();
        } else if (name == QLatin1String("source")) {
            source = xml.readElementText();
            lang.keys << source;
        } else if (name == QLatin1String("comment")) {
            // A disambiguation comment changes the lookup key: Change::tr(key, context) would miss it.
            lang.problems << source + QStringLiteral(": has a disambiguation <comment>");
            xml.skipCurrentElement();
        } else if (name == QLatin1String("translation")) {
            const QString type = xml.attributes().value(QLatin1String("type")).toString();
            if (!type.isEmpty())
                lang.problems << source + QStringLiteral(": translation type \"%1\"").arg(type);
            lang.tsTexts.insert(source, xml.readElementText());
        }
    }
    if (xml.hasError())
        lang.parseError =
            QStringLiteral("%1:%2: %3").arg(lang.tsPath).arg(xml.lineNumber()).arg(xml.errorString());
}

// Every "IDS_..." string literal of the C++ sources under `root`, with the first file naming it.
QMap<QString, QString> scanSourceKeys(const QString& root, int* fileCount)
{
    QMap<QString, QString> keys;
    static const QRegularExpression literal(QStringLiteral("\"(IDS_[A-Z0-9_]+)\""));
    QDirIterator it(root, {QStringLiteral("*.cpp"), QStringLiteral("*.h")}, QDir::Files,
                    QDirIterator::Subdirectories);
    *fileCount = 0;
    while (it.hasNext()) {
        const QString path = it.next();
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            continue;
        ++*fileCount;
        const QString text = QString::fromUtf8(file.readAll());
        auto matches = literal.globalMatch(text);
        while (matches.hasNext()) {
            const QString key = matches.next().captured(1);
            if (!keys.contains(key))
                keys.insert(key, QDir(root).relativeFilePath(path));
        }
    }
    return keys;
}

// The printf/arg-style placeholders of a text: "%s", "%d", "%1", "%n", ...
QStringList placeholders(const QString& text)
{
    static const QRegularExpression re(QStringLiteral("%(?:[0-9]+|[a-zA-Z])"));
    QStringList found;
    auto it = re.globalMatch(text);
    while (it.hasNext())
        found << it.next().captured(0);
    return found;
}

} // namespace

class LangFilesTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void tsFileIsClean_data();
    void tsFileIsClean();
    void compiledFileLoads_data();
    void compiledFileLoads();
    void sameKeySet_data();
    void sameKeySet();
    void keyCount_data();
    void keyCount();
    void everyKeyTranslated_data();
    void everyKeyTranslated();
    void sourceScanSeesSources();
    void sourceKeysTranslated_data();
    void sourceKeysTranslated();
    void placeholdersAgree_data();
    void placeholdersAgree();

private:
    void addLanguageRows();
    QString translate(const QString& code, const QString& key) const;

    QMap<QString, Language> m_langs;
    QStringList m_allKeys; // union over all languages, sorted
    QMap<QString, QString> m_sourceKeys;
    int m_sourceFiles = 0;
};

void LangFilesTest::initTestCase()
{
    const QString tsDir = QStringLiteral(TESSARO_SOURCE_DIR "/lang");
    QSet<QString> all;
    for (const QString& code : {QStringLiteral("en"), QStringLiteral("de")}) {
        Language& lang = m_langs[code];
        lang.code = code;
        lang.tsPath = tsDir + QStringLiteral("/tessaro_%1.ts").arg(code);
        readTs(lang);
        lang.translator = std::make_shared<QTranslator>();
        lang.qmLoaded =
            lang.translator->load(QStringLiteral("tessaro_%1").arg(code), QStringLiteral(TESSARO_LANG_DIR));
        for (const QString& key : qAsConst(lang.keys))
            all.insert(key);
    }
    m_allKeys = all.values();
    m_allKeys.sort();
    m_sourceKeys = scanSourceKeys(QStringLiteral(TESSARO_SOURCE_DIR "/src"), &m_sourceFiles);
}

void LangFilesTest::addLanguageRows()
{
    QTest::addColumn<QString>("code");
    for (auto it = m_langs.cbegin(); it != m_langs.cend(); ++it)
        QTest::newRow(qPrintable(it.key())) << it.key();
}

QString LangFilesTest::translate(const QString& code, const QString& key) const
{
    const Language& lang = m_langs.find(code).value();
    return lang.translator->translate(kContext, key.toUtf8().constData());
}

void LangFilesTest::tsFileIsClean_data()
{
    addLanguageRows();
}

// The .ts file parses, holds one context of the plugin, names each key once and has only finished
// translations that the plugin's lookup (context and key, no disambiguation) can reach.
void LangFilesTest::tsFileIsClean()
{
    QFETCH(QString, code);
    const Language& lang = m_langs.find(code).value();
    QVERIFY2(lang.parseError.isEmpty(), qPrintable(lang.parseError));
    QCOMPARE(lang.contexts, QStringList{QString::fromLatin1(kContext)});
    QStringList duplicates;
    QSet<QString> seen;
    for (const QString& key : lang.keys) {
        if (seen.contains(key))
            duplicates << key;
        seen.insert(key);
    }
    QVERIFY2(duplicates.isEmpty(), qPrintable(QStringLiteral("duplicate keys: ") + duplicates.join(u' ')));
    QVERIFY2(lang.problems.isEmpty(), qPrintable(lang.problems.join(QStringLiteral("; "))));
    QStringList notKeys;
    static const QRegularExpression keyForm(QStringLiteral("^IDS_[A-Z0-9_]+$"));
    for (const QString& key : lang.keys) {
        if (!keyForm.match(key).hasMatch())
            notKeys << key;
    }
    QVERIFY2(notKeys.isEmpty(),
             qPrintable(QStringLiteral("sources that are no IDS_ key: ") + notKeys.join(u' ')));
}

void LangFilesTest::compiledFileLoads_data()
{
    addLanguageRows();
}

void LangFilesTest::compiledFileLoads()
{
    QFETCH(QString, code);
    const Language& lang = m_langs.find(code).value();
    QVERIFY2(
        lang.qmLoaded,
        qPrintable(
            QStringLiteral("cannot load tessaro_%1.qm from %2").arg(code, QStringLiteral(TESSARO_LANG_DIR))));
    QVERIFY(!lang.translator->isEmpty());
    QVERIFY2(lang.translator->language().startsWith(code),
             qPrintable(
                 QStringLiteral("language of the compiled file is \"%1\"").arg(lang.translator->language())));
}

void LangFilesTest::sameKeySet_data()
{
    addLanguageRows();
}

// Every key of this language exists in every other language.
void LangFilesTest::sameKeySet()
{
    QFETCH(QString, code);
    const Language& lang = m_langs.find(code).value();
    QVERIFY(!lang.keys.isEmpty());
    for (auto it = m_langs.cbegin(); it != m_langs.cend(); ++it) {
        if (it.key() == code)
            continue;
        const QSet<QString> other(it->keys.cbegin(), it->keys.cend());
        QStringList missing;
        for (const QString& key : lang.keys) {
            if (!other.contains(key))
                missing << key;
        }
        QVERIFY2(missing.isEmpty(),
                 qPrintable(
                     QStringLiteral("keys of %1 missing in %2: %3").arg(code, it.key(), missing.join(u' '))));
    }
}

void LangFilesTest::keyCount_data()
{
    addLanguageRows();
}

void LangFilesTest::keyCount()
{
    QFETCH(QString, code);
    const Language& lang = m_langs.find(code).value();
    QVERIFY2(
        lang.keys.size() >= kMinimumKeyCount,
        qPrintable(
            QStringLiteral("%1 keys, expected at least %2").arg(lang.keys.size()).arg(kMinimumKeyCount)));
}

void LangFilesTest::everyKeyTranslated_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("key");
    for (const QString& key : qAsConst(m_allKeys)) {
        for (auto it = m_langs.cbegin(); it != m_langs.cend(); ++it)
            QTest::newRow(qPrintable(key + u'@' + it.key())) << it.key() << key;
    }
}

// The compiled file answers the key with a real text, and that text is the one of the .ts file
// (a stale or partial .qm fails here).
void LangFilesTest::everyKeyTranslated()
{
    QFETCH(QString, code);
    QFETCH(QString, key);
    const Language& lang = m_langs.find(code).value();
    QVERIFY2(lang.qmLoaded, "compiled file not loaded");
    const QString text = translate(code, key);
    QVERIFY2(!text.trimmed().isEmpty(), "no translation");
    QVERIFY2(text != key, "translation repeats the key");
    QVERIFY2(!text.contains(QLatin1String("IDS_")), qPrintable(QStringLiteral("text names a key: ") + text));
    QCOMPARE(text, lang.tsTexts.value(key));
}

// Guards the scan below against silently looking at the wrong folder.
void LangFilesTest::sourceScanSeesSources()
{
    QVERIFY2(m_sourceFiles > 0, "no *.cpp or *.h file found under " TESSARO_SOURCE_DIR "/src");
}

void LangFilesTest::sourceKeysTranslated_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("file");
    for (auto it = m_sourceKeys.cbegin(); it != m_sourceKeys.cend(); ++it)
        QTest::newRow(qPrintable(it.key())) << it.key() << it.value();
}

// A key that the sources use must have a text in every language.
void LangFilesTest::sourceKeysTranslated()
{
    // An empty data table would still run this function once, without data.
    if (m_sourceKeys.isEmpty())
        QSKIP("the sources use no IDS_ key yet");
    QFETCH(QString, key);
    QFETCH(QString, file);
    for (auto it = m_langs.cbegin(); it != m_langs.cend(); ++it) {
        QVERIFY2(it->qmLoaded, qPrintable(it.key() + QStringLiteral(": compiled file not loaded")));
        const QString text = translate(it.key(), key);
        QVERIFY2(!text.isEmpty() && text != key,
                 qPrintable(QStringLiteral("%1 (used in %2) has no %3 text").arg(key, file, it.key())));
    }
}

void LangFilesTest::placeholdersAgree_data()
{
    QTest::addColumn<QString>("key");
    for (const QString& key : qAsConst(m_allKeys))
        QTest::newRow(qPrintable(key)) << key;
}

// The plugin replaces "%s" by the card word and nothing else, so a text may carry "%s" only, and
// each language carries as many as English does.
void LangFilesTest::placeholdersAgree()
{
    QFETCH(QString, key);
    const QString english = translate(QStringLiteral("en"), key);
    QVERIFY2(!english.isEmpty(), "no English text");
    for (auto it = m_langs.cbegin(); it != m_langs.cend(); ++it) {
        const QString text = translate(it.key(), key);
        QVERIFY2(!text.isEmpty(), qPrintable(it.key() + QStringLiteral(": no text")));
        QCOMPARE(text.count(QLatin1String("%s")), english.count(QLatin1String("%s")));
        QStringList others = placeholders(text);
        others.removeAll(QStringLiteral("%s"));
        QVERIFY2(
            others.isEmpty(),
            qPrintable(
                QStringLiteral("%1: placeholder that nothing fills: %2").arg(it.key(), others.join(u' '))));
    }
}

QTEST_GUILESS_MAIN(LangFilesTest)
#include "tst_LangFiles.moc"
