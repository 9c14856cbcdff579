// PluginContainer: lookups, QLibrary loading of hand-exported plugins, plugin sets and GID names.
#include "PluginContainer.h"

#include "HostState.h"

#include "CommonUtils.h"
#include "PluginInterfaces.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDebug>
#include <QtCore/QDir>
#include <QtCore/QEvent>
#include <QtCore/QFileInfo>
#include <QtCore/QLibrary>
#include <QtCore/QSet>
#include <QtCore/QSettings>

#include <cstring>

namespace {

const char kVerificationPattern[] = "pattern=QT_PLUGIN_VERIFICATION_DATA";
const char kPluginSetSection[] = "pluginsets";
const char kDefaultSetKey[] = "default";

using InstanceFunction = QObject* (*)();
using VerificationFunction = const char* (*)();

// A configured list, whether the file holds it quoted ("a,b" as one text) or as an INI list.
QStringList configuredList(const QString& section, const QString& key)
{
    const QString text = CommonUtils::GetSettings(section, key);
    QStringList out;
    const QStringList parts = text.split(QLatin1Char(','), Qt::SkipEmptyParts);
    for (const QString& part : parts) {
        const QString name = part.trimmed();
        if (!name.isEmpty())
            out << name;
    }
    return out;
}

IBasePlugin* basePlugin(QObject* object)
{
    return object ? static_cast<IBasePlugin*>(object->qt_metacast(IBasePlugin_iid)) : nullptr;
}

QString ownerNameOf(QObject* object)
{
    if (IBasePlugin* plugin = basePlugin(object)) {
        const QString name = plugin->GetPluginName();
        if (!name.isEmpty())
            return name;
    }
    return object->objectName();
}

} // namespace

PluginContainer::PluginContainer(QObject* parent)
    : QObject(parent)
{
}

PluginContainer::~PluginContainer()
{
    unloadAll();
}

QObject* PluginContainer::GetPlugin(const QString& clsid, int id)
{
    QObject* found = nullptr;
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        for (const Entry& e : qAsConst(m_entries)) {
            if (e.id == id && e.object && e.clsid == clsid) {
                found = e.object.data();
                break;
            }
        }
    }
    qDebug("PluginContainer::GetPlugin(%s, 0x%x) -> %s", qPrintable(clsid), static_cast<unsigned>(id),
           found ? qPrintable(found->metaObject()->className()) : "none");
    return found;
}

bool PluginContainer::RegisterPlugin(const QString& clsid, int id, QObject* plugin)
{
    if (!plugin) {
        fail(QStringLiteral("RegisterPlugin(%1, 0x%2): no object").arg(clsid).arg(id, 0, 16));
        return false;
    }
    return addEntry(clsid, id, plugin, ownerNameOf(plugin));
}

bool PluginContainer::registerService(const QString& clsid, int id, QObject* service, const QString& owner)
{
    if (!service)
        return false;
    return addEntry(clsid, id, service,
                    owner.isEmpty() ? QString::fromLatin1(service->metaObject()->className()) : owner);
}

bool PluginContainer::addEntry(const QString& clsid, int id, QObject* object, const QString& owner)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    if (clsid.isEmpty()) {
        lock.unlock();
        fail(QStringLiteral("RegisterPlugin: empty class identifier"));
        return false;
    }
    for (const Entry& e : qAsConst(m_entries)) {
        if (e.object && e.clsid == clsid && e.id == id) {
            const QString taken = e.owner;
            lock.unlock();
            fail(QStringLiteral("RegisterPlugin(%1, 0x%2): already taken by %3")
                     .arg(clsid)
                     .arg(id, 0, 16)
                     .arg(taken));
            return false;
        }
    }
    // Names and identifiers may be a plugin's literals: keep copies that outlive its library.
    Entry entry;
    entry.clsid = HostFramework::detail::own(clsid);
    entry.id = id;
    entry.object = object;
    entry.owner = HostFramework::detail::own(owner);
    m_entries.append(entry);
    return true;
}

bool PluginContainer::UnRegisterPlugin(const QString& name)
{
    bool changed = false;
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        for (int i = m_entries.size() - 1; i >= 0; --i) {
            if (m_entries.at(i).owner == name) {
                m_entries.removeAt(i);
                changed = true;
            }
        }
        const int index = loadedIndex(name);
        if (index >= 0 && m_loaded.at(index).registered) {
            m_loaded[index].registered = false;
            changed = true;
        }
    }
    HostFramework::detail::log(QStringLiteral("PluginContainer::UnRegisterPlugin(%1): %2")
                                   .arg(name, changed ? "done" : "not registered"));
    return changed;
}

QObject* PluginContainer::LoadPlugin(const QString& name)
{
    if (name.isEmpty() || name.contains(QLatin1Char('/')) || name.contains(QLatin1Char('\\')) ||
        name == QLatin1String("..")) {
        return fail(QStringLiteral("LoadPlugin: invalid plugin name \"%1\"").arg(name));
    }
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        const int index = loadedIndex(name);
        if (index >= 0) {
            // Loading again what is still loaded only puts it back into the tables.
            m_loaded[index].registered = true;
            return m_loaded.at(index).root.data();
        }
    }

    const QString path =
        QDir(CommonUtils::GetPluginLibraryPath()).filePath(QStringLiteral("plugins/%1/lib%1.so").arg(name));
    if (!QFileInfo::exists(path))
        return fail(QStringLiteral("LoadPlugin(%1): no plugin library at %2").arg(name, path));

    auto* library = new QLibrary(path);
    library->setLoadHints(QLibrary::ResolveAllSymbolsHint);
    auto refuse = [&](const QString& why) {
        library->unload();
        delete library;
        return fail(QStringLiteral("LoadPlugin(%1): %2 (%3)").arg(name, why, path));
    };
    if (!library->load())
        return refuse(QStringLiteral("cannot load: %1").arg(library->errorString()));

    auto verify =
        reinterpret_cast<VerificationFunction>(library->resolve("qt_plugin_query_verification_data"));
    if (!verify)
        return refuse(QStringLiteral("not a plugin: qt_plugin_query_verification_data is missing"));
    const char* verification = verify();
    if (!verification ||
        std::strncmp(verification, kVerificationPattern, sizeof(kVerificationPattern) - 1) != 0)
        return refuse(QStringLiteral("not a plugin: the verification data does not start with \"%1\"")
                          .arg(QLatin1String(kVerificationPattern)));

    auto instance = reinterpret_cast<InstanceFunction>(library->resolve("qt_plugin_instance"));
    if (!instance)
        return refuse(QStringLiteral("not a plugin: qt_plugin_instance is missing"));
    QObject* root = instance();
    if (!root)
        return refuse(QStringLiteral("qt_plugin_instance returned no object"));
    IBasePlugin* plugin = basePlugin(root);
    if (!plugin) {
        delete root;
        return refuse(
            QStringLiteral("the plugin object does not answer %1").arg(QLatin1String(IBasePlugin_iid)));
    }

    const QString clsid = plugin->GetCLSID();
    const int kind = static_cast<int>(plugin->GetPluginType());
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        Loaded loaded;
        loaded.name = HostFramework::detail::own(name);
        loaded.root = root;
        loaded.library = library;
        m_loaded.append(loaded);
    }
    if (!clsid.isEmpty())
        addEntry(clsid, kind, root, name);
    HostFramework::detail::log(QStringLiteral("PluginContainer::LoadPlugin(%1): %2 from %3")
                                   .arg(name, QString::fromLatin1(root->metaObject()->className()), path));
    emit pluginLoaded(name, root);
    return root;
}

bool PluginContainer::UnloadPlugin(const QString& name)
{
    Loaded loaded;
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        const int index = loadedIndex(name);
        if (index < 0) {
            lock.unlock();
            fail(QStringLiteral("UnloadPlugin(%1): not loaded").arg(name));
            return false;
        }
        loaded = m_loaded.takeAt(index);
        for (int i = m_entries.size() - 1; i >= 0; --i) {
            if (m_entries.at(i).owner == name || m_entries.at(i).object == loaded.root)
                m_entries.removeAt(i);
        }
    }
    if (QObject* root = loaded.root.data()) {
        if (IBasePlugin* plugin = basePlugin(root))
            plugin->OnDestroy();
        delete root;
    }
    // Objects the plugin handed to deleteLater() run its code when they die: let them go while
    // that code is still mapped.
    if (QCoreApplication::instance())
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    if (loaded.library) {
        if (!loaded.library->unload())
            qWarning("PluginContainer::UnloadPlugin(%s): %s", qPrintable(name),
                     qPrintable(loaded.library->errorString()));
        delete loaded.library;
    }
    HostFramework::detail::log(QStringLiteral("PluginContainer::UnloadPlugin(%1): unloaded").arg(name));
    emit pluginUnloaded(name);
    return true;
}

void PluginContainer::unloadAll()
{
    const QStringList names = loadedPluginNames();
    for (int i = names.size() - 1; i >= 0; --i)
        UnloadPlugin(names.at(i));
}

QStringList PluginContainer::pluginSet(const QString& key) const
{
    if (key.isEmpty())
        return {};
    return configuredList(QLatin1String(kPluginSetSection), key);
}

void PluginContainer::ensureCurrentSet() const
{
    // Called with m_mutex held. The start-up set is read on first use, after the host has
    // chosen its settings file.
    if (m_setKnown)
        return;
    m_setKnown = true;
    m_currentSetKey = QLatin1String(kDefaultSetKey);
    m_currentSet = configuredList(QLatin1String(kPluginSetSection), m_currentSetKey);
}

QString PluginContainer::currentPluginSetKey() const
{
    std::unique_lock<std::mutex> lock(m_mutex);
    ensureCurrentSet();
    return m_currentSetKey;
}

QStringList PluginContainer::currentPluginSet() const
{
    std::unique_lock<std::mutex> lock(m_mutex);
    ensureCurrentSet();
    return m_currentSet;
}

bool PluginContainer::IsPluginSetChanged(const QString& key)
{
    const QStringList wanted = pluginSet(key);
    const QStringList current = currentPluginSet();
    const bool changed = !wanted.isEmpty() && QSet<QString>(wanted.begin(), wanted.end()) !=
                                                  QSet<QString>(current.begin(), current.end());
    HostFramework::detail::log(QStringLiteral("PluginContainer::IsPluginSetChanged(%1): %2")
                                   .arg(key, changed ? QStringLiteral("yes") : QStringLiteral("no")));
    return changed;
}

void PluginContainer::GetReloadPluginLists(const QString& key, QStringList& newPlugins,
                                           QStringList& replacedPlugins)
{
    const QStringList wanted = pluginSet(key);
    newPlugins.clear();
    replacedPlugins.clear();
    QList<QPair<QString, QPointer<QObject>>> loaded;
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        ensureCurrentSet();
        if (!wanted.isEmpty()) {
            m_currentSetKey = HostFramework::detail::own(key);
            m_currentSet = wanted;
        }
        newPlugins = m_currentSet;
        for (const QString& name : qAsConst(m_currentSet)) {
            const int index = loadedIndex(name);
            if (index >= 0)
                loaded << qMakePair(name, m_loaded.at(index).root);
        }
    }
    // ---- reload of device-dependent plugins ----
    // A plugin that does not allow its release stays: the reload is driven from inside such a
    // plugin (the device manager), whose code must not be unmapped under its own feet.
    for (const auto& entry : qAsConst(loaded)) {
        IBasePlugin* plugin = basePlugin(entry.second.data());
        if (!plugin || plugin->IsAllowRelease())
            replacedPlugins << entry.first;
    }
    HostFramework::detail::log(
        QStringLiteral("PluginContainer::GetReloadPluginLists(%1): new [%2], replaced [%3]")
            .arg(key, newPlugins.join(QLatin1Char(',')), replacedPlugins.join(QLatin1Char(','))));
}

QStringList PluginContainer::GetGIDNameList()
{
    return configuredList(QStringLiteral("gid"), QStringLiteral("names"));
}

QString PluginContainer::lastError() const
{
    std::unique_lock<std::mutex> lock(m_mutex);
    return m_lastError;
}

QStringList PluginContainer::loadedPluginNames() const
{
    std::unique_lock<std::mutex> lock(m_mutex);
    QStringList names;
    for (const Loaded& l : m_loaded)
        names << l.name;
    return names;
}

QMap<QString, QObject*> PluginContainer::loadedPlugins() const
{
    std::unique_lock<std::mutex> lock(m_mutex);
    QMap<QString, QObject*> out;
    for (const Loaded& l : m_loaded)
        out.insert(l.name, l.root.data());
    return out;
}

QObject* PluginContainer::loadedPlugin(const QString& name) const
{
    std::unique_lock<std::mutex> lock(m_mutex);
    const int index = loadedIndex(name);
    return index >= 0 ? m_loaded.at(index).root.data() : nullptr;
}

bool PluginContainer::isRegistered(const QString& name) const
{
    std::unique_lock<std::mutex> lock(m_mutex);
    const int index = loadedIndex(name);
    if (index >= 0)
        return m_loaded.at(index).registered;
    for (const Entry& e : m_entries) {
        if (e.owner == name && e.object)
            return true;
    }
    return false;
}

QList<QObject*> PluginContainer::notifyReceivers() const
{
    std::unique_lock<std::mutex> lock(m_mutex);
    QList<QObject*> out;
    auto add = [&out](QObject* object) {
        if (object && !out.contains(object) && object->qt_metacast(INotify_iid))
            out << object;
    };
    for (const Entry& e : m_entries)
        add(e.object.data());
    for (const Loaded& l : m_loaded) {
        if (l.registered)
            add(l.root.data());
    }
    return out;
}

QString PluginContainer::clsidOf(QObject* object) const
{
    std::unique_lock<std::mutex> lock(m_mutex);
    for (const Entry& e : m_entries) {
        if (object && e.object == object)
            return e.clsid;
    }
    return {};
}

int PluginContainer::loadedIndex(const QString& name) const
{
    for (int i = 0; i < m_loaded.size(); ++i) {
        if (m_loaded.at(i).name == name)
            return i;
    }
    return -1;
}

QObject* PluginContainer::fail(const QString& error)
{
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        m_lastError = error;
    }
    HostFramework::detail::warn(error);
    return nullptr;
}
