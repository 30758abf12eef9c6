/* The library under the tests that call its exports: the image, loaded anew for each of them. */
#include "ImageExport.h"
#include "ImageFiles.h"
#include "LMOnline.h"
#include "support/NetworkTest.h"

#define EXPORT EXPORT_JUMP
#include "Exports.inc"
#undef EXPORT

namespace {

#define EXPORT EXPORT_ENTRY
constexpr ImageExport exports[] = {
#include "Exports.inc"
};
#undef EXPORT

LoadedLibrary& Library() {
    static auto& library = *new LoadedLibrary;
    return library;
}

void ReportFailure(const std::string& what) {
    ADD_FAILURE() << what;
}

}  // namespace

void NetworkTest::SetUp() {
    Device::Current().SetViolationHook(ReportFailure);
    Library() = Device::Current().LoadLibraryFile(ImageFile("OrvandeOnline.dll"));
    BindExports(Library(), exports);
    DeviceTest::SetUp();
}

void NetworkTest::TearDown() {
    DeviceTest::TearDown();
    Device::Current().SetViolationHook(ReportFailure);
    Library().Unload();
    Device::Current().SetViolationHook(nullptr);
}
