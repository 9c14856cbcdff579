// Shared helpers of the logic-layer suites, beside the service suites' own (the active device of the
// simulated card, call counts, log capture).
#pragma once

#include "ServiceTestSupport.h"

#include <functional>

namespace logictest {

using svc::activeDevice;
using svc::callCount;

// Changes the active device in place (no events).
inline bool changeActiveDevice(const std::function<void(zelk::sim::Device&)>& change)
{
    zelk::sim::Device device = activeDevice();
    change(device);
    return zelk::sim::updateDevice(device);
}

// Total number of SDK calls recorded since the last clearCalls().
inline int allCallCount()
{
    return static_cast<int>(zelk::sim::calls().size());
}

// Every argument of every recorded call, for checks that a typed code never reached the record.
inline QString allRecordedArgs()
{
    QStringList args;
    for (const zelk::sim::CallRecord& record : zelk::sim::calls())
        for (const std::string& arg : record.args)
            args << QString::fromStdString(arg);
    return args.join(QLatin1Char(','));
}

} // namespace logictest
