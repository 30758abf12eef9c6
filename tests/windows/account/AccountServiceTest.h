/* Tests of the account's dialogs against the reference service, which keeps its accounts between tests. */
#pragma once

#include "account/AccountScreenTest.h"
#include "helpers/WebProxy.h"

class AccountServiceTest : public AccountScreenTest {
protected:
    AccountServiceTest();

    /* A user ID that the service has not seen. */
    static std::wstring NewUserId(const std::wstring& name);

    /* All that the service has written: its log, and then its database with what belongs to it. */
    static std::string WhatTheServiceKeeps();

    /* Creates an account with the dialog; the e-mail address is the user ID's at example.org. */
    void CreateAccountOf(const std::wstring& userId, const std::wstring& password);

private:
    WebProxy proxy;
};
