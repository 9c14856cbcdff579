// Logging helpers: every log text is a printf-style format whose leading fields are supplied here.
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QDebug>
#include <QtCore/QLoggingCategory>
#include <QtCore/QTime>

#include <mutex>

namespace devmgr_log {

// The source path as the build saw it from its output folder: "../../src/DeviceMgrUIPlugin/X.cpp".
// Computed from __FILE__ so that moving the checkout does not change the logs.
constexpr const char* sourceTail(const char* path)
{
    const char* tail = path;
    for (const char* p = path; *p; ++p) {
        if (p[0] == 's' && p[1] == 'r' && p[2] == 'c' && p[3] == '/' && (p == path || p[-1] == '/'))
            tail = p;
    }
    return tail;
}

struct SourcePath
{
    QByteArray text;
    explicit SourcePath(const char* file)
        : text(QByteArray("../../") + sourceTail(file))
    {
    }
};

// SDK threads log too; the C library's time-zone lookup behind QTime::currentTime() is not
// visible to ThreadSanitizer, so the log lines take the time one at a time.
inline QByteArray now()
{
    static std::mutex lock;
    std::lock_guard<std::mutex> guard(lock);
    return QTime::currentTime().toString(QStringLiteral("hh:mm:ss:zzz")).toLatin1();
}

// Whether a message of this type would be shown at all. The leading fields cost a clock read, a
// time-zone lookup and an allocation; events from the SDK threads should not pay that for output
// that is switched off.
inline bool enabled(QtMsgType type)
{
    const QLoggingCategory* category = QLoggingCategory::defaultCategory();
    return !category || category->isEnabled(type);
}

// What a log shows in place of a code that the user typed.
constexpr const char* kMaskedCode = "********";

} // namespace devmgr_log

// Path of the current file in the form the logs use.
#define DM_SOURCE_PATH (devmgr_log::SourcePath(__FILE__).text.constData())

// Three leading fields: time "hh:mm:ss:zzz", source path, function name; e.g.
//   DM_LOG("%s : %s : %s : Entered");
#define DM_LOG(fmt, ...)                                                                                     \
    do {                                                                                                     \
        if (devmgr_log::enabled(QtDebugMsg))                                                                 \
            qDebug(fmt, devmgr_log::now().constData(), DM_SOURCE_PATH, __FUNCTION__, ##__VA_ARGS__);         \
    } while (0)
// The same for failures of SDK calls.
#define DM_WARN(fmt, ...)                                                                                    \
    do {                                                                                                     \
        if (devmgr_log::enabled(QtWarningMsg))                                                               \
            qWarning(fmt, devmgr_log::now().constData(), DM_SOURCE_PATH, __FUNCTION__, ##__VA_ARGS__);       \
    } while (0)
// Two leading fields (source path, function name): the shorter form, e.g. "%s: %s called".
#define DM_LOG2(fmt, ...)                                                                                    \
    do {                                                                                                     \
        if (devmgr_log::enabled(QtDebugMsg))                                                                 \
            qDebug(fmt, DM_SOURCE_PATH, __FUNCTION__, ##__VA_ARGS__);                                        \
    } while (0)
#define DM_WARN2(fmt, ...)                                                                                   \
    do {                                                                                                     \
        if (devmgr_log::enabled(QtWarningMsg))                                                               \
            qWarning(fmt, DM_SOURCE_PATH, __FUNCTION__, ##__VA_ARGS__);                                      \
    } while (0)
// A code typed by the user, as it may appear in a log: always masked.
#define DM_MASKED(code) ((void)(code), devmgr_log::kMaskedCode)
