#include "examples/resume/ResumeFixture.h"

#include <cstdlib>

namespace {

/* The two numbers of "Range:bytes=4-7". */
struct RequestedRange {
    explicit RequestedRange(const std::u16string& header) {
        const std::string text(header.begin(), header.end());
        const size_t begin = text.find('=') + 1;
        first = std::strtoull(text.c_str() + begin, nullptr, 10);
        last = std::strtoull(text.c_str() + text.find('-') + 1, nullptr, 10);
    }

    uint64_t first;
    uint64_t last;
};

}  // namespace

void Resume::SetUp() {
    NetworkTest::SetUp();
    device.PutFile(file, "older");
    device.AddHost(host, 80, [this](const WebRequest& request) { return Answer(request); });
}

std::string Resume::Content(size_t count, unsigned version) {
    std::string bytes(count, '\0');
    uint32_t number = version;
    for (char& letter : bytes) {
        number = number * 1664525 + 1013904223;
        letter = static_cast<char>(number >> 24);
    }
    return bytes;
}

WebReply Resume::Answer(const WebRequest& request) {
    if (requestsUntilSilence == 0) return WebReply::Refused();
    --requestsUntilSilence;
    WebReply reply = WebReply::WithBody(content);
    reply.sendsContentLength = announcesLength;
    if (request.headers.empty() || !knowsRanges) return reply;
    const RequestedRange range(request.headers);
    if (range.first >= content.size()) return WebReply::WithStatus(416);
    reply.status = 206;
    reply.body = content.substr(range.first, range.last - range.first + 1);
    return reply;
}

ResumeResult Resume::Run(LMProgressCallback callback, void* context) {
    const ResumedDownload::Functions library = {LMDownloadWebFileProgress, LMReadWebFileRange};
    ResumedDownload download(library, host, u"/maps/a.map", file);
    const ResumeResult result = download.Run(callback, context);
    takenOver = download.TakenOver();
    error = download.Error();
    return result;
}

void Resume::ExpectWhole() {
    EXPECT_TRUE(content == device.TakeFile(file));
    for (const WCHAR* other :
         {part, description, u"\\Temp\\a.map.part.TMP", u"\\Temp\\a.map.length", u"\\Temp\\a.map.length.TMP"})
        EXPECT_FALSE(device.Exists(other));
}

void Resume::BreakOffAfter(size_t pieces) {
    constexpr size_t requestsBefore = 3;  // the length, and two parts of the beginning
    requestsUntilSilence = requestsBefore + pieces;
    EXPECT_EQ(resumeBrokenOff, Run());
    EXPECT_EQ(pieces * pieceSize, PartSize());
    requestsUntilSilence = SIZE_MAX;
    device.ForgetCalls();
}
