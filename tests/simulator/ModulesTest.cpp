#include "SimulatorTest.h"

namespace {

class Modules : public SimulatorTest {};

}  // namespace

TEST_F(Modules, ProgramAndLibraryHaveTheirPaths) {
    WCHAR path[MAX_PATH] = {};
    EXPECT_EQ(30u, GetModuleFileNameW(nullptr, path, MAX_PATH));
    EXPECT_EQ(u"\\Program Files\\App\\Program.exe", std::u16string(path));
    EXPECT_EQ(30u, GetModuleFileNameW(GetModuleHandleW(nullptr), path, MAX_PATH));
    EXPECT_EQ(36u, GetModuleFileNameW(device.LibraryInstance(), path, MAX_PATH));
    EXPECT_EQ(u"\\Program Files\\App\\OrvandeOnline.dll", std::u16string(path));
}

TEST_F(Modules, LibraryPathIsTheTestsToChoose) {
    device.SetLibraryPath(u"\\Card\\Lib");
    WCHAR path[10] = {};
    EXPECT_EQ(9u, GetModuleFileNameW(device.LibraryInstance(), path, 10));
    EXPECT_EQ(u"\\Card\\Lib", std::u16string(path));
}

TEST_F(Modules, PathThatDoesNotFitIsCutWithoutATerminator) {
    device.SetLibraryPath(u"\\Card\\Lib");
    WCHAR path[10];
    std::fill(std::begin(path), std::end(path), u'?');
    EXPECT_EQ(9u, GetModuleFileNameW(device.LibraryInstance(), path, 9));
    EXPECT_EQ(DWORD{ERROR_INSUFFICIENT_BUFFER}, GetLastError());
    EXPECT_EQ(u"\\Card\\Lib?", std::u16string(path, 10));
    EXPECT_EQ(0u, GetModuleFileNameW(device.LibraryInstance(), nullptr, 0));
}

TEST_F(Modules, OtherModulesAreNotThere) {
    WCHAR path[MAX_PATH];
    EXPECT_EQ(0u, GetModuleFileNameW(reinterpret_cast<HMODULE>(uintptr_t{5}), path, MAX_PATH));
    EXPECT_EQ(DWORD{ERROR_MOD_NOT_FOUND}, GetLastError());
    EXPECT_EQ(nullptr, GetModuleHandleW(u"other.dll"));
}
