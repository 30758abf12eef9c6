/* The companion's calls that show a dialog, whose service answers as it is told. */
#pragma once

#include "CompanionFlow.h"
#include "DialogScripts.h"

class AccountDialogFlow : public CompanionFlow {
public:
    AccountDialogFlow(DialogScript userScript, MapShopReply serviceReply)
        : script(std::move(userScript)), reply(std::move(serviceReply)) {}

    void SetUp() override {
        CompanionFlow::SetUp();
        Answer(reply);
    }
    void Prepare() override {
        CompanionFlow::Prepare();
        saved = "UserID=Anna\r\n";
        requestsBefore = device.Requests().size();
        UseDialogToItsEnd(script);
    }
    std::string Outcome() override {
        return ResultText() + ", " + RecordText() + ", " + SettingsText() +
               (device.Requests().size() == requestsBefore ? "" : ", asked");
    }

private:
    const DialogScript script;
    const MapShopReply reply;
    size_t requestsBefore = 0;
};

class ShowSignIn : public AccountDialogFlow {
public:
    using AccountDialogFlow::AccountDialogFlow;
    void Run() override {
        result = LMAccountShowSignIn(&record, nullptr);
        error = GetLastError();
    }
};

class ShowCreate : public AccountDialogFlow {
public:
    using AccountDialogFlow::AccountDialogFlow;
    void Run() override {
        result = LMAccountShowCreate(&record, nullptr);
        error = GetLastError();
    }
};
