// Translation of the host's text keys (IDS_...) through the loaded language files.
#pragma once

#include "HostExport.h"

#include <QtCore/QString>

class HOSTFW_EXPORT Change
{
public:
    // The text of `key` in the current language; the key itself when there is no translation.
    static QString tr(const QString& key, const char* context = "DeviceMgrUIPlugin");
    // Load the language `lang` ("en", "de", ...) from the host's language folder; an empty
    // string or "none" unloads every translation. False when no file exists for it.
    static bool LoadLanguage(const QString& lang);
    static QString CurrentLanguage();
};
