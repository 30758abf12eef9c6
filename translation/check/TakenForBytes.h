/* UTF-8 that a program has taken for single bytes: 'MenÃ¼' for 'Menü'. */
#pragma once

#include "text/WideString.h"

/* What such a program has made `text` of; empty when `text` is no such thing, or may well be right as it is:
 * 'MENÜ…' and 'OUBLIÉ ?' with a no-break space could be read as bytes, too. */
WideString TextTakenForBytes(WideStringView text);
