/* A CGI program whose answers are scripted. */
#pragma once

#include "transport/CgiRequest.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>

#include "support/NetworkTest.h"

class Cgi : public NetworkTest {
protected:
    static constexpr WCHAR host[] = TEXT("host.example");
    static constexpr WCHAR path[] = TEXT("cgi-bin/program.cgi");

    void Answer(WebReply reply, INTERNET_PORT port = 80) { device.AddHost(host, port, std::move(reply)); }
    void Answer(std::string_view bytes) { Answer(WebReply::WithBody(std::string(bytes))); }

    static CgiRequest& WithCode(CgiRequest& request) {
        request.WriteInt32(7);
        return request;
    }
};
