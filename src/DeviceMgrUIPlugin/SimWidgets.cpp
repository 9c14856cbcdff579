// The SIM dialogs' code field (`LineEdit`) and dialog shell (`SimDlg`).
#include "SimWidgets.h"

#include "Change.h"
#include "CommonUtils.h"
#include "DeviceMgrLog.h"

#include <QtGui/QCloseEvent>
#include <QtGui/QKeyEvent>
#include <QtGui/QKeySequence>
#include <QtWidgets/QAction>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMessageBox>

namespace {

// What the keyboard sends for Ctrl+X.
const QChar kCtrlX(0x18);

} // namespace

// ---- LineEdit ----------------------------------------------------------------------------------------

LineEdit::LineEdit(QWidget* parent)
    : ExtendLineEdit(parent)
{
    RightClickActions();
}

void LineEdit::RightClickActions()
{
    m_pUndo = new QAction(QStringLiteral("Undo"), this);
    m_pCut = new QAction(QStringLiteral("Cut"), this);
    m_pCopy = new QAction(QStringLiteral("Copy"), this);
    m_pPaste = new QAction(QStringLiteral("Paste"), this);
    m_pDelete = new QAction(QStringLiteral("Delete"), this);
    m_pSelectAll = new QAction(QStringLiteral("Select All"), this);
    if (!m_pUndo || !m_pCut || !m_pCopy || !m_pPaste || !m_pDelete || !m_pSelectAll) {
        DM_WARN("%s : %s : %s : , context menu action creation failed");
        delete m_pUndo;
        delete m_pCut;
        delete m_pCopy;
        delete m_pPaste;
        delete m_pDelete;
        delete m_pSelectAll;
        m_pUndo = m_pCut = m_pCopy = m_pPaste = m_pDelete = m_pSelectAll = nullptr;
        return;
    }
    m_pUndo->setObjectName(QStringLiteral("DeviceMgrUI_VerifyUndo"));
    m_pCut->setObjectName(QStringLiteral("DeviceMgrUI_VerifyCut"));
    m_pCopy->setObjectName(QStringLiteral("DeviceMgrUI_VerifyCopy"));
    m_pPaste->setObjectName(QStringLiteral("DeviceMgrUI_VerifyPaste"));
    m_pDelete->setObjectName(QStringLiteral("DeviceMgrUI_VerifyDelete"));
    m_pSelectAll->setObjectName(QStringLiteral("DeviceMgrUI_VerifySelectAll"));

    connect(m_pUndo, SIGNAL(triggered()), this, SLOT(undoVerify()));
    // There is deliberately no cut: "Cut" only copies, and copying is disabled too, so a hidden
    // code can never leave the field.
    connect(m_pCut, SIGNAL(triggered()), this, SLOT(copy()));
    connect(m_pCopy, SIGNAL(triggered()), this, SLOT(copy()));
    connect(m_pPaste, SIGNAL(triggered()), this, SLOT(pasteVerify()));
    connect(m_pDelete, SIGNAL(triggered()), this, SLOT(deleteVerify()));
    connect(m_pSelectAll, SIGNAL(triggered()), this, SLOT(selectAllVerify()));
    m_pCut->setEnabled(false);
    m_pCopy->setEnabled(false);
}

void LineEdit::ShowContextMenu(const QPoint& pos)
{
    if (!m_pUndo)
        return;
    // Offer only what would do something now; Cut and Copy never do.
    m_pUndo->setEnabled(isUndoAvailable());
    m_pDelete->setEnabled(hasSelectedText());
    m_pSelectAll->setEnabled(!text().isEmpty());
    m_pPaste->setEnabled(true);

    // A pop-up rather than exec(): the menu must not run an event loop of its own inside the
    // service's slot, and it deletes itself once closed.
    QMenu* menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("DeviceMgrUI_VerifyMenu"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(m_pUndo);
    menu->addSeparator();
    menu->addAction(m_pCut);
    menu->addAction(m_pCopy);
    menu->addAction(m_pPaste);
    menu->addAction(m_pDelete);
    menu->addSeparator();
    menu->addAction(m_pSelectAll);
    menu->popup(mapToGlobal(pos));
}

void LineEdit::undoVerify()
{
    undo();
}

void LineEdit::pasteVerify()
{
    paste();
}

void LineEdit::deleteVerify()
{
    del();
}

void LineEdit::selectAllVerify()
{
    selectAll();
}

bool LineEdit::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return ExtendLineEdit::eventFilter(watched, event);
    auto* key = static_cast<QKeyEvent*>(event);
    // The platform sends Ctrl+X as the control character; a synthesised key press may carry the
    // plain letter with the modifier instead. Either way the field is not cut.
    if (key->text() == QString(kCtrlX) || key->matches(QKeySequence::Cut)) {
        event->ignore();
        return true;
    }
    return ExtendLineEdit::eventFilter(watched, event);
}

// ---- SimDlg ------------------------------------------------------------------------------------------

SimDlg::SimDlg(QWidget* parent, bool askOnClose, bool okCancelButtons)
    : ExtendDialog(parent)
    , m_bAskOnClose(askOnClose)
    , m_bAsking(false)
    , m_bOkCancelButtons(okCancelButtons)
{
}

bool SimDlg::confirmAbandon()
{
    const QString title = Change::tr(QStringLiteral("IDS_MAINFRM_PROMPT"), "DeviceMgrUIPlugin");
    const QString text = Change::tr(QStringLiteral("IDS_MAINFRM_PIN_CANCELPROMPT"), "DeviceMgrUIPlugin");
    m_bAsking = true;
    const int reply = m_bOkCancelButtons
                          ? CommonUtils::ShowMessage(QMessageBox::Question, this, title, text,
                                                     QStringLiteral("IDS_OK"), QStringLiteral("IDS_CANCEL"))
                          : CommonUtils::ShowMessage(QMessageBox::Question, this, title, text,
                                                     QStringLiteral("IDS_YES"), QStringLiteral("IDS_NO"));
    m_bAsking = false;
    return reply == MSGBOX_ACCEPTED;
}

void SimDlg::closeEvent(QCloseEvent* event)
{
    if (m_bAsking) {
        // The question is already on screen; a second request waits for its answer.
        event->ignore();
        return;
    }
    // Hidden before the base class sees the event: QDialog would otherwise reject() a visible
    // dialog, and reject() asks again.
    if (m_bAskOnClose) {
        if (confirmAbandon()) {
            hide();
            ExtendDialog::closeEvent(event);
        } else {
            event->ignore();
        }
    } else {
        // Closed by the program: the next close by the user asks again.
        hide();
        m_bAskOnClose = true;
        ExtendDialog::closeEvent(event);
    }
    emit closeRequested(event);
}

void SimDlg::reject()
{
    DM_LOG("%s : %s : %s : called");
    if (m_bAsking)
        return;
    if (m_bAskOnClose && !confirmAbandon())
        return;
    ExtendDialog::reject();
}

void SimDlg::hideEvent(QHideEvent* event)
{
    const auto fields = findChildren<QLineEdit*>();
    for (QLineEdit* field : fields) {
        // setText, unlike clear(), also drops the undo history: "Undo" cannot bring a code back.
        field->setText(QString());
    }
    emit signalFieldsCleared();
    ExtendDialog::hideEvent(event);
}
