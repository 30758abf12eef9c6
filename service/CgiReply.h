/* What the CGI programs reply. */
#pragma once

#include <cstdint>
#include <string>

struct CgiReply {
    std::string body;
    std::string refusal;  // for the log: why the request was refused; empty after success
};

/* A reply of nothing but a status, with a line for the log that names the status and says why. */
CgiReply RefusedReply(int32_t status, const std::string& why);
