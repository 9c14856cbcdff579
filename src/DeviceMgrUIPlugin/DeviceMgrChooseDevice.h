// The device chooser: the dialog listing the attached devices, the switch of the active one and the
// reload of the plugins that depend on the device.
#pragma once

#include "ExtendDialog.h"
#include "ZelkSdk.h"

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QStringList>
#include <QtWidgets/QItemDelegate>

class DeviceMgrUILogic;
class QTableWidget;
class QTableWidgetItem;

class ChooseDevExtendDialog : public ExtendDialog
{
    Q_OBJECT
public:
    explicit ChooseDevExtendDialog(QWidget* parent = nullptr);
    ~ChooseDevExtendDialog() override;
};

// Draws the focused cell's frame as a plain line in the palette's role-3 colour.
class TableDelegateItem : public QItemDelegate
{
    Q_OBJECT
public:
    using QItemDelegate::QItemDelegate;

protected:
    void drawFocus(QPainter* painter, const QStyleOptionViewItem& option, const QRect& rect) const override;
};

class ChooseDevice : public QObject
{
    Q_OBJECT
public:
    explicit ChooseDevice(QObject* parent = nullptr);
    ~ChooseDevice() override;

    // Shows the dialog (built on first need) with the device list refilled.
    void ShowChooseDlg(QWidget* parent);
    void createChooseDlg(QWidget* parent);
    void PopulateList();
    void ChangeLang();
    // Has the host reload the plugin set of `devName` (a device name, "IMSI..." or "GID...") when it
    // differs from the loaded one, or always with `bForce`.
    void ReloadPlugins(QString devName, bool bForce);
    void BroadCastNotify(unsigned int code, unsigned int wparam, unsigned int lparam);

    // The dialog while it is open (null when closed), and the lists of the last reload.
    ChooseDevExtendDialog* dialog() const { return m_pDlg.data(); }
    QStringList reloadNewPlugins() const { return m_strListNewPlugins; }
    QStringList reloadReplacedPlugins() const { return m_strListReplacedPlugins; }

public slots:
    void CloseDlg();
    void onDeviceChangeCancelButtonClicked();
    void onDeviceChangeOkButtonClicked();
    void onItemDoubleClicked(int row, int column);
    void onTableItemSelectionChanged();

private:
    // The name of a listed device as the SDK's 8-bit text, bounded by its field.
    static QString deviceName(const _ZELK_ST_DEVICE_INFO& device);
    // Whether a listed device is the active one. The SDK reports the active name in a shorter
    // field than the list, so a long listed name is compared as far as that field reaches.
    static bool isActiveDevice(const _ZELK_ST_DEVICE_INFO& device, const QString& activeName, int activePort);

    DeviceMgrUILogic* m_pUILogic = nullptr;
    QPointer<ChooseDevExtendDialog> m_pDlg;
    QPointer<QWidget> m_pMainWidget;
    QPointer<QTableWidget> m_pTableWidget;
    QTableWidgetItem* m_pTableItem = nullptr;
    QTableWidgetItem* m_pHeaderItemIcon = nullptr;
    QTableWidgetItem* m_pHeaderItemName = nullptr;
    TableDelegateItem* m_pDelegate = nullptr;
    _ZELK_ST_MULTI_DEVICE_INFO m_stDeviceInfo;
    QStringList m_strListNewPlugins;
    QStringList m_strListReplacedPlugins;
};
