#include <gtest/gtest.h>

#include "support/DeviceTest.h"
#include "text/FormDictionary.h"

namespace {

class FormDictionaryDesktop : public DeviceTest {
protected:
    static WideString Path() { return PathOf(TEXT("settings.ini")); }

    static FormDictionary With(const WideString& key, const WideString& value) {
        FormDictionary dictionary;
        dictionary.SetString(key, value);
        return dictionary;
    }
};

/* The host system's device that takes no byte, as Wine shows it. */
const WideString fullDisk = TEXT("Z:\\dev\\full");

}  // namespace

TEST_F(FormDictionaryDesktop, FileThatAnotherKeepsFromBeingWrittenIsLoadedButNotSaved) {
    PutFile(Path(), "a=file\n");
    const HANDLE other =
        CreateFileW(Path().c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(INVALID_HANDLE_VALUE, other);
    FormDictionary dictionary = With(TEXT("b"), TEXT("old"));
    EXPECT_TRUE(dictionary.LoadFromFile(Path()));
    EXPECT_EQ(TEXT("file"), dictionary.GetString(TEXT("a")));
    EXPECT_FALSE(dictionary.SaveToFile(Path()));
    EXPECT_TRUE(CloseHandle(other));
    EXPECT_EQ(std::string("a=file\n"), TakeFile(Path()));
}

TEST_F(FormDictionaryDesktop, ReadOnlyFileIsLoadedAndSavedOnlyWhereTheSystemLetsItBeWritten) {
    PutFile(Path(), "a=file\n");
    ASSERT_TRUE(SetFileAttributesW(Path().c_str(), FILE_ATTRIBUTE_READONLY));
    // Wine asks the host, which lets its superuser write read-only files.
    const HANDLE writer = CreateFileW(Path().c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    const bool isWritable = writer != INVALID_HANDLE_VALUE;
    if (isWritable) CloseHandle(writer);
    FormDictionary dictionary = With(TEXT("b"), TEXT("old"));
    EXPECT_TRUE(dictionary.LoadFromFile(Path()));
    EXPECT_EQ(TEXT("file"), dictionary.GetString(TEXT("a")));
    EXPECT_EQ(isWritable, dictionary.SaveToFile(Path()));
    EXPECT_EQ(std::string(isWritable ? "a=file\r\nb=old\r\n" : "a=file\n"), TakeFile(Path()));
}

TEST_F(FormDictionaryDesktop, FileIsClosedAfterEveryLoadAndSave) {
    FormDictionary dictionary = With(TEXT("a"), TEXT("1"));
    EXPECT_TRUE(dictionary.SaveToFile(Path()));
    EXPECT_TRUE(DeleteFileW(Path().c_str())) << "an open file cannot be deleted";
    PutFile(Path(), "a=1\n");
    EXPECT_TRUE(dictionary.LoadFromFile(Path()));
    EXPECT_TRUE(DeleteFileW(Path().c_str())) << "an open file cannot be deleted";
}

TEST_F(FormDictionaryDesktop, FullDiskMakesASmallSaveFailThoughItFitsTheStreamsBuffer) {
    EXPECT_FALSE(With(TEXT("a"), TEXT("1")).SaveToFile(fullDisk));
}

TEST_F(FormDictionaryDesktop, FullDiskMakesALargeSaveFail) {
    EXPECT_FALSE(With(TEXT("a"), WideString(1 << 20, 'x')).SaveToFile(fullDisk));
}

TEST_F(FormDictionaryDesktop, FullDiskCanBeOpenedSoThatOnlyWritingFails) {
    EXPECT_TRUE(FormDictionary().SaveToFile(fullDisk));
}
