// The host's plugin container: service registry, plugin libraries loaded by QLibrary, plugin sets.
#pragma once

#include "HostExport.h"
#include "HostServiceObjects.h"
#include "Startup.h"

#include <QtCore/QList>
#include <QtCore/QMap>
#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <mutex>

class QLibrary;

// Lookup: GetPlugin(clsid, id) matches both exactly (the class identifier is case-sensitive).
//
// Loading: LoadPlugin(name) opens <GetPluginLibraryPath()>/plugins/<name>/lib<name>.so, checks its
// verification text, creates the root object through qt_plugin_instance() and keeps it under
// `name`. The object must answer "com.qorvex.tessaro.plugin.IBasePlugin". A plugin announcing a
// class identifier (GetCLSID() not empty) is also registered for lookup under
// (GetCLSID(), GetPluginType()). LoadPlugin does not call Init(): the host drives the life cycle
// and learns of every load, reloads included, through pluginLoaded().
// UnloadPlugin(name) calls OnDestroy(), deletes the root object and unloads the library.
//
// Configuration, in the host settings (CommonUtils::GetSettings):
//   [pluginsets]
//   default=DeviceMgrUIPlugin,DialupPlugin        the set the host starts with
//   <key>=NameA,NameB,...                          the set for a device name, "IMSI<imsi>" or "GID<name>"
//   [gid]
//   names=GroupA,GroupB                            GetGIDNameList(), in this order
// The current set starts as "default". IsPluginSetChanged(key) compares the set configured for
// `key` with the current one, ignoring order; a key with no configured set changes nothing.
// GetReloadPluginLists(key, ...) makes the set of `key` current (the current set stays when `key`
// has none) and answers its plugins, and those of them that are loaded now and allow their release
// (IBasePlugin::IsAllowRelease()), in set order.
class HOSTFW_EXPORT PluginContainer : public QObject, public IPluginContainer
{
    Q_OBJECT
public:
    explicit PluginContainer(QObject* parent = nullptr);
    ~PluginContainer() override;

    // IPluginContainer
    QObject* GetPlugin(const QString& clsid, int id) override;
    bool RegisterPlugin(const QString& clsid, int id, QObject* plugin) override;
    bool UnRegisterPlugin(const QString& name) override;
    QObject* LoadPlugin(const QString& name) override;
    bool UnloadPlugin(const QString& name) override;
    bool IsPluginSetChanged(const QString& key) override;
    void GetReloadPluginLists(const QString& key, QStringList& newPlugins,
                              QStringList& replacedPlugins) override;
    QStringList GetGIDNameList() override;

    // Why the last LoadPlugin / UnloadPlugin / RegisterPlugin failed.
    QString lastError() const;

    // Loaded plugins by name, in load order (names) and as a map (objects).
    QStringList loadedPluginNames() const;
    QMap<QString, QObject*> loadedPlugins() const;
    QObject* loadedPlugin(const QString& name) const;
    bool isRegistered(const QString& name) const;

    // The plugin set configured for `key` (empty when none) and the key of the current one.
    QStringList pluginSet(const QString& key) const;
    QString currentPluginSetKey() const;
    QStringList currentPluginSet() const;

    // Every object that takes notifications (registered services and registered plugins that
    // answer INotify), without duplicates, services first, then plugins in load order.
    QList<QObject*> notifyReceivers() const;
    // The class identifier an object is registered under (empty when none).
    QString clsidOf(QObject* object) const;

    // Register one of the host's own services; `owner` names it for UnRegisterPlugin.
    bool registerService(const QString& clsid, int id, QObject* service, const QString& owner = QString());
    // Unload every plugin, most recently loaded first.
    void unloadAll();

signals:
    void pluginLoaded(const QString& name, QObject* root);
    void pluginUnloaded(const QString& name);

private:
    struct Entry
    {
        QString clsid;
        int id = 0;
        QPointer<QObject> object;
        QString owner;
    };
    struct Loaded
    {
        QString name;
        QPointer<QObject> root;
        QLibrary* library = nullptr;
        bool registered = true;
    };

    bool addEntry(const QString& clsid, int id, QObject* object, const QString& owner);
    int loadedIndex(const QString& name) const;
    QObject* fail(const QString& error);
    void ensureCurrentSet() const;

    mutable std::mutex m_mutex; // the tables are read from worker threads by the notification service
    QList<Entry> m_entries;
    QList<Loaded> m_loaded;
    QString m_lastError;
    mutable bool m_setKnown = false;
    mutable QString m_currentSetKey;
    mutable QStringList m_currentSet;
};
