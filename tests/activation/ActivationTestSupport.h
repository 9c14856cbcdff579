// Shared by the activation suites: active.xml in a temporary installation root, and the CDMA card.
#pragma once

#include "HostFramework.h"
#include "SimControl.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

namespace acttest {

// Points the host at `root`, whose active.xml becomes `xml` (a null array: no file at all).
inline bool installActiveXml(const QTemporaryDir& root, const QByteArray& xml)
{
    HostFramework::setPluginLibraryPath(root.path());
    const QString dir = root.filePath(QStringLiteral("plugins/DeviceMgrUIPlugin"));
    QFile file(dir + QStringLiteral("/active.xml"));
    if (!QDir(dir).removeRecursively() || !QDir().mkpath(dir))
        return false;
    return xml.isNull() || (file.open(QIODevice::WriteOnly) && file.write(xml) == xml.size());
}

inline QByteArray activeXml(const QByteArray& body)
{
    return "<?xml version=\"1.0\"?><zelkdoc><main>" + body + "</main></zelkdoc>";
}

// The simulated card becomes one CDMA device that is not activated yet.
inline bool cdmaNotActivated(bool networkStates)
{
    zelk::sim::reset();
    zelk::sim::Device d = zelk::sim::defaultDevice();
    d.productType = ZELK_PRODUCT_TYPE_CDMA;
    d.cdma.activated = false;
    if (!networkStates)
        d.cdma.otaspStates.clear();
    return zelk::sim::updateDevice(d);
}

} // namespace acttest
