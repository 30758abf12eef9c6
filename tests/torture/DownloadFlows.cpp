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

int LM_CALL Cancel(void* /*context*/) {
    return 0;
}

struct Case {
    bool replaces = true;  // an old file
    bool hasProgress = true;
    LMProgressCallback callback = GoOn;
    DWORD status = 200;  // of the host's answer
};

class Download : public Flow {
public:
    explicit Download(const Case& tried) : how(tried) {}

    void SetUp() override {
        WebReply reply = WebReply::WithBody(content);
        reply.status = how.status;
        device.AddHost(host, 80, reply);
        file.emplace(target);
        temporary.emplace(std::u16string(target) + u".TMP");
    }

    void Prepare() override {
        temporary->Remove();
        if (how.replaces)
            file->Put("old");
        else
            file->Remove();
    }

    void Run() override {
        result = how.hasProgress
                     ? LMDownloadWebFileProgress(host, urlPath, target, how.callback, nullptr, &progress)
                     : LMDownloadWebFile(host, urlPath, target, how.callback, nullptr);
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
    const Case how;
    const std::string content = Content();
    std::optional<DeviceFile> file;
    std::optional<DeviceFile> temporary;
    DownloadProgress progress{};
    int32_t result = 0;
    DWORD error = 0;
};

class Range : public Flow {
public:
    explicit Range(int64_t firstByte, const Case& tried = {}) : offset(firstByte), how(tried) {}

    void SetUp() override {
        device.AddHost(host, 80, [this](const auto& request) { return Answer(request); });
    }
    void Prepare() override { std::fill(std::begin(buffer), std::end(buffer), '\0'); }

    void Run() override {
        result = LMReadWebFileRange(host, urlPath, offset, sizeof buffer, buffer, how.callback, nullptr);
        error = GetLastError();
    }

    std::string Outcome() override {
        const bool isWhole = std::string_view(buffer, sizeof buffer) == Wanted();
        return std::to_string(result) + ", error " + ErrorText(error) + (isWhole ? ", whole" : ", not whole");
    }

private:
    [[nodiscard]] std::string Wanted() const {
        return content.substr(static_cast<size_t>(offset), sizeof buffer);
    }

    [[nodiscard]] WebReply Answer(const WebRequest& request) const {
        const std::u16string wanted = offset == 0 ? u"Range:bytes=0-4499\n" : u"Range:bytes=500-4999\n";
        WebReply reply = WebReply::WithBody(request.headers == wanted ? Wanted() : "another range");
        reply.status = how.status;
        return reply;
    }

    const int64_t offset;
    const Case how;
    const std::string content = Content();
    char buffer[4500];
    int32_t result = 0;
    DWORD error = 0;
};

/* What keeps a download from touching anything. */
std::vector<Statement> Refusals(std::string_view failed, std::string_view withoutMemory) {
    return {{"InternetConnectW", {failed}},
            {"HttpOpenRequestW", {failed}},
            {"HttpSendRequestW", {failed}},
            {"HttpQueryInfoW 1", {failed}},
            {"memory", {withoutMemory}}};
}

FlowRow DownloadRow(const char* name, const Case& how, std::string_view success,
                    const std::vector<Statement>& others) {
    std::vector<Statement> statements = how.replaces
                                            ? Refusals("0, error E, old file", "0, error 8, old file")
                                            : Refusals("0, error E, no file", "0, error 8, no file");
    statements.insert(statements.end(), others.begin(), others.end());
    return {name, Library::Online, Make<Download>(how), success, statements};
}

FlowRow RangeRow(const char* name, int64_t offset, const Case& how, std::string_view success) {
    std::vector<Statement> statements = Refusals("-1, error E, not whole", "-1, error 8, not whole");
    if (how.status == 200) statements.push_back({"InternetReadFile", {"0, error E, not whole"}});
    return {name, Library::Online, Make<Range>(offset, how), success, statements};
}

}  // namespace

std::vector<FlowRow> DownloadRows() {
    const std::vector<Statement> replacing = {
        // A file that cannot be deleted is in the way in the end.
        {"DeleteFileW 1", {"1, error 183, old file, TMP", "..."}},
        // From then on it is gone, unless it could not be deleted.
        {"CreateFileW", {"0, error E, no file", "+0, error E, old file"}},
        {"InternetReadFile",
         {"0, error E, no file", "+0, error E, no file, TMP", "+0, error E, old file, TMP"}},
        {"WriteFile", {"0, error E, no file", "+0, error E, no file, TMP", "+0, error E, old file, TMP"}},
        {"MoveFileW", {"1, error E, no file, TMP", "+1, error E, old file, TMP"}},
    };
    const std::vector<Statement> making = {
        {"CreateFileW", {"0, error E, no file"}},
        {"InternetReadFile", {"0, error E, no file", "+0, error E, no file, TMP"}},
        {"WriteFile", {"0, error E, no file", "+0, error E, no file, TMP"}},
        {"MoveFileW", {"1, error E, no file, TMP"}},
    };
    const std::vector<Statement> cancelling = {
        {"DeleteFileW 1", {"0, error 0x20000002, old file", "..."}},
        {"CreateFileW", {"0, error E, no file", "+0, error E, old file"}},
        {"InternetReadFile",
         {"0, error E, no file", "+0, error E, no file, TMP", "+0, error E, old file, TMP"}},
        // The only way for the temporary file to stay.
        {"DeleteFileW 2", {"0, error 0x20000002, no file, TMP"}},
    };
    Case onto;
    onto.replaces = false;
    Case plain;
    plain.hasProgress = false;
    plain.callback = nullptr;
    Case cancelled;
    cancelled.callback = Cancel;
    Case refused;
    refused.status = 404;
    return {
        DownloadRow("DownloadOverAnOldFile", {}, "1, error 0, new file", replacing),
        DownloadRow("DownloadOntoNoFile", onto, "1, error 0, new file", making),
        DownloadRow("DownloadWithoutProgress", plain, "1, error 0, new file", replacing),
        DownloadRow("CancelledDownload", cancelled, "0, error 0x20000002, no file", cancelling),
        DownloadRow("RefusedDownload", refused, "0, error 0x21000194, old file", {}),
        RangeRow("RangedRead", 0, {}, "4500, error 0, whole"),
        RangeRow("RangedReadFromTheMiddle", 500, plain, "4500, error 0, whole"),
        RangeRow("CancelledRange", 0, cancelled, "0, error 0x20000002, not whole"),
        RangeRow("RefusedRange", 0, refused, "-1, error 0x21000194, not whole"),
    };
}
