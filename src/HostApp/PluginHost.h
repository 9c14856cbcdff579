// Loads the device-manager plugin through the host's container and drives its life cycle.
#pragma once

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QString>

class IUIPlugin;
class INotify;
class IDeviceMgr;
class IDestroyEvent;
class PluginContainer;

class PluginHost : public QObject
{
    Q_OBJECT
public:
    explicit PluginHost(PluginContainer* container, QObject* parent = nullptr);
    ~PluginHost() override;

    // Loads plugins/<name>/, casts it to the host interfaces and calls Init(). False with
    // errorString() when the library or one of its interfaces is missing. Init() answering false
    // is reported but not fatal: the plugin may still serve what did start.
    bool load(const QString& name = QStringLiteral("DeviceMgrUIPlugin"));
    QString errorString() const { return m_error; }
    bool initResult() const { return m_initResult; }

    // Tells the plugins that the main frame is on screen (NTF_FRAME_SHOWN), then starts device
    // detection.
    void frameShown();
    // The user picked another language: load it, let the plugin know, notify every plugin.
    void changeLanguage(const QString& lang);
    // Shut-down: unregister the SDK callbacks, destroy the plugin's service, unload.
    void shutdown();

    IUIPlugin* uiPlugin() const { return m_pUIPlugin; }
    // The plugin's IDeviceMgr (QueryInterface 0x1001), or null.
    IDeviceMgr* deviceMgr() const { return m_pDeviceMgr; }
    QString pluginName() const { return m_name; }

signals:
    void languageChanged(const QString& lang);

private:
    PluginContainer* m_pContainer;
    QPointer<QObject> m_pRoot;
    IUIPlugin* m_pUIPlugin = nullptr;
    IDeviceMgr* m_pDeviceMgr = nullptr;
    QString m_name;
    QString m_error;
    bool m_initResult = false;
    bool m_shutDown = false;
};
