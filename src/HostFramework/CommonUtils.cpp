// CommonUtils: settings on an INI file, the recorded message box, window placement, flags and threads.
#include "CommonUtils.h"

#include "Change.h"
#include "HostState.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QSettings>
#include <QtCore/QThread>
#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QWidget>
#include <mutex>

#include <atomic>

namespace {

// QSettings objects must not be shared between threads; one short-lived object per call, with
// the calls serialised, keeps every reader and writer on the same file contents.
std::mutex g_settingsMutex;

std::atomic<bool> g_shuttingDown{false};
std::atomic<int> g_lteMode{0};
std::atomic<int> g_threadCount{0};

QString settingsKey(const QString& section, const QString& key)
{
    return section.isEmpty() ? key : section + QLatin1Char('/') + key;
}

// What the host ships: a key that the user's settings file does not hold reads as this. Messages
// put the card word into their "%s"; without a word they would show an empty gap.
QString shippedDefault(const QString& key)
{
    if (key == QLatin1String("customize/simtype"))
        return QStringLiteral("SIM");
    if (key == QLatin1String("customize/uimtype"))
        return QStringLiteral("UIM");
    return QString();
}

QMessageBox::Icon boxIcon(int icon)
{
    switch (icon) {
    case QMessageBox::Information:
    case QMessageBox::Warning:
    case QMessageBox::Critical:
    case QMessageBox::Question:
        return static_cast<QMessageBox::Icon>(icon);
    default:
        return QMessageBox::NoIcon;
    }
}

int showRealBox(int icon, QWidget* parent, const QString& title, const QString& text, const QString& button1,
                const QString& button2, bool onTop)
{
    QMessageBox box(parent);
    box.setObjectName(QStringLiteral("HostMessageBox"));
    box.setIcon(boxIcon(icon));
    box.setWindowTitle(title);
    box.setText(text);
    QPushButton* first = box.addButton(Change::tr(button1), QMessageBox::AcceptRole);
    first->setObjectName(QStringLiteral("HostMessageBox_Button1"));
    if (!button2.isEmpty()) {
        QPushButton* second = box.addButton(Change::tr(button2), QMessageBox::RejectRole);
        second->setObjectName(QStringLiteral("HostMessageBox_Button2"));
        box.setEscapeButton(second);
    }
    box.setDefaultButton(first);
    if (onTop)
        box.setWindowFlags(box.windowFlags() | Qt::WindowStaysOnTopHint);
    box.exec();
    return box.clickedButton() == first ? int(MSGBOX_ACCEPTED) : 0;
}

int showMessage(const char* function, int icon, QWidget* parent, const QString& title, const QString& text,
                const QString& button1, const QString& button2, bool onTop)
{
    HostFramework::MessageRecord record;
    record.function = QString::fromLatin1(function);
    record.icon = icon;
    record.parent = parent;
    // The record outlives the plugin that asked: keep none of its string storage.
    using HostFramework::detail::own;
    record.parentName = parent ? own(parent->objectName()) : QString();
    record.title = own(title);
    record.text = own(text);
    record.buttons << own(button1);
    if (!button2.isEmpty())
        record.buttons << own(button2);

    int answer = 0;
    if (!HostFramework::detail::takeNextAnswer(&answer)) {
        QCoreApplication* app = QCoreApplication::instance();
        const bool guiThread = app && QThread::currentThread() == app->thread();
        if (!guiThread) {
            HostFramework::detail::warn(
                QStringLiteral("%1: message box requested off the GUI thread, answering 0: \"%2\"")
                    .arg(record.function, title));
        } else if (HostFramework::detail::nonInteractive()) {
            // A test or scripted run that forgot to queue an answer must not hang on a modal box.
            HostFramework::detail::warn(
                QStringLiteral("%1: non-interactive host and no queued answer, answering 0: \"%2\" / \"%3\"")
                    .arg(record.function, title, text));
        } else {
            answer = showRealBox(icon, parent, title, text, button1, button2, onTop);
        }
    }
    record.answer = answer;
    HostFramework::detail::recordMessage(record);
    return answer;
}

} // namespace

namespace HostFramework {
namespace detail {

void resetCommonUtils()
{
    g_shuttingDown.store(false);
    g_lteMode.store(0);
    g_threadCount.store(0);
}

} // namespace detail
} // namespace HostFramework

QString CommonUtils::GetSettings(const QString& section, const QString& key)
{
    const QString path = HostFramework::detail::settingsFilePath();
    std::unique_lock<std::mutex> lock(g_settingsMutex);
    QSettings settings(path, QSettings::IniFormat);
    const QString name = settingsKey(section, key);
    // A value in the user's file, even an empty one, overrides what the host ships.
    if (!settings.contains(name))
        return shippedDefault(name);
    const QVariant value = settings.value(name);
    // An unquoted "a,b" in a hand-written file reads back as a list; the caller asked for text.
    if (value.type() == QVariant::StringList)
        return value.toStringList().join(QLatin1Char(','));
    return value.toString();
}

void CommonUtils::SetSettings(const QString& section, const QString& key, const QString& value)
{
    const QString path = HostFramework::detail::settingsFilePath();
    std::unique_lock<std::mutex> lock(g_settingsMutex);
    QDir().mkpath(QFileInfo(path).absolutePath());
    QSettings settings(path, QSettings::IniFormat);
    // QSettings caches values process-wide, beyond the life of the plugin that wrote them.
    settings.setValue(HostFramework::detail::own(settingsKey(section, key)),
                      HostFramework::detail::own(value));
    settings.sync();
    if (settings.status() != QSettings::NoError)
        qWarning("CommonUtils::SetSettings: cannot write %s", qPrintable(path));
}

int CommonUtils::ShowMessage(int icon, QWidget* parent, const QString& title, const QString& text,
                             const QString& button1, const QString& button2)
{
    return showMessage("ShowMessage", icon, parent, title, text, button1, button2, false);
}

int CommonUtils::ShowMessageCustomize(int icon, QWidget* parent, const QString& title, const QString& text,
                                      const QString& button1, const QString& button2)
{
    return showMessage("ShowMessageCustomize", icon, parent, title, text, button1, button2, true);
}

void CommonUtils::MoveCentre(QWidget* widget)
{
    if (!widget)
        return;
    QRect area;
    QWidget* parent = widget->parentWidget() ? widget->parentWidget()->window() : nullptr;
    if (parent && parent->isVisible()) {
        area = parent->frameGeometry();
    } else if (QScreen* screen = QGuiApplication::primaryScreen()) {
        area = screen->availableGeometry();
    } else {
        return;
    }
    QRect frame = widget->frameGeometry();
    frame.moveCenter(area.center());
    // For a child widget the position is relative to its parent; a window's is global.
    if (widget->isWindow())
        widget->move(frame.topLeft());
    else
        widget->move(widget->parentWidget()->mapFromGlobal(frame.topLeft()));
}

int CommonUtils::GetFrameStyle()
{
    return HostFramework::detail::frameStyle();
}

bool CommonUtils::IsMiniMode()
{
    return (GetFrameStyle() & FRAME_STYLE_MINI) != 0;
}

QString CommonUtils::GetPluginLibraryPath()
{
    return HostFramework::detail::pluginLibraryPath();
}

void CommonUtils::SetLteMode(int lte)
{
    g_lteMode.store(lte);
}

int CommonUtils::GetLteMode()
{
    return g_lteMode.load();
}

bool CommonUtils::IsShuttingDown()
{
    return g_shuttingDown.load();
}

void CommonUtils::SetShutDownFlag()
{
    g_shuttingDown.store(true);
}

void CommonUtils::ThreadCountInc(const QString& who)
{
    const int count = ++g_threadCount;
    qDebug("CommonUtils::ThreadCountInc: %s, %d running", qPrintable(who), count);
}

void CommonUtils::ThreadCountDec(const QString& who)
{
    const int count = --g_threadCount;
    qDebug("CommonUtils::ThreadCountDec: %s, %d running", qPrintable(who), count);
}

int CommonUtils::ThreadCount()
{
    return g_threadCount.load();
}

bool CommonUtils::WaitForThreadToStop(QThread* thread, int seconds)
{
    if (!thread)
        return true;
    const unsigned long ms = seconds > 0 ? static_cast<unsigned long>(seconds) * 1000UL : 0UL;
    const bool finished = thread->wait(ms);
    if (!finished)
        qWarning("CommonUtils::WaitForThreadToStop: thread still running after %d s", seconds);
    return finished;
}
