#include <gtest/gtest.h>

#include "Device.h"
#include "support/DeviceTest.h"
#include "transport/FileReadStream.h"
#include "transport/FileWriteStream.h"

namespace {

class FileStreamOnDevice : public DeviceTest {
protected:
    Device& device = Device::Current();
    const WideString path = TEXT("\\Storage\\stream.bin");
};

}  // namespace

TEST_F(FileStreamOnDevice, FailedWriteClearsGoodAndLaterOnesDoNothing) {
    device.FailCall("fwrite", 2, ERROR_DISK_FULL);
    {
        FileWriteStream stream(path);
        stream.WriteBytes("kept", 4);
        stream.Flush();
        EXPECT_TRUE(stream.good);
        stream.WriteBytes(std::string(5000, 'x').data(), 5000);
        EXPECT_FALSE(stream.good);
        stream.WriteBytes("late", 4);
        stream.Flush();
        EXPECT_FALSE(stream.good);
    }
    EXPECT_EQ("kept", device.TakeFile(path).value_or("no file"));
}

TEST_F(FileStreamOnDevice, FlushTellsThatTheStorageIsFull) {
    device.SetFreeStorage(6);
    FileWriteStream stream(path);
    stream.WriteInt32(1);
    stream.Flush();
    EXPECT_TRUE(stream.good);
    stream.WriteInt32(2);
    stream.Flush();
    EXPECT_FALSE(stream.good);
}

TEST_F(FileStreamOnDevice, FlushOfAFileThatWasNotOpenedDoesNothing) {
    FileWriteStream stream(TEXT("\\None\\file"));
    EXPECT_FALSE(stream.good);
    stream.Flush();
    EXPECT_FALSE(stream.good);
}

TEST_F(FileStreamOnDevice, FailedReadClearsGood) {
    device.PutFile(path, "abcdef");
    device.FailCall("fread", 1, ERROR_READ_FAULT);
    FileReadStream stream(path);
    int32_t value = 5;
    EXPECT_FALSE(stream.ReadInt32(value));
    EXPECT_FALSE(stream.good);
}
