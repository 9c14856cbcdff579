// Scenario playback for the running application and the offscreen demo.
#include "DemoPlayer.h"

#include "HostFramework.h"
#include "MainWindow.h"
#include "PluginHost.h"
#include "SimControl.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QJsonObject>
#include <QtCore/QRegularExpression>
#include <QtCore/QTimer>
#include <QtGui/QKeyEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QAction>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QTableWidget>

#include <cstdio>

namespace {

// Time the application gets after a step before its screenshot: dialogs open through queued events.
constexpr int kSettleMs = 400;
// The longest a step waits for a window named by "waitFor".
constexpr int kWaitForMs = 20000;

void playFrom(QObject* owner, int index)
{
    if (index >= zelk::sim::scenarioStepCount())
        return;
    QTimer::singleShot(zelk::sim::scenarioStepDelayMs(index), owner, [owner, index] {
        // Only the card's part of the step: what the user does is up to the person at the keyboard.
        QString error;
        if (!zelk::sim::runScenarioStep(index, &error))
            std::fprintf(stderr, "tessaro: scenario step %d: %s\n", index + 1, qPrintable(error));
        playFrom(owner, index + 1);
    });
}

QString slug(const QString& caption)
{
    QString s = caption.toLower();
    s.replace(QRegularExpression(QStringLiteral("[^a-z0-9]+")), QStringLiteral("-"));
    s = s.left(40);
    while (s.endsWith(QLatin1Char('-')))
        s.chop(1);
    while (s.startsWith(QLatin1Char('-')))
        s.remove(0, 1);
    return s.isEmpty() ? QStringLiteral("step") : s;
}

} // namespace

void ScenarioTimeline::startTimeline(QObject* owner)
{
    playFrom(owner, 0);
}

DemoPlayer::DemoPlayer(MainWindow* window, PluginHost* host, const QString& outputDir, QObject* parent)
    : QObject(parent)
    , m_pWindow(window)
    , m_pHost(host)
    , m_outputDir(outputDir)
{
}

void DemoPlayer::start()
{
    if (!QDir().mkpath(m_outputDir)) {
        fail(QStringLiteral("cannot create the folder '%1'").arg(m_outputDir));
        return;
    }
    // Step 0 is the application as it opens.
    QTimer::singleShot(kSettleMs, this, [this] {
        if (!saveScreenshot(QStringLiteral("00-start.png")))
            return;
        m_index << QStringLiteral("00-start.png\tTessaro starts with the scenario's devices");
        m_step = 0;
        runStep();
    });
}

void DemoPlayer::runStep()
{
    if (m_step >= zelk::sim::scenarioStepCount()) {
        QFile index(QDir(m_outputDir).filePath(QStringLiteral("index.txt")));
        if (index.open(QIODevice::WriteOnly | QIODevice::Text))
            index.write((m_index.join(QLatin1Char('\n')) + QLatin1Char('\n')).toUtf8());
        emit finished(true);
        return;
    }
    QTimer::singleShot(qMin(zelk::sim::scenarioStepDelayMs(m_step), 2000), this, [this] {
        QString error;
        if (!zelk::sim::runScenarioStep(m_step, &error)) {
            fail(QStringLiteral("step %1: %2").arg(m_step + 1).arg(error));
            return;
        }
        const QJsonObject user = zelk::sim::scenarioStepUser(m_step);
        // ---- Waiting for a window the application opens by itself ----
        const QString waitFor = user.value(QLatin1String("waitFor")).toString();
        if (!waitFor.isEmpty()) {
            waitThenAct(waitFor, QDateTime::currentMSecsSinceEpoch() + kWaitForMs);
            return;
        }
        actThenCapture();
    });
}

void DemoPlayer::actThenCapture()
{
    const QJsonObject user = zelk::sim::scenarioStepUser(m_step);
    if (!user.isEmpty() && !performUserAction(user))
        return;
    QTimer::singleShot(kSettleMs, this, [this] { captureStep(); });
}

// Some windows come on their own time (the activation wizard waits until the device notice has
// gone); the step goes on once the window is on screen.
void DemoPlayer::waitThenAct(const QString& objectName, qint64 deadline)
{
    if (findWidget(objectName)) {
        actThenCapture();
        return;
    }
    if (QDateTime::currentMSecsSinceEpoch() > deadline) {
        fail(QStringLiteral("step %1: '%2' did not appear within %3 s")
                 .arg(m_step + 1)
                 .arg(objectName)
                 .arg(kWaitForMs / 1000));
        return;
    }
    QTimer::singleShot(100, this, [this, objectName, deadline] { waitThenAct(objectName, deadline); });
}

void DemoPlayer::captureStep()
{
    const QString caption = zelk::sim::scenarioStepCaption(m_step);
    const QString file =
        QStringLiteral("%1-%2.png").arg(m_step + 1, 2, 10, QLatin1Char('0')).arg(slug(caption));
    if (!saveScreenshot(file))
        return;
    const QString expected = zelk::sim::scenarioStepUser(m_step).value(QLatin1String("expect")).toString();
    m_index << file + QLatin1Char('\t') + caption +
                   (expected.isEmpty() ? QString()
                                       : QStringLiteral(" [expected on screen: %1]").arg(expected));
    ++m_step;
    runStep();
}

QWidget* DemoPlayer::findWidget(const QString& objectName) const
{
    const auto tops = QApplication::topLevelWidgets();
    for (QWidget* top : tops) {
        if (!top->isVisible())
            continue;
        if (top->objectName() == objectName)
            return top;
        if (auto* w = top->findChild<QWidget*>(objectName))
            return w;
    }
    return nullptr;
}

// The dialog a person would be looking at: the active modal one, else the newest visible window
// that has something to type into or click (a notice that closes on its own is only read).
static QWidget* topDialog(QWidget* mainWindow)
{
    if (QWidget* modal = QApplication::activeModalWidget())
        return modal;
    QWidget* found = nullptr;
    const auto tops = QApplication::topLevelWidgets();
    for (QWidget* top : tops)
        if (top != mainWindow && top->isVisible() && !top->inherits("QMenu") &&
            !top->inherits("QDockWidget") &&
            (top->findChild<QLineEdit*>() || top->findChild<QAbstractButton*>()))
            found = top;
    return found;
}

static QString plainText(QString text)
{
    return text.remove(QLatin1Char('&')).trimmed();
}

// The user's part of a step: what a person does in the interface.
//   {"menu": "<action object name>"}            trigger a menu item of the main window
//   {"enter": "1234"}                           type into the dialog's focused (or first) field
//   {"enter": {"<field name>": "1234", ...}}    type into named fields
//   {"type": {"field": "<name>", "text": "…"}}  the same for one field
//   {"press": "ok"}                             press the dialog's button of that name or text
//   {"click": "<button object name>"}           click a button by object name
//   {"choose": "<text>"}                        pick the table row showing that text
//   {"answer": 1024}                            answer the next message box
//   {"language": "de"}                          switch the interface language
//   {"expect": "<what>"}                        what should be on screen (noted beside the picture)
//   {"waitFor": "<window object name>"}         wait (20 s at most) until that window is on screen
bool DemoPlayer::performUserAction(const QJsonObject& user)
{
    const int stepNo = m_step + 1;
    if (user.contains(QLatin1String("answer")))
        HostFramework::pushNextAnswer(user.value(QLatin1String("answer")).toInt());
    if (user.contains(QLatin1String("language")) && m_pHost)
        m_pHost->changeLanguage(user.value(QLatin1String("language")).toString());
    if (user.contains(QLatin1String("menu"))) {
        const QString name = user.value(QLatin1String("menu")).toString();
        auto* action = m_pWindow->findChild<QAction*>(name);
        if (!action) {
            fail(QStringLiteral("step %1: no menu item '%2'").arg(stepNo).arg(name));
            return false;
        }
        action->trigger();
    }
    QList<QPair<QString, QString>> entries; // field name (empty: the focused field), text
    if (user.contains(QLatin1String("type"))) {
        const QJsonObject type = user.value(QLatin1String("type")).toObject();
        entries << qMakePair(type.value(QLatin1String("field")).toString(),
                             type.value(QLatin1String("text")).toString());
    }
    const QJsonValue enter = user.value(QLatin1String("enter"));
    if (enter.isString()) {
        entries << qMakePair(QString(), enter.toString());
    } else if (enter.isObject()) {
        const QJsonObject fields = enter.toObject();
        for (auto it = fields.begin(); it != fields.end(); ++it)
            entries << qMakePair(it.key(), it.value().toString());
    }
    for (const auto& entry : qAsConst(entries)) {
        QLineEdit* field = nullptr;
        if (!entry.first.isEmpty()) {
            field = qobject_cast<QLineEdit*>(findWidget(entry.first));
        } else if (QWidget* dialog = topDialog(m_pWindow)) {
            field = qobject_cast<QLineEdit*>(dialog->focusWidget());
            if (!field)
                field = dialog->findChild<QLineEdit*>();
        }
        if (!field) {
            fail(QStringLiteral("step %1: no input field %2on screen")
                     .arg(stepNo)
                     .arg(entry.first.isEmpty() ? QString() : QStringLiteral("'%1' ").arg(entry.first)));
            return false;
        }
        field->setFocus();
        for (const QChar c : entry.second) {
            QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(c));
            QKeyEvent release(QEvent::KeyRelease, 0, Qt::NoModifier, QString(c));
            QCoreApplication::sendEvent(field, &press);
            QCoreApplication::sendEvent(field, &release);
        }
    }
    if (user.contains(QLatin1String("choose"))) {
        const QString text = user.value(QLatin1String("choose")).toString();
        QTableWidget* table = nullptr;
        if (QWidget* dialog = topDialog(m_pWindow))
            table = dialog->findChild<QTableWidget*>();
        const auto items = table ? table->findItems(text, Qt::MatchExactly) : QList<QTableWidgetItem*>();
        if (items.isEmpty()) {
            fail(QStringLiteral("step %1: no list on screen shows '%2'").arg(stepNo).arg(text));
            return false;
        }
        table->setCurrentItem(items.first());
        table->selectRow(items.first()->row());
    }
    QAbstractButton* button = nullptr;
    QString wanted;
    if (user.contains(QLatin1String("click"))) {
        wanted = user.value(QLatin1String("click")).toString();
        button = qobject_cast<QAbstractButton*>(findWidget(wanted));
    } else if (user.contains(QLatin1String("press"))) {
        wanted = user.value(QLatin1String("press")).toString();
        if (QWidget* dialog = topDialog(m_pWindow)) {
            const auto buttons = dialog->findChildren<QAbstractButton*>();
            for (QAbstractButton* candidate : buttons) {
                if (!candidate->isVisible())
                    continue;
                if (candidate->objectName().endsWith(wanted, Qt::CaseInsensitive) ||
                    plainText(candidate->text()).compare(wanted, Qt::CaseInsensitive) == 0) {
                    button = candidate;
                    break;
                }
            }
        }
    }
    if (!wanted.isEmpty()) {
        if (!button) {
            fail(QStringLiteral("step %1: no button '%2' on screen").arg(stepNo).arg(wanted));
            return false;
        }
        // Deferred, so that a modal dialog the click opens does not block the player.
        QTimer::singleShot(0, button, &QAbstractButton::click);
    }
    return true;
}

// The main window with every other visible window painted where it stands.
bool DemoPlayer::saveScreenshot(const QString& fileName)
{
    QCoreApplication::processEvents();
    QImage image(m_pWindow->frameGeometry().size().expandedTo(QSize(1, 1)), QImage::Format_ARGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    const QPoint origin = m_pWindow->geometry().topLeft();
    m_pWindow->render(&painter);
    const auto tops = QApplication::topLevelWidgets();
    for (QWidget* top : tops) {
        if (top == m_pWindow || !top->isVisible() || top->inherits("QMenu"))
            continue;
        QPoint at = top->geometry().topLeft() - origin;
        // A window outside the main one is pulled in so the picture shows it.
        at.setX(qBound(0, at.x(), qMax(0, image.width() - top->width())));
        at.setY(qBound(0, at.y(), qMax(0, image.height() - top->height())));
        painter.setPen(QPen(Qt::darkGray, 1));
        painter.drawRect(QRect(at, top->size()).adjusted(-1, -1, 0, 0));
        top->render(&painter, at);
    }
    painter.end();
    const QString path = QDir(m_outputDir).filePath(fileName);
    if (!image.save(path)) {
        fail(QStringLiteral("cannot write '%1'").arg(path));
        return false;
    }
    std::printf("%s\n", qPrintable(path));
    std::fflush(stdout);
    return true;
}

void DemoPlayer::fail(const QString& message)
{
    m_error = message;
    std::fprintf(stderr, "tessaro: demo: %s\n", qPrintable(message));
    emit finished(false);
}
