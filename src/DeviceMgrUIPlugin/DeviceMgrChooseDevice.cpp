// ChooseDevice: the device chooser dialog, the switch of the active device and the plugin reload.
#include "DeviceMgrChooseDevice.h"

#include "Change.h"
#include "CommonUtils.h"
#include "DeviceMgrLog.h"
#include "DeviceMgrUILogic.h"
#include "HostIds.h"
#include "HostServices.h"
#include "Startup.h"

#include <QtCore/QDebug>
#include <QtGui/QIcon>
#include <QtGui/QPainter>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTableWidget>
#include <QtWidgets/QVBoxLayout>

#include <cstdint>
#include <cstring>

namespace {

QString idsText(const char* key)
{
    return Change::tr(QString::fromLatin1(key), "DeviceMgrUIPlugin");
}

// Left and vertically centred (Qt::AlignLeft | Qt::AlignVCenter).
constexpr int kHeaderAlignment = 129;
constexpr int kIconColumnWidth = 30;
constexpr int kNameColumnWidth = 260;
constexpr int kRowHeight = 16;

// A notification word carrying the address of a list. The host's notification words are 32 bits
// wide: on a 64-bit host only the low half travels, which receivers can compare but not follow;
// the lists themselves stay readable through the container's current plugin set.
unsigned int addressWord(const QStringList* list)
{
    return static_cast<unsigned int>(reinterpret_cast<std::uintptr_t>(list));
}

} // namespace

ChooseDevExtendDialog::ChooseDevExtendDialog(QWidget* parent)
    : ExtendDialog(parent)
{
}

ChooseDevExtendDialog::~ChooseDevExtendDialog() = default;

void TableDelegateItem::drawFocus(QPainter* painter, const QStyleOptionViewItem& option,
                                  const QRect& rect) const
{
    if (!(option.state & QStyle::State_HasFocus) || !rect.isValid())
        return;
    // A thin solid frame instead of the default dotted one, in the palette's role-3 colour.
    painter->save();
    painter->setPen(QPen(option.palette.color(static_cast<QPalette::ColorRole>(3)), 0));
    painter->drawRect(rect.adjusted(0, 0, -1, -1));
    painter->restore();
}

ChooseDevice::ChooseDevice(QObject* parent)
    : QObject(parent)
    , m_pUILogic(DeviceMgrUILogic::GetInstance())
{
    std::memset(&m_stDeviceInfo, 0, sizeof(m_stDeviceInfo));
}

ChooseDevice::~ChooseDevice()
{
    // The service deletes the chooser at unload, never from inside the dialog's own handlers.
    QPointer<ChooseDevExtendDialog> dialog = m_pDlg;
    CloseDlg();
    delete dialog.data();
}

QString ChooseDevice::deviceName(const _ZELK_ST_DEVICE_INFO& device)
{
    return QString::fromLocal8Bit(device.szName,
                                  static_cast<int>(strnlen(device.szName, sizeof(device.szName))));
}

bool ChooseDevice::isActiveDevice(const _ZELK_ST_DEVICE_INFO& device, const QString& activeName,
                                  int activePort)
{
    if (device.nPort != activePort || activeName.isEmpty())
        return false;
    const int reported = static_cast<int>(strnlen(device.szName, ZELK_DEVICE_NAME_OUT_SIZE - 1));
    return QString::fromLocal8Bit(device.szName, reported) == activeName;
}

void ChooseDevice::ShowChooseDlg(QWidget* parent)
{
    DM_LOG("%s : %s : %s : called");
    if (m_pDlg) {
        PopulateList();
        if (m_pDlg && m_pDlg->isHidden())
            m_pDlg->show();
        return;
    }
    m_pUILogic = DeviceMgrUILogic::GetInstance();
    if (!m_pUILogic) {
        DM_LOG("%s : %s : %s : DeviceMgrUILogic::GetInstance() returned NULL");
        return;
    }
    createChooseDlg(parent);
    if (!m_pDlg)
        return;
    PopulateList();
    CommonUtils::MoveCentre(m_pDlg);
    m_pDlg->show();
}

void ChooseDevice::createChooseDlg(QWidget* parent)
{
    auto* dialog = new ChooseDevExtendDialog(parent);
    auto* mainWidget = new QWidget;
    auto* buttonWidget = new QWidget(mainWidget);
    auto* label = new QLabel(mainWidget);
    auto* table = new QTableWidget(mainWidget);
    auto* headerIcon = new QTableWidgetItem;
    auto* headerName = new QTableWidgetItem;
    auto* okButton = new QPushButton(buttonWidget);
    auto* cancelButton = new QPushButton(buttonWidget);
    auto* buttonLayout = new QHBoxLayout;
    auto* mainLayout = new QVBoxLayout;
    auto* delegate = new TableDelegateItem(table);

    dialog->setObjectName(QStringLiteral("ChooseDevice_ExtendedDlg"));
    mainWidget->setObjectName(QStringLiteral("ChooseDevice_WidgetMain"));
    label->setObjectName(QStringLiteral("ChooseDevice_LabelList"));
    table->setObjectName(QStringLiteral("ChooseDevice_TableWidget"));
    okButton->setObjectName(QStringLiteral("ChooseDevice_buttonOk"));
    cancelButton->setObjectName(QStringLiteral("ChooseDevice_buttonCancel"));
    buttonLayout->setObjectName(QStringLiteral("ChooseDevice_layoutButton"));
    mainLayout->setObjectName(QStringLiteral("ChooseDevice_layoutMain"));
    buttonWidget->setObjectName(QStringLiteral("ChooseDevice_widgetButton"));

    headerName->setTextAlignment(kHeaderAlignment);
    table->setColumnCount(2);
    table->setHorizontalHeaderItem(0, headerIcon);
    table->setHorizontalHeaderItem(1, headerName);
    table->setColumnWidth(0, kIconColumnWidth);
    table->setColumnWidth(1, kNameColumnWidth);
    table->horizontalHeader()->setMinimumHeight(20);
    table->horizontalHeader()->setTextElideMode(Qt::ElideRight);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->verticalHeader()->hide();
    // Rows as low as the status icon: the style's minimum would make them taller.
    table->verticalHeader()->setMinimumSectionSize(kRowHeight);
    table->setShowGrid(false);
    table->setItemDelegate(delegate);
    table->setSelectionMode(QAbstractItemView::SingleSelection);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);

    buttonLayout->addWidget(okButton);
    buttonLayout->addWidget(cancelButton);
    buttonWidget->setLayout(buttonLayout);
    mainLayout->addWidget(label);
    mainLayout->addWidget(table);
    mainLayout->addWidget(buttonWidget);
    mainWidget->setLayout(mainLayout);
    dialog->AddMainWidget(mainWidget);

    m_pDlg = dialog;
    m_pMainWidget = mainWidget;
    m_pTableWidget = table;
    m_pTableItem = nullptr;
    m_pHeaderItemIcon = headerIcon;
    m_pHeaderItemName = headerName;
    m_pDelegate = delegate;
    ChangeLang();

    connect(okButton, &QPushButton::clicked, this, &ChooseDevice::onDeviceChangeOkButtonClicked);
    connect(cancelButton, &QPushButton::clicked, this, &ChooseDevice::onDeviceChangeCancelButtonClicked);
    connect(table, &QTableWidget::cellDoubleClicked, this, &ChooseDevice::onItemDoubleClicked);
    connect(table, &QTableWidget::itemSelectionChanged, this, &ChooseDevice::onTableItemSelectionChanged);
    connect(dialog, &QDialog::rejected, this, &ChooseDevice::CloseDlg);
    connect(dialog, &ExtendDialog::dlgCloseEvent, this, &ChooseDevice::CloseDlg);

    dialog->setFixedSize(320, 280);
}

void ChooseDevice::PopulateList()
{
    DM_LOG("%s : %s : %s : called");
    if (!m_pUILogic || !m_pTableWidget || !m_pDlg) {
        DM_LOG("%s : %s : %s : m_pUILogic = NULL");
        return;
    }
    m_stDeviceInfo = m_pUILogic->GetDeviceInfo();
    const int count = m_stDeviceInfo.nDevNum;
    if (count < 1 || count > MAX_DEVICE_COUNT) {
        DM_LOG("%s : %s : %s : m_stDeviceInfo.nDevNum  is not correct");
        m_pTableWidget->clearContents();
        // The logic layer answers a count outside the table as 0, so the list shows empty either way.
        m_pTableWidget->setRowCount(count < 0 || count > MAX_DEVICE_COUNT ? 0 : count);
        m_pTableItem = nullptr;
        return;
    }
    const QString activeName = m_pUILogic->GetCurrentDeviceName();
    const int activePort = m_pUILogic->GetCurrentDevicePortNo();
    m_pTableWidget->clearContents();
    m_pTableWidget->setRowCount(count);
    const QString iconPath = CommonUtils::GetPluginLibraryPath() +
                             QStringLiteral("/plugins/DeviceMgrUIPlugin/") + QStringLiteral("DeviceSelect");
    for (int row = 0; row < count; ++row) {
        const _ZELK_ST_DEVICE_INFO& device = m_stDeviceInfo.stDevInfo[row];
        auto* status = new QTableWidgetItem;
        if (isActiveDevice(device, activeName, activePort))
            status->setIcon(QIcon(iconPath));
        m_pTableWidget->setItem(row, 0, status);
        m_pTableItem = new QTableWidgetItem(deviceName(device));
        m_pTableWidget->setItem(row, 1, m_pTableItem);
        m_pTableWidget->setRowHeight(row, kRowHeight);
    }
    m_pTableWidget->setFocus();
    m_pTableWidget->setSelectionBehavior(QAbstractItemView::SelectRows);
}

void ChooseDevice::ChangeLang()
{
    if (!m_pDlg)
        return;
    if (auto* label = m_pDlg->findChild<QLabel*>(QStringLiteral("ChooseDevice_LabelList")))
        label->setText(idsText("IDS_MGR_LIST_PROMPT"));
    if (m_pTableWidget && m_pHeaderItemName)
        m_pHeaderItemName->setText(idsText("IDS_DEVICE_NAME"));
    if (auto* ok = m_pDlg->findChild<QPushButton*>(QStringLiteral("ChooseDevice_buttonOk")))
        ok->setText(idsText("IDS_OK"));
    if (auto* cancel = m_pDlg->findChild<QPushButton*>(QStringLiteral("ChooseDevice_buttonCancel")))
        cancel->setText(idsText("IDS_CANCEL"));
    m_pDlg->setWindowTitle(idsText("IDS_DEV_MGR_PROMPT"));
}

void ChooseDevice::CloseDlg()
{
    ChooseDevExtendDialog* dialog = m_pDlg.data();
    if (!dialog)
        return;
    // Forget the dialog first: closing it emits the very signals that lead here.
    m_pDlg = nullptr;
    disconnect(dialog, nullptr, this, nullptr);
    if (m_pTableWidget)
        disconnect(m_pTableWidget, nullptr, this, nullptr);
    const auto buttons = dialog->findChildren<QPushButton*>();
    for (QPushButton* button : buttons)
        disconnect(button, nullptr, this, nullptr);
    m_pMainWidget = nullptr;
    m_pTableWidget = nullptr;
    m_pTableItem = nullptr;
    m_pHeaderItemIcon = nullptr;
    m_pHeaderItemName = nullptr;
    m_pDelegate = nullptr;
    dialog->close();
    // Deferred: this may run inside a handler of the dialog's own buttons.
    dialog->deleteLater();
}

void ChooseDevice::onDeviceChangeCancelButtonClicked()
{
    CloseDlg();
}

void ChooseDevice::onItemDoubleClicked(int row, int column)
{
    Q_UNUSED(row)
    Q_UNUSED(column)
    onDeviceChangeOkButtonClicked();
}

void ChooseDevice::onTableItemSelectionChanged()
{
    if (!m_pTableWidget)
        return;
    // Whole rows are picked, but only the name shows as selected; the icon column stays plain.
    const QList<QTableWidgetItem*> selected = m_pTableWidget->selectedItems();
    for (QTableWidgetItem* item : selected) {
        if (item->column() == 0)
            item->setSelected(false);
    }
}

void ChooseDevice::onDeviceChangeOkButtonClicked()
{
    const QString caption = idsText("IDS_PROMPT_CAPTION");
    const QString question = idsText("IDS_ACTIVE_DEVICE_FALSE");
    DM_LOG("%s : %s : %s : called");
    if (!m_pUILogic || !m_pTableWidget) {
        DM_LOG("%s : %s : %s : m_pUILogic = NULL");
        CloseDlg();
        return;
    }
    const int row = m_pTableWidget->currentRow();
    // OK without a picked row (an empty list, or nothing clicked yet) changes nothing.
    if (row < 0 || row >= m_stDeviceInfo.nDevNum || row >= MAX_DEVICE_COUNT) {
        CloseDlg();
        return;
    }
    const _ZELK_ST_DEVICE_INFO picked = m_stDeviceInfo.stDevInfo[row];
    const QString activeName = m_pUILogic->GetCurrentDeviceName();
    const int activePort = m_pUILogic->GetCurrentDevicePortNo();

    if (activeName.isEmpty()) {
        // Nothing to lose yet: switch without asking. 3 stands for "not known" when no device
        // answers the product type.
        int before = 3;
        ZELK_DevSrv_GetProductType(&before);
        m_pUILogic->SelectDevice(picked);
        int after = 3;
        ZELK_DevSrv_GetProductType(&after);
        ReloadPlugins(deviceName(picked), before != after);
        CloseDlg();
        return;
    }
    if (isActiveDevice(picked, activeName, activePort)) {
        CloseDlg();
        return;
    }
    const int answer = CommonUtils::ShowMessage(QMessageBox::Question, m_pDlg, caption, question,
                                                QStringLiteral("IDS_YES"), QStringLiteral("IDS_NO"));
    // The plugins follow through the SDK's device events, not from here.
    if (answer == MSGBOX_ACCEPTED)
        m_pUILogic->SelectDevice(picked);
    CloseDlg();
}

void ChooseDevice::ReloadPlugins(QString devName, bool bForce)
{
    DM_LOG("%s: %s: %s: entered");
    IPluginContainer* container = Startup::GetPluginContainer();
    if (!container) {
        DM_LOG("%s:,%s: %s: plugin container is null");
        return;
    }
    if (!container->IsPluginSetChanged(devName) && !bForce) {
        DM_LOG("%s:,%s: %s: don't need to reload");
        return;
    }
    m_strListNewPlugins.clear();
    m_strListReplacedPlugins.clear();
    container->GetReloadPluginLists(devName, m_strListNewPlugins, m_strListReplacedPlugins);
    // The other plugins learn which plugins are about to be replaced before any of them goes.
    BroadCastNotify(NTF_PLUGINS_RELOADED, addressWord(&m_strListNewPlugins),
                    addressWord(&m_strListReplacedPlugins));
    // A copy: a broadcast receiver or a reloaded plugin may lead to another reload meanwhile.
    const QStringList replaced = m_strListReplacedPlugins;
    for (const QString& name : replaced) {
        qDebug() << " unRegisterFormPluginContainer Plugin: " << name;
        container->UnRegisterPlugin(name);
    }
    for (const QString& name : replaced) {
        qDebug("kel ==============> Unloading Plugin: %s", qPrintable(name));
        container->UnloadPlugin(name);
        container->LoadPlugin(name);
    }
}

void ChooseDevice::BroadCastNotify(unsigned int code, unsigned int wparam, unsigned int lparam)
{
    IPluginContainer* container = Startup::GetPluginContainer();
    QObject* plugin =
        container ? container->GetPlugin(QStringLiteral(NOTIFY_PLUGIN_CLSID), NOTIFY_PLUGIN_ID) : nullptr;
    if (!plugin) {
        DM_LOG("%s: %s: %s: GetPlugin (NOTIFY_PLUGIN) returned NULL");
        return;
    }
    INotifyService* notify = qobject_cast<INotifyService*>(plugin);
    if (!notify) {
        DM_LOG("%s: %s: %s: Notify object is null");
        return;
    }
    notify->Broadcast(code, wparam, lparam);
}
