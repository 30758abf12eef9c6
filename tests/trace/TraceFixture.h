/* A library that is built with a trace, and what it has written. */
#pragma once

#include "base/Trace.h"

#include <sstream>

#include "LMOnline.h"
#include "account/AccountTest.h"
#include "account/CreateAccountDialog.h"
#include "account/SignIn.h"
#include "account/SignInDialog.h"
#include "frame/LibraryEntry.h"
#include "mapshop/MapShopFixture.h"
#include "transport/TransferFixture.h"

inline constexpr char16_t traceFile[] = u"\\Program Files\\App\\OrvandeOnline.trace.txt";

inline std::string TraceText() {
    return Device::Current().TakeFile(traceFile).value_or("no file");
}

/* The lines without their times. */
inline std::vector<std::string> Lines() {
    std::istringstream stream(TraceText());
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) {
        EXPECT_EQ('\r', line.back());
        lines.push_back(line.substr(line.find('\t') + 1, line.size() - line.find('\t') - 2));
    }
    return lines;
}

inline void Begin() {
    BeginTrace(Device::Current().LibraryInstance());
    DeleteFileW(traceFile);
}

class TracedSearch : public MapShop {
protected:
    void SetUp() override {
        MapShop::SetUp();
        Begin();
    }
};

class TracedTransfer : public Transfer {
protected:
    void SetUp() override {
        Transfer::SetUp();
        Begin();
    }
};

class TracedAccount : public AccountTest {
protected:
    void SetUp() override {
        AccountTest::SetUp();
        Begin();
    }

    static void ExpectNoSecrets() {
        const std::string trace = TraceText();
        for (const char* secret : {"Anna", "anna", "ecret", "A<U+0000>"})
            EXPECT_EQ(std::string::npos, trace.find(secret)) << trace;
    }
};
