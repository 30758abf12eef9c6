/* The search as a program for Windows CE; the number of results is its exit code. */
#include <wchar.h>

#include "Search.h"

int wmain(int count, wchar_t** values);

int wmain(int count, wchar_t** values) {
    int32_t results = 0;
    (void)count;
    (void)values;
    SearchShop(&results);
    return (int)results;
}
