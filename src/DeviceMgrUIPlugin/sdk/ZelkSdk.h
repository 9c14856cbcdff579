/* Device SDK: umbrella header for everything that crosses the SDK boundary. */
#ifndef ZELK_SDK_H
#define ZELK_SDK_H

#include "ZelkApi.h"
#include "ZelkTypes.h"

#endif /* ZELK_SDK_H */
