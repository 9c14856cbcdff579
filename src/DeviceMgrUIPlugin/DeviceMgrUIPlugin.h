// The plugin object that the host creates: answers the host's plugin interfaces and forwards
// every real operation to the device manager service.
#pragma once

#include "IDeviceMgr.h"
#include "PluginInterfaces.h"

#include <QtCore/QObject>

class CDeviceMgrService;

class CDeviceMgrUI : public QObject, public IUIPlugin, public INotify
{
    Q_OBJECT
    // The order matters: qt_metacast answers the identifiers in this order after the class names.
    Q_INTERFACES(IBasePlugin IUIPlugin INotify)

public:
    CDeviceMgrUI();
    ~CDeviceMgrUI() override;

    // IBaseInterface
    void Release() override;
    unsigned int GetLastError() override;
    // IDestroyEvent
    void OnDestroy() override;
    void UnSDKRegisterEvent() override;
    // IBasePlugin
    bool Init() override;
    unsigned int GetPluginType() override;
    QString GetCLSID() override;
    unsigned int GetVersion() override;
    QString GetPluginName() override;
    bool IsAllowRelease() override;
    bool QueryInterface(int iid, QObject** object) override;
    // IUIPlugin
    bool ShowWindow(QWidget* parent, QRect& rect) override;
    int DoModal() override;
    void Hide() override;
    void FitSize(QRect& rect) override;
    bool IsReady() override;
    bool ChangeLang(const QString& lang) override;
    // INotify
    int Notify(unsigned int code, unsigned int wparam, unsigned int lparam) override;

    CDeviceMgrService* service() const { return m_pDeviceMgrService; }

private:
    // Not owned: the service lives until CDeviceMgrService::Destroy().
    CDeviceMgrService* m_pDeviceMgrService;
};

// The plugin export pair, resolved by the host's container with QLibrary.
extern "C" {
Q_DECL_EXPORT QObject* qt_plugin_instance();
Q_DECL_EXPORT const char* qt_plugin_query_verification_data();
}
