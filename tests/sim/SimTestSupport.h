// Shared helpers of the SIM dialog suites: the service against the simulated card with its frame
// shown, the dialogs found on screen by object name, typing and clicking as a user does, and the
// message boxes and notifications as the user and the other plugins see them.
#pragma once

#include "ServiceTestSupport.h"

#include "Change.h"
#include "CommonUtils.h"
#include "HostFixture.h"
#include "HostServiceObjects.h"
#include "PluginContainer.h"
#include "SimWidgets.h"

#include <QtCore/QMap>
#include <QtCore/QStringList>
#include <QtGui/QClipboard>
#include <QtTest/QtTest>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>

namespace simtest {

// Object names of the four SIM dialogs.
inline const QString kVerifyDlg = QStringLiteral("DeviceMgrUI_VerifyPINDlg");
inline const QString kPinDlg = QStringLiteral("DeviceMgrUI_m_pdialogPINDlg");
inline const QString kPukDlg = QStringLiteral("DeviceMgrUI_dialogPUKDlg");
inline const QString kModifyDlg = QStringLiteral("DeviceMgrUI_dialogModifyDlg");

// The visible top-level window called `name`, or null.
inline QWidget* window(const QString& name)
{
    const auto tops = QApplication::topLevelWidgets();
    for (QWidget* top : tops)
        if (top->isVisible() && top->objectName() == name)
            return top;
    return nullptr;
}

inline SimDlg* dialog(const QString& name)
{
    return qobject_cast<SimDlg*>(window(name));
}

// Object names of every SIM dialog on screen, sorted.
inline QStringList openDialogs()
{
    QStringList names;
    const auto tops = QApplication::topLevelWidgets();
    for (QWidget* top : tops)
        if (top->isVisible() && qobject_cast<SimDlg*>(top))
            names << top->objectName();
    names.sort();
    return names;
}

// A widget inside the visible dialog `dialogName`; an empty `name` takes the first of its kind.
template<class T>
T* child(const QString& dialogName, const QString& name = QString())
{
    QWidget* top = window(dialogName);
    if (!top)
        return nullptr;
    return name.isEmpty() ? top->findChild<T*>() : top->findChild<T*>(name);
}

inline QLineEdit* field(const QString& dialogName, const QString& name = QString())
{
    return child<QLineEdit>(dialogName, name);
}

inline QString labelText(const QString& dialogName, const QString& name)
{
    QLabel* label = child<QLabel>(dialogName, name);
    return label ? label->text() : QStringLiteral("<no label %1>").arg(name);
}

// The dialog's button showing `text` (the IDS key while no language is loaded).
inline QAbstractButton* button(const QString& dialogName, const QString& text)
{
    QWidget* top = window(dialogName);
    if (!top)
        return nullptr;
    const auto buttons = top->findChildren<QAbstractButton*>();
    for (QAbstractButton* b : buttons)
        if (b->text() == text || b->objectName() == text)
            return b;
    return nullptr;
}

inline QAbstractButton* okButton(const QString& dialogName)
{
    return button(dialogName, QStringLiteral("IDS_MAINFRM_OK_PROMPT"));
}

// Types as a person does, one key press after the other.
inline void type(QLineEdit* edit, const QString& text)
{
    QVERIFY2(edit, "no field to type into");
    edit->setFocus();
    QTest::keyClicks(edit, text);
}

inline void click(QAbstractButton* b)
{
    QVERIFY2(b, "no button to click");
    QVERIFY2(b->isEnabled(), qPrintable(QStringLiteral("button '%1' is disabled").arg(b->text())));
    QTest::mouseClick(b, Qt::LeftButton);
}

// The message boxes shown, one a line: "function icon parent | title | text | buttons".
inline QStringList messages()
{
    QStringList out;
    const auto records = HostFramework::messageRecords();
    for (const auto& r : records)
        out << QStringLiteral("%1 %2 %3 | %4 | %5 | %6")
                   .arg(r.function)
                   .arg(r.icon)
                   .arg(r.parentName.isEmpty() ? QStringLiteral("-") : r.parentName)
                   .arg(r.title, r.text, r.buttons.join(QLatin1Char(',')));
    return out;
}

// An information box of the SIM dialogs with one OK button, as recorded.
inline QString info(const QString& text, const QString& parent = QStringLiteral("-"),
                    const QString& function = QStringLiteral("ShowMessage"))
{
    return QStringLiteral("%1 1 %2 | IDS_MAINFRM_PROMPT | %3 | IDS_OK").arg(function, parent, text);
}

// The question over `dialogName` before a pending entry is abandoned.
inline QString question(const QString& dialogName,
                        const QString& key = QStringLiteral("IDS_MAINFRM_PIN_CANCELPROMPT"))
{
    return QStringLiteral("ShowMessage 4 %1 | IDS_MAINFRM_PROMPT | %2 | IDS_YES,IDS_NO").arg(dialogName, key);
}

// The SDK function that takes the code typed into the dialog openSimDialog(`which`) brings up.
inline const char* jobFunction(const QString& which)
{
    static const QMap<QString, const char*> functions{
        {"verify", "ZELK_DevSrv_VerifyPin"},   {"enable", "ZELK_DevSrv_EnablePin"},
        {"disable", "ZELK_DevSrv_DisablePin"}, {"puk", "ZELK_DevSrv_UnblockPin"},
        {"change", "ZELK_DevSrv_ChangePin"},   {"cardlock", "ZELK_DevSrv_VerifyCardLock"}};
    return functions.value(which);
}

using svc::activeDevice;
using svc::flushDeletes;

// The active card with its PIN request on and not yet entered: the SIM asks for the PIN.
inline void pinRequired(int pinAttempts = 3, int pukAttempts = 10)
{
    zelk::sim::Device d = activeDevice();
    d.sim.pinEnabled = true;
    d.sim.pinVerified = false;
    d.sim.pinAttempts = pinAttempts;
    d.sim.pukAttempts = pukAttempts;
    QVERIFY(zelk::sim::updateDevice(d));
}

inline void cardLock(int state, int attempts = 5)
{
    zelk::sim::Device d = activeDevice();
    d.cardLock.state = state;
    d.cardLock.attempts = attempts;
    QVERIFY(zelk::sim::updateDevice(d));
}

// The service started with the host's frame on screen (dialogs may open), records cleared.
inline CDeviceMgrService* startService(bool frameShown = true)
{
    CDeviceMgrService* service = CDeviceMgrService::instance();
    if (!service->Init())
        return nullptr;
    if (frameShown) {
        // The frame comes up before the card has reported in, so the first-frame work finds no
        // device and the suites drive the start-up check themselves.
        zelk::sim::forceResult("ZELK_DevSrv_GetDevStatus", 2, ZELK_ERROR_FAILURE);
        service->Notify(NTF_FRAME_SHOWN, 0, 0);
    }
    zelk::sim::clearCalls();
    HostFramework::clearNotificationRecords();
    HostFramework::clearMessageRecords();
    HostFramework::mainMenuService()->resetCounts();
    return service;
}

// One SDK event as the card sends it, handled on the GUI thread.
inline bool handle(int event)
{
    svc::inject(event);
    return svc::settle(svc::g_handled.load() + 1);
}

// The SDK's start-up PIN check event (6011).
inline bool startupPinCheck()
{
    return handle(ZELK_EVENT_DEV_PIN_CHECK);
}

// The platform asks for the WWAN wait (IsWin7 answers 0) and gives these answers to the polls.
inline void waitingPlatform(bool ready, int readyAfterPolls = 0, int service = 1, int pollDelayMs = 0)
{
    zelk::sim::Platform p = zelk::sim::platform();
    p.isWin7 = ZELK_ERROR_SUCCESS;
    p.wwanReady = ready;
    p.wwanReadyAfterPolls = readyAfterPolls;
    p.wwanService = service;
    p.wwanPollDelayMs = pollDelayMs;
    zelk::sim::setPlatform(p);
}

// Starts the service and brings up one SIM dialog the way the user meets it: "verify" and "puk" at
// the start-up check, "cardlock" at the card's lock event (6013) with unlocking allowed, "enable",
// "disable" and "change" from the menu. `attempts` (-1: the card's default) are left of the code it
// asks for. Returns the dialog's object name.
inline QString openSimDialog(CDeviceMgrService*& service, const QString& which, int attempts = -1)
{
    const int n = attempts < 0 ? 3 : attempts;
    if (which == QLatin1String("verify") || which == QLatin1String("puk")) {
        const bool isPuk = which == QLatin1String("puk");
        pinRequired(isPuk ? 0 : n, isPuk && attempts >= 0 ? attempts : 10);
        if ((service = startService()))
            startupPinCheck();
        return isPuk ? kPukDlg : kVerifyDlg;
    }
    if (which == QLatin1String("cardlock")) {
        CommonUtils::SetSettings(QStringLiteral("support"), QStringLiteral("type"), QStringLiteral("0"));
        cardLock(1, attempts < 0 ? 5 : attempts);
        if ((service = startService()))
            handle(ZELK_EVENT_DEV_CARD_LOCK);
        return kPinDlg;
    }
    zelk::sim::Device d = activeDevice();
    d.sim.pinAttempts = n;
    if (which != QLatin1String("enable"))
        d.sim.pinEnabled = d.sim.pinVerified = true;
    zelk::sim::updateDevice(d);
    if (!(service = startService()))
        return QString();
    if (which == QLatin1String("change")) {
        service->ModifyPIN();
        return kModifyDlg;
    }
    which == QLatin1String("enable") ? service->EnablePIN() : service->DisablePIN();
    return kPinDlg;
}

// The fixture of every SIM suite: the host and a fresh simulated card for each test; afterwards the
// service stopped with no worker thread left, the main menu back and no language loaded.
class SimSuite : public QObject
{
    Q_OBJECT

protected:
    HostFixture m_host;
    CDeviceMgrService* m_service = nullptr;

    void start(bool frameShown = true)
    {
        m_service = startService(frameShown);
        QVERIFY(m_service);
    }

protected slots:
    void initTestCase() { m_host.init(); }
    void init()
    {
        m_host.beginTest();
        QGuiApplication::clipboard()->setText(QStringLiteral("clipboard-before"));
        zelk::sim::reset();
        svc::resetHandled();
        m_service = nullptr;
    }
    void cleanup()
    {
        svc::stopService();
        m_service = nullptr;
        PluginContainer* container = HostFramework::container();
        if (!container->isRegistered(QStringLiteral("MainMenuService")))
            container->registerService(QStringLiteral(MAINMENU_PLUGIN_CLSID), MAINMENU_PLUGIN_ID,
                                       HostFramework::mainMenuService());
        Change::LoadLanguage(QStringLiteral("none"));
        QVERIFY2(m_host.endTest(), qPrintable(m_host.lastError()));
        QCOMPARE(CommonUtils::ThreadCount(), 0);
    }
    void cleanupTestCase() { m_host.shutdown(); }
};

} // namespace simtest
