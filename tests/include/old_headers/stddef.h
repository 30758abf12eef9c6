/* What the headers take from <stddef.h>, as Microsoft's compilers for handhelds have it. There is no other
 * header beside it: they have no <stdint.h>. */
#ifndef _INC_STDDEF
#define _INC_STDDEF

#ifndef _WCHAR_T_DEFINED
typedef unsigned short wchar_t;
#define _WCHAR_T_DEFINED
#endif

typedef unsigned int size_t;

#ifdef __cplusplus
#define NULL 0
#else
#define NULL ((void*)0)
#endif

#define offsetof(record, field) ((size_t) & (((record*)0)->field))

#endif
