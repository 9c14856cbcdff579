// Shared helpers of the logic-layer suites: the simulated card's active device and its call record.
#pragma once

#include "SimControl.h"

#include <QtCore/QString>
#include <QtTest/QtTest>

#include <functional>
#include <string>

namespace logictest {

// The active device of the simulated card, as the card holds it now.
inline zelk::sim::Device activeDevice()
{
    zelk::sim::Device device;
    const bool found = zelk::sim::findDevice(zelk::sim::activeDeviceId(), &device);
    if (!found)
        qWarning("logictest: the simulated card has no active device");
    return device;
}

// Changes the active device in place (no events).
inline bool changeActiveDevice(const std::function<void(zelk::sim::Device&)>& change)
{
    zelk::sim::Device device = activeDevice();
    change(device);
    return zelk::sim::updateDevice(device);
}

inline int callCount(const char* function)
{
    return static_cast<int>(zelk::sim::calls(function).size());
}

// Total number of SDK calls recorded since the last clearCalls().
inline int allCallCount()
{
    return static_cast<int>(zelk::sim::calls().size());
}

inline QString joinedArgs(const zelk::sim::CallRecord& record)
{
    QStringList parts;
    for (const std::string& arg : record.args)
        parts << QString::fromStdString(arg);
    return parts.join(QLatin1Char(','));
}

// Every argument of every recorded call, for checks that a typed code never reached the record.
inline QString allRecordedArgs()
{
    QStringList parts;
    for (const zelk::sim::CallRecord& record : zelk::sim::calls())
        parts << QString::fromStdString(record.function) + QLatin1Char('(') + joinedArgs(record) +
                     QLatin1Char(')');
    return parts.join(QLatin1Char('\n'));
}

} // namespace logictest
