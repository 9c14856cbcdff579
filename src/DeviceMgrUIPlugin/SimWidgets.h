// The building blocks of every SIM dialog: the code field `LineEdit` and the dialog shell `SimDlg`.
#pragma once

#include "ExtendDialog.h"
#include "ExtendLineEdit.h"

class QAction;
class QCloseEvent;
class QHideEvent;
class QPoint;

// A password field for PIN, PUK and unlock codes. Its own context menu offers no way to take a
// code out of the field: "Cut" and "Copy" stay disabled, and Ctrl+X is swallowed.
class LineEdit : public ExtendLineEdit
{
    Q_OBJECT

public:
    explicit LineEdit(QWidget* parent);

    // Creates the six menu actions; on a failed creation the menu stays empty.
    void RightClickActions();
    // Pops the reduced menu up at `pos` (field coordinates).
    void ShowContextMenu(const QPoint& pos);

    bool eventFilter(QObject* watched, QEvent* event) override;

public slots:
    void undoVerify();
    void pasteVerify();
    void deleteVerify();
    void selectAllVerify();

private:
    QAction* m_pUndo = nullptr;
    QAction* m_pCut = nullptr;
    QAction* m_pCopy = nullptr;
    QAction* m_pPaste = nullptr;
    QAction* m_pDelete = nullptr;
    QAction* m_pSelectAll = nullptr;
};

// The frame of every SIM dialog: asks before a pending code entry is abandoned, whether the user
// closes the window or presses Escape.
class SimDlg : public ExtendDialog
{
    Q_OBJECT

public:
    explicit SimDlg(QWidget* parent = nullptr, bool askOnClose = true, bool okCancelButtons = false);

    // Set: the next close or Escape asks first. A close without asking sets it again, so a caller
    // that closes the dialog itself clears it right before.
    bool m_bAskOnClose;
    // Set while the confirmation box is open.
    bool m_bAsking;
    // The confirmation's buttons: "IDS_OK"/"IDS_CANCEL" when set, "IDS_YES"/"IDS_NO" when clear.
    bool m_bOkCancelButtons;

public slots:
    void reject() override;

signals:
    // Every close request, after the confirmation decided it (`event->isAccepted()`).
    void closeRequested(QCloseEvent* event);
    // The fields were emptied without an edit (textEdited is not emitted): whoever owns the OK
    // rule must apply it again, or OK stays enabled over an empty field.
    void signalFieldsCleared();

protected:
    void closeEvent(QCloseEvent* event) override;
    // Nothing typed may outlive the dialog on screen, however it went away.
    void hideEvent(QHideEvent* event) override;

private:
    // True when the user confirmed that the entry may be abandoned.
    bool confirmAbandon();
};
