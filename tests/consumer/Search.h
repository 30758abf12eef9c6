/* What the application of this project does with the map shop. */
#ifndef SEARCH_H
#define SEARCH_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Asks for all maps. How many the shop has, and in `results` how many it has sent. */
int32_t SearchShop(int32_t* results);

#ifdef __cplusplus
}
#endif

#endif
