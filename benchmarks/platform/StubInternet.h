/* The stub platform's network: one reply, which lies in memory and comes in pieces of any size. */
#pragma once

#include <string_view>

/* What every request is answered from now on. The bytes stay the caller's. */
void SetReply(std::string_view bytes);
