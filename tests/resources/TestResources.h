/* Numbers of the resources that only the tests have. */
#pragma once

/* A dialog that shows one text. */
#define TEXT_DIALOG 201
#define SHOWN_TEXT 1100

/* A dialog with one control of each kind. */
#define FORM_DIALOG 202
#define FORM_FIELD 1101
#define FORM_BOX 1102
#define FORM_BUTTON 1103
#define FORM_GROUP 1104

/* Menu bars that cannot be made: a menu without RCDATA, RCDATA that promises more than it holds, and a button
 * whose text is not there. */
#define MENU_ALONE 203
#define SHORT_MENU_BAR 204
#define TEXTLESS_MENU_BAR 205
