// Plays a scenario's timeline: the card's steps, and in the demo also the user's steps, with one
// screenshot per step.
#pragma once

#include <QtCore/QJsonObject>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QStringList>

class MainWindow;
class PluginHost;
class QWidget;

// The timeline of the loaded scenario as the running application plays it: each step's card actions
// after its delay. The user's steps are left to the person at the keyboard.
namespace ScenarioTimeline {
void startTimeline(QObject* owner);
}

class DemoPlayer : public QObject
{
    Q_OBJECT
public:
    DemoPlayer(MainWindow* window, PluginHost* host, const QString& outputDir, QObject* parent = nullptr);
    void start();
    QString errorString() const { return m_error; }

signals:
    void finished(bool ok);

private:
    void runStep();
    void captureStep();
    bool performUserAction(const QJsonObject& user);
    // The user's part of the step, then its picture; waitThenAct first waits for a window.
    void actThenCapture();
    void waitThenAct(const QString& objectName, qint64 deadline);
    QWidget* findWidget(const QString& objectName) const;
    bool saveScreenshot(const QString& fileName);
    void fail(const QString& message);

    MainWindow* m_pWindow;
    PluginHost* m_pHost;
    QString m_outputDir;
    QString m_error;
    int m_step = -1;
    QStringList m_index;
};
