/* Users of dialogs in which anything may fail. */
#pragma once

#include "Device.h"

#include <functional>
#include <string_view>

/* The user does what `script` says in the next dialog. If it is still open then he gives up, and if that does
 * not end it the system destroys it: no failure keeps a flow from ending. */
void UseDialogToItsEnd(DialogScript script);

/* What he can do only when it is there. Whether it was. */
bool TypeIfThere(DialogUser& user, int field, std::u16string_view text);
bool PressIfThere(DialogUser& user, int command);
bool ChooseIfThere(DialogUser& user, UINT command);
