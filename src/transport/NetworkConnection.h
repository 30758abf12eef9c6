/* The device's data connection, brought up through the Connection Manager. */
#pragma once

#include "Platform.h"

/* The connection that was brought up last; null when there was none, or when the last one did not come up.
 * Giving it up does not clear it. */
extern HANDLE managedConnection;

/* Asks for a connection to the network of the service's home page, and waits for it 30 s at most. True: it is
 * up and kept in `managedConnection`. False: the Connection Manager failed (`managedConnection` stays as it
 * was) or answered that it could not connect (`managedConnection` is null). Callers send their request all
 * the same then: the device may have a connection of another kind. */
bool EstablishNetworkConnection();

/* Gives up `managedConnection`, if there is one. The variable keeps its value, so the connection may be given
 * up more than once. Always true. */
bool ReleaseNetworkConnection();

/* Whether the phone is roaming, according to the phone state in the registry; false when that says
 * nothing. */
bool IsRoaming();
