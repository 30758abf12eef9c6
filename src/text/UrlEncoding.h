/* Form encoding of single values, as key/value files and form texts hold them. Both directions work on code
 * units; no UTF-8 is made or read. */
#pragma once

#include "text/WideString.h"

/* `text` encoded, unit by unit:
 *   ASCII letters and digits                              as they are
 *   units whose low byte is one of $-_.!*'() or 0         as they are, with their high byte
 *   space                                                 +
 *   every other unit                                      %xx, its low byte in lower-case digits
 * So the high byte of most units above U+00FF is lost: U+20AC becomes %ac, while U+0100 and U+012D stay as
 * they are. The readers of key/value files depend on exactly this form. */
WideString UrlEncode(const WideString& text);

/* `text` decoded: + is a space, %xx (digits of either case) the unit 0 to 255. Bad text never fails:
 *   % and two units that are not both digits    all three as they are, and decoding goes on after them
 *   % with fewer than two units after it        dropped with what follows it */
WideString UrlDecode(const WideString& text);
