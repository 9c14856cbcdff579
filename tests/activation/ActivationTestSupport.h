// Shared by the activation suites: active.xml written into a temporary installation root.
#pragma once

#include "HostFramework.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

namespace acttest {

// Points the host at a fresh root; `xml` becomes its active.xml (a null array: no file at all).
inline bool installActiveXml(const QTemporaryDir& root, const QByteArray& xml)
{
    HostFramework::setPluginLibraryPath(root.path());
    const QString dir = root.filePath(QStringLiteral("plugins/DeviceMgrUIPlugin"));
    QDir(dir).removeRecursively();
    if (!QDir().mkpath(dir))
        return false;
    if (xml.isNull())
        return true;
    QFile file(dir + QStringLiteral("/active.xml"));
    return file.open(QIODevice::WriteOnly) && file.write(xml) == xml.size();
}

inline QByteArray activeXml(const char* body)
{
    return QByteArray("<?xml version=\"1.0\"?><zelkdoc><main>") + body + "</main></zelkdoc>";
}

} // namespace acttest
