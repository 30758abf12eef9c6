/* Text that shall not stay in memory that is free: passwords. */
#pragma once

#include "text/WideString.h"

/* Overwrites all the memory of the text, also what it no longer uses, with zeros. */
void WipeText(WideString& text) noexcept;

/* Gives `text` the text and the memory of `next`; what was there before is wiped. */
void ReplaceSecret(WideString& text, WideString&& next) noexcept;
