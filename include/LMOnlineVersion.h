/* The version of Orvande Online, the only place where it stands: the build and the library's version resource
 * read it from here. For C, C++ and the resource compiler. */
#ifndef LMONLINEVERSION_H
#define LMONLINEVERSION_H

/* MAJOR.MINOR.PATCH. */
#define LM_ONLINE_VERSION_MAJOR 1
#define LM_ONLINE_VERSION_MINOR 0
#define LM_ONLINE_VERSION_PATCH 0

#endif
