// The host's dialog base: a framed dialog holding one main widget, with a close notification.
#pragma once

#include "HostExport.h"

#include <QtWidgets/QDialog>

class QLabel;
class QVBoxLayout;
class QCloseEvent;

class HOSTFW_EXPORT ExtendDialog : public QDialog
{
    Q_OBJECT
public:
    // `widgetKind` 0 is an ordinary dialog, 1 a wizard frame (wider title area).
    explicit ExtendDialog(QWidget* parent = nullptr, int widgetKind = 0);
    ~ExtendDialog() override;

    // Place `widget` as the dialog's content below the title (the dialog takes ownership).
    void AddMainWidget(QWidget* widget);
    QWidget* MainWidget() const { return m_pMainWidget; }
    int WidgetKind() const { return m_iWidgetKind; }

    // Sets the window title and the title shown inside the frame.
    void setWindowTitle(const QString& title);

signals:
    // Emitted whenever the dialog is closed through a close event.
    void dlgCloseEvent();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    int m_iWidgetKind;
    QLabel* m_pTitleLabel;
    QVBoxLayout* m_pLayout;
    QWidget* m_pMainWidget;
};
