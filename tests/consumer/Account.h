/* What the application of this project does with the online account. */
#pragma once

#include <Platform.h>

#include <account/Account.h>

/* The account of this application, with what its last sign-in has saved. */
Account AccountOfApplication(HINSTANCE instance);
