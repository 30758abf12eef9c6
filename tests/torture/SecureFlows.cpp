/* Downloads and ranges over secure links, which no export makes. */
#include "DeviceFile.h"
#include "Flow.h"
#include "base/Contained.h"
#include "transport/WebDownload.h"

namespace {

constexpr const WCHAR* host = TEXT("maps.example");
constexpr const WCHAR* urlPath = TEXT("/maps/file.map");

class SecureTransfer : public Flow {
public:
    void SetUp() override {
        device.AddHost(host, INTERNET_DEFAULT_HTTPS_PORT, [this](const WebRequest& request) {
            return WebReply::WithBody(request.secure ? content : "not secure");
        });
    }
    void Run() override {
        cause = ERROR_NOT_ENOUGH_MEMORY;
        result = Contained(-1, [this] {
            WebConnection connection(host, true, true);
            const int32_t given = Transfer(connection);
            cause = connection.failure.cause;
            return given;
        });
    }

protected:
    virtual int32_t Transfer(WebConnection& connection) = 0;

    [[nodiscard]] std::string ResultText() const {
        return std::to_string(result) + ", error " + ErrorText(cause);
    }

    const std::string content = std::string(2000, 'a') + std::string(2000, 'b') + std::string(1000, 'c');

private:
    int32_t result = 0;
    DWORD cause = 0;
};

class SecureRange : public SecureTransfer {
public:
    void Prepare() override { buffer.assign(content.size(), '\0'); }
    std::string Outcome() override { return ResultText() + (buffer == content ? ", whole" : ", not whole"); }

private:
    int32_t Transfer(WebConnection& connection) override {
        return ReadWebFileRange(connection, urlPath, 0, static_cast<int32_t>(buffer.size()), buffer.data());
    }

    std::string buffer;
};

class SecureDownload : public SecureTransfer {
public:
    void SetUp() override {
        SecureTransfer::SetUp();
        file.emplace(target);
        temporary.emplace(target + TEXT(".TMP"));
    }
    void Prepare() override {
        file->Remove();
        temporary->Remove();
    }
    std::string Outcome() override {
        const std::optional<std::string> bytes = file->Take();
        return ResultText() +
               (!bytes              ? ", no file"
                : *bytes == content ? ", new file"
                                    : ", damaged file") +
               (temporary->Take() ? ", TMP" : "");
    }

private:
    int32_t Transfer(WebConnection& connection) override {
        return DownloadWebFile(connection, urlPath, target) ? 1 : 0;
    }

    const WideString target = TEXT("\\Storage\\file.map");
    std::optional<DeviceFile> file;
    std::optional<DeviceFile> temporary;
};

}  // namespace

std::vector<FlowRow> SecureRows() {
    const std::string_view noRange = "-1, error E, not whole";
    const std::string_view noFile = "0, error E, no file";
    const std::string_view leftFile = "+0, error E, no file, TMP";
    std::vector<FlowRow> rows;
    rows.push_back({"SecureRangedRead",
                    Library::Online,
                    Make<SecureRange>(),
                    "5000, error 0, whole",
                    {
                        {"InternetConnectW", {noRange}},
                        {"HttpOpenRequestW", {noRange}},
                        {"HttpSendRequestW", {noRange}},
                        {"HttpQueryInfoW", {noRange}},
                        {"InternetReadFile", {"0, error E, not whole"}},
                        {"memory", {"-1, error 8, not whole"}},
                    }});
    rows.push_back({"SecureDownload",
                    Library::Online,
                    Make<SecureDownload>(),
                    "1, error 0, new file",
                    {
                        {"InternetConnectW", {noFile}},
                        {"HttpOpenRequestW", {noFile}},
                        {"HttpSendRequestW", {noFile}},
                        {"HttpQueryInfoW", {noFile}},
                        {"CreateFileW", {noFile}},
                        {"InternetReadFile", {noFile, leftFile}},
                        {"WriteFile", {noFile, leftFile}},
                        {"MoveFileW", {"1, error E, no file, TMP"}},
                        {"memory", {"-1, error 8, no file"}},
                    }});
    return rows;
}
