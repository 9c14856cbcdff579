// The host's own service plugins, registered in the container under their class identifiers.
#pragma once

#include "HostExport.h"
#include "HostServices.h"
#include "PluginInterfaces.h"

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QString>
#include <mutex>

class QMenuBar;
class QWidget;
class PluginContainer;

// Delivers notifications to the INotify of registered and loaded plugins and records every
// request (HostFramework::notificationRecords, Monitor::notificationRecorded).
//
// Subscribe(sender, code) has no subscriber argument: the subscriber is the plugin that the host
// is serving on this thread at the time (while it delivers a notification to that plugin, for
// example the frame-shown broadcast). A subscription made outside any such call is kept for
// every plugin. RaiseNotify(sender, code) reaches each subscriber of (sender, code) once, never
// the sender itself.
class HOSTFW_EXPORT NotifyService : public QObject, public INotifyService
{
    Q_OBJECT
    Q_INTERFACES(INotifyService)
public:
    explicit NotifyService(PluginContainer* container, QObject* parent = nullptr);
    ~NotifyService() override;

    int Subscribe(const QString& senderClsid, unsigned int code) override;
    int Unsubscribe(const QString& senderClsid, unsigned int code) override;
    // 0 when the target took it, -1 when no registered object of `targetClsid` takes notifications.
    int SendNotify(const QString& targetClsid, unsigned int code, unsigned int wparam,
                   unsigned int lparam) override;
    // Number of subscribers reached.
    int RaiseNotify(const QString& senderClsid, unsigned int code, unsigned int wparam,
                    unsigned int lparam) override;
    int Broadcast(unsigned int code, unsigned int wparam, unsigned int lparam) override;

    // Subscribe `receiver` explicitly (the host's own components, tests).
    int subscribeReceiver(QObject* receiver, const QString& senderClsid, unsigned int code);
    // Subscribers of (sender, code) now; a null entry stands for "every plugin".
    QList<QObject*> subscribers(const QString& senderClsid, unsigned int code) const;

    // The plugin whose notification is being delivered on this thread, or null.
    static QObject* servingPlugin();

private:
    struct Subscription
    {
        QString sender;
        unsigned int code = 0;
        QPointer<QObject> receiver; // null: every plugin
        bool anyPlugin = false;
    };

    bool deliver(QObject* receiver, unsigned int code, unsigned int wparam, unsigned int lparam);
    void record(const QString& kind, const QString& clsid, unsigned int code, unsigned int wparam,
                unsigned int lparam, int delivered);

    QPointer<PluginContainer> m_pContainer;
    mutable std::mutex m_mutex;
    QList<Subscription> m_subscriptions;
};

// Every host service takes notifications too (the device manager sends 512 to the dial-up
// service); each keeps the last one and signals it.
class HOSTFW_EXPORT HostServiceBase : public QObject, public INotify
{
    Q_OBJECT
    Q_INTERFACES(INotify)
public:
    using QObject::QObject;
    int Notify(unsigned int code, unsigned int wparam, unsigned int lparam) override;
    int notifyCount() const;
    unsigned int lastNotifyCode() const;

signals:
    void notified(unsigned int code, unsigned int wparam, unsigned int lparam);

private:
    mutable std::mutex m_mutex;
    int m_notifyCount = 0;
    unsigned int m_lastCode = 0;
};

class HOSTFW_EXPORT MainFrameService : public HostServiceBase, public IMainFrameUIService
{
    Q_OBJECT
    Q_INTERFACES(IMainFrameUIService)
public:
    explicit MainFrameService(QWidget* mainWindow, QObject* parent = nullptr);
    QWidget* GetMainWindow() override;
    void setMainWindow(QWidget* window);

private:
    QPointer<QWidget> m_pMainWindow;
};

// Counts the refresh requests and signals each, so that the host can rebuild its menu.
class HOSTFW_EXPORT MainMenuService : public HostServiceBase, public IMainMenuUI
{
    Q_OBJECT
    Q_INTERFACES(IMainMenuUI)
public:
    explicit MainMenuService(QMenuBar* menuBar, QObject* parent = nullptr);
    QMenuBar* GetMenuBar() override;
    void RefreshSimMenu() override;
    void RefreshRadioMenu() override;
    void RefreshDeviceMenu(int reset) override;

    void setMenuBar(QMenuBar* menuBar);
    int simRefreshCount() const;
    int radioRefreshCount() const;
    int deviceRefreshCount() const;
    int lastDeviceReset() const;
    void resetCounts();

signals:
    void simMenuRefreshRequested();
    void radioMenuRefreshRequested();
    void deviceMenuRefreshRequested(int reset);

private:
    QPointer<QMenuBar> m_pMenuBar;
    mutable std::mutex m_mutex;
    int m_simCount = 0;
    int m_radioCount = 0;
    int m_deviceCount = 0;
    int m_lastReset = -1;
};

// A stand-in connection: its state and GlobalDisconnect's answer are set by the host or a test.
class HOSTFW_EXPORT DialupService : public HostServiceBase, public IDialupUIService
{
    Q_OBJECT
    Q_INTERFACES(IDialupUIService)
public:
    explicit DialupService(QObject* parent = nullptr);
    bool IsConnected() override;
    // Records the call; on a 0 result the connection is dropped.
    int GlobalDisconnect(int reason) override;

    void setConnected(bool connected);
    void setDisconnectResult(int result);
    int disconnectCount() const;
    QList<int> disconnectReasons() const;
    void resetCounts();

signals:
    void connectionChanged(bool connected);
    void globalDisconnectCalled(int reason, int result);

private:
    mutable std::mutex m_mutex;
    bool m_bConnected = false;
    int m_iDisconnectResult = 0;
    QList<int> m_reasons;
};

class HOSTFW_EXPORT MiniFrameService : public HostServiceBase, public IMiniFrameUIService
{
    Q_OBJECT
    Q_INTERFACES(IMiniFrameUIService)
public:
    explicit MiniFrameService(QObject* parent = nullptr);
    QWidget* GetMiniWindow() override;
    // True when a mini window is set and visible.
    bool IsMiniFrameShown() override;
    void setMiniWindow(QWidget* window);

private:
    QPointer<QWidget> m_pMiniWindow;
};
