/* Characters of a translation that a handheld does not show as their writer has seen them. */
#pragma once

#include "text/WideString.h"

#include <string>
#include <vector>

/* What is wrong with the characters of a translation of `text`, each as a sentence: UTF-8 that a program has
 * taken for single bytes, accents that are characters of their own, characters that are none to be read,
 * blanks that the handheld's font lacks, and backslashes, which stand for themselves. Letters that this font
 * lacks are no mistake: who needs them has another. */
std::vector<std::string> TellCharacters(WideStringView text, WideStringView translation);

/* The translation as its writer has seen it: without the first two of these mistakes, and without the TABs
 * that a spreadsheet with more columns writes behind it. */
WideString AsWritten(WideStringView translation);
