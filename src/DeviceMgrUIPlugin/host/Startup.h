// Startup and the plugin container: how a plugin finds the host's other plugins.
#pragma once

#include "HostExport.h"

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QStringList>

// The host's plugin container. Plugins are libraries in <plugin root>/plugins/<Name>/; each is
// loaded with QLibrary through its qt_plugin_instance() export. Services are registered under a
// class identifier and a numeric kind.
class IPluginContainer
{
public:
    virtual ~IPluginContainer() {}
    // The plugin registered under (clsid, id), or null. Every lookup is logged as "GetPlugin".
    virtual QObject* GetPlugin(const QString& clsid, int id) = 0;
    // Register an object under (clsid, id); false when that pair is taken.
    virtual bool RegisterPlugin(const QString& clsid, int id, QObject* plugin) = 0;
    // Drop a loaded plugin (by name) from the lookup tables; its library stays loaded.
    virtual bool UnRegisterPlugin(const QString& name) = 0;
    // Load plugins/<name>/lib<name>.so and return its root object (null on failure).
    virtual QObject* LoadPlugin(const QString& name) = 0;
    // Call OnDestroy() on a loaded plugin and unload its library.
    virtual bool UnloadPlugin(const QString& name) = 0;
    // True when the plugin set configured for `key` (a device name, "IMSI<imsi>" or "GID<name>")
    // differs from the set loaded now.
    virtual bool IsPluginSetChanged(const QString& key) = 0;
    // The two lists a reload for `key` needs: the plugins of the new set, and the loaded plugins
    // that the reload replaces (to be unregistered, unloaded and loaded again, in that order).
    virtual void GetReloadPluginLists(const QString& key, QStringList& newPlugins,
                                      QStringList& replacedPlugins) = 0;
    // The GID group names the host has plugin sets for, in configuration order.
    virtual QStringList GetGIDNameList() = 0;
};

class HOSTFW_EXPORT Startup
{
public:
    // The host's container, or null before the host has created one.
    static IPluginContainer* GetPluginContainer();
};
