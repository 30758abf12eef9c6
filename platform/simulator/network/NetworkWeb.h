/* The other side of the simulated web: hosts that are programs on this computer, reached over HTTP. */
#pragma once

#include <cstdint>

#include "network/DeviceNetwork.h"

/* Answers each request with what a server on this computer, on that port of 127.0.0.1, answers to it:
 *
 *   device.AddHost(u"online.example", 80, HostOnLoopback(8080));
 *
 * One connection a request, without encryption. Nobody who listens is a refused connection, a server that
 * closes without an answer gives none (status 0). A reply that breaks off ends there, as if it were complete;
 * whether its server closed or reset the connection cannot be told. There is no time limit. */
WebHandler HostOnLoopback(uint16_t port);
