/* A test of the simulator itself: violations are collected, and those that a test does not take fail it. */
#pragma once

#include "Platform.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "Device.h"

using Lines = std::vector<std::string>;

class SimulatorTest : public ::testing::Test {
public:
    /* The violations since the last call, in order. */
    static Lines TakeViolations() { return std::exchange(Violations(), {}); }

protected:
    void SetUp() override {
        Violations().clear();
        device.SetViolationHook([](const std::string& what) { Violations().push_back(what); });
        device.BeginTest();
    }

    void TearDown() override {
        device.EndTest();
        device.SetViolationHook(nullptr);
        EXPECT_EQ(Lines{}, TakeViolations());
    }

    Device& device = Device::Current();

private:
    static Lines& Violations() {
        static Lines violations;
        return violations;
    }
};

/* The handles of one request, closed in order at the end. */
class OpenRequest {
public:
    explicit OpenRequest(const WCHAR* host = u"host.example", INTERNET_PORT port = 80, DWORD flags = 0)
        : session(InternetOpenW(u"Agent", 0, nullptr, nullptr, 0)),
          connection(InternetConnectW(session, host, port, nullptr, nullptr, INTERNET_SERVICE_HTTP, 0, 0)),
          request(HttpOpenRequestW(connection, nullptr, u"file", nullptr, nullptr, nullptr, flags, 0)) {}
    OpenRequest(const OpenRequest&) = delete;
    OpenRequest& operator=(const OpenRequest&) = delete;
    ~OpenRequest() {
        InternetCloseHandle(request);
        InternetCloseHandle(connection);
        InternetCloseHandle(session);
    }

    bool Send() const { return HttpSendRequestW(request, nullptr, 0, nullptr, 0) != FALSE; }

    const HINTERNET session;
    const HINTERNET connection;
    const HINTERNET request;
};

/* The result of one InternetReadFile. */
struct ReadResult {
    bool succeeded;
    DWORD error;  // 0 when it succeeded
    std::string bytes;

    bool operator==(const ReadResult&) const = default;
};

inline std::ostream& operator<<(std::ostream& stream, const ReadResult& result) {
    return stream << (result.succeeded ? "TRUE" : "FALSE") << " \"" << result.bytes << "\" error "
                  << result.error;
}

inline ReadResult Read(HINTERNET request, DWORD size) {
    std::string bytes(size, '?');
    DWORD count = 12345;
    const bool succeeded = InternetReadFile(request, bytes.data(), size, &count) != FALSE;
    bytes.resize(count);
    return {succeeded, succeeded ? 0 : GetLastError(), bytes};
}
