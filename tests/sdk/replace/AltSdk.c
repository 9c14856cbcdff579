/* A second implementation of the device SDK, reduced to what the replacement check asks: it must
 * take the place of libDeviceSdk.so when its folder comes first in the library path. */
#include "ZelkSdk.h"

#include <string.h>

ZELK_API ZELK_RESULT ZELK_DevSrv_GetDeviceName(char* pszName)
{
    if (!pszName) {
        return ZELK_ERROR_BAD_PARAM;
    }
    strcpy(pszName, "Replacement Modem");
    return ZELK_ERROR_SUCCESS;
}

ZELK_API ZELK_RESULT ZELK_DevSrv_GetDevStatus(_ZELK_EN_DEVICE_STATUS* penStatus)
{
    if (!penStatus) {
        return ZELK_ERROR_BAD_PARAM;
    }
    *penStatus = DEVICE_STATUS_READY;
    return ZELK_ERROR_SUCCESS;
}
