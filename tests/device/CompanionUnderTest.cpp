/* The companion under the tests that call its exports: the image, loaded anew for each of them. */
#include "ImageExport.h"
#include "ImageFiles.h"
#include "companion/CompanionTest.h"

#define EXPORT EXPORT_JUMP
#include "AccountExports.inc"
#undef EXPORT

namespace {

#define EXPORT EXPORT_ENTRY
constexpr ImageExport exports[] = {
#include "AccountExports.inc"
};
#undef EXPORT

LoadedLibrary& Companion() {
    static auto& library = *new LoadedLibrary;
    return library;
}

}  // namespace

void CompanionTest::SetUp() {
    DeviceTest::SetUp();
    device.SetLibraryPath(u"\\Program Files\\App\\OrvandeAccount.dll");
    Restart();
    SetLastError(staleError);
}

void CompanionTest::TearDown() {
    Companion().Unload();
    DeviceTest::TearDown();
}

void CompanionTest::Restart() {
    Companion().Unload();
    Companion() = device.LoadLibraryFile(ImageFile("OrvandeAccount.dll"));
    BindExports(Companion(), exports);
}
