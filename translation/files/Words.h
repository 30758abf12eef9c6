/* Lists in comments, as .po files and tables have them. */
#pragma once

#include "text/WideString.h"

#include <vector>

/* The parts between the separators, without blanks around them and without empty ones. */
std::vector<WideString> Split(WideStringView list, WCHAR separator);

/* Whether a list of flags has this one. */
bool HasFlag(WideStringView list, WideStringView flag);

/* Adds those flags of a list that CatalogueEntry does not have by themselves. */
void AddOtherFlags(std::vector<WideString>& flags, WideStringView list);

/* Adds the references of a list. A file whose name has blanks stands between U+2068 and U+2069. */
void AddReferences(std::vector<WideString>& references, WideStringView list);

/* Leaves out what occurs for the second time. */
void KeepOnce(std::vector<WideString>& words);
