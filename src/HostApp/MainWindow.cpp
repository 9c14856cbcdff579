// Tessaro's main window.
#include "MainWindow.h"

#include "Change.h"
#include "HostFramework.h"
#include "HostIds.h"
#include "IDeviceMgr.h"
#include "PluginHost.h"
#include "PluginInterfaces.h"

#include <QtCore/QTime>
#include <QtWidgets/QAction>
#include <QtWidgets/QActionGroup>
#include <QtWidgets/QApplication>
#include <QtWidgets/QDockWidget>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QVBoxLayout>

namespace {

// Names of the notifications the device manager sends and the host delivers, for the log.
QString notificationName(unsigned int code)
{
    switch (code) {
    case NTF_FRAME_SHOWN:
        return QStringLiteral("frame shown");
    case NTF_LANGUAGE_CHANGED:
        return QStringLiteral("language changed");
    case NTF_DEVICE_INIT_FINISH:
        return QStringLiteral("device ready for dial-up");
    case NTF_RADIO_OFF:
        return QStringLiteral("radio off");
    case NTF_RADIO_ON:
        return QStringLiteral("radio on");
    case NTF_SIM_READY:
        return QStringLiteral("SIM ready");
    case NTF_SIM_NOT_READY:
        return QStringLiteral("SIM not ready");
    case NTF_RADIO_FOUND_OFF:
        return QStringLiteral("radio found off");
    case NTF_DEVICE_INIT_SUCCESS:
        return QStringLiteral("device initialised");
    case NTF_DEVICE_INIT_EVENT:
        return QStringLiteral("device init event (mini frame)");
    case NTF_DEVICE_ABOUT_TO_CHANGE:
        return QStringLiteral("device about to change");
    case NTF_DEVICE_CHANGED:
        return QStringLiteral("device changed");
    case NTF_PLUGINS_RELOADED:
        return QStringLiteral("plugins reloaded");
    case NTF_POWER_EVENT:
        return QStringLiteral("power event");
    default:
        return QString();
    }
}

} // namespace

MainWindow::MainWindow(QWidget* parent)
    : QMainWindow(parent)
{
    setObjectName(QStringLiteral("TessaroMainWindow"));
    setWindowTitle(QStringLiteral("Tessaro"));
    resize(900, 560);

    auto* central = new QWidget(this);
    auto* layout = new QVBoxLayout(central);
    auto* stateBox = new QGroupBox(QStringLiteral("Data card"), central);
    auto* form = new QFormLayout(stateBox);
    m_pPluginLabel = new QLabel(QStringLiteral("not loaded"), stateBox);
    m_pPluginLabel->setObjectName(QStringLiteral("TessaroPluginState"));
    m_pDeviceLabel = new QLabel(QStringLiteral("-"), stateBox);
    m_pDeviceLabel->setObjectName(QStringLiteral("TessaroDeviceState"));
    m_pSimLabel = new QLabel(QStringLiteral("-"), stateBox);
    m_pSimLabel->setObjectName(QStringLiteral("TessaroSimState"));
    m_pLastDeviceLabel = new QLabel(QStringLiteral("-"), stateBox);
    m_pLastDeviceLabel->setObjectName(QStringLiteral("TessaroLastDevice"));
    form->addRow(QStringLiteral("Device manager:"), m_pPluginLabel);
    form->addRow(QStringLiteral("Device available:"), m_pDeviceLabel);
    form->addRow(QStringLiteral("SIM usable:"), m_pSimLabel);
    form->addRow(QStringLiteral("Last used device:"), m_pLastDeviceLabel);
    layout->addWidget(stateBox);

    auto* logBox = new QGroupBox(QStringLiteral("Notifications and messages"), central);
    auto* logLayout = new QVBoxLayout(logBox);
    m_pLog = new QListWidget(logBox);
    m_pLog->setObjectName(QStringLiteral("TessaroNotificationLog"));
    logLayout->addWidget(m_pLog);
    layout->addWidget(logBox, 1);
    setCentralWidget(central);

    buildMenus();

    auto* monitor = HostFramework::Monitor::instance();
    connect(monitor, &HostFramework::Monitor::notificationRecorded, this, &MainWindow::onNotification);
    connect(monitor, &HostFramework::Monitor::messageRecorded, this, &MainWindow::onMessage);
}

MainWindow::~MainWindow() = default;

QAction* MainWindow::addDeviceAction(QMenu* menu, const QString& text, const QString& name,
                                     void (MainWindow::*slot)())
{
    QAction* action = menu->addAction(text);
    action->setObjectName(name);
    connect(action, &QAction::triggered, this, slot);
    return action;
}

void MainWindow::buildMenus()
{
    QMenu* fileMenu = menuBar()->addMenu(QStringLiteral("&File"));
    QAction* quit = fileMenu->addAction(QStringLiteral("&Quit"));
    quit->setObjectName(QStringLiteral("TessaroQuit"));
    quit->setShortcut(QKeySequence::Quit);
    connect(quit, &QAction::triggered, this, &QWidget::close);

    m_pDeviceMenu = menuBar()->addMenu(QStringLiteral("&Device"));
    m_pDeviceMenu->setObjectName(QStringLiteral("TessaroDeviceMenu"));
    addDeviceAction(m_pDeviceMenu, QStringLiteral("&Verify PIN..."), QStringLiteral("TessaroVerifyPin"),
                    &MainWindow::onVerifyPin);
    addDeviceAction(m_pDeviceMenu, QStringLiteral("&Enable PIN..."), QStringLiteral("TessaroEnablePin"),
                    &MainWindow::onEnablePin);
    addDeviceAction(m_pDeviceMenu, QStringLiteral("&Disable PIN..."), QStringLiteral("TessaroDisablePin"),
                    &MainWindow::onDisablePin);
    addDeviceAction(m_pDeviceMenu, QStringLiteral("&Change PIN..."), QStringLiteral("TessaroChangePin"),
                    &MainWindow::onChangePin);
    addDeviceAction(m_pDeviceMenu, QStringLiteral("&Unblock PIN..."), QStringLiteral("TessaroUnblockPin"),
                    &MainWindow::onUnblockPin);
    m_pDeviceMenu->addSeparator();
    addDeviceAction(m_pDeviceMenu, QStringLiteral("Radio &on"), QStringLiteral("TessaroRadioOn"),
                    &MainWindow::onRadioOn);
    addDeviceAction(m_pDeviceMenu, QStringLiteral("Radio o&ff"), QStringLiteral("TessaroRadioOff"),
                    &MainWindow::onRadioOff);
    addDeviceAction(m_pDeviceMenu, QStringLiteral("&Offline"), QStringLiteral("TessaroOffline"),
                    &MainWindow::onOffline);
    addDeviceAction(m_pDeviceMenu, QStringLiteral("Detach &packet service"), QStringLiteral("TessaroDetach"),
                    &MainWindow::onDetach);
    m_pDeviceMenu->addSeparator();
    addDeviceAction(m_pDeviceMenu, QStringLiteral("C&hoose device..."), QStringLiteral("TessaroChooseDevice"),
                    &MainWindow::onChooseDevice);
    addDeviceAction(m_pDeviceMenu, QStringLiteral("De&tect devices"), QStringLiteral("TessaroDetectDevice"),
                    &MainWindow::onDetectDevice);
    addDeviceAction(m_pDeviceMenu, QStringLiteral("&Activate service..."), QStringLiteral("TessaroActivate"),
                    &MainWindow::onActivate);
    m_pDeviceMenu->setEnabled(false);

    QMenu* langMenu = menuBar()->addMenu(QStringLiteral("&Language"));
    langMenu->setObjectName(QStringLiteral("TessaroLanguageMenu"));
    auto* group = new QActionGroup(this);
    const QList<QPair<QString, QString>> languages = {{QStringLiteral("English"), QStringLiteral("en")},
                                                      {QStringLiteral("Deutsch"), QStringLiteral("de")}};
    for (const auto& lang : languages) {
        QAction* action = langMenu->addAction(lang.first);
        action->setObjectName(QStringLiteral("TessaroLanguage_") + lang.second);
        action->setCheckable(true);
        action->setChecked(lang.second == Change::CurrentLanguage());
        group->addAction(action);
        const QString code = lang.second;
        connect(action, &QAction::triggered, this, [this, code] {
            if (m_pHost)
                m_pHost->changeLanguage(code);
        });
    }

    QMenu* helpMenu = menuBar()->addMenu(QStringLiteral("&Help"));
    QAction* about = helpMenu->addAction(QStringLiteral("&About Tessaro"));
    connect(about, &QAction::triggered, this, [this] {
        QMessageBox::about(this, QStringLiteral("About Tessaro"),
                           QStringLiteral("Tessaro mobile broadband connection manager.\n"
                                          "Data card support by the device manager plugin."));
    });
}

void MainWindow::attachPlugin(PluginHost* host)
{
    m_pHost = host;
    if (host) {
        connect(host, &PluginHost::languageChanged, this, [this](const QString& lang) {
            if (auto* action = findChild<QAction*>(QStringLiteral("TessaroLanguage_") + lang))
                action->setChecked(true);
        });
    }
    const bool ok = host && host->deviceMgr();
    m_pDeviceMenu->setEnabled(ok);
    m_pPluginLabel->setText(
        !host ? QStringLiteral("not loaded")
        : ok  ? QStringLiteral("%1 loaded%2")
                   .arg(host->pluginName(),
                        host->initResult() ? QString() : QStringLiteral(" (start-up incomplete)"))
             : QStringLiteral("%1 loaded without device interface").arg(host->pluginName()));
    refreshState();
}

void MainWindow::addSidePanel(QWidget* panel, const QString& title)
{
    auto* dock = new QDockWidget(title, this);
    dock->setObjectName(QStringLiteral("TessaroSidePanel"));
    dock->setWidget(panel);
    dock->setFeatures(QDockWidget::DockWidgetMovable | QDockWidget::DockWidgetFloatable);
    addDockWidget(Qt::RightDockWidgetArea, dock);
}

void MainWindow::refreshState()
{
    IDeviceMgr* mgr = m_pHost ? m_pHost->deviceMgr() : nullptr;
    if (!mgr)
        return;
    m_pDeviceLabel->setText(mgr->IsDeviceAvialable() ? QStringLiteral("yes") : QStringLiteral("no"));
    m_pSimLabel->setText(mgr->IsValidSim() ? QStringLiteral("yes") : QStringLiteral("no"));
    const QString last = mgr->GetLastUsedDeviceName();
    m_pLastDeviceLabel->setText(last.isEmpty() ? QStringLiteral("-") : last);
}

void MainWindow::appendLog(const QString& line)
{
    m_pLog->addItem(QTime::currentTime().toString(QStringLiteral("hh:mm:ss.zzz ")) + line);
    m_pLog->scrollToBottom();
}

void MainWindow::onNotification(const HostFramework::NotificationRecord& record)
{
    const QString name = notificationName(record.code);
    appendLog(QStringLiteral("%1 %2%3 (%4, %5)%6 -> %7 receiver(s)")
                  .arg(record.kind)
                  .arg(record.code)
                  .arg(name.isEmpty() ? QString() : QStringLiteral(" ") + name)
                  .arg(record.wparam)
                  .arg(record.lparam)
                  .arg(record.clsid.isEmpty() ? QString() : QStringLiteral(" ") + record.clsid)
                  .arg(record.delivered));
    refreshState();
}

void MainWindow::onMessage(const HostFramework::MessageRecord& record)
{
    appendLog(QStringLiteral("message \"%1\": %2 -> %3").arg(record.title, record.text).arg(record.answer));
}

void MainWindow::onVerifyPin()
{
    m_pHost->deviceMgr()->VerifyPIN();
}

void MainWindow::onEnablePin()
{
    m_pHost->deviceMgr()->EnablePIN();
}

void MainWindow::onDisablePin()
{
    m_pHost->deviceMgr()->DisablePIN();
}

void MainWindow::onChangePin()
{
    m_pHost->deviceMgr()->ModifyPIN();
}

void MainWindow::onUnblockPin()
{
    m_pHost->deviceMgr()->UnlockPIN();
}

void MainWindow::onRadioOn()
{
    m_pHost->deviceMgr()->EnableRF();
}

void MainWindow::onRadioOff()
{
    m_pHost->deviceMgr()->DisableRF();
}

void MainWindow::onOffline()
{
    m_pHost->deviceMgr()->SetOffline();
}

void MainWindow::onDetach()
{
    m_pHost->deviceMgr()->DetatchGPRS();
}

void MainWindow::onChooseDevice()
{
    m_pHost->deviceMgr()->ShowChooseDevice();
}

void MainWindow::onDetectDevice()
{
    m_pHost->deviceMgr()->StartDetectDevice();
}

void MainWindow::onActivate()
{
    m_pHost->deviceMgr()->ActivateDevice();
}
