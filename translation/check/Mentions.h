/* Names of soft keys and menu items that other texts mention. In a translation they have to be the names that
 * the soft keys and menu items bear there. */
#pragma once

#include "texts/ShownTexts.h"

#include <vector>

struct Mention {
    const ShownText* name;
    size_t begin; /* in the text that mentions it */
};

/* In double quotes, alone or as words of a longer name ("I Forgot"), or in a path (Menu / New Account); in
 * the order of the text. */
std::vector<Mention> FindMentions(WideStringView text);
