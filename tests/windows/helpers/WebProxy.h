/* The user's web proxy, through which WinINet reaches any host. */
#pragma once

#include <cstdint>

#include "Platform.h"

/* While one lives, the user's proxy is a port of this machine; afterwards there is none. Sessions that are
 * opened meanwhile use it. Not two at a time. */
class WebProxy {
public:
    explicit WebProxy(uint16_t port);
    ~WebProxy();
    WebProxy(const WebProxy&) = delete;
    WebProxy& operator=(const WebProxy&) = delete;

private:
    HKEY key = nullptr;
};
