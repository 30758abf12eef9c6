/* A request over HTTPS to a service for which nobody vouches. It needs a process of its own: what Windows has once learnt of
 * the machine's authorities it keeps. */
#include "transport/CgiRequest.h"

#include <gtest/gtest.h>

#include "helpers/ConnectRelay.h"
#include "helpers/TestServices.h"
#include "helpers/WebProxy.h"

TEST(UntrustedRequest, FailsToBeSentWhenNobodyVouchesForTheService) {
    const ConnectRelay relay(PortTold("ORVANDE_TEST_SECURE_PORT"));
    const WebProxy proxy(relay.Port());
    CgiRequest request(L"online.orvande.example", L"cgi-bin/mapstore.cgi", false, true);
    request.WriteInt32(101);
    request.WriteInt32(0);
    EXPECT_FALSE(request.SendRequest());
}
