// Test fixture: stands up the host framework for a suite and checks that tests clean up after themselves.
#pragma once

#include "CommonUtils.h"
#include "HostFramework.h"

#include <QtCore/QList>
#include <QtCore/QPointer>
#include <QtCore/QStringList>
#include <QtCore/QTemporaryDir>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QWidget>

#include <memory>

// Typical use in a QtTest class:
//   void initTestCase() { m_host.init(); }
//   void init()         { m_host.beginTest(); }
//   void cleanup()      { QVERIFY2(m_host.endTest(), qPrintable(m_host.lastError())); }
//   void cleanupTestCase() { m_host.shutdown(); }
class HostFixture
{
public:
    ~HostFixture() { shutdown(); }

    // Settings in a fresh temporary folder, the build's language folder, non-interactive message
    // boxes, and the host's services registered in a new container. `withMainWindow` gives the
    // main frame service a (hidden) main window to hand out as dialog parent.
    void init(bool withMainWindow = true);
    // Clears the recorders, the answer queue and the framework state; remembers the top-level
    // widgets that exist now.
    void beginTest();
    // Deletes what was scheduled for deletion and fails (returns false) when a top-level widget
    // created during the test is still alive, or queued answers were left unused.
    bool endTest();
    QString lastError() const { return m_lastError; }
    // Unloads plugins, deletes the host's services and the main window.
    void shutdown();

    QMainWindow* mainWindow() const { return m_mainWindow.data(); }
    QString settingsPath() const { return HostFramework::settingsFile(); }

    // Write a setting directly to the host's settings file.
    void setSetting(const QString& section, const QString& key, const QString& value)
    {
        CommonUtils::SetSettings(section, key, value);
    }

    // Top-level widgets that are visible now (message boxes never are: they are recorded).
    static QList<QWidget*> visibleTopLevels();

private:
    std::unique_ptr<QTemporaryDir> m_dir;
    QPointer<QMainWindow> m_mainWindow;
    QList<QPointer<QWidget>> m_before;
    QString m_lastError;
};

// What the fixture plugins of tests/hostframework/fixtureplugins were asked to do, in order.
inline QStringList fixtureEvents()
{
    return qApp->property("tessaroFixtureEvents").toStringList();
}
inline void clearFixtureEvents()
{
    qApp->setProperty("tessaroFixtureEvents", QStringList());
}
