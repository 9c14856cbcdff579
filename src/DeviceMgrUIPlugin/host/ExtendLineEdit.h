// The host's line-edit base used for every input field of the plugins.
#pragma once

#include "HostExport.h"

#include <QtWidgets/QLineEdit>

class HOSTFW_EXPORT ExtendLineEdit : public QLineEdit
{
    Q_OBJECT
public:
    explicit ExtendLineEdit(QWidget* parent = nullptr);
    ~ExtendLineEdit() override;
};
