// Device manager service: the SIM group rules (GID matching) and the last used device read from
// localdeviceinfo.xml.
#include "DeviceMgrService.h"

#include "DeviceMgrLog.h"
#include "GIDConfigParse.h"

#include <QtCore/QFile>
#include <QtCore/QXmlStreamReader>

#include <cctype>
#include <cstring>

bool CDeviceMgrService::IsGIDMatched(QString groupName)
{
    if (!m_pGIDConfig)
        return false;
    const QList<GIDGroup> groups = m_pGIDConfig->GetGIDGroups();
    for (const GIDGroup& group : groups) {
        if (group.name != groupName)
            continue;
        for (const GIDItem& item : group.gid1Items) {
            if (!checkGIDRule(ZELK_GIDTYPE_GID1, item))
                return false;
        }
        for (const GIDItem& item : group.gid2Items) {
            if (!checkGIDRule(ZELK_GIDTYPE_GID2, item))
                return false;
        }
        return true;
    }
    // A name the configuration does not know is taken as matched: the host only asks for groups it
    // has plugin sets for, and those need no SIM rule unless the operator wrote one.
    return true;
}

bool CDeviceMgrService::checkGIDRule(_ZELK_EN_GIDTYPE type, const GIDItem& item)
{
    // Read anew for every test: the SIM may have changed between two tests of one group.
    _ZELK_ST_GID_INFO gid;
    std::memset(&gid, 0, sizeof(gid));
    if (ZELK_DevSrv_GetGID(&gid) != ZELK_ERROR_SUCCESS)
        return false;

    const char* text = nullptr;
    quint64 length = 0;
    if (type == ZELK_GIDTYPE_GID1) {
        text = gid.szGID1;
        length = gid.nGID1Len;
    } else if (type == ZELK_GIDTYPE_GID2) {
        text = gid.szGID2;
        length = gid.nGID2Len;
    }
    // The SDK's length may claim more than its text field holds, or the text may end early.
    const quint64 chars = text ? qMin<quint64>(2 * length, strnlen(text, ZELK_GID_TEXT_SIZE)) : 0;
    const quint64 position = 2 * static_cast<quint64>(item.byte);
    if (item.byte == 0 || position > chars)
        return false;

    // Exactly two hexadecimal digits: no sign, blank or prefix may pass for a byte.
    const auto hi = static_cast<unsigned char>(text[position - 2]);
    const auto lo = static_cast<unsigned char>(text[position - 1]);
    bool ok = std::isxdigit(hi) && std::isxdigit(lo);
    const uint byteValue = ok ? QString::fromLatin1(text + position - 2, 2).toUInt(&ok, 16) : 0;
    if (!ok) {
        DM_LOG("%s : %s: %s: gid value can not convert to uint");
        return false;
    }
    if (item.method != QLatin1String("and"))
        return false;
    const quint32 masked = item.value & byteValue;
    return item.result ? masked == item.value : masked == 0;
}

QString CDeviceMgrService::getUserDataDirectory()
{
    DM_LOG("%s: %s: %s before caling ZELK_GetUserDataDirectory()");
    char directory[ZELK_MAX_PATH];
    std::memset(directory, 0, sizeof(directory));
    const long retVal = ZELK_GetUserDataDirectory(directory, sizeof(directory));
    DM_LOG("%s: %s: %s after caling ZELK_GetUserDataDirectory(), retVal=%ld", retVal);
    directory[sizeof(directory) - 1] = '\0';
    return QFile::decodeName(directory);
}

QString CDeviceMgrService::GetLastUsedDeviceName()
{
    // The entry line carries the exit text as well; log readers look for this one line.
    DM_LOG("%s : %s: %s: Exit");
    const QString directory = getUserDataDirectory();
    const QString fileName = directory + QStringLiteral("localdeviceinfo.xml");
    // Without a directory the bare name would be looked up wherever the host was started from.
    if (directory.isEmpty() || !QFile::exists(fileName)) {
        qDebug("File %s does not exist", qPrintable(fileName));
        DM_LOG("%s : %s: %s: Exit");
        return QString();
    }
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        qDebug("Error open file: ");
        DM_LOG("%s : %s: %s: Exit");
        return QString();
    }
    QString name;
    QXmlStreamReader reader(&file);
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.hasError()) {
            DM_LOG2("%s: %s: Read Error: n");
            break;
        }
        if (!reader.isStartElement() || reader.name() != QLatin1String("item"))
            continue;
        const QString id = reader.attributes().value(QLatin1String("id")).toString();
        const QString text = reader.readElementText();
        if (reader.hasError()) {
            DM_LOG2("%s: %s: Read Error: n");
            break;
        }
        if (text == QLatin1String("1")) {
            name = id;
            break;
        }
    }
    file.close();
    DM_LOG("%s : %s: %s: Exit");
    return name;
}
