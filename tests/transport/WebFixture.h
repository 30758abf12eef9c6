/* A connection to a host whose answers are scripted, with a phone that may roam. */
#pragma once

#include "transport/WebConnection.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>

#include "support/NetworkTest.h"

class Web : public NetworkTest {
protected:
    static constexpr WCHAR host[] = TEXT("maps.example");

    static void SetPhoneStatus(std::string_view bytes) {
        SetRegistryValue(HKEY_LOCAL_MACHINE, TEXT("System\\State\\Phone"), TEXT("Status"), REG_DWORD, bytes);
    }
    static void Roam() { SetPhoneStatus({"\0\2\0\0", 4}); }

    void Answer(WebReply reply, INTERNET_PORT port = 80) { device.AddHost(host, port, std::move(reply)); }

    const HWND owner = reinterpret_cast<HWND>(uintptr_t{0x1230});
};
