// Codes the user types never reach the logs or the SDK's call record in clear.
#include "DeviceMgrUILogic.h"
#include "HostFixture.h"
#include "LogicTestSupport.h"
#include <QtWidgets/QMainWindow> // HostFixture keeps a QPointer to one

#include <QtCore/QMutex>
#include <QtCore/QMutexLocker>
#include <QtTest/QtTest>

using namespace logictest;
namespace sim = zelk::sim;

namespace {

QMutex g_logMutex;
QStringList g_log;
QtMessageHandler g_previousHandler = nullptr;

void captureMessage(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    {
        QMutexLocker lock(&g_logMutex);
        g_log << message;
    }
    if (g_previousHandler)
        g_previousHandler(type, context, message);
}

QString capturedLog()
{
    QMutexLocker lock(&g_logMutex);
    return g_log.join(QLatin1Char('\n'));
}

} // namespace

class tst_LogicLogs : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        m_host.init(false);
        m_logic = DeviceMgrUILogic::GetInstance();
        QVERIFY(m_logic);
    }
    void init()
    {
        m_host.beginTest();
        sim::reset();
        m_logic->init();
        {
            QMutexLocker lock(&g_logMutex);
            g_log.clear();
        }
        g_previousHandler = qInstallMessageHandler(captureMessage);
    }
    void cleanup()
    {
        qInstallMessageHandler(g_previousHandler);
        g_previousHandler = nullptr;
        QVERIFY2(m_host.endTest(), qPrintable(m_host.lastError()));
    }
    void cleanupTestCase()
    {
        delete m_logic;
        m_host.shutdown();
    }

    void codesStayOutOfLogs_data();
    void codesStayOutOfLogs();

private:
    HostFixture m_host;
    DeviceMgrUILogic* m_logic = nullptr;
};

void tst_LogicLogs::codesStayOutOfLogs_data()
{
    QTest::addColumn<QString>("operation");
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    QTest::addColumn<bool>("right"); // the card holds the first code: the success path
    // Distinctive codes that no time stamp, port or count could spell by chance.
    const QString ops[] = {QStringLiteral("verify"),  QStringLiteral("enable"), QStringLiteral("disable"),
                           QStringLiteral("unblock"), QStringLiteral("change"), QStringLiteral("cardlock"),
                           QStringLiteral("compare")};
    for (const QString& op : ops) {
        const bool twoCodes =
            op == QLatin1String("unblock") || op == QLatin1String("change") || op == QLatin1String("compare");
        const QString first = op == QLatin1String("unblock") || op == QLatin1String("cardlock")
                                  ? QStringLiteral("86420975")
                                  : QStringLiteral("7391586");
        const QString second =
            twoCodes ? (op == QLatin1String("compare") ? first : QStringLiteral("5927318")) : QString();
        for (const bool right : {true, false}) {
            QTest::addRow("%s, %s", qPrintable(op), right ? "right" : "wrong")
                << op << first << second << right;
        }
    }
}

void tst_LogicLogs::codesStayOutOfLogs()
{
    QFETCH(QString, operation);
    QFETCH(QString, first);
    QFETCH(QString, second);
    QFETCH(bool, right);
    const bool isUnblock = operation == QLatin1String("unblock");
    const bool isCardLock = operation == QLatin1String("cardlock");
    const std::string other = "24681357";
    QVERIFY(changeActiveDevice([&](sim::Device& d) {
        d.sim.pinEnabled = operation != QLatin1String("enable");
        d.sim.pinVerified = operation != QLatin1String("verify");
        d.sim.pinAttempts = operation == QLatin1String("unblock") ? 0 : 3;
        d.sim.pin = right && !isUnblock && !isCardLock ? first.toStdString() : other.substr(0, 7);
        d.sim.puk = right && isUnblock ? first.toStdString() : other;
        d.cardLock.code = right && isCardLock ? first.toStdString() : other;
        d.cardLock.state = ZELK_CARD_LOCK_LOCKED;
    }));
    sim::clearCalls();

    int retries = 0;
    if (operation == QLatin1String("verify"))
        m_logic->ProcessPIN(first, retries, DEVMGR_PIN_VERIFY);
    else if (operation == QLatin1String("enable"))
        m_logic->ProcessPIN(first, retries, DEVMGR_PIN_ENABLE);
    else if (operation == QLatin1String("disable"))
        m_logic->ProcessPIN(first, retries, DEVMGR_PIN_DISABLE);
    else if (operation == QLatin1String("unblock"))
        m_logic->UnlockPIN(first, second, retries);
    else if (operation == QLatin1String("change"))
        m_logic->ModifyPIN(first, second, retries);
    else if (operation == QLatin1String("cardlock"))
        m_logic->ProcessPIN(first, retries, DEVMGR_CARD_LOCK);
    else
        QCOMPARE(m_logic->ValidatePINs(first, second), 0);

    const QString log = capturedLog();
    // The handler really saw the operation's log lines.
    QVERIFY2(log.contains(QStringLiteral(" : Entered")), qPrintable(log));
    for (const QString& code : {first, second}) {
        if (code.isEmpty())
            continue;
        QVERIFY2(!log.contains(code), qPrintable(log));
        QVERIFY2(!allRecordedArgs().contains(code), qPrintable(allRecordedArgs()));
    }
    if (operation == QLatin1String("verify")) {
        QVERIFY2(log.contains(
                     QStringLiteral("ZELK_DevSrv_VerifyPin called with btType = 0, szPinCode = ********")),
                 qPrintable(log));
    }
    if (operation != QLatin1String("compare"))
        QVERIFY(allCallCount() > 0);
}

QTEST_MAIN(tst_LogicLogs)
#include "tst_LogicLogs.moc"
