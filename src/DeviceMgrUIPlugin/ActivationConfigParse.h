// CDMA service activation settings: the record read from active.xml and the reader that fills it.
#pragma once

#include <QtCore/QString>
#include <QtCore/QXmlStreamReader>

class QIODevice;

// The carrier's activation settings. Plain value, copied freely.
struct ActivationInfo
{
    // Despite its prefix an integer: 0 over the air only, 1 by hand only, 2 (or any other number)
    // the user chooses.
    int strActiveType = 0;
    QString strAutoNum = QStringLiteral("*228");
    bool bDisplayCode = false;
    // 0: the ESN/MEID converted to decimal; any other value: the device's hexadecimal text.
    int nShowType = 0;
    bool bShowMIN = false;
    int nMINLength = 0;
    bool bShowMDN = false;
    int nMDNLength = 0;
    bool bShowSID = false;
    int nSIDLength = 0;
    bool bShowPRL = false;
};

class ActivationConfigParse : public QXmlStreamReader
{
public:
    // The process-wide instance, created on first use (GUI thread only, no lock).
    static ActivationConfigParse* GetInstance();
    // Destroys `instance` (may be null) and always forgets the process-wide one, so the next
    // GetInstance() reads the file afresh.
    static void Release(ActivationConfigParse* instance);

    // The settings; reads active.xml first while no read has succeeded yet. `ok` tells whether a
    // read has succeeded; after a failed one the record holds the defaults and whatever was read
    // before the failure.
    ActivationInfo& GetActivationInfo(bool& ok);
    // Reads active.xml beside the plugin into `info`: 0 read, 3 missing, 6 not well formed,
    // 13 reader not bound to the file, 23 null record, 25 cannot be opened.
    int GetSettingsFromXML(ActivationInfo* info);
    // The scan from the token after <main> to the end of the document: 0, 6 or 23.
    int ReadValues(ActivationInfo* info);

    // The scan of GetSettingsFromXML over any opened device (the fuzzer feeds it from memory).
    int ParseDevice(QIODevice* device, ActivationInfo* info);

    // Where the settings file is looked for.
    static QString FilePath();

private:
    ActivationConfigParse();
    ~ActivationConfigParse() = default;
    ActivationConfigParse(const ActivationConfigParse&) = delete;
    ActivationConfigParse& operator=(const ActivationConfigParse&) = delete;

    static ActivationConfigParse* m_spInstance;
    ActivationInfo m_info;
    bool loaded = false;
};
