// ExtendLineEdit: the host's input field base.
#include "ExtendLineEdit.h"

ExtendLineEdit::ExtendLineEdit(QWidget* parent)
    : QLineEdit(parent)
{
    // Code fields sit in small dialogs; the platform's focus frame would crowd them.
    setAttribute(Qt::WA_MacShowFocusRect, false);
}

ExtendLineEdit::~ExtendLineEdit() = default;
