/* A search as one would write it by hand for this one reply: no stream, no classes, the same requests. */
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Searches for all maps and keeps them: how many there were; -1 for a failure. */
int32_t SearchByHand(void);

#ifdef __cplusplus
}
#endif
