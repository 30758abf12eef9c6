/* A running service, and a client that asks it for the maps' files. */
#pragma once

#include <gmock/gmock.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "HttpConnection.h"
#include "MapFile.h"
#include "ServiceProcess.h"
#include "TemporaryFolder.h"

/* One service for all tests that neither change its files nor read its log: its first start takes a
 * second. */
class ServiceDownload : public testing::Test {
protected:
    static void SetUpTestSuite() {
        folder = std::make_unique<TemporaryFolder>();
        service = Started(folder->Path());
        port = service->WaitForPort();
    }

    static void TearDownTestSuite() {
        EXPECT_EQ(service->End(), 0);
        service.reset();
        folder.reset();
    }

    static std::unique_ptr<ServiceProcess> Started(const std::filesystem::path& data) {
        return std::make_unique<ServiceProcess>(
            std::vector<std::string>{"--port", "0", "--data", data.string()});
    }

    /* A request without a body; `headers` is lines with their ends. */
    static HttpReply Ask(const std::string& method, const std::string& target,
                         const std::string& headers = "") {
        return Exchange(port, method + ' ' + target + " HTTP/1.1\r\nHost: test\r\nConnection: close\r\n" +
                                  headers + "\r\n");
    }

    static HttpReply AskRange(const std::string& target, const std::string& range) {
        return Ask("GET", target, "Range: " + range + "\r\n");
    }

    static std::string Bytes(const MapFile& file, uint64_t offset, size_t length) {
        std::string bytes(length, '\0');
        ReadMapFile(file, offset, bytes);
        return bytes;
    }

    static void ExpectUnsatisfiable(const HttpReply& reply) {
        EXPECT_EQ(reply.status, 416);
        EXPECT_EQ(reply.body, "Error 416\n");
    }

    inline static const MapFile reunion{"reunion.map", 1105500};
    inline static const MapFile california{"california.map", 67108864};

    inline static std::unique_ptr<TemporaryFolder> folder;
    inline static std::unique_ptr<ServiceProcess> service;
    inline static int port = 0;
};
