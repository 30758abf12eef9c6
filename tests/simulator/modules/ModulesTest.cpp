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

TEST_F(Modules, AddedModuleIsLoadedByItsNameAndCountsItsUsers) {
    EXPECT_EQ(nullptr, LoadLibraryW(u"Res.dll"));
    EXPECT_EQ(DWORD{ERROR_MOD_NOT_FOUND}, GetLastError());
    const HINSTANCE module = device.AddModule(u"Res.dll");
    EXPECT_EQ(nullptr, GetModuleHandleW(u"Res.dll")) << "not loaded yet";
    EXPECT_EQ(module, LoadLibraryW(u"\\Windows\\RES.DLL"));
    EXPECT_EQ(module, LoadLibraryW(u"Res.dll"));
    EXPECT_EQ(2u, device.ModuleReferences(module));
    EXPECT_EQ(module, GetModuleHandleW(u"res.dll"));
    EXPECT_TRUE(FreeLibrary(module));
    EXPECT_TRUE(FreeLibrary(module));
    EXPECT_EQ(0u, device.ModuleReferences(module));
    EXPECT_EQ(nullptr, GetModuleHandleW(u"Res.dll"));
    EXPECT_EQ(
        (Lines{R"(LoadLibraryW("Res.dll") = null, error 126)",
               R"(LoadLibraryW("\Windows\RES.DLL") = Res.dll)", R"(LoadLibraryW("Res.dll") = Res.dll)"}),
        device.Calls({"LoadLibraryW"}));
    EXPECT_EQ(Lines{"FreeLibrary(Res.dll) = TRUE (2 times)"}, device.Calls({"FreeLibrary"}));
}

TEST_F(Modules, ModuleThatIsNotLoadedIsNeitherFreedNorRead) {
    const HINSTANCE module = device.AddModule(u"Res.dll");
    EXPECT_FALSE(FreeLibrary(module));
    EXPECT_EQ(nullptr, FindResourceW(module, u"A", u"B"));
    EXPECT_EQ((Lines{"FreeLibrary(Res.dll): this module is not loaded",
                     R"(FindResourceW(Res.dll, "A", "B"): this module is not loaded)"}),
              TakeViolations());
}

TEST_F(Modules, ModuleMayStayLoadedAndIsGoneAfterTheTest) {
    device.AddModule(u"Res.dll");
    LoadLibraryW(u"Res.dll");
    device.EndTest();
    device.BeginTest();
    EXPECT_EQ(nullptr, LoadLibraryW(u"Res.dll"));
}

TEST_F(Modules, LoadedModulesAreFoundByTheirNames) {
    EXPECT_EQ(device.LibraryInstance(), GetModuleHandleW(u"orvandeonline.DLL"));
    EXPECT_EQ(device.ProgramInstance(), GetModuleHandleW(u"Program.exe"));
    EXPECT_EQ(device.ProgramInstance(), GetModuleHandleW(nullptr));
}

TEST_F(Modules, FailuresAreOrdered) {
    const HINSTANCE module = device.AddModule(u"Res.dll");
    device.FailCall("LoadLibraryW", 1, ERROR_NOT_ENOUGH_MEMORY);
    EXPECT_EQ(nullptr, LoadLibraryW(u"Res.dll"));
    EXPECT_EQ(DWORD{ERROR_NOT_ENOUGH_MEMORY}, GetLastError());
    EXPECT_EQ(module, LoadLibraryW(u"Res.dll"));
    device.FailCall("FreeLibrary", 1, 1234);
    EXPECT_FALSE(FreeLibrary(module));
    EXPECT_EQ(0u, device.ModuleReferences(module)) << "freed all the same";
}
