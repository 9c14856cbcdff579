// Test fixture: host framework set-up and the left-over-widget check.
#include "HostFixture.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QMenuBar>

void HostFixture::init(bool withMainWindow)
{
    m_dir = std::make_unique<QTemporaryDir>();
    HostFramework::setSettingsFile(m_dir->filePath(QStringLiteral("tessaro.ini")));
    HostFramework::setLanguageDir(QStringLiteral(TESSARO_LANG_DIR));
    HostFramework::setNonInteractive(true);
    if (withMainWindow) {
        m_mainWindow = new QMainWindow;
        m_mainWindow->setObjectName(QStringLiteral("TestMainWindow"));
        m_mainWindow->resize(800, 600);
    }
    HostFramework::createHost(m_mainWindow, m_mainWindow ? m_mainWindow->menuBar() : nullptr);
}

void HostFixture::beginTest()
{
    HostFramework::clearMessageRecords();
    HostFramework::clearNotificationRecords();
    HostFramework::clearNextAnswers();
    HostFramework::resetState();
    m_lastError.clear();
    m_before.clear();
    const auto tops = QApplication::topLevelWidgets();
    for (QWidget* w : tops)
        m_before.append(w);
}

bool HostFixture::endTest()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QStringList left;
    const auto tops = QApplication::topLevelWidgets();
    for (QWidget* w : tops) {
        bool known = false;
        for (const auto& p : qAsConst(m_before))
            known = known || p.data() == w;
        // Menus and tool tips are Qt's own short-lived windows.
        if (known || w->inherits("QMenu") || w->inherits("QTipLabel") || w->windowType() == Qt::Desktop)
            continue;
        left << QStringLiteral("%1(%2)%3")
                    .arg(QString::fromLatin1(w->metaObject()->className()), w->objectName(),
                         w->isVisible() ? QStringLiteral(" visible") : QString());
    }
    if (!left.isEmpty())
        m_lastError = QStringLiteral("top-level widgets left behind: ") + left.join(QStringLiteral(", "));
    if (HostFramework::pendingAnswers() > 0) {
        m_lastError +=
            QStringLiteral(" %1 queued message answer(s) never used").arg(HostFramework::pendingAnswers());
        HostFramework::clearNextAnswers();
    }
    return m_lastError.isEmpty();
}

void HostFixture::shutdown()
{
    if (!m_dir)
        return;
    HostFramework::destroyHost();
    delete m_mainWindow.data();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    m_dir.reset();
}

QList<QWidget*> HostFixture::visibleTopLevels()
{
    QList<QWidget*> out;
    const auto tops = QApplication::topLevelWidgets();
    for (QWidget* w : tops)
        if (w->isVisible())
            out << w;
    return out;
}
