#include "transport/TransferTest.h"

#include "helpers/LocalFiles.h"

std::string TransferTest::Content(size_t size) {
    std::string bytes(size, '\0');
    for (size_t i = 0; i < size; ++i)
        bytes[i] = static_cast<char>(i * 31 + i / 4096);
    return bytes;
}

std::string TransferTest::Head(std::string_view status, std::string_view fields) {
    return "HTTP/1.1 " + std::string(status) + "\r\nConnection: close\r\n" + std::string(fields) + "\r\n";
}

std::string TransferTest::LengthField(uint64_t length) {
    return "Content-Length: " + std::to_string(length) + "\r\n";
}

int LM_CALL TransferTest::Callback(void* context) {
    auto* const test = static_cast<TransferTest*>(context);
    ++test->callbacks;
    return test->atCallback();
}

int32_t TransferTest::Download() {
    return library.downloadWithProgress(host, urlPath, target.c_str(), Callback, this, &progress);
}

int32_t TransferTest::DownloadOverOldFile() {
    PutFile(target, "old");
    callbacks = 0;
    progress = {-7, -7};
    return Download();
}

void TransferTest::ExpectDownloadOf(const std::string& content, int64_t totalBytes) {
    EXPECT_EQ(1, DownloadOverOldFile());
    EXPECT_TRUE(content == ContentOf(target));
    EXPECT_EQ(std::vector<std::wstring>{L"file.map"}, folder.Names());
    EXPECT_EQ(static_cast<int64_t>(content.size()), progress.bytesReceived);
    EXPECT_EQ(totalBytes, progress.totalBytes);
}

void TransferTest::ExpectNoFiles() const {
    EXPECT_EQ(std::vector<std::wstring>{}, folder.Names());
}

void TransferTest::ExpectOldFileUntouched() const {
    EXPECT_EQ("old", ContentOf(target));
    EXPECT_EQ(std::vector<std::wstring>{L"file.map"}, folder.Names());
    EXPECT_EQ(0U, callbacks);
    EXPECT_EQ(-7, progress.bytesReceived);
    EXPECT_EQ(-7, progress.totalBytes);
}
