// CommonUtils, Change and ExtendDialog: settings, recorded message boxes, translations, threads, placement.
#include "HostFixture.h"

#include "Change.h"
#include "CommonUtils.h"
#include "ExtendDialog.h"
#include "ExtendLineEdit.h"
#include "HostFramework.h"

#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QRegularExpression>
#include <QtCore/QSemaphore>
#include <QtCore/QSettings>
#include <QtCore/QThread>
#include <QtCore/QTimer>
#include <QtGui/QScreen>
#include <QtTest/QSignalSpy>
#include <QtTest/QtTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>

#include <memory>
#include <vector>

namespace {

// A SIM dialog text present in every language file.
const char kSimKey[] = "IDS_PIN_CHECK_FAILED";

int callBox(const QString& function, int icon, QWidget* parent, const QString& title, const QString& text,
            const QString& button1, const QString& button2)
{
    if (function == QLatin1String("ShowMessageCustomize"))
        return CommonUtils::ShowMessageCustomize(icon, parent, title, text, button1, button2);
    return CommonUtils::ShowMessage(icon, parent, title, text, button1, button2);
}

} // namespace

class tst_HostCommon : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

    void settingsRoundTrip_data();
    void settingsRoundTrip();
    void settingsMissingKeyReadsEmpty();
    void settingsFromSeveralThreads();

    void queuedAnswerIsRecordedNotShown_data();
    void queuedAnswerIsRecordedNotShown();
    void queuedAnswersAreUsedInOrder();
    void nonInteractiveWithoutAnswerAnswersZero();
    void realBoxAnswersByButton_data();
    void realBoxAnswersByButton();
    void boxOffTheGuiThreadNeverBlocks();

    void translation_data();
    void translation();
    void missingLanguageKeepsCurrent();

    void waitForThreadToStop_data();
    void waitForThreadToStop();
    void threadCountFromSeveralThreads();
    void resetStateClearsFlags();
    void miniModeFollowsFrameStyle_data();
    void miniModeFollowsFrameStyle();
    void pluginLibraryPathDefaultsToInstallRoot();
    void moveCentre_data();
    void moveCentre();

    void extendDialogTitleAndMainWidget();
    void extendDialogSignalsClose();

private:
    HostFixture m_host;
};

void tst_HostCommon::initTestCase()
{
    m_host.init();
}

void tst_HostCommon::init()
{
    m_host.beginTest();
}

void tst_HostCommon::cleanup()
{
    HostFramework::setNonInteractive(true);
    Change::LoadLanguage(QString());
    QVERIFY2(m_host.endTest(), qPrintable(m_host.lastError()));
}

void tst_HostCommon::cleanupTestCase()
{
    m_host.shutdown();
}

// --- settings -----------------------------------------------------------------------------------

void tst_HostCommon::settingsRoundTrip_data()
{
    QTest::addColumn<QString>("section");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");

    QTest::newRow("plain") << "customize"
                           << "simtype"
                           << "1";
    QTest::newRow("comma text stays one text") << "pluginsets"
                                               << "default"
                                               << "DeviceMgrUIPlugin,DialupPlugin";
    QTest::newRow("no section") << ""
                                << "imsi_detach"
                                << "0";
    QTest::newRow("non-ASCII") << "Device"
                               << "ProductType" << QString::fromUtf8("Gerät Ü 1");
    QTest::newRow("empty value") << "support"
                                 << "type"
                                 << "";
    QTest::newRow("spaces and equals sign") << "customize"
                                            << "uimtype"
                                            << " a = b ";
}

void tst_HostCommon::settingsRoundTrip()
{
    QFETCH(QString, section);
    QFETCH(QString, key);
    QFETCH(QString, value);

    CommonUtils::SetSettings(section, key, value);
    QCOMPARE(CommonUtils::GetSettings(section, key), value);
    // It is on disk at once, in the file the host was given.
    QSettings file(m_host.settingsPath(), QSettings::IniFormat);
    QCOMPARE(file.value(section.isEmpty() ? key : section + QLatin1Char('/') + key).toString(), value);
}

void tst_HostCommon::settingsMissingKeyReadsEmpty()
{
    QVERIFY(CommonUtils::GetSettings(QStringLiteral("nosuchsection"), QStringLiteral("key")).isEmpty());
    CommonUtils::SetSettings(QStringLiteral("customize"), QStringLiteral("simtype"), QStringLiteral("2"));
    QVERIFY(CommonUtils::GetSettings(QStringLiteral("customize"), QStringLiteral("nosuchkey")).isEmpty());
    // Section and key are not interchangeable.
    QVERIFY(CommonUtils::GetSettings(QStringLiteral("simtype"), QStringLiteral("customize")).isEmpty());
}

void tst_HostCommon::settingsFromSeveralThreads()
{
    const int threads = 4;
    const int rounds = 40;
    std::vector<std::unique_ptr<QThread>> workers;
    QAtomicInt mismatches;
    for (int t = 0; t < threads; ++t) {
        workers.emplace_back(QThread::create([t, &mismatches] {
            const QString section = QStringLiteral("worker%1").arg(t);
            for (int i = 0; i < rounds; ++i) {
                const QString value = QString::number(i);
                CommonUtils::SetSettings(section, QStringLiteral("round"), value);
                if (CommonUtils::GetSettings(section, QStringLiteral("round")) != value)
                    mismatches.ref();
            }
        }));
        workers.back()->start();
    }
    for (auto& w : workers)
        QVERIFY(w->wait(30000));
    QCOMPARE(mismatches.loadRelaxed(), 0);
    for (int t = 0; t < threads; ++t)
        QCOMPARE(CommonUtils::GetSettings(QStringLiteral("worker%1").arg(t), QStringLiteral("round")),
                 QString::number(rounds - 1));
}

// --- message boxes ------------------------------------------------------------------------------

void tst_HostCommon::queuedAnswerIsRecordedNotShown_data()
{
    QTest::addColumn<QString>("function");
    QTest::addColumn<int>("icon");
    QTest::addColumn<bool>("withParent");
    QTest::addColumn<QString>("button1");
    QTest::addColumn<QString>("button2");
    QTest::addColumn<int>("answer");

    QTest::newRow("question, first button")
        << "ShowMessage" << int(QMessageBox::Question) << true << "IDS_YES"
        << "IDS_NO" << int(MSGBOX_ACCEPTED);
    QTest::newRow("question, second button")
        << "ShowMessage" << int(QMessageBox::Question) << true << "IDS_YES"
        << "IDS_NO" << 0;
    QTest::newRow("warning, one button, no parent")
        << "ShowMessage" << int(QMessageBox::Warning) << false << "IDS_OK"
        << "" << int(MSGBOX_ACCEPTED);
    QTest::newRow("kept on top, information")
        << "ShowMessageCustomize" << int(QMessageBox::Information) << true << "IDS_OK"
        << "" << int(MSGBOX_ACCEPTED);
}

void tst_HostCommon::queuedAnswerIsRecordedNotShown()
{
    QFETCH(QString, function);
    QFETCH(int, icon);
    QFETCH(bool, withParent);
    QFETCH(QString, button1);
    QFETCH(QString, button2);
    QFETCH(int, answer);

    QWidget* parent = withParent ? m_host.mainWindow() : nullptr;
    QSignalSpy spy(HostFramework::Monitor::instance(), &HostFramework::Monitor::messageRecorded);
    HostFramework::pushNextAnswer(answer);
    QCOMPARE(callBox(function, icon, parent, QStringLiteral("IDS_PROMPT_CAPTION"), QStringLiteral("IDS_TEXT"),
                     button1, button2),
             answer);
    QCOMPARE(HostFramework::pendingAnswers(), 0);
    QVERIFY(!QApplication::activeModalWidget());

    const auto records = HostFramework::messageRecords();
    QCOMPARE(records.size(), 1);
    const HostFramework::MessageRecord& r = records.first();
    QCOMPARE(r.function, function);
    QCOMPARE(r.icon, icon);
    QCOMPARE(r.parent.data(), parent);
    QCOMPARE(r.parentName, withParent ? QStringLiteral("TestMainWindow") : QString());
    QCOMPARE(r.title, QStringLiteral("IDS_PROMPT_CAPTION"));
    QCOMPARE(r.text, QStringLiteral("IDS_TEXT"));
    QCOMPARE(r.buttons, button2.isEmpty() ? QStringList{button1} : QStringList({button1, button2}));
    QCOMPARE(r.answer, answer);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).value<HostFramework::MessageRecord>().title,
             QStringLiteral("IDS_PROMPT_CAPTION"));
}

void tst_HostCommon::queuedAnswersAreUsedInOrder()
{
    HostFramework::pushNextAnswer(MSGBOX_ACCEPTED);
    HostFramework::pushNextAnswer(0);
    QCOMPARE(HostFramework::pendingAnswers(), 2);
    QCOMPARE(CommonUtils::ShowMessage(QMessageBox::Question, nullptr, QStringLiteral("first"), QString(),
                                      QStringLiteral("IDS_YES"), QStringLiteral("IDS_NO")),
             int(MSGBOX_ACCEPTED));
    QCOMPARE(CommonUtils::ShowMessage(QMessageBox::Question, nullptr, QStringLiteral("second"), QString(),
                                      QStringLiteral("IDS_YES"), QStringLiteral("IDS_NO")),
             0);
    QCOMPARE(HostFramework::pendingAnswers(), 0);
    QCOMPARE(HostFramework::messageRecords().size(), 2);
    QCOMPARE(HostFramework::messageRecords().at(1).title, QStringLiteral("second"));
}

void tst_HostCommon::nonInteractiveWithoutAnswerAnswersZero()
{
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("no queued answer")));
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(CommonUtils::ShowMessage(QMessageBox::Critical, m_host.mainWindow(), QStringLiteral("IDS_ERROR"),
                                      QStringLiteral("IDS_TEXT"), QStringLiteral("IDS_OK")),
             0);
    QVERIFY(timer.elapsed() < 2000);
    QCOMPARE(HostFramework::messageRecords().size(), 1);
    QCOMPARE(HostFramework::messageRecords().first().answer, 0);
}

void tst_HostCommon::realBoxAnswersByButton_data()
{
    QTest::addColumn<QString>("function");
    QTest::addColumn<QString>("button2");
    QTest::addColumn<QString>("click"); // object name of the button the user presses
    QTest::addColumn<int>("answer");

    QTest::newRow("yes") << "ShowMessage"
                         << "IDS_NO"
                         << "HostMessageBox_Button1" << int(MSGBOX_ACCEPTED);
    QTest::newRow("no") << "ShowMessage"
                        << "IDS_NO"
                        << "HostMessageBox_Button2" << 0;
    QTest::newRow("on top, yes") << "ShowMessageCustomize"
                                 << "IDS_NO"
                                 << "HostMessageBox_Button1" << int(MSGBOX_ACCEPTED);
    QTest::newRow("on top, single button") << "ShowMessageCustomize"
                                           << ""
                                           << "HostMessageBox_Button1" << int(MSGBOX_ACCEPTED);
}

void tst_HostCommon::realBoxAnswersByButton()
{
    QFETCH(QString, function);
    QFETCH(QString, button2);
    QFETCH(QString, click);
    QFETCH(int, answer);

    QVERIFY(Change::LoadLanguage(QStringLiteral("de")));
    HostFramework::setNonInteractive(false);
    QString seenTitle, seenText;
    QStringList seenButtons;
    bool onTop = false;
    bool clicked = false;
    QTimer::singleShot(0, this, [&] {
        QWidget* modal = QApplication::activeModalWidget();
        auto* box = qobject_cast<QMessageBox*>(modal);
        if (!box || box->objectName() != QLatin1String("HostMessageBox"))
            return; // the box never showing fails the test through the missing click
        seenTitle = box->windowTitle();
        seenText = box->text();
        onTop = box->windowFlags().testFlag(Qt::WindowStaysOnTopHint);
        const auto buttons =
            box->findChildren<QPushButton*>(QRegularExpression(QStringLiteral("^HostMessageBox_")));
        for (QPushButton* b : buttons)
            seenButtons << b->objectName() + QLatin1Char('=') + b->text();
        if (auto* button = box->findChild<QPushButton*>(click)) {
            clicked = true;
            QTest::mouseClick(button, Qt::LeftButton);
        } else {
            box->done(0);
        }
    });
    const int got = callBox(function, QMessageBox::Question, m_host.mainWindow(), QStringLiteral("Title"),
                            QStringLiteral("Text"), QStringLiteral("IDS_YES"), button2);
    QVERIFY(clicked);
    QCOMPARE(got, answer);
    QCOMPARE(seenTitle, QStringLiteral("Title"));
    QCOMPARE(seenText, QStringLiteral("Text"));
    QCOMPARE(onTop, function == QLatin1String("ShowMessageCustomize"));
    // Button texts are the translations of the keys passed.
    QVERIFY(seenButtons.contains(QStringLiteral("HostMessageBox_Button1=") +
                                 Change::tr(QStringLiteral("IDS_YES"))));
    QVERIFY(!seenButtons.contains(QStringLiteral("HostMessageBox_Button1=IDS_YES")));
    QCOMPARE(seenButtons.size(), button2.isEmpty() ? 1 : 2);
    QCOMPARE(HostFramework::messageRecords().size(), 1);
    QCOMPARE(HostFramework::messageRecords().first().answer, answer);
}

void tst_HostCommon::boxOffTheGuiThreadNeverBlocks()
{
    HostFramework::setNonInteractive(false);
    int withoutAnswer = -1;
    int withAnswer = -1;
    HostFramework::pushNextAnswer(MSGBOX_ACCEPTED);
    std::unique_ptr<QThread> worker(QThread::create([&] {
        withAnswer = CommonUtils::ShowMessage(QMessageBox::Information, nullptr, QStringLiteral("queued"),
                                              QString(), QStringLiteral("IDS_OK"));
        withoutAnswer =
            CommonUtils::ShowMessage(QMessageBox::Information, nullptr, QStringLiteral("not queued"),
                                     QString(), QStringLiteral("IDS_OK"));
    }));
    worker->start();
    QVERIFY(worker->wait(10000));
    QCOMPARE(withAnswer, int(MSGBOX_ACCEPTED));
    QCOMPARE(withoutAnswer, 0);
    QCOMPARE(HostFramework::messageRecords().size(), 2);
}

// --- translations -------------------------------------------------------------------------------

void tst_HostCommon::translation_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QByteArray>("context");
    QTest::addColumn<bool>("translated");

    QTest::newRow("no language") << "" << kSimKey << QByteArray("DeviceMgrUIPlugin") << false;
    QTest::newRow("none unloads") << "none" << kSimKey << QByteArray("DeviceMgrUIPlugin") << false;
    QTest::newRow("German SIM text") << "de" << kSimKey << QByteArray("DeviceMgrUIPlugin") << true;
    QTest::newRow("English SIM text") << "en" << kSimKey << QByteArray("DeviceMgrUIPlugin") << true;
    QTest::newRow("German, unknown key")
        << "de"
        << "IDS_NO_SUCH_TEXT_ANYWHERE" << QByteArray("DeviceMgrUIPlugin") << false;
    QTest::newRow("German, other context") << "de" << kSimKey << QByteArray("SomeOtherPlugin") << false;
}

void tst_HostCommon::translation()
{
    QFETCH(QString, language);
    QFETCH(QString, key);
    QFETCH(QByteArray, context);
    QFETCH(bool, translated);

    // Start from another language so that unloading is really tested.
    QVERIFY(Change::LoadLanguage(QStringLiteral("de")));
    QVERIFY(Change::LoadLanguage(language));
    QCOMPARE(Change::CurrentLanguage(), language == QLatin1String("none") ? QString() : language);
    const QString text = Change::tr(key, context.constData());
    if (translated) {
        QVERIFY(!text.isEmpty());
        QVERIFY2(text != key, qPrintable(text));
    } else {
        QCOMPARE(text, key);
    }
}

void tst_HostCommon::missingLanguageKeepsCurrent()
{
    QVERIFY(Change::LoadLanguage(QStringLiteral("de")));
    const QString german = Change::tr(QString::fromLatin1(kSimKey));
    QVERIFY(Change::LoadLanguage(QStringLiteral("en")));
    QVERIFY(Change::tr(QString::fromLatin1(kSimKey)) != german);
    QVERIFY(Change::LoadLanguage(QStringLiteral("de")));

    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("no tessaro_xx.qm")));
    QVERIFY(!Change::LoadLanguage(QStringLiteral("xx")));
    QCOMPARE(Change::CurrentLanguage(), QStringLiteral("de"));
    QCOMPARE(Change::tr(QString::fromLatin1(kSimKey)), german);

    // A language folder without the file: nothing loads.
    QTemporaryDir empty;
    HostFramework::setLanguageDir(empty.path());
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("no tessaro_en.qm")));
    const bool loaded = Change::LoadLanguage(QStringLiteral("en"));
    HostFramework::setLanguageDir(QStringLiteral(TESSARO_LANG_DIR));
    QVERIFY(!loaded);
    QCOMPARE(Change::tr(QString::fromLatin1(kSimKey)), german);
}

// --- threads and flags --------------------------------------------------------------------------

void tst_HostCommon::waitForThreadToStop_data()
{
    QTest::addColumn<bool>("releaseFirst");
    QTest::addColumn<bool>("stopped");

    QTest::newRow("stops in time") << true << true;
    QTest::newRow("still busy after the wait") << false << false;
}

void tst_HostCommon::waitForThreadToStop()
{
    QFETCH(bool, releaseFirst);
    QFETCH(bool, stopped);

    QSemaphore go;
    std::unique_ptr<QThread> thread(QThread::create([&go] { go.acquire(); }));
    thread->start();
    if (releaseFirst)
        go.release();
    QElapsedTimer timer;
    timer.start();
    if (!stopped)
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("still running after 1 s")));
    QCOMPARE(CommonUtils::WaitForThreadToStop(thread.get(), 1), stopped);
    const qint64 waited = timer.elapsed();
    if (!stopped) {
        // Bounded: about the second asked for, never indefinitely.
        QVERIFY2(waited >= 900 && waited < 5000, qPrintable(QString::number(waited)));
        QVERIFY(thread->isRunning());
        go.release();
        QVERIFY(CommonUtils::WaitForThreadToStop(thread.get(), 5));
    }
    QVERIFY(thread->isFinished());
}

void tst_HostCommon::threadCountFromSeveralThreads()
{
    const int threads = 6;
    const int rounds = 200;
    std::vector<std::unique_ptr<QThread>> workers;
    for (int t = 0; t < threads; ++t) {
        workers.emplace_back(QThread::create([t] {
            const QString who = QStringLiteral("worker%1").arg(t);
            for (int i = 0; i < rounds; ++i)
                CommonUtils::ThreadCountInc(who);
            for (int i = 0; i < rounds / 2; ++i)
                CommonUtils::ThreadCountDec(who);
        }));
    }
    // Counting logs a line per call; keep the test output readable.
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    for (auto& w : workers)
        w->start();
    bool allStopped = true;
    for (auto& w : workers)
        allStopped = CommonUtils::WaitForThreadToStop(w.get(), 30) && allStopped;
    QLoggingCategory::setFilterRules(QString());
    QVERIFY(allStopped);
    QCOMPARE(CommonUtils::ThreadCount(), threads * rounds / 2);
    QVERIFY(CommonUtils::WaitForThreadToStop(nullptr, 1));
}

void tst_HostCommon::resetStateClearsFlags()
{
    std::unique_ptr<QThread> worker(QThread::create([] {
        CommonUtils::SetShutDownFlag();
        CommonUtils::SetLteMode(1);
        CommonUtils::ThreadCountInc(QStringLiteral("worker"));
    }));
    worker->start();
    QVERIFY(worker->wait(10000));
    QVERIFY(CommonUtils::IsShuttingDown());
    QCOMPARE(CommonUtils::GetLteMode(), 1);
    QCOMPARE(CommonUtils::ThreadCount(), 1);
    HostFramework::resetState();
    QVERIFY(!CommonUtils::IsShuttingDown());
    QCOMPARE(CommonUtils::GetLteMode(), 0);
    QCOMPARE(CommonUtils::ThreadCount(), 0);
}

void tst_HostCommon::miniModeFollowsFrameStyle_data()
{
    QTest::addColumn<int>("style");
    QTest::addColumn<bool>("mini");

    QTest::newRow("main frame") << int(FRAME_STYLE_MAIN) << false;
    QTest::newRow("mini frame") << int(FRAME_STYLE_MINI) << true;
    QTest::newRow("both") << int(FRAME_STYLE_MAIN | FRAME_STYLE_MINI) << true;
    QTest::newRow("other bits only") << 0x2 << false;
}

void tst_HostCommon::miniModeFollowsFrameStyle()
{
    QFETCH(int, style);
    QFETCH(bool, mini);
    HostFramework::setFrameStyle(style);
    QCOMPARE(CommonUtils::GetFrameStyle(), style);
    QCOMPARE(CommonUtils::IsMiniMode(), mini);
    HostFramework::setFrameStyle(FRAME_STYLE_MAIN);
}

void tst_HostCommon::pluginLibraryPathDefaultsToInstallRoot()
{
    // The suites live in <build>/tests, like the programs in <build>/bin: the root is <build>.
    QCOMPARE(QDir(CommonUtils::GetPluginLibraryPath()).canonicalPath(),
             QDir(QStringLiteral(TESSARO_BUILD_DIR)).canonicalPath());
    HostFramework::setPluginLibraryPath(QStringLiteral("/opt/tessaro"));
    QCOMPARE(CommonUtils::GetPluginLibraryPath(), QStringLiteral("/opt/tessaro"));
    HostFramework::setPluginLibraryPath(QString());
    QCOMPARE(QDir(CommonUtils::GetPluginLibraryPath()).canonicalPath(),
             QDir(QStringLiteral(TESSARO_BUILD_DIR)).canonicalPath());
}

void tst_HostCommon::moveCentre_data()
{
    QTest::addColumn<bool>("withParent");
    QTest::newRow("on its parent") << true;
    QTest::newRow("on the screen") << false;
}

void tst_HostCommon::moveCentre()
{
    QFETCH(bool, withParent);

    QMainWindow* main = m_host.mainWindow();
    main->setGeometry(40, 60, 800, 600);
    if (withParent)
        main->show();
    QVERIFY(QTest::qWaitForWindowExposed(main) || !withParent);
    QDialog dialog(withParent ? main : nullptr);
    dialog.resize(200, 100);
    CommonUtils::MoveCentre(&dialog);
    const QRect area =
        withParent ? main->frameGeometry() : QGuiApplication::primaryScreen()->availableGeometry();
    const QPoint offset = dialog.frameGeometry().center() - area.center();
    main->hide();
    QVERIFY2(offset.manhattanLength() <= 2,
             qPrintable(QStringLiteral("off by %1,%2").arg(offset.x()).arg(offset.y())));
    CommonUtils::MoveCentre(nullptr); // tolerated
}

// --- dialog bases -------------------------------------------------------------------------------

void tst_HostCommon::extendDialogTitleAndMainWidget()
{
    ExtendDialog dialog(nullptr, 1);
    QCOMPARE(dialog.WidgetKind(), 1);
    dialog.setWindowTitle(QStringLiteral("IDS_PIN_VERIFY"));
    QCOMPARE(dialog.windowTitle(), QStringLiteral("IDS_PIN_VERIFY"));
    auto* title = dialog.findChild<QLabel*>(QStringLiteral("ExtendDialog_TitleLabel"));
    QVERIFY(title);
    QCOMPARE(title->text(), QStringLiteral("IDS_PIN_VERIFY"));

    QPointer<QWidget> first = new QWidget;
    dialog.AddMainWidget(first);
    QCOMPARE(dialog.MainWidget(), first.data());
    QCOMPARE(first->parentWidget(), &dialog);
    auto* edit = new ExtendLineEdit;
    dialog.AddMainWidget(edit);
    QVERIFY(!first); // the page it replaces goes with it
    QCOMPARE(dialog.MainWidget(), static_cast<QWidget*>(edit));
    delete edit; // a caller deleting its own page leaves no dangling main widget
    QVERIFY(!dialog.MainWidget());
}

void tst_HostCommon::extendDialogSignalsClose()
{
    ExtendDialog dialog;
    QSignalSpy closed(&dialog, &ExtendDialog::dlgCloseEvent);
    QSignalSpy finished(&dialog, &QDialog::finished);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    QVERIFY(dialog.close());
    QCOMPARE(closed.count(), 1);
    QVERIFY(!dialog.isVisible());
    QCOMPARE(finished.count(), 1); // QDialog's own handling still ran
}

QTEST_MAIN(tst_HostCommon)
#include "tst_hostcommon.moc"
