/* What somebody has meant who has written a text that no version shows. */
#pragma once

#include "texts/ShownTexts.h"

/* The text of this version that is nearest to `text`, or null when all are far from it: when more than a
 * quarter of its characters would have to be changed, added or left out, and more than two. */
const ShownText* FindSimilarText(WideStringView text);
