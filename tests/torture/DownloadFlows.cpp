/* Downloads and ranges through the exports. */
#include "DeviceFile.h"
#include "Flow.h"
#include "LMOnline.h"

namespace {

constexpr WCHAR host[] = TEXT("maps.example");
constexpr WCHAR urlPath[] = TEXT("/maps/file.map");
constexpr WCHAR target[] = TEXT("\\Storage\\file.map");
constexpr size_t fileSize = 5000;

/* Bytes that no shift of theirs equals. */
std::string Content() {
    std::string bytes(fileSize, '\0');
    for (size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<char>(i * 31 + i / 4096);
    return bytes;
}

int LM_CALL GoOn(void* /*context*/) {
    return 1;
}

class Download : public Flow {
public:
    explicit Download(bool replacesFile) : replaces(replacesFile) {}

    void SetUp() override {
        device.AddHost(host, 80, WebReply::WithBody(content));
        file.emplace(target);
        temporary.emplace(std::u16string(target) + u".TMP");
    }

    void Prepare() override {
        temporary->Remove();
        if (replaces)
            file->Put("old");
        else
            file->Remove();
    }

    void Run() override {
        result = LMDownloadWebFileProgress(host, urlPath, target, GoOn, nullptr, &progress);
        error = GetLastError();
    }

    std::string Outcome() override {
        const std::optional<std::string> bytes = file->Take();
        const std::string state = !bytes              ? "no file"
                                  : *bytes == "old"   ? "old file"
                                  : *bytes == content ? "new file"
                                                      : "damaged file";
        return std::to_string(result) + ", error " + ErrorText(error) + ", " + state +
               (temporary->Take() ? ", TMP" : "");
    }

private:
    const bool replaces;
    const std::string content = Content();
    std::optional<DeviceFile> file;
    std::optional<DeviceFile> temporary;
    DownloadProgress progress{};
    int32_t result = 0;
    DWORD error = 0;
};

class Range : public Flow {
public:
    void SetUp() override { device.AddHost(host, 80, WebReply::WithBody(content)); }
    void Prepare() override { std::fill(std::begin(buffer), std::end(buffer), '\0'); }

    void Run() override {
        result = xfa704a3f(host, urlPath, 0, sizeof buffer, buffer, GoOn, nullptr);
        error = GetLastError();
    }

    std::string Outcome() override {
        const bool isWhole = std::string_view(buffer, sizeof buffer) == content.substr(0, sizeof buffer);
        return std::to_string(result) + ", error " + ErrorText(error) + (isWhole ? ", whole" : ", not whole");
    }

private:
    const std::string content = Content();
    char buffer[4500];
    int32_t result = 0;
    DWORD error = 0;
};

}  // namespace

std::vector<FlowRow> DownloadRows() {
    std::vector<FlowRow> rows;
    rows.push_back({"DownloadOverAnOldFile",
                    Library::Online,
                    Make<Download>(true),
                    "1, error 0, new file",
                    {
                        // Before the reply is good, the old file is not touched.
                        {"InternetConnectW", {"0, error E, old file"}},
                        {"HttpOpenRequestW", {"0, error E, old file"}},
                        {"HttpSendRequestW", {"0, error E, old file"}},
                        {"HttpQueryInfoW 1", {"0, error E, old file"}},
                        {"memory", {"0, error 8, old file"}},
                        // A file that cannot be deleted is in the way in the end.
                        {"DeleteFileW 1", {"1, error 183, old file, TMP", "..."}},
                        // From then on it is gone, unless it could not be deleted.
                        {"CreateFileW", {"0, error E, no file", "+0, error E, old file"}},
                        {"InternetReadFile",
                         {"0, error E, no file", "+0, error E, no file, TMP", "+0, error E, old file, TMP"}},
                        {"WriteFile",
                         {"0, error E, no file", "+0, error E, no file, TMP", "+0, error E, old file, TMP"}},
                        {"MoveFileW", {"1, error E, no file, TMP", "+1, error E, old file, TMP"}},
                    }});
    rows.push_back({"DownloadOntoNoFile",
                    Library::Online,
                    Make<Download>(false),
                    "1, error 0, new file",
                    {
                        {"InternetConnectW", {"0, error E, no file"}},
                        {"HttpOpenRequestW", {"0, error E, no file"}},
                        {"HttpSendRequestW", {"0, error E, no file"}},
                        {"HttpQueryInfoW 1", {"0, error E, no file"}},
                        {"memory", {"0, error 8, no file"}},
                        {"CreateFileW", {"0, error E, no file"}},
                        {"InternetReadFile", {"0, error E, no file", "+0, error E, no file, TMP"}},
                        {"WriteFile", {"0, error E, no file", "+0, error E, no file, TMP"}},
                        {"MoveFileW", {"1, error E, no file, TMP"}},
                    }});
    rows.push_back({"RangedRead",
                    Library::Online,
                    Make<Range>(),
                    "4500, error 0, whole",
                    {
                        {"InternetConnectW", {"-1, error E, not whole"}},
                        {"HttpOpenRequestW", {"-1, error E, not whole"}},
                        {"HttpSendRequestW", {"-1, error E, not whole"}},
                        {"HttpQueryInfoW", {"-1, error E, not whole"}},
                        {"InternetReadFile", {"0, error E, not whole"}},
                        {"memory", {"-1, error 8, not whole"}},
                    }});
    return rows;
}
