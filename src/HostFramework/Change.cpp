// Change: the host's translation of IDS_ keys through its own translator (not the application's).
#include "Change.h"

#include "HostState.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QStringList>
#include <QtCore/QTranslator>
#include <mutex>
#include <shared_mutex>

#include <memory>

#ifndef TESSARO_DEFAULT_LANG_DIR
#define TESSARO_DEFAULT_LANG_DIR ""
#endif

namespace {

// Worker threads translate too (log-free texts for queued messages), so the translator is swapped
// under a write lock and read under a read lock. Keeping it out of QCoreApplication's list means
// an application translator can never shadow or reorder the host's keys.
std::shared_mutex g_lock;
std::unique_ptr<QTranslator> g_translator;
QString g_language;

QStringList languageDirs()
{
    const QString chosen = HostFramework::detail::languageDir();
    if (!chosen.isEmpty())
        return {chosen};
    QStringList dirs;
    const QString builtIn = QStringLiteral(TESSARO_DEFAULT_LANG_DIR);
    if (!builtIn.isEmpty())
        dirs << builtIn;
    if (QCoreApplication::instance()) {
        const QString appDir = QCoreApplication::applicationDirPath();
        dirs << appDir + QStringLiteral("/../lang") << appDir + QStringLiteral("/lang");
    }
    return dirs;
}

} // namespace

QString Change::tr(const QString& key, const char* context)
{
    if (key.isEmpty())
        return key;
    std::shared_lock<std::shared_mutex> lock(g_lock);
    if (g_translator) {
        const QByteArray source = key.toUtf8();
        const QString text =
            g_translator->translate(context ? context : "DeviceMgrUIPlugin", source.constData());
        if (!text.isEmpty())
            return text;
    }
    return key;
}

bool Change::LoadLanguage(const QString& lang)
{
    if (lang.isEmpty() || lang == QLatin1String("none")) {
        std::unique_lock<std::shared_mutex> lock(g_lock);
        g_translator.reset();
        g_language.clear();
        return true;
    }
    const QString fileName = QStringLiteral("tessaro_%1.qm").arg(lang);
    const QStringList dirs = languageDirs();
    for (const QString& dir : dirs) {
        const QString path = QDir(dir).filePath(fileName);
        if (!QFileInfo::exists(path))
            continue;
        auto translator = std::make_unique<QTranslator>();
        if (!translator->load(path)) {
            HostFramework::detail::warn(
                QStringLiteral("Change::LoadLanguage: %1 is not a language file").arg(path));
            continue;
        }
        std::unique_lock<std::shared_mutex> lock(g_lock);
        g_translator = std::move(translator);
        g_language = HostFramework::detail::own(lang);
        return true;
    }
    HostFramework::detail::warn(QStringLiteral("Change::LoadLanguage: no %1 in %2, keeping \"%3\"")
                                    .arg(fileName, dirs.join(QStringLiteral(", ")), CurrentLanguage()));
    return false;
}

QString Change::CurrentLanguage()
{
    std::shared_lock<std::shared_mutex> lock(g_lock);
    return g_language;
}
