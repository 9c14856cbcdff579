// The code field and the dialog shell of the SIM dialogs, as a user meets them: what can be typed,
// what can leave the field, and the question before a pending entry is abandoned.
#include "SimTestSupport.h"

#include "Change.h"
#include "HostFixture.h"

#include <QtGui/QClipboard>
#include <QtGui/QRegExpValidator>
#include <QtWidgets/QAction>
#include <QtWidgets/QMenu>
#include <QtWidgets/QVBoxLayout>

#include <memory>

namespace {

// A code field set up as every SIM dialog sets it up.
struct CodeField
{
    std::unique_ptr<QWidget> window{new QWidget};
    LineEdit* edit = nullptr;

    CodeField()
    {
        window->setObjectName(QStringLiteral("TestFieldWindow"));
        edit = new LineEdit(window.get());
        edit->setEchoMode(QLineEdit::Password);
        edit->setMaxLength(8);
        edit->setValidator(new QRegExpValidator(QRegExp(QStringLiteral("[0-9]{1,8}")), edit));
        edit->installEventFilter(edit);
        window->show();
        edit->setFocus();
    }
};

QAction* action(LineEdit* edit, const char* name)
{
    return edit->findChild<QAction*>(QLatin1String(name));
}

// A SIM dialog shell holding one code field.
struct Shell
{
    SimDlg* dialog = nullptr;
    QLineEdit* edit = nullptr;

    explicit Shell(bool askOnClose = true, bool okCancel = false)
    {
        dialog = new SimDlg(nullptr, askOnClose, okCancel);
        dialog->setObjectName(QStringLiteral("TestSimDlg"));
        auto* inner = new QWidget;
        auto* layout = new QVBoxLayout(inner);
        edit = new LineEdit(inner);
        edit->setEchoMode(QLineEdit::Password);
        layout->addWidget(edit);
        dialog->AddMainWidget(inner);
        dialog->show();
        QTest::keyClicks(edit, QStringLiteral("1357"));
    }
    ~Shell() { delete dialog; }
};

const QString kQuestion = QStringLiteral(
    "ShowMessage 4 TestSimDlg | IDS_MAINFRM_PROMPT | IDS_MAINFRM_PIN_CANCELPROMPT | IDS_YES,IDS_NO");

} // namespace

class tst_SimWidgets : public QObject
{
    Q_OBJECT

private:
    HostFixture m_host;

private slots:
    void initTestCase() { m_host.init(); }
    void init()
    {
        m_host.beginTest();
        QGuiApplication::clipboard()->setText(QStringLiteral("clipboard-before"));
    }
    void cleanup() { QVERIFY2(m_host.endTest(), qPrintable(m_host.lastError())); }
    void cleanupTestCase() { m_host.shutdown(); }

    // ---- LineEdit --------------------------------------------------------------------------------

    void onlyDigitsUpToEight_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("kept");
        QTest::newRow("letters refused") << "12ab34"
                                         << "1234";
        QTest::newRow("ninth digit refused") << "123456789"
                                             << "12345678";
    }
    void onlyDigitsUpToEight()
    {
        QFETCH(QString, typed);
        QFETCH(QString, kept);
        CodeField f;
        QTest::keyClicks(f.edit, typed);
        QCOMPARE(f.edit->text(), kept);
        QCOMPARE(f.edit->echoMode(), QLineEdit::Password);
        // What the screen shows is never the code.
        QVERIFY(f.edit->displayText() != kept);
    }

    void cutNeverTakesTheCode_data()
    {
        QTest::addColumn<bool>("platformText");
        // What a keyboard sends (the control character 0x18) and what a synthesised Ctrl+X carries.
        QTest::newRow("control character") << true;
        QTest::newRow("Ctrl with the letter") << false;
    }
    void cutNeverTakesTheCode()
    {
        QFETCH(bool, platformText);
        CodeField f;
        QTest::keyClicks(f.edit, QStringLiteral("2468"));
        f.edit->selectAll();
        if (platformText)
            QTest::sendKeyEvent(QTest::Click, f.edit, Qt::Key_X, QString(QChar(0x18)), Qt::ControlModifier);
        else
            QTest::keyClick(f.edit, Qt::Key_X, Qt::ControlModifier);
        QCOMPARE(f.edit->text(), QStringLiteral("2468"));
        QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("clipboard-before"));
    }

    // "Cut" only copies, and copying a password field yields nothing: the code stays where it is.
    // Pasted letters are refused like typed ones.
    void cutActionCopiesNothingAndKeepsTheCode()
    {
        CodeField f;
        QTest::keyClicks(f.edit, QStringLiteral("8642"));
        f.edit->selectAll();
        action(f.edit, "DeviceMgrUI_VerifyCut")->trigger();
        action(f.edit, "DeviceMgrUI_VerifyCopy")->trigger();
        QTest::keyClick(f.edit, Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(f.edit->text(), QStringLiteral("8642"));
        QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("clipboard-before"));
        f.edit->clear();
        QGuiApplication::clipboard()->setText(QStringLiteral("12ab"));
        action(f.edit, "DeviceMgrUI_VerifyPaste")->trigger();
        QCOMPARE(f.edit->text(), QString());
    }

    void contextMenuOffersTheReducedSet()
    {
        CodeField f;
        QTest::keyClicks(f.edit, QStringLiteral("12"));
        f.edit->ShowContextMenu(QPoint(5, 5));
        auto* menu = f.edit->findChild<QMenu*>(QStringLiteral("DeviceMgrUI_VerifyMenu"));
        QVERIFY(menu);
        QTRY_VERIFY(menu->isVisible());
        QStringList shown;
        const auto actions = menu->actions();
        for (QAction* a : actions)
            if (!a->isSeparator())
                shown << QStringLiteral("%1%2").arg(a->text(),
                                                    a->isEnabled() ? QString() : QStringLiteral(" (off)"));
        // Nothing selected: nothing to delete; there is text, so Undo and Select All are offered.
        QCOMPARE(shown,
                 (QStringList{"Undo", "Cut (off)", "Copy (off)", "Paste", "Delete (off)", "Select All"}));
        menu->close();
        QTRY_VERIFY(!f.edit->findChild<QMenu*>(QStringLiteral("DeviceMgrUI_VerifyMenu")));
    }

    // ---- SimDlg ----------------------------------------------------------------------------------

    void confirmationBeforeAbandoning_data()
    {
        QTest::addColumn<QString>("how");
        QTest::addColumn<int>("answer");
        QTest::addColumn<bool>("stays");
        QTest::newRow("close button, No") << "close" << 0 << true;
        QTest::newRow("Escape, Yes") << "escape" << 1024 << false;
    }
    void confirmationBeforeAbandoning()
    {
        QFETCH(QString, how);
        QFETCH(int, answer);
        QFETCH(bool, stays);
        Shell shell;
        HostFramework::pushNextAnswer(answer);
        if (how == QLatin1String("close"))
            shell.dialog->close();
        else
            QTest::keyClick(shell.edit, Qt::Key_Escape);
        QCOMPARE(simtest::messages(), QStringList{kQuestion});
        QCOMPARE(shell.dialog->isVisible(), stays);
        QVERIFY(!shell.dialog->m_bAsking);
        // Kept: the digits are still there. Gone: nothing typed survives the dialog.
        QCOMPARE(shell.edit->text(), stays ? QStringLiteral("1357") : QString());
    }

    // A close by the program asks nothing and re-arms the question for the next close by the user.
    void closeWithoutAskingRearms()
    {
        Shell shell(false);
        shell.dialog->close();
        QVERIFY(!shell.dialog->isVisible());
        QCOMPARE(simtest::messages(), QStringList());
        QVERIFY(shell.dialog->m_bAskOnClose);
        QCOMPARE(shell.edit->text(), QString());
        shell.dialog->show();
        shell.dialog->close();
        QCOMPARE(simtest::messages(), QStringList{kQuestion});
        QVERIFY(shell.dialog->isVisible());
    }
};

QTEST_MAIN(tst_SimWidgets)
#include "tst_simwidgets.moc"
