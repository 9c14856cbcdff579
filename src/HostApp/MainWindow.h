// Tessaro's main window: the device menu, the language switch and the notification log.
#pragma once

#include <QtWidgets/QMainWindow>

class QAction;
class QLabel;
class QListWidget;
class QMenu;
class PluginHost;

namespace HostFramework {
struct MessageRecord;
struct NotificationRecord;
} // namespace HostFramework

class MainWindow : public QMainWindow
{
    Q_OBJECT
public:
    explicit MainWindow(QWidget* parent = nullptr);
    ~MainWindow() override;

    // Wire the menu to the loaded plugin's IDeviceMgr (null disables the device menu).
    void attachPlugin(PluginHost* host);
    // Put a panel (the simulator) on the right-hand side.
    void addSidePanel(QWidget* panel, const QString& title);
    QListWidget* notificationLog() const { return m_pLog; }

public slots:
    void refreshState();

private slots:
    void onNotification(const HostFramework::NotificationRecord& record);
    void onMessage(const HostFramework::MessageRecord& record);

private:
    void buildMenus();
    void appendLog(const QString& line);
    QAction* addDeviceAction(QMenu* menu, const QString& text, const QString& name,
                             void (MainWindow::*slot)());

    void onVerifyPin();
    void onEnablePin();
    void onDisablePin();
    void onChangePin();
    void onUnblockPin();
    void onRadioOn();
    void onRadioOff();
    void onOffline();
    void onDetach();
    void onChooseDevice();
    void onDetectDevice();
    void onActivate();

    PluginHost* m_pHost = nullptr;
    QMenu* m_pDeviceMenu = nullptr;
    QLabel* m_pPluginLabel = nullptr;
    QLabel* m_pDeviceLabel = nullptr;
    QLabel* m_pSimLabel = nullptr;
    QLabel* m_pLastDeviceLabel = nullptr;
    QListWidget* m_pLog = nullptr;
};
