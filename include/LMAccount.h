/* Orvande Account: the user's account with the online services, as OrvandeAccount.dll exports it. The DLL
 * needs no OrvandeOnline.dll; an application may use either or both.
 *
 * What LMOnline.h says of conventions holds here: plain C functions under undecorated names, running to their
 * end before they return; NUL-terminated UTF-16; the cause of a failure in the thread's last error, 0 after
 * success. Nothing is thrown. Only the two functions that show a dialog show messages, too.
 *
 * All are called from the application's user-interface thread, one at a time: windows, translations, data
 * connection and wait cursor are one for the process, on the device the state of exceptions is, too, and
 * nothing is locked.
 *
 * One sign-in:
 *
 *     LMAccountRecord account = {sizeof account, 1, 0, {0}, {0}, {0}};
 *     LMAccountLoad(&account);
 *     if (LMAccountSignIn(&account) || LMAccountShowSignIn(&account, window)) Welcome(account.userId);
 *
 * Passwords travel as they were typed, over plain HTTP to port 80: who can read the network can read them. A
 * saved one is scrambled with a key that is the same in every copy of the library, not encrypted.
 */
#ifndef LM_ACCOUNT_H
#define LM_ACCOUNT_H

#include "LMOnline.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- The account ---- */

/* The code units of each text in the record, its NUL included. */
#define LM_ACCOUNT_TEXT 256

/* The user's account, as the application and the library hand it to each other: 1548 bytes, packed,
 * little-endian. It belongs to the application, which sets `size`, `productCode` and `productName` once and
 * zeroes the rest. The library keeps no part of it when a function has returned.
 *
 * Every function but LMAccountSave and LMAccountSignIn writes to it, and then writes whole texts: what
 * follows their NUL is zero. A record is refused (LM_ERROR_BAD_ARGUMENT, nothing is done, no field is
 * written) when it is NULL, when `size` is not that of this structure, or when a text has no NUL in its
 * field, whatever the function. */
typedef struct LMAccountRecord {
    LMInt32 size;                        /* offset 0: sizeof(LMAccountRecord), which is 1548 */
    LMInt32 productCode;                 /* offset 4: the application's number with the service; any number */
    LMInt32 savePassword;                /* offset 8: not 0: a password is, or is to be, saved */
    LMChar userId[LM_ACCOUNT_TEXT];      /* offset 12: at most 255 code units; empty: not known */
    LMChar password[LM_ACCOUNT_TEXT];    /* offset 524: as typed, readable; at most 255 code units */
    LMChar productName[LM_ACCOUNT_TEXT]; /* offset 1036: the application's name, and that of its key below
                                            "SOFTWARE\" of HKEY_LOCAL_MACHINE, in which a new account's vendor
                                            number is looked up ("web_vendor"; 0 when there is none). May be
                                            empty. */
} LMAccountRecord;

/* ---- Why a call failed, beyond the codes of LMOnline.h ---- */

/* The service knows no account with that user ID. */
#define LM_ERROR_UNKNOWN_USER (LM_ERROR_SERVICE_STATUS | 4U)
/* The password is not the account's. */
#define LM_ERROR_WRONG_PASSWORD (LM_ERROR_SERVICE_STATUS | 5U)
/* User ID and password are right, but the account is in a state other than 0, whose low 24 bits stand in the
 * low 24 bits here (LM_ERROR_STATUS). What it means is the service's business; nobody is signed in. */
#define LM_ERROR_ACCOUNT_STATE 0x23000000U

/* ---- Without a dialog ---- */

/* Reads what was saved last: the file "settings.ini" in the folder "Orvande" of the user's application data.
 * The folder is made when it is missing. Fills in
 *   userId        as it was saved; of units above U+00FF only the low byte is left.
 *   password      if one was saved, its first 16 letters (in lower case) and digits, which is what the
 *                 service compares; otherwise empty.
 *   savePassword  1 when there is such a password, else 0: LMAccountSave then keeps what there is.
 * The other fields stay as they are. Returns
 *   1   read.
 *   0   nothing is known, and no field is written: there is no file (last error 2, the system's
 *       ERROR_FILE_NOT_FOUND, as at a user's first start), it cannot be opened (the system's code), the user
 *       ID in it has more than 255 code units (234, ERROR_MORE_DATA), or memory ran out (8). A file that can
 *       be opened, but not read to its end, counts as ending there. */
LMInt32 LM_CALL LMAccountLoad(LMAccountRecord* record);

/* Writes that file anew, in the way in which the sign-in dialog does when the service has accepted: the user
 * ID, and the password if `savePassword` is not 0. With 0 a password that was saved before is gone. An empty
 * user ID is not written; a password without letters and digits is, and loads as none. The service is not
 * asked. Returns
 *   1   written.
 *   0   the file could not be opened for writing and is as it was, when it was read-only for instance (5,
 *       ERROR_ACCESS_DENIED); or not written, on a full disk for instance (112): then it is cut short. 8 when
 *       memory ran out. */
LMInt32 LM_CALL LMAccountSave(const LMAccountRecord* record);

/* Asks the service whether it accepts `userId`, `password` and `productCode`. Brings up the device's data
 * connection (which may take 30 s), sends the request under a wait cursor, and shows nothing. Saves nothing.
 * Returns
 *   1   accepted: the user is signed in.
 *   0   not signed in, and the last error tells why:
 *       LM_ERROR_BAD_ARGUMENT    also for an empty user ID or password; nothing is sent then
 *       LM_ERROR_UNKNOWN_USER, LM_ERROR_WRONG_PASSWORD
 *       LM_ERROR_SERVICE_STATUS  another status of the service
 *       LM_ERROR_ACCOUNT_STATE   accepted, but the account's state is not 0
 *       LM_ERROR_HTTP_STATUS     a web server refused, and none of the service has answered
 *       LM_ERROR_REPLY_ENDED     the reply ended before status or state had come
 *       a code of the system or of WinINet: no connection, no answer (12007, 12029 ...), no memory (8) */
LMInt32 LM_CALL LMAccountSignIn(const LMAccountRecord* record);

/* ---- With a dialog ---- */

/* Shows the sign-in dialog until the service accepts what is typed there, or until the user gives up. It
 * begins with the record's user ID and, when that is not empty, password; its box "Save password" is always
 * unticked at first. The user may create an account from it, as with LMAccountShowCreate, which counts as
 * signing in. His failures are told to him. Accepted credentials are saved as with LMAccountSave.
 *   owner   the window (HWND) that owns the dialog and is disabled meanwhile; may be NULL. What is no window
 *           is LM_ERROR_BAD_ARGUMENT, and nothing is shown.
 * Returns
 *   1   signed in: the record holds the user's `userId`, `password` and `savePassword`. The last error is 0,
 *       or tells why they could not be saved.
 *   0   not signed in. LM_ERROR_CANCELLED: the user has given up, or the dialog was destroyed, with its
 *       owner for instance. The record holds what he tried last, without the password if that was a sign-in;
 *       it stays as it was when he tried nothing. Another code: the dialog could not be shown, or memory ran
 *       out in it, and the user has been told so if there was memory for it; the record stays as it was.
 * The fields take 255 code units. Should another program put more there, the result is 0, the last error 234
 * (ERROR_MORE_DATA), and the record stays as it was. */
LMInt32 LM_CALL LMAccountShowSignIn(LMAccountRecord* record, void* owner);

/* Shows the dialog that creates an account until the service has created one, or until the user gives up. It
 * begins with the record's user ID and password. A new account counts as signed in and is saved as with
 * LMAccountSave; the dialog does not ask whether to save the password, `savePassword` says it.
 *   owner   as above.
 * Returns
 *   1   created: the record holds `userId` and `password` of the new account. The last error is 0, or tells
 *       why they could not be saved.
 *   0   no account was created. LM_ERROR_CANCELLED: the user has given up, or has been told that there is an
 *       account with his e-mail address; the record holds what was tried last. Other codes as above. */
LMInt32 LM_CALL LMAccountShowCreate(LMAccountRecord* record, void* owner);

/* ---- For GetProcAddress ---- */

/* The types of pointers to the functions, for applications that load the library while they run. The names to
 * ask for are those of the functions. */
typedef LMInt32(LM_CALL* LMAccountLoadFunction)(LMAccountRecord* record);
typedef LMInt32(LM_CALL* LMAccountSaveFunction)(const LMAccountRecord* record);
typedef LMInt32(LM_CALL* LMAccountSignInFunction)(const LMAccountRecord* record);
typedef LMInt32(LM_CALL* LMAccountShowSignInFunction)(LMAccountRecord* record, void* owner);
typedef LMInt32(LM_CALL* LMAccountShowCreateFunction)(LMAccountRecord* record, void* owner);

#ifdef __cplusplus
}
#endif

/* The layout is part of the interface: a compiler that lays the record out differently stops here. Its size
 * is the sum of its fields', which leaves no room for padding. */
typedef char LMAssertAccountRecordSize[sizeof(LMAccountRecord) == 1548 ? 1 : -1];

#endif
