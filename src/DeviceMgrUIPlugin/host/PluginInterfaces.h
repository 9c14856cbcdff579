// The host's plugin interfaces: every plugin object implements these; slot order is binary contract.
#pragma once

#include <QtCore/QObject>
#include <QtCore/QRect>
#include <QtCore/QString>

class QWidget;

// Interface numbers understood by IBasePlugin::QueryInterface.
enum { PLUGIN_IID_NONE = 0x1000, PLUGIN_IID_DEVICEMGR = 0x1001 };

class IBaseInterface
{
public:
    virtual ~IBaseInterface() {}
    virtual void Release() = 0;
    virtual unsigned int GetLastError() = 0;
};

class IDestroyEvent
{
public:
    virtual ~IDestroyEvent() {}
    virtual void OnDestroy() = 0;
    virtual void UnSDKRegisterEvent() = 0;
};

class INotify
{
public:
    virtual ~INotify() {}
    virtual int Notify(unsigned int code, unsigned int wparam, unsigned int lparam) = 0;
};

class IBasePlugin : public IBaseInterface, public IDestroyEvent
{
public:
    virtual bool Init() = 0;
    virtual unsigned int GetPluginType() = 0;
    virtual QString GetCLSID() = 0;
    virtual unsigned int GetVersion() = 0;
    virtual QString GetPluginName() = 0;
    virtual bool IsAllowRelease() = 0;
    virtual bool QueryInterface(int iid, QObject** object) = 0;
};

class IUIPlugin : public IBasePlugin
{
public:
    virtual bool ShowWindow(QWidget* parent, QRect& rect) = 0;
    virtual int DoModal() = 0;
    virtual void Hide() = 0;
    virtual void FitSize(QRect& rect) = 0;
    virtual bool IsReady() = 0;
    virtual bool ChangeLang(const QString& lang) = 0;
};

#define IBasePlugin_iid "com.qorvex.tessaro.plugin.IBasePlugin"
#define IUIPlugin_iid "com.qorvex.tessaro.plugin.IUIPlugin"
#define INotify_iid "com.qorvex.tessaro.plugin.INotify"

Q_DECLARE_INTERFACE(IBasePlugin, IBasePlugin_iid)
Q_DECLARE_INTERFACE(IUIPlugin, IUIPlugin_iid)
Q_DECLARE_INTERFACE(INotify, INotify_iid)
