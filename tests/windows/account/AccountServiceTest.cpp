#include "account/AccountServiceTest.h"

#include "helpers/LocalFiles.h"
#include "helpers/TestServices.h"
#include "helpers/Widened.h"

AccountServiceTest::AccountServiceTest() : proxy(PortTold("ORVANDE_TEST_ACCOUNTS_PORT")) {}

std::wstring AccountServiceTest::NewUserId(const std::wstring& name) {
    static int count = 0;
    FILETIME now{};
    GetSystemTimeAsFileTime(&now);
    const uint64_t time = uint64_t{now.dwHighDateTime} << 32 | now.dwLowDateTime;
    return name + L"-" + std::to_wstring(time) + L"-" + std::to_wstring(++count);
}

std::string AccountServiceTest::WhatTheServiceKeeps() {
    const std::string folder = Told("ORVANDE_TEST_ACCOUNTS_FOLDER") + "/";
    std::string bytes = ContentOf(Widened(Told("ORVANDE_TEST_SERVICE_LOG")));
    for (const char* file : {"catalogue.db", "catalogue.db-wal", "catalogue.db-journal"})
        bytes += ContentOf(Widened(folder + file));
    return bytes;
}

void AccountServiceTest::CreateAccountOf(const std::wstring& userId, const std::wstring& password) {
    ASSERT_TRUE(Create([&](const ScreenUser& user) {
        const HWND dialog = user.WaitForDialog(account_texts::creationCaption);
        Fill(dialog, {userId, password, password, L"Somebody", userId + L"@example.org"});
        PressDone(dialog);
    }));
}
