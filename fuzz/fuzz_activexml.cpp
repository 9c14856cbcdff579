// libFuzzer target: any bytes as active.xml. The reader must answer one of its status numbers for a
// well-formed or a broken document and never crash, hang or leak.
#include "ActivationConfigParse.h"

#include <QtCore/QBuffer>
#include <QtCore/QLoggingCategory>

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    // Every element read is logged; the fuzzer would spend its time writing lines.
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false\n*.warning=false"));
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<int>(size));
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly | QIODevice::Text);
    ActivationInfo info;
    ActivationConfigParse* parser = ActivationConfigParse::GetInstance();
    const int status = parser->ParseDevice(&buffer, &info);
    // From an opened device only "read" and "not well formed" are possible.
    if (status != 0 && status != 6)
        std::abort();
    // The reader is reused for the next file; a second pass must give the same answer.
    ActivationInfo again;
    buffer.seek(0);
    if (parser->ParseDevice(&buffer, &again) != status || again.strAutoNum != info.strAutoNum)
        std::abort();
    ActivationConfigParse::Release(parser);
    return 0;
}
