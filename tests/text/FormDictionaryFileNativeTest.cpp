#include <gtest/gtest.h>

#include <filesystem>

#include "Device.h"
#include "support/DeviceTest.h"
#include "text/FormDictionary.h"

namespace {

const WideString absent = TEXT("<absent>");

class FormDictionaryFailures : public DeviceTest {
protected:
    static WideString Path() { return PathOf(TEXT("settings.ini")); }

    static FormDictionary With(const WideString& key, const WideString& value) {
        FormDictionary dictionary;
        dictionary.SetString(key, value);
        return dictionary;
    }

    Device& device = Device::Current();
};

}  // namespace

TEST_F(FormDictionaryFailures, FileIsOpenedAndClosedOnceForALoad) {
    PutFile(Path(), "a=1\n");
    device.ForgetCalls();
    FormDictionary dictionary;
    EXPECT_TRUE(dictionary.LoadFromFile(Path()));
    const auto calls = device.Calls({"_wfopen", "fclose"});
    ASSERT_EQ(2u, calls.size());
    EXPECT_NE(std::string::npos, calls[0].find(", \"r\") = file 1")) << calls[0];
    EXPECT_EQ("fclose(file 1) = 0", calls[1]);
}

TEST_F(FormDictionaryFailures, FileIsOpenedAndClosedOnceForASave) {
    EXPECT_TRUE(With(TEXT("a"), TEXT("1")).SaveToFile(Path()));
    const auto calls = device.Calls({"_wfopen", "fclose"});
    ASSERT_EQ(2u, calls.size());
    EXPECT_NE(std::string::npos, calls[0].find(", \"w\") = file 1")) << calls[0];
    EXPECT_EQ("fclose(file 1) = 0", calls[1]);
}

TEST_F(FormDictionaryFailures, FileThatMayNotBeOpenedIsNeitherLoadedNorSaved) {
    PutFile(Path(), "a=file\n");
    FormDictionary dictionary = With(TEXT("a"), TEXT("old"));
    device.FailCall("_wfopen", 1, ERROR_ACCESS_DENIED, Failing::FromThereOn);
    EXPECT_FALSE(dictionary.LoadFromFile(Path()));
    EXPECT_FALSE(dictionary.SaveToFile(Path()));
    EXPECT_EQ(TEXT("old"), dictionary.GetString(TEXT("a")));
    EXPECT_EQ(std::string("a=file\n"), TakeFile(Path()));
}

TEST_F(FormDictionaryFailures, ReadErrorKeepsWhatWasReadAndOtherEntries) {
    PutFile(Path(), "a=1\nb=234\nc=5\n");
    FormDictionary dictionary = With(TEXT("c"), TEXT("old"));
    device.FailCall("fread", 8, ERROR_GEN_FAILURE, Failing::FromThereOn);
    EXPECT_TRUE(dictionary.LoadFromFile(Path()));
    EXPECT_EQ(TEXT("1"), dictionary.GetString(TEXT("a")));
    EXPECT_EQ(TEXT("2"), dictionary.GetString(TEXT("b")));
    EXPECT_EQ(TEXT("old"), dictionary.GetString(TEXT("c")));
}

TEST_F(FormDictionaryFailures, FullDiskMakesASmallSaveFail) {
    std::filesystem::create_symlink("/dev/full", device.HostPath(Path()));
    EXPECT_FALSE(With(TEXT("a"), TEXT("1")).SaveToFile(Path()));
}

TEST_F(FormDictionaryFailures, FullDiskMakesALargeSaveFail) {
    std::filesystem::create_symlink("/dev/full", device.HostPath(Path()));
    EXPECT_FALSE(With(TEXT("a"), WideString(1 << 20, 'x')).SaveToFile(Path()));
}

TEST_F(FormDictionaryFailures, EmptyDictionaryNeedsNoRoom) {
    std::filesystem::create_symlink("/dev/full", device.HostPath(Path()));
    EXPECT_TRUE(FormDictionary().SaveToFile(Path()));
}

TEST_F(FormDictionaryFailures, DiskThatFillsUpLeavesAFileCutShort) {
    FormDictionary dictionary = With(TEXT("a"), TEXT("1"));
    dictionary.SetString(TEXT("b"), TEXT("2"));
    device.SetFreeStorage(7);
    EXPECT_FALSE(dictionary.SaveToFile(Path()));
    EXPECT_EQ(std::string("a=1\r\nb="), TakeFile(Path()));
}

TEST_F(FormDictionaryFailures, DiskWithJustEnoughRoomIsEnough) {
    device.SetFreeStorage(5);
    EXPECT_TRUE(With(TEXT("a"), TEXT("1")).SaveToFile(Path()));
    EXPECT_EQ(std::string("a=1\r\n"), TakeFile(Path()));
}

TEST_F(FormDictionaryFailures, WriteErrorInAnEarlierEntryIsStillReportedAtTheEnd) {
    FormDictionary dictionary = With(TEXT("a"), WideString(5000, 'x'));
    dictionary.SetString(TEXT("b"), TEXT("2"));
    device.FailCall("fwrite", 1, ERROR_DISK_FULL, Failing::Once);
    EXPECT_FALSE(dictionary.SaveToFile(Path()));
    EXPECT_LT(1u, device.CountCalls("fwrite")) << "the last write succeeded";
}

TEST_F(FormDictionaryFailures, WriteErrorThatOnlyShowsWhenTheFileIsFlushedIsReported) {
    device.FailCall("fwrite", 1, ERROR_DISK_FULL, Failing::Once);
    EXPECT_FALSE(With(TEXT("a"), TEXT("1")).SaveToFile(Path()));
    EXPECT_EQ(1u, device.CountCalls("fwrite"));
}

TEST_F(FormDictionaryFailures, CloseThatFailsAfterEverythingWasWrittenIsNoFailure) {
    device.FailCall("fclose", 1, ERROR_GEN_FAILURE);
    EXPECT_TRUE(With(TEXT("a"), TEXT("1")).SaveToFile(Path()));
    EXPECT_EQ(std::string("a=1\r\n"), TakeFile(Path()));
}

TEST_F(FormDictionaryFailures, MemoryThatRunsOutInALoadLeavesNoFileOpenAndOtherEntriesAlone) {
    PutFile(Path(), "a=" + std::string(100, 'x') + "\nb=" + std::string(100, 'y') + "\n");
    FormDictionary dictionary = With(TEXT("kept"), TEXT("old"));
    size_t failures = 0;
    for (bool isThrough = false; !isThrough; ++failures) {
        FormDictionary loaded = dictionary;
        const WideString path = Path();
        AllocationWatch watch(failures + 1);
        try {
            isThrough = loaded.LoadFromFile(path);
        } catch (const std::bad_alloc&) {
            isThrough = false;
        }
        watch.Stop();
        EXPECT_EQ(isThrough, !watch.Failed());
        EXPECT_EQ(TEXT("old"), loaded.GetString(TEXT("kept"), absent));
    }
    EXPECT_GT(failures, 5u);
}

TEST_F(FormDictionaryFailures, SaveNeedsNoMemoryAndSucceedsWithoutAny) {
    const FormDictionary dictionary = With(TEXT("a"), WideString(1000, ' ') + TEXT("\x00E9"));
    const WideString path = Path();
    AllocationWatch watch(1);
    const bool isSaved = dictionary.SaveToFile(path);
    watch.Stop();
    EXPECT_TRUE(isSaved);
    EXPECT_FALSE(watch.Failed());
    EXPECT_EQ("a=" + std::string(1000, '+') + "%e9\r\n", TakeFile(Path()));
}
