// Reading the carrier's activation settings from active.xml beside the plugin.
#include "ActivationConfigParse.h"

#include "CommonUtils.h"
#include "DeviceMgrLog.h"

#include <QtCore/QFile>

namespace {

// Status numbers of GetSettingsFromXML; callers only test for zero.
constexpr int kReadOk = 0;
constexpr int kFileMissing = 3;
constexpr int kNotWellFormed = 6;
constexpr int kNoDevice = 13;
constexpr int kNullRecord = 23;
constexpr int kCannotOpen = 25;

// Carriers write "1" for yes; anything else, "true" and " 1 " included, is no.
bool isYes(const QString& text)
{
    return text == QLatin1String("1");
}

// A number that does not convert counts as 0, as the string-to-integer conversion answers.
int toNumber(const QString& text)
{
    return text.toInt(nullptr, 10);
}

// One element's text into its field of `info`.
void store(const QString& element, const QString& text, ActivationInfo* info)
{
    if (element == QLatin1String("activetype"))
        info->strActiveType = toNumber(text);
    else if (element == QLatin1String("autonum"))
        info->strAutoNum = text;
    else if (element == QLatin1String("displaycode"))
        info->bDisplayCode = isYes(text);
    else if (element == QLatin1String("showtype"))
        info->nShowType = toNumber(text);
    else if (element == QLatin1String("min"))
        info->bShowMIN = isYes(text);
    else if (element == QLatin1String("mdn"))
        info->bShowMDN = isYes(text);
    else if (element == QLatin1String("sid"))
        info->bShowSID = isYes(text);
    else if (element == QLatin1String("prl"))
        info->bShowPRL = isYes(text);
}

} // namespace

ActivationConfigParse* ActivationConfigParse::m_spInstance = nullptr;

ActivationConfigParse::ActivationConfigParse()
{
    m_info = ActivationInfo();
}

ActivationConfigParse* ActivationConfigParse::GetInstance()
{
    if (!m_spInstance)
        m_spInstance = new ActivationConfigParse();
    return m_spInstance;
}

void ActivationConfigParse::Release(ActivationConfigParse* instance)
{
    delete instance;
    m_spInstance = nullptr;
}

QString ActivationConfigParse::FilePath()
{
    // Joined as plain strings: the host's path is taken exactly as it comes.
    return CommonUtils::GetPluginLibraryPath() + QStringLiteral("/plugins/DeviceMgrUIPlugin/") +
           QStringLiteral("active.xml");
}

ActivationInfo& ActivationConfigParse::GetActivationInfo(bool& ok)
{
    if (!loaded)
        loaded = GetSettingsFromXML(&m_info) == kReadOk;
    ok = loaded;
    return m_info;
}

int ActivationConfigParse::GetSettingsFromXML(ActivationInfo* info)
{
    DM_LOG("%s: %s: %s: Entered");
    if (!info) {
        DM_LOG("%s: %s: %s: one of the param is null");
        return kNullRecord;
    }
    const QString path = FilePath();
    if (!QFile::exists(path)) {
        DM_WARN("%s: %s: %s:The XML File does not exist");
        DM_LOG("%s: %s: %s:The File %s does not exist", qPrintable(path));
        return kFileMissing;
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        DM_LOG("%s: %s: %s:Error in opening the file: ");
        return kCannotOpen;
    }
    const int result = ParseDevice(&file, info);
    file.close();
    DM_LOG("%s: %s: %s: Exit");
    return result;
}

int ActivationConfigParse::ParseDevice(QIODevice* device, ActivationInfo* info)
{
    if (!info)
        return kNullRecord;
    int result = kReadOk;
    setDevice(device);
    if (!this->device()) {
        DM_LOG("%s: %s: %s :Stream reader not bind with device");
        result = kNoDevice;
    }
    // Without a device the reader reports its end at once.
    while (!atEnd()) {
        readNext();
        if (hasError()) {
            DM_LOG("%s: %s:%s Read Error: n");
            result = kNotWellFormed;
            break;
        }
        if (isStartElement() && name() == QLatin1String("main")) {
            readNext();
            result = ReadValues(info);
        }
    }
    // The reader must not keep a device that its caller is about to close.
    setDevice(nullptr);
    return result;
}

int ActivationConfigParse::ReadValues(ActivationInfo* info)
{
    if (!info) {
        DM_LOG("%s: %s: %s: input param is null");
        return kNullRecord;
    }
    // A document that broke on the very token after <main> is as malformed as one that breaks later.
    if (hasError()) {
        DM_LOG(" %s: %s: %s: GroupInfo Read Error");
        return kNotWellFormed;
    }
    while (!atEnd()) {
        if (isStartElement()) {
            // Nesting is not checked: these names count wherever they stand after <main>, and a
            // name read twice keeps the later value.
            const QString tag = name().toString();
            bool known = true;
            int* length = nullptr;
            if (tag == QLatin1String("activetype")) {
                DM_LOG("%s: %s: %s: reading ActiveType");
            } else if (tag == QLatin1String("autonum")) {
                DM_LOG("%s: %s: %s: reading AutoNum");
            } else if (tag == QLatin1String("displaycode")) {
                DM_LOG("%s: %s: %s: reading DisplayCode");
            } else if (tag == QLatin1String("showtype")) {
                DM_LOG("%s: %s: %s: reading SHOW Type");
            } else if (tag == QLatin1String("min")) {
                DM_LOG("%s: %s: %s: reading MIN");
                length = &info->nMINLength;
            } else if (tag == QLatin1String("mdn")) {
                DM_LOG("%s: %s: %s: reading MDN");
                length = &info->nMDNLength;
            } else if (tag == QLatin1String("sid")) {
                DM_LOG("%s: %s: %s: reading SID");
                length = &info->nSIDLength;
            } else if (tag == QLatin1String("prl")) {
                DM_LOG("%s: %s: %s: reading PRL");
            } else {
                known = false;
            }
            if (length)
                *length = toNumber(attributes().value(QLatin1String("length")).toString());
            if (known) {
                const QString text = readElementText();
                // A value cut off by a broken document is not a value: the record keeps what it had.
                if (!hasError())
                    store(tag, text, info);
            }
        }
        readNext();
        if (hasError()) {
            DM_LOG(" %s: %s: %s: GroupInfo Read Error");
            return kNotWellFormed;
        }
    }
    return kReadOk;
}
