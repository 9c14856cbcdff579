/* Device SDK: result codes, records, enumerations and event numbers shared across the C boundary. */
#ifndef ZELK_TYPES_H
#define ZELK_TYPES_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Result codes ------------------------------------------------------------------------------
 * Every function returns a 32-bit unsigned result; 0 is success and anything else a failure.
 * Callers are expected to test against zero only, but a few answers carry a meaning of their own. */
typedef uint32_t ZELK_RESULT;

#define ZELK_ERROR_SUCCESS ((ZELK_RESULT)0)
/* A parameter was refused (wrong code length, null pointer...). */
#define ZELK_ERROR_BAD_PARAM ((ZELK_RESULT)1)
/* The generic failure, also "code refused"; callers that read it as a signed number see -1. */
#define ZELK_ERROR_FAILURE ((ZELK_RESULT)0xFFFFFFFFu)
/* The card refused a PUK unblock because the user lacks the privilege. */
#define ZELK_ERROR_UNBLOCK_NOT_ALLOWED ((ZELK_RESULT)6000)
/* Every other refusal (no device, no SIM, wrong or blocked code, a request the device does not
 * support) is reported as ZELK_ERROR_FAILURE. */

/* ---- Sizes -------------------------------------------------------------------------------------- */
#define MAX_DEVICE_COUNT 64
#define ZELK_DEVICE_NAME_SIZE 128
/* ZELK_DevSrv_GetDeviceName writes at most this many bytes, terminator included. */
#define ZELK_DEVICE_NAME_OUT_SIZE 24
/* Codes typed by the user: 8 characters and the terminator. */
#define ZELK_PIN_BUFFER_SIZE 9
/* Activation codes (MSL, one-time subsidy-lock code): 6 digits and the terminator. */
#define ZELK_ACT_CODE_BUFFER_SIZE 7
#define ZELK_GID_TEXT_SIZE 512
#define ZELK_IMSI_TEXT_SIZE 20
/* Each of the three areas of ZELK_NetSrv_GetBandListAndOrderEx is this large. */
#define ZELK_BAND_AREA_SIZE 8
/* Buffer size for ZELK_GetUserDataDirectory. */
#define ZELK_MAX_PATH 260

/* ---- Device records ----------------------------------------------------------------------------- */

/* One device: 136 bytes. */
typedef struct _ZELK_ST_DEVICE_INFO
{
    int32_t nPort;                      /* port number */
    int32_t nProtocol;                  /* protocol code, handed back unchanged */
    char szName[ZELK_DEVICE_NAME_SIZE]; /* NUL-terminated 8-bit text */
} _ZELK_ST_DEVICE_INFO;

/* The list of present devices: 4 + 64 * 136 bytes. */
typedef struct _ZELK_ST_MULTI_DEVICE_INFO
{
    int32_t nDevNum; /* number of valid entries */
    _ZELK_ST_DEVICE_INFO stDevInfo[MAX_DEVICE_COUNT];
} _ZELK_ST_MULTI_DEVICE_INFO;

/* Device status. 1 and 3 both mean a device is present and usable; 3 is the fully available device
 * whose name and port may be taken over. */
typedef enum _ZELK_EN_DEVICE_STATUS {
    DEVICE_STATUS_NO_DEVICE = 0,
    DEVICE_STATUS_READY = 1,
    DEVICE_STATUS_INITIALIZING = 2,
    DEVICE_STATUS_AVAILABLE = 3,
    DEVICE_STATUS_REJECTED = 4,
    DEVICE_STATUS_FORCE_32BIT = 0x7FFFFFFF
} _ZELK_EN_DEVICE_STATUS;

/* Product type (ZELK_DevSrv_GetProductType). The product record is one signed 32-bit word. */
#define ZELK_PRODUCT_TYPE_CDMA 1
#define ZELK_PRODUCT_TYPE_GSM 2
#define ZELK_PRODUCT_TYPE_UNKNOWN 3

/* SIM status (ZELK_DevSrv_GetSimStatus): 0 and 255 upwards mean no valid SIM, 1 to 254 a valid one. */
#define ZELK_SIM_STATUS_ABSENT 0u
#define ZELK_SIM_STATUS_VALID 1u
#define ZELK_SIM_STATUS_INVALID 255u

/* PIN status (ZELK_DevSrv_GetPinStatus). With status 2 the indicator byte says whether the PIN
 * check is still pending (non-zero) or the PIN must be entered (0). */
#define ZELK_PIN_STATUS_READY 1
#define ZELK_PIN_STATUS_PIN_REQUIRED 2
#define ZELK_PIN_STATUS_PUK_REQUIRED 3
#define ZELK_PIN_STATUS_PUK_BLOCKED 4
#define ZELK_PIN_STATUS_READY_NO_PIN 8
/* A remaining-attempts byte of 255 means "unknown". */
#define ZELK_ATTEMPTS_UNKNOWN 255

/* Data card network lock (ZELK_DevSrv_GetCardLockStatus state byte): 2 is unlocked. */
#define ZELK_CARD_LOCK_LOCKED 1
#define ZELK_CARD_LOCK_UNLOCKED 2
#define ZELK_CARD_LOCK_LOCKED_OTHER 3

/* Radio switch record filled by ZELK_DevSrv_GetRFSwitch. */
typedef struct _ZELK_ST_RF_SWITCH
{
    uint32_t nRFState; /* current radio state: 1 on, 0 off */
    uint32_t nSupport; /* 0: the device cannot switch its radio */
} _ZELK_ST_RF_SWITCH;

/* Data of the radio switch event 6615: two 32-bit words. The device-manager callback reads the
 * first as the software state and the second as the hardware state. */
typedef struct _ZELK_ST_RF_SWITCH_EVENT
{
    uint32_t nSwState;
    uint32_t nHwState;
} _ZELK_ST_RF_SWITCH_EVENT;

/* Packet service (ZELK_NetSrv_SetPSState). */
#define ZELK_PS_DETACH 0
#define ZELK_PS_ATTACH 1

/* IMSI record: six 32-bit words. The card writes only the text (at most 15 digits, NUL-terminated,
 * inside the first 20 bytes) and never the trailing word, so a 20-byte buffer is enough too. */
typedef struct _ZELK_ST_IMSI_INFO
{
    char szImsi[ZELK_IMSI_TEXT_SIZE];
    uint32_t nReserved;
} _ZELK_ST_IMSI_INFO;

/* SIM group identifiers: hexadecimal text, two digits per byte; lengths in bytes. 1032 bytes. The
 * text fills its field completely at 256 bytes, then it carries no terminator. */
typedef struct _ZELK_ST_GID_INFO
{
    char szGID1[ZELK_GID_TEXT_SIZE];
    uint32_t nGID1Len;
    char szGID2[ZELK_GID_TEXT_SIZE];
    uint32_t nGID2Len;
} _ZELK_ST_GID_INFO;

typedef enum _ZELK_EN_GIDTYPE {
    ZELK_GIDTYPE_GID1 = 1,
    ZELK_GIDTYPE_GID2 = 2,
    ZELK_GIDTYPE_FORCE_32BIT = 0x7FFFFFFF
} _ZELK_EN_GIDTYPE;

/* Device identity of a CDMA device (ZELK_DevSrv_GetESN): 64 bytes. */
typedef struct _ZELK_ST_ESN_INFO
{
    char szESN[32];  /* 8 hexadecimal digits, NUL-terminated */
    char szMEID[32]; /* 14 hexadecimal digits, NUL-terminated */
} _ZELK_ST_ESN_INFO;

/* Service numbers written by ZELK_DevSrv_ManualCHKOTKSLActive: 46 bytes, each field NUL-terminated. */
typedef struct _ZELK_ST_SERVICE_NUMBER
{
    char szMDN[17];
    char szMIN[23];
    char szSID[6];
} _ZELK_ST_SERVICE_NUMBER;

/* Over-the-air activation status (ZELK_DevSrv_GetOTAActStatus). */
#define ZELK_OTA_NOT_ACTIVATED 0
#define ZELK_OTA_ACTIVATED 1
#define ZELK_OTA_UNKNOWN 2

/* Lock-code status of manual activation (ZELK_DevSrv_GetOTKSLStatus). */
#define ZELK_OTKSL_NONE 0
#define ZELK_OTKSL_OTKSL 1
#define ZELK_OTKSL_MSL 2

/* OTASP progress states carried by event 6617 (a signed 32-bit word). */
typedef enum _ZELK_EN_OTASP_STATE {
    ZELK_OTASP_NONE = 0,
    ZELK_OTASP_IN_PROGRESS = 1,
    ZELK_OTASP_SPL_UNLOCKED = 2,
    ZELK_OTASP_NAM_DOWNLOADED = 3,
    ZELK_OTASP_MDN_DOWNLOADED = 4,
    ZELK_OTASP_IMSI_DOWNLOADED = 5,
    ZELK_OTASP_PRL_DOWNLOADED = 6,
    ZELK_OTASP_COMMIT_SUCCESS = 7,
    ZELK_OTASP_PROG_SUCCESS = 8,
    ZELK_OTASP_PROG_FAILED = 9
} _ZELK_EN_OTASP_STATE;

/* Fingerprint verification indication carried by event 6620 (first 32-bit word). 0 ends the lock. */
typedef enum _ZELK_EN_VERIFYINDSTATE {
    ZELK_VERIFYIND_GOOD_IMAGE = 0,
    ZELK_VERIFYIND_NO_FINGER = 1,
    ZELK_VERIFYIND_TOO_LIGHT = 2,
    ZELK_VERIFYIND_TOO_DRY = 3,
    ZELK_VERIFYIND_TOO_DARK = 4,
    ZELK_VERIFYIND_TOO_HIGH = 5,
    ZELK_VERIFYIND_TOO_LOW = 6,
    ZELK_VERIFYIND_TOO_LEFT = 7,
    ZELK_VERIFYIND_TOO_RIGHT = 8,
    ZELK_VERIFYIND_TOO_SMALL = 9,
    ZELK_VERIFYIND_TOO_STRANGE = 10,
    ZELK_VERIFYIND_BAD_QUALITY = 11,
    ZELK_VERIFYIND_PUT_FINGER = 12,
    ZELK_VERIFYIND_PUT_FINGER2 = 13,
    ZELK_VERIFYIND_PUT_FINGER3 = 14,
    ZELK_VERIFYIND_REMOVE_FINGER = 15,
    ZELK_VERIFYIND_CONSOLIDATION_FAIL = 16,
    ZELK_VERIFYIND_CONSOLIDATION_SUCCEED = 17,
    ZELK_VERIFYIND_CLEAN_SENSOR = 18,
    ZELK_VERIFYIND_KEEP_FINGER = 19,
    ZELK_VERIFYIND_START = 20,
    ZELK_VERIFYIND_VERIFY_START = 21,
    ZELK_VERIFYIND_ENROLL_START = 22,
    ZELK_VERIFYIND_FINGER_DETECT_START = 23,
    ZELK_VERIFYIND_GUI_FINISH = 24,
    ZELK_VERIFYIND_GUI_FINISH_SUCCEED = 25,
    ZELK_VERIFYIND_GUI_FINISH_FAIL = 26,
    ZELK_VERIFYIND_CALIB_START = 27,
    ZELK_VERIFYIND_TOO_FAST = 28,
    ZELK_VERIFYIND_TOO_SKEWED = 29,
    ZELK_VERIFYIND_TOO_SHORT = 30,
    ZELK_VERIFYIND_TOUCH_SENSOR = 31,
    ZELK_VERIFYIND_PROCESSING_IMAGE = 32,
    ZELK_VERIFYIND_SWIPE_IN_PROGRESS = 33,
    ZELK_VERIFYIND_BACKWARD_MOVEMENT = 34,
    ZELK_VERIFYIND_JOINT_DETECTED = 35,
    ZELK_VERIFYIND_CENTER_AND_PRESS_HARDER = 36,
    ZELK_VERIFYIND_IMAGE_PROCESSED = 37,
    ZELK_VERIFYIND_PUT_FINGER4 = 38,
    ZELK_VERIFYIND_PUT_FINGER5 = 39,
    ZELK_VERIFYIND_ENROLL_PROGRESS = 40,
    ZELK_VERIFYIND_NO_MATCH = 255,
    ZELK_VERIFYIND_NONE = 256 /* no indication received yet */
} _ZELK_EN_VERIFYINDSTATE;

/* Power event 6616 (first 32-bit word). */
#define ZELK_POWER_RESUME 0
#define ZELK_POWER_SUSPEND 1

/* ---- Event numbers ------------------------------------------------------------------------------
 * Initialisation events (6000..6018) arrive on the device-initialisation callback; the device-set
 * events (list, change, switch, reject, detection) on the multi-device callback; the remaining
 * device events on the device-manager callback; the end of the activation call on the call service's
 * handler. Each event goes to exactly one registry, so one function may serve several. */
#define ZELK_EVENT_DEV_INIT_FIRST 6000
#define ZELK_EVENT_DEV_INIT_LAST 6018

#define ZELK_EVENT_DEV_INIT_START 6000         /* a device starts its initialisation */
#define ZELK_EVENT_DEV_SIM_INVALID 6002        /* no valid SIM in the device */
#define ZELK_EVENT_DEV_INIT_SUCCESS 6008       /* the device was initialised */
#define ZELK_EVENT_DEV_LIST_CHANGED 6010       /* data: _ZELK_ST_MULTI_DEVICE_INFO (multi-device) */
#define ZELK_EVENT_DEV_PIN_CHECK 6011          /* the SIM can be asked for its PIN state now */
#define ZELK_EVENT_DEV_DEVICE_NO_PIN 6012      /* the SIM's PIN state is known without a PIN check */
#define ZELK_EVENT_DEV_CARD_LOCK 6013          /* the data card is network-locked */
#define ZELK_EVENT_DEV_DEVICE_INIT_FINISH 6014 /* the initialisation is over */
#define ZELK_EVENT_DEV_DEVICE_REMOVED 6016     /* the active device went away */
#define ZELK_EVENT_DEV_FP_LOCK 6018            /* the device is held by its fingerprint lock */

#define ZELK_EVENT_DEV_BEFORE_CHANGE 6500    /* the active device is about to change */
#define ZELK_EVENT_DEV_CHANGED 6501          /* the active device has changed */
#define ZELK_EVENT_DEV_ACTIVE 6600           /* a device became the active device */
#define ZELK_EVENT_DEV_REJECT 6601           /* data: _ZELK_ST_MULTI_DEVICE_INFO */
#define ZELK_EVENT_DEV_SWITCH 6604           /* the active device is being switched */
#define ZELK_EVENT_DEV_DETECTED 6606         /* data: _ZELK_ST_MULTI_DEVICE_INFO */
#define ZELK_EVENT_DEV_RF_SWITCH 6615        /* data: _ZELK_ST_RF_SWITCH_EVENT */
#define ZELK_EVENT_DEV_POWER 6616            /* data: one 32-bit word, ZELK_POWER_* */
#define ZELK_EVENT_DEV_OTASP_STATE 6617      /* data: one signed 32-bit word, _ZELK_EN_OTASP_STATE */
#define ZELK_EVENT_CALL_END 6618             /* the activation call ended (call service) */
#define ZELK_EVENT_DEV_SIM_STATE_CHANGE 6619 /* data: one 32-bit word, the SIM status */
#define ZELK_EVENT_DEV_FP_VERIFY 6620        /* data: one 32-bit word, _ZELK_EN_VERIFYINDSTATE */

/* Callbacks run on threads of the SDK, never on the thread that registered them. `data` points to
 * storage of the SDK that is valid only during the call; it may be null where no data goes with the
 * event. The return value is ignored. */
typedef int (*ZELK_EVENT_CALLBACK)(int event, void* data);

#ifdef __cplusplus
} /* extern "C" */
#endif

/* ---- Layout checks ------------------------------------------------------------------------------- */
#ifdef __cplusplus
#define ZELK_STATIC_ASSERT(cond, msg) static_assert(cond, msg)
#else
#define ZELK_STATIC_ASSERT(cond, msg) _Static_assert(cond, msg)
#endif
ZELK_STATIC_ASSERT(sizeof(ZELK_RESULT) == 4, "result is 32 bits");
ZELK_STATIC_ASSERT(sizeof(_ZELK_ST_DEVICE_INFO) == 136, "_ZELK_ST_DEVICE_INFO is 136 bytes");
ZELK_STATIC_ASSERT(offsetof(_ZELK_ST_DEVICE_INFO, szName) == 8, "device name at offset 8");
ZELK_STATIC_ASSERT(sizeof(_ZELK_ST_MULTI_DEVICE_INFO) == 4 + MAX_DEVICE_COUNT * 136,
                   "_ZELK_ST_MULTI_DEVICE_INFO is 4 + 64 * 136 bytes");
ZELK_STATIC_ASSERT(offsetof(_ZELK_ST_MULTI_DEVICE_INFO, stDevInfo) == 4, "devices at offset 4");
ZELK_STATIC_ASSERT(sizeof(_ZELK_ST_RF_SWITCH) == 8, "radio-switch record is two words");
ZELK_STATIC_ASSERT(sizeof(_ZELK_ST_RF_SWITCH_EVENT) == 8, "radio-switch event is two words");
ZELK_STATIC_ASSERT(sizeof(_ZELK_ST_IMSI_INFO) == 24, "IMSI record is six words");
ZELK_STATIC_ASSERT(sizeof(_ZELK_ST_GID_INFO) == 1032, "GID record is 1032 bytes");
ZELK_STATIC_ASSERT(offsetof(_ZELK_ST_GID_INFO, nGID1Len) == 512, "GID1 length at 512");
ZELK_STATIC_ASSERT(offsetof(_ZELK_ST_GID_INFO, szGID2) == 516, "GID2 text at 516");
ZELK_STATIC_ASSERT(offsetof(_ZELK_ST_GID_INFO, nGID2Len) == 1028, "GID2 length at 1028");
ZELK_STATIC_ASSERT(sizeof(_ZELK_ST_ESN_INFO) == 64, "identity record is 64 bytes");
ZELK_STATIC_ASSERT(sizeof(_ZELK_ST_SERVICE_NUMBER) == 46, "service-number record is 46 bytes");
ZELK_STATIC_ASSERT(offsetof(_ZELK_ST_SERVICE_NUMBER, szMIN) == 17, "MIN at 17");
ZELK_STATIC_ASSERT(offsetof(_ZELK_ST_SERVICE_NUMBER, szSID) == 40, "SID at 40");
ZELK_STATIC_ASSERT(sizeof(_ZELK_EN_DEVICE_STATUS) == 4, "device status is 32 bits");
ZELK_STATIC_ASSERT(sizeof(_ZELK_EN_VERIFYINDSTATE) == 4, "verify indication is 32 bits");
ZELK_STATIC_ASSERT(sizeof(_ZELK_EN_GIDTYPE) == 4, "GID type is 32 bits");

#endif /* ZELK_TYPES_H */
