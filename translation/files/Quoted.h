/* Texts in sentences to people. */
#pragma once

#include "text/WideString.h"

#include <string>

/* The UTF-8 of a text in single quotes, line breaks as \n, and cut when it is longer than a sentence
 * bears. */
std::string Quoted(WideStringView text);

/* The same, not cut. */
std::string QuotedWhole(WideStringView text);

/* Its UTF-8 with a box for each character that would control a terminal. */
std::string Visible(WideStringView text);

/* A path as one word of a shell's command. */
std::string ShellWord(const std::string& path);

/* "Orvande Online 1.0.0", the version whose texts these are. */
std::string NameOfVersion();
