// ExtendDialog: the host's framed dialog with an inner title and one main widget.
#include "ExtendDialog.h"

#include <QtGui/QCloseEvent>
#include <QtWidgets/QLabel>
#include <QtWidgets/QVBoxLayout>

ExtendDialog::ExtendDialog(QWidget* parent, int widgetKind)
    : QDialog(parent)
    , m_iWidgetKind(widgetKind)
    , m_pTitleLabel(new QLabel(this))
    , m_pLayout(new QVBoxLayout(this))
    , m_pMainWidget(nullptr)
{
    // The style sheets address the frame parts by these names.
    m_pTitleLabel->setObjectName(QStringLiteral("ExtendDialog_TitleLabel"));
    m_pTitleLabel->setProperty("widgetKind", widgetKind);
    if (widgetKind == 1) {
        m_pTitleLabel->setMinimumHeight(32); // the wizard frame's title band is taller
        // A wizard lays out its own margins inside its fixed size; the frame adds none.
        m_pLayout->setContentsMargins(0, 0, 0, 0);
        m_pLayout->setSpacing(0);
    }
    m_pLayout->setObjectName(QStringLiteral("ExtendDialog_Layout"));
    m_pLayout->addWidget(m_pTitleLabel);
}

ExtendDialog::~ExtendDialog()
{
    // The main widget dies with the dialog's children; it must not write back into a dying dialog.
    if (m_pMainWidget)
        disconnect(m_pMainWidget, nullptr, this, nullptr);
}

void ExtendDialog::AddMainWidget(QWidget* widget)
{
    if (widget == m_pMainWidget)
        return;
    if (m_pMainWidget) {
        m_pLayout->removeWidget(m_pMainWidget);
        delete m_pMainWidget;
    }
    m_pMainWidget = widget;
    if (widget) {
        widget->setParent(this);
        m_pLayout->addWidget(widget, 1);
        // Callers may delete their page themselves; forget it then rather than delete it twice.
        connect(widget, &QObject::destroyed, this, [this](QObject* gone) {
            if (gone == m_pMainWidget)
                m_pMainWidget = nullptr;
        });
    }
}

void ExtendDialog::setWindowTitle(const QString& title)
{
    QDialog::setWindowTitle(title);
    m_pTitleLabel->setText(title);
}

void ExtendDialog::closeEvent(QCloseEvent* event)
{
    emit dlgCloseEvent();
    QDialog::closeEvent(event);
}
