// Interfaces of the host's own service plugins, reached through the plugin container.
//
// The operation names below are the host's; where only a role was fixed by the host team
// (main menu refreshes, the main frame's window, the dial-up state), the names are chosen
// here once and used everywhere.
#pragma once

#include <QtCore/QObject>
#include <QtCore/QString>

class QWidget;
class QMenuBar;

// Notification service: plugins subscribe to each other's notifications, send to one plugin,
// or broadcast to all. Delivery goes through each receiver's INotify::Notify.
class INotifyService
{
public:
    virtual ~INotifyService() {}
    // Ask for notification `code` whenever the plugin `senderClsid` raises it (see RaiseNotify).
    virtual int Subscribe(const QString& senderClsid, unsigned int code) = 0;
    virtual int Unsubscribe(const QString& senderClsid, unsigned int code) = 0;
    // Deliver to the one plugin registered under `targetClsid`; 0 when delivered.
    virtual int SendNotify(const QString& targetClsid, unsigned int code, unsigned int wparam,
                           unsigned int lparam) = 0;
    // Raise a notification of `senderClsid`: delivered to every subscriber of (sender, code).
    virtual int RaiseNotify(const QString& senderClsid, unsigned int code, unsigned int wparam,
                            unsigned int lparam) = 0;
    // Deliver to every plugin that takes notifications; returns how many received it.
    virtual int Broadcast(unsigned int code, unsigned int wparam, unsigned int lparam) = 0;
};

// Dial-up (connection) service.
class IDialupUIService
{
public:
    virtual ~IDialupUIService() {}
    virtual bool IsConnected() = 0;
    // Drops every active connection; 0 on success.
    virtual int GlobalDisconnect(int reason) = 0;
};

// Main frame: the host's main window, parent of the plugins' dialogs.
class IMainFrameUIService
{
public:
    virtual ~IMainFrameUIService() {}
    virtual QWidget* GetMainWindow() = 0;
};

// Main menu bar. The three refresh operations re-read device state and enable their items.
class IMainMenuUI
{
public:
    virtual ~IMainMenuUI() {}
    virtual QMenuBar* GetMenuBar() = 0;
    // Second: the SIM / PIN items (verify, enable, disable, change, unblock).
    virtual void RefreshSimMenu() = 0;
    // Third: the radio items (radio on, radio off, offline, detach).
    virtual void RefreshRadioMenu() = 0;
    // Fourth: the device items; `reset` 1 also forgets the cached device state.
    virtual void RefreshDeviceMenu(int reset) = 0;
};

// Mini frame: the compact window shown instead of the main frame in mini mode.
class IMiniFrameUIService
{
public:
    virtual ~IMiniFrameUIService() {}
    virtual QWidget* GetMiniWindow() = 0;
    virtual bool IsMiniFrameShown() = 0;
};

#define INotifyService_iid "com.qorvex.tessaro.plugin.INotifyService"
#define IDialupUIService_iid "com.qorvex.tessaro.plugin.IDialupUIService"
#define IMainFrameUIService_iid "com.qorvex.tessaro.plugin.IMainFrameUIService"
#define IMainMenuUI_iid "com.qorvex.tessaro.plugin.IMainMenuUI"
#define IMiniFrameUIService_iid "com.qorvex.tessaro.plugin.IMiniFrameUIService"

Q_DECLARE_INTERFACE(INotifyService, INotifyService_iid)
Q_DECLARE_INTERFACE(IDialupUIService, IDialupUIService_iid)
Q_DECLARE_INTERFACE(IMainFrameUIService, IMainFrameUIService_iid)
Q_DECLARE_INTERFACE(IMainMenuUI, IMainMenuUI_iid)
Q_DECLARE_INTERFACE(IMiniFrameUIService, IMiniFrameUIService_iid)
