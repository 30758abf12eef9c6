#include "support/ScreenTest.h"

namespace {

class ResourceModule : public ScreenTest {};

const std::vector<std::string> noCalls;

}  // namespace

TEST_F(ResourceModule, Of4999IsTheLibrarysOwnAndNeverTouchesResDll) {
    EXPECT_EQ(device.LibraryInstance(), GetResourceModule(4999));
    EXPECT_EQ(device.LibraryInstance(), GetResourceModule(0));
    EXPECT_EQ(noCalls, device.Calls({"LoadLibraryW", "GetModuleHandleW"}));
}

TEST_F(ResourceModule, BeforeTheLibraryIsAttachedIsTheProgramsAndIsKept) {
    ownModule = nullptr;
    EXPECT_EQ(device.ProgramInstance(), GetResourceModule(107));
    EXPECT_EQ(device.ProgramInstance(), GetResourceModule(107));
    EXPECT_EQ(device.ProgramInstance(), ownModule);
    EXPECT_EQ((std::vector<std::string>{"GetModuleHandleW(null) = program"}),
              device.Calls({"GetModuleHandleW"}));
}

TEST_F(ResourceModule, Of5000IsResDllLoadedOnceAndNeverFreed) {
    const HINSTANCE module = device.AddModule(u"Res.dll");
    EXPECT_EQ(module, GetResourceModule(5000));
    EXPECT_EQ(module, GetResourceModule(0xFFFFFFFF));
    EXPECT_EQ((std::vector<std::string>{R"(LoadLibraryW("Res.dll") = Res.dll)"}),
              device.Calls({"LoadLibraryW"}));
    EXPECT_EQ(1u, device.ModuleReferences(module));
    EXPECT_EQ(device.LibraryInstance(), GetResourceModule(4999));
}

TEST_F(ResourceModule, MissingResDllShowsTheErrorBoxEachTimeAndGivesNull) {
    for (size_t time = 1; time <= 2; ++time) {
        ExpectMessage();
        EXPECT_EQ(nullptr, GetResourceModule(5000));
        EXPECT_EQ(DWORD{ERROR_MOD_NOT_FOUND}, GetLastError());
        ASSERT_EQ(time, device.MessageBoxes().size());
        const ShownMessageBox& box = device.MessageBoxes().back();
        EXPECT_EQ(u"Failed to load Res.dll\nPlease re-install the software", box.text);
        EXPECT_EQ(u"Error", box.caption);
        EXPECT_EQ(UINT{MB_ICONERROR}, box.flags);
        EXPECT_EQ(nullptr, box.owner);
    }
}

TEST_F(ResourceModule, BoxThatCannotBeShownHidesNotWhyResDllIsMissing) {
    device.FailCall("MessageBoxW", 1, ERROR_NOT_ENOUGH_MEMORY);
    EXPECT_EQ(nullptr, GetResourceModule(5000));
    EXPECT_EQ(DWORD{ERROR_MOD_NOT_FOUND}, GetLastError());
}

TEST_F(ResourceModule, ResDllThatTurnsUpIsFoundAtTheNextRequest) {
    ExpectMessage();
    EXPECT_EQ(nullptr, GetResourceModule(5000));
    const HINSTANCE module = device.AddModule(u"Res.dll");
    EXPECT_EQ(module, GetResourceModule(5000));
    EXPECT_EQ(1u, device.MessageBoxes().size());
}
