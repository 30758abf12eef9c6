/* The search as a program for Windows. */
#include <stdio.h>

#include "Search.h"

int main(void) {
    int32_t results = 0;
    const int32_t maps = SearchShop(&results);
    printf("%d of %d maps\n", (int)results, (int)maps);
    return 0;
}
