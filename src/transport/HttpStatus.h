/* The HTTP status of a reply. */
#pragma once

#include "Platform.h"

/* The status of the reply to `request`; 1000, and a last error, when there is none. */
DWORD GetHttpStatus(HINTERNET request);

/* Why the reply to `request` is a refusal, as LMOnline.h tells it: a status of 300 or more. Redirections are
 * among them, because they are not followed. 0 when it is none; when there is no status, the cause of
 * that. */
DWORD GetRefusal(HINTERNET request);
