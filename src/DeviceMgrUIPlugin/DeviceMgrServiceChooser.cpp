// Device manager service: its device chooser, created wherever it is first needed.
#include "DeviceMgrService.h"

#include "DeviceMgrChooseDevice.h"
#include "DeviceMgrLog.h"

ChooseDevice* CDeviceMgrService::ensureChooser()
{
    if (!m_pDlgChooseDev)
        m_pDlgChooseDev = new ChooseDevice;
    return m_pDlgChooseDev;
}

void CDeviceMgrService::ShowChooseDevice()
{
    DM_LOG("%s: %s: %s: Entered");
    if (!m_pDlgChooseDev) {
        DM_LOG("%s: %s: %s: m_pDlgChooseDev is NULL");
        ensureChooser();
    }
    m_pDlgChooseDev->ShowChooseDlg(m_pParentWidget);
    DM_LOG("%s: %s: %s: Exit");
}

void CDeviceMgrService::chooserPopulateList()
{
    if (m_pDlgChooseDev)
        m_pDlgChooseDev->PopulateList();
}

void CDeviceMgrService::chooserShowChooseDlg(QWidget* parent)
{
    if (m_pDlgChooseDev)
        m_pDlgChooseDev->ShowChooseDlg(parent);
}

void CDeviceMgrService::chooserReloadPlugins(const QString& key, bool force)
{
    if (m_pDlgChooseDev)
        m_pDlgChooseDev->ReloadPlugins(key, force);
}

void CDeviceMgrService::chooserCloseDlg()
{
    if (m_pDlgChooseDev)
        m_pDlgChooseDev->CloseDlg();
}
