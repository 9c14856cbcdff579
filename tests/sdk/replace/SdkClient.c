/* A plain C client of the device SDK: prints the active device's name and status. */
#include "ZelkSdk.h"

#include <stdio.h>

int main(void)
{
    char name[ZELK_DEVICE_NAME_OUT_SIZE] = {0};
    _ZELK_EN_DEVICE_STATUS status = DEVICE_STATUS_NO_DEVICE;
    if (ZELK_DevSrv_GetDeviceName(name) != ZELK_ERROR_SUCCESS ||
        ZELK_DevSrv_GetDevStatus(&status) != ZELK_ERROR_SUCCESS) {
        return 1;
    }
    printf("%s|%d\n", name, (int)status);
    return 0;
}
