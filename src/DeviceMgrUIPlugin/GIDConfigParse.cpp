// GIDConfigParse: the streaming reader of GIDConfig.xml.
#include "GIDConfigParse.h"

#include "CommonUtils.h"
#include "DeviceMgrLog.h"

#include <QtCore/QFile>
#include <QtCore/QXmlStreamReader>

GIDConfigParse* GIDConfigParse::m_pConfigInstance = nullptr;

GIDConfigParse* GIDConfigParse::GetInstance()
{
    if (!m_pConfigInstance)
        m_pConfigInstance = new GIDConfigParse;
    return m_pConfigInstance;
}

void GIDConfigParse::DestroyConfigInstance()
{
    delete m_pConfigInstance;
    m_pConfigInstance = nullptr;
}

GIDConfigParse::GIDConfigParse()
{
    LoadFile(CommonUtils::GetPluginLibraryPath() + QStringLiteral("/plugins/DeviceMgrUIPlugin/") +
             QStringLiteral("GIDConfig.xml"));
}

QList<GIDGroup> GIDConfigParse::GetGIDGroups() const
{
    return m_listGroups;
}

bool GIDConfigParse::LoadFile(QString fileName)
{
    m_listGroups.clear();
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        DM_LOG("%s: %s: %s: Error open file:%s", qPrintable(fileName));
        return false;
    }
    QXmlStreamReader reader(&file);
    if (!readFile(reader)) {
        DM_LOG("%s: %s: %s: Read Error: %s", qPrintable(reader.errorString()));
        // Half a file would select plugin sets by rules the operator never finished writing.
        m_listGroups.clear();
        return false;
    }
    return true;
}

bool GIDConfigParse::readFile(QXmlStreamReader& reader)
{
    if (!reader.readNextStartElement())
        return false;
    if (reader.name() != QLatin1String("zelkdoc")) {
        reader.raiseError(QStringLiteral("the root element is not zelkdoc"));
        return false;
    }
    while (reader.readNextStartElement()) {
        if (reader.name() == QLatin1String("GID")) {
            if (!readGIDInfo(reader))
                return false;
        } else {
            reader.skipCurrentElement();
        }
    }
    return !reader.hasError();
}

bool GIDConfigParse::readGIDInfo(QXmlStreamReader& reader)
{
    GIDGroup group;
    bool inGroup = false;
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.hasError())
            break;
        if (reader.isEndElement()) {
            if (reader.name() == QLatin1String("GID"))
                return true;
            if (reader.name() == QLatin1String("group") && inGroup) {
                m_listGroups.append(group);
                inGroup = false;
            }
            continue;
        }
        if (!reader.isStartElement())
            continue;
        if (reader.name() == QLatin1String("group")) {
            group = GIDGroup();
            group.name = reader.attributes().value(QLatin1String("name")).toString();
            inGroup = true;
            continue;
        }
        const bool isGid1 = reader.name() == QLatin1String("GID1");
        if (!inGroup || (!isGid1 && reader.name() != QLatin1String("GID2")))
            continue;
        const QXmlStreamAttributes attributes = reader.attributes();
        GIDItem item;
        bool ok = false;
        item.byte = attributes.value(QLatin1String("byte")).toUInt(&ok);
        if (!ok)
            item.byte = 0;
        item.result = attributes.value(QLatin1String("result")) == QLatin1String("1") ? 1 : 0;
        item.method = attributes.value(QLatin1String("method")).toString();
        const QString mask = reader.readElementText();
        if (reader.hasError())
            break;
        item.value = mask.trimmed().toUInt(&ok, 16);
        if (!ok) {
            DM_LOG("%s: %s: %s: GID config value convert error");
            // Left out rather than kept with mask 0: a zero mask tests no bit either, and keeping it
            // would make the group look stricter than it is. The group's other tests still decide.
            continue;
        }
        (isGid1 ? group.gid1Items : group.gid2Items).append(item);
    }
    DM_LOG("%s: %s: %s: GroupInfo Read Error");
    if (!reader.hasError())
        reader.raiseError(QStringLiteral("the GID element is not closed"));
    return false;
}
