// Shared by the activation suites: active.xml in a temporary installation root, the CDMA card, and
// the wizard's window with the set-up every suite that opens it shares.
#pragma once

#include "ActivationWizard.h"
#include "HostFixture.h"
#include "HostFramework.h"
#include "SimControl.h"
#include "SimTestSupport.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtWidgets/QPushButton>

namespace acttest {

// Points the host at `root`, whose active.xml becomes `xml` (a null array: no file at all).
inline bool installActiveXml(const QTemporaryDir& root, const QByteArray& xml)
{
    HostFramework::setPluginLibraryPath(root.path());
    const QString dir = root.filePath(QStringLiteral("plugins/DeviceMgrUIPlugin"));
    QFile file(dir + QStringLiteral("/active.xml"));
    if (!QDir(dir).removeRecursively() || !QDir().mkpath(dir))
        return false;
    return xml.isNull() || (file.open(QIODevice::WriteOnly) && file.write(xml) == xml.size());
}

inline QByteArray activeXml(const QByteArray& body)
{
    return "<?xml version=\"1.0\"?><zelkdoc><main>" + body + "</main></zelkdoc>";
}

// The simulated card becomes one CDMA device that is not activated yet.
inline bool cdmaNotActivated(bool networkStates)
{
    zelk::sim::reset();
    zelk::sim::Device d = zelk::sim::defaultDevice();
    d.productType = ZELK_PRODUCT_TYPE_CDMA;
    d.cdma.activated = false;
    if (!networkStates)
        d.cdma.otaspStates.clear();
    return zelk::sim::updateDevice(d);
}

// The wizard's window while it is open, and its buttons by name ("Next", "Back", "Cancel").
inline QWidget* dlg()
{
    return simtest::window(QStringLiteral("DeviceMgrUIPlugin_ActivationDlg"));
}

inline QPushButton* button(const QString& name)
{
    return dlg()->findChild<QPushButton*>(QStringLiteral("DeviceMgrUIplugin_Button") + name);
}

// The card's calls without "ZELK_", arguments unquoted; registrations by name only (their argument
// is an address).
inline QStringList sdkCalls()
{
    QStringList out;
    for (const auto& c : zelk::sim::calls()) {
        QStringList args;
        for (const auto& a : c.args)
            args << QString::fromStdString(a).remove(QLatin1Char('"'));
        const QString name = QString::fromStdString(c.function).remove(QStringLiteral("ZELK_"));
        out << (name.contains(QLatin1String("Register")) ? name : name + '(' + args.join(',') + ')');
    }
    return out;
}

// A suite that opens the wizard itself: every test starts on a CDMA card that is not activated, with
// the card's call record and the log empty, and leaves no wizard behind.
class WizardSuite : public QObject
{
    Q_OBJECT

protected:
    HostFixture m_host;
    QTemporaryDir m_root;

    void open(const QByteArray& xml)
    {
        QVERIFY(installActiveXml(m_root, xml));
        ActivationWizard::Instance()->showActivationDlg(m_host.mainWindow());
        QVERIFY(dlg());
    }

private slots:
    void initTestCase() { m_host.init(); }
    void init()
    {
        m_host.beginTest();
        QVERIFY(cdmaNotActivated(false));
        zelk::sim::clearCalls();
        svc::startLogCapture();
    }
    void cleanup()
    {
        qInstallMessageHandler(nullptr);
        ActivationWizard::Destroy(g_pActivationInstance.load());
        QVERIFY2(m_host.endTest(), qPrintable(m_host.lastError()));
    }
    void cleanupTestCase() { m_host.shutdown(); }
};

} // namespace acttest
