/* The public header must need nothing else, in either language. */
#include "LMOnline.h"
