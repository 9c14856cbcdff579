// The host's own services: notification delivery with its record, main frame, menu, dial-up, mini frame.
#include "HostServiceObjects.h"

#include "HostState.h"
#include "PluginContainer.h"

#include <QtWidgets/QMenuBar>
#include <QtWidgets/QWidget>

namespace {

// The plugin the host is delivering to on this thread; a Subscribe made from inside that delivery
// belongs to it.
thread_local QObject* t_servingPlugin = nullptr;

class ServingScope
{
public:
    explicit ServingScope(QObject* plugin)
        : m_previous(t_servingPlugin)
    {
        t_servingPlugin = plugin;
    }
    ~ServingScope() { t_servingPlugin = m_previous; }
    ServingScope(const ServingScope&) = delete;
    ServingScope& operator=(const ServingScope&) = delete;

private:
    QObject* m_previous;
};

} // namespace

// --- NotifyService ------------------------------------------------------------------------------

NotifyService::NotifyService(PluginContainer* container, QObject* parent)
    : QObject(parent)
    , m_pContainer(container)
{
    setObjectName(QStringLiteral("NotifyService"));
}

NotifyService::~NotifyService() = default;

QObject* NotifyService::servingPlugin()
{
    return t_servingPlugin;
}

int NotifyService::Subscribe(const QString& senderClsid, unsigned int code)
{
    return subscribeReceiver(t_servingPlugin, senderClsid, code);
}

int NotifyService::subscribeReceiver(QObject* receiver, const QString& senderClsid, unsigned int code)
{
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        bool known = false;
        for (const Subscription& s : qAsConst(m_subscriptions)) {
            known = known || (s.sender == senderClsid && s.code == code &&
                              (receiver ? s.receiver.data() == receiver : s.anyPlugin));
        }
        if (!known) {
            Subscription s;
            s.sender = HostFramework::detail::own(senderClsid);
            s.code = code;
            s.receiver = receiver;
            s.anyPlugin = receiver == nullptr;
            m_subscriptions.append(s);
        }
    }
    record(QStringLiteral("subscribe"), senderClsid, code, 0, 0, 0);
    return 0;
}

int NotifyService::Unsubscribe(const QString& senderClsid, unsigned int code)
{
    QObject* receiver = t_servingPlugin;
    int removed = 0;
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        for (int i = m_subscriptions.size() - 1; i >= 0; --i) {
            const Subscription& s = m_subscriptions.at(i);
            if (s.sender == senderClsid && s.code == code &&
                (receiver ? s.receiver.data() == receiver : s.anyPlugin)) {
                m_subscriptions.removeAt(i);
                ++removed;
            }
        }
    }
    record(QStringLiteral("unsubscribe"), senderClsid, code, 0, 0, 0);
    return removed > 0 ? 0 : -1;
}

QList<QObject*> NotifyService::subscribers(const QString& senderClsid, unsigned int code) const
{
    std::unique_lock<std::mutex> lock(m_mutex);
    QList<QObject*> out;
    for (const Subscription& s : m_subscriptions) {
        if (s.sender == senderClsid && s.code == code && (s.anyPlugin || s.receiver))
            out << (s.anyPlugin ? nullptr : s.receiver.data());
    }
    return out;
}

bool NotifyService::deliver(QObject* receiver, unsigned int code, unsigned int wparam, unsigned int lparam)
{
    auto* notify = receiver ? static_cast<INotify*>(receiver->qt_metacast(INotify_iid)) : nullptr;
    if (!notify)
        return false;
    ServingScope scope(receiver);
    notify->Notify(code, wparam, lparam);
    return true;
}

int NotifyService::SendNotify(const QString& targetClsid, unsigned int code, unsigned int wparam,
                              unsigned int lparam)
{
    QObject* target = nullptr;
    if (m_pContainer) {
        const QList<QObject*> receivers = m_pContainer->notifyReceivers();
        for (QObject* r : receivers) {
            if (m_pContainer->clsidOf(r) == targetClsid) {
                target = r;
                break;
            }
        }
    }
    const bool delivered = target && deliver(target, code, wparam, lparam);
    record(QStringLiteral("send"), targetClsid, code, wparam, lparam, delivered ? 1 : 0);
    return delivered ? 0 : -1;
}

int NotifyService::RaiseNotify(const QString& senderClsid, unsigned int code, unsigned int wparam,
                               unsigned int lparam)
{
    QList<QObject*> targets;
    bool everyPlugin = false;
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        for (const Subscription& s : qAsConst(m_subscriptions)) {
            if (s.sender != senderClsid || s.code != code)
                continue;
            if (s.anyPlugin)
                everyPlugin = true;
            else if (s.receiver && !targets.contains(s.receiver.data()))
                targets << s.receiver.data();
        }
    }
    if (everyPlugin && m_pContainer) {
        const QList<QObject*> receivers = m_pContainer->notifyReceivers();
        for (QObject* r : receivers) {
            if (!targets.contains(r))
                targets << r;
        }
    }
    int delivered = 0;
    for (QObject* r : qAsConst(targets)) {
        // A plugin never hears its own notification back.
        if (m_pContainer && m_pContainer->clsidOf(r) == senderClsid)
            continue;
        if (deliver(r, code, wparam, lparam))
            ++delivered;
    }
    record(QStringLiteral("raise"), senderClsid, code, wparam, lparam, delivered);
    return delivered;
}

int NotifyService::Broadcast(unsigned int code, unsigned int wparam, unsigned int lparam)
{
    const QList<QObject*> receivers = m_pContainer ? m_pContainer->notifyReceivers() : QList<QObject*>();
    // A receiver may unload another while handling the broadcast; skip whoever died meanwhile.
    QList<QPointer<QObject>> guarded;
    for (QObject* r : receivers)
        guarded << r;
    int delivered = 0;
    for (const QPointer<QObject>& r : qAsConst(guarded)) {
        if (r && deliver(r.data(), code, wparam, lparam))
            ++delivered;
    }
    record(QStringLiteral("broadcast"), QString(), code, wparam, lparam, delivered);
    return delivered;
}

void NotifyService::record(const QString& kind, const QString& clsid, unsigned int code, unsigned int wparam,
                           unsigned int lparam, int delivered)
{
    HostFramework::NotificationRecord r;
    r.kind = kind;
    r.clsid = HostFramework::detail::own(clsid);
    r.code = code;
    r.wparam = wparam;
    r.lparam = lparam;
    r.delivered = delivered;
    HostFramework::detail::recordNotification(r);
}

// --- HostServiceBase ----------------------------------------------------------------------------

int HostServiceBase::Notify(unsigned int code, unsigned int wparam, unsigned int lparam)
{
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        ++m_notifyCount;
        m_lastCode = code;
    }
    emit notified(code, wparam, lparam);
    return 0;
}

int HostServiceBase::notifyCount() const
{
    std::unique_lock<std::mutex> lock(m_mutex);
    return m_notifyCount;
}

unsigned int HostServiceBase::lastNotifyCode() const
{
    std::unique_lock<std::mutex> lock(m_mutex);
    return m_lastCode;
}

// --- MainFrameService ---------------------------------------------------------------------------

MainFrameService::MainFrameService(QWidget* mainWindow, QObject* parent)
    : HostServiceBase(parent)
    , m_pMainWindow(mainWindow)
{
    setObjectName(QStringLiteral("MainFrameService"));
}

QWidget* MainFrameService::GetMainWindow()
{
    return m_pMainWindow.data();
}

void MainFrameService::setMainWindow(QWidget* window)
{
    m_pMainWindow = window;
}

// --- MainMenuService ----------------------------------------------------------------------------

MainMenuService::MainMenuService(QMenuBar* menuBar, QObject* parent)
    : HostServiceBase(parent)
    , m_pMenuBar(menuBar)
{
    setObjectName(QStringLiteral("MainMenuService"));
}

QMenuBar* MainMenuService::GetMenuBar()
{
    return m_pMenuBar.data();
}

void MainMenuService::setMenuBar(QMenuBar* menuBar)
{
    m_pMenuBar = menuBar;
}

void MainMenuService::RefreshSimMenu()
{
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        ++m_simCount;
    }
    emit simMenuRefreshRequested();
}

void MainMenuService::RefreshRadioMenu()
{
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        ++m_radioCount;
    }
    emit radioMenuRefreshRequested();
}

void MainMenuService::RefreshDeviceMenu(int reset)
{
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        ++m_deviceCount;
        m_lastReset = reset;
    }
    emit deviceMenuRefreshRequested(reset);
}

int MainMenuService::simRefreshCount() const
{
    std::unique_lock<std::mutex> lock(m_mutex);
    return m_simCount;
}

int MainMenuService::radioRefreshCount() const
{
    std::unique_lock<std::mutex> lock(m_mutex);
    return m_radioCount;
}

int MainMenuService::deviceRefreshCount() const
{
    std::unique_lock<std::mutex> lock(m_mutex);
    return m_deviceCount;
}

int MainMenuService::lastDeviceReset() const
{
    std::unique_lock<std::mutex> lock(m_mutex);
    return m_lastReset;
}

void MainMenuService::resetCounts()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    m_simCount = m_radioCount = m_deviceCount = 0;
    m_lastReset = -1;
}

// --- DialupService ------------------------------------------------------------------------------

DialupService::DialupService(QObject* parent)
    : HostServiceBase(parent)
{
    setObjectName(QStringLiteral("DialupService"));
}

bool DialupService::IsConnected()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    return m_bConnected;
}

int DialupService::GlobalDisconnect(int reason)
{
    int result = 0;
    bool dropped = false;
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        m_reasons << reason;
        result = m_iDisconnectResult;
        if (result == 0 && m_bConnected) {
            m_bConnected = false;
            dropped = true;
        }
    }
    HostFramework::detail::log(
        QStringLiteral("DialupService::GlobalDisconnect(%1) -> %2").arg(reason).arg(result));
    emit globalDisconnectCalled(reason, result);
    if (dropped)
        emit connectionChanged(false);
    return result;
}

void DialupService::setConnected(bool connected)
{
    bool changed = false;
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        changed = m_bConnected != connected;
        m_bConnected = connected;
    }
    if (changed)
        emit connectionChanged(connected);
}

void DialupService::setDisconnectResult(int result)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    m_iDisconnectResult = result;
}

int DialupService::disconnectCount() const
{
    std::unique_lock<std::mutex> lock(m_mutex);
    return m_reasons.size();
}

QList<int> DialupService::disconnectReasons() const
{
    std::unique_lock<std::mutex> lock(m_mutex);
    return m_reasons;
}

void DialupService::resetCounts()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    m_reasons.clear();
}

// --- MiniFrameService ---------------------------------------------------------------------------

MiniFrameService::MiniFrameService(QObject* parent)
    : HostServiceBase(parent)
{
    setObjectName(QStringLiteral("MiniFrameService"));
}

QWidget* MiniFrameService::GetMiniWindow()
{
    return m_pMiniWindow.data();
}

bool MiniFrameService::IsMiniFrameShown()
{
    return m_pMiniWindow && m_pMiniWindow->isVisible();
}

void MiniFrameService::setMiniWindow(QWidget* window)
{
    m_pMiniWindow = window;
}
