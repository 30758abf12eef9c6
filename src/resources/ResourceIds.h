/* The numbers of the library's resources, of the commands in them and of the controls; for the resource
 * compiler as well as for the sources. All lie below 5000: they are in the library's own module. */
#pragma once

/* Dialog templates. */
#define SIGN_IN_DIALOG 107
#define CREATE_ACCOUNT_DIALOG 108

/* Menu bars; each is a menu and an RCDATA resource of the same number. */
#define SIGN_IN_MENU_BAR 107
#define DONE_CANCEL_MENU_BAR 115

/* Texts of the menu bars' buttons. */
#define DONE_STRING 2000
#define CANCEL_STRING 2001
#define MENU_STRING 2002
#define SIGN_IN_STRING 2007

/* Commands beside IDOK and IDCANCEL. */
#define NEW_ACCOUNT_COMMAND 1016
#define FORGOT_COMMAND 1029

/* Controls. */
#define USER_ID_FIELD 1001
#define PASSWORD_FIELD 1003
#define RETYPE_FIELD 1005
#define NAME_FIELD 1006
#define EMAIL_FIELD 1010
#define WANTS_UPDATES_BOX 1012
#define SAVE_PASSWORD_BOX 1017
